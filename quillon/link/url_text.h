// URLs as texts (RFC 3986): which are taken, and relative ones.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace quillon::link {

// No server that people use takes longer ones.
inline constexpr std::size_t kLongestUrl = 8192;

// The full URL. An absolute one stays as it is written; a relative one is taken from `base`, which
// may be null. None for what is no URL of http or https, names no host, or has blanks, control
// characters or bytes outside ASCII in it.
std::optional<std::string> ResolveUrl(const std::string& text, const std::string* base);

// Whether what goes over the line is encrypted.
bool IsSecure(const std::string& url);

// As it may be shown: without a password.
std::string ShownUrl(const std::string& url);

}  // namespace quillon::link
