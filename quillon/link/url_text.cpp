#include "quillon/link/url_text.h"

#include <curl/curl.h>

#include <algorithm>
#include <memory>
#include <string_view>

namespace quillon::link {
namespace {

struct FreeUrl {
  void operator()(CURLU* url) const { curl_url_cleanup(url); }
};
using ParsedUrl = std::unique_ptr<CURLU, FreeUrl>;

bool StartsWithoutCase(std::string_view text, std::string_view lowerCase) {
  if (text.size() < lowerCase.size()) return false;
  return std::equal(lowerCase.begin(), lowerCase.end(), text.begin(), [](char wanted, char byte) {
    return wanted == (byte >= 'A' && byte <= 'Z' ? byte - 'A' + 'a' : byte);
  });
}

bool IsHttp(std::string_view url) {
  return StartsWithoutCase(url, "http://") || StartsWithoutCase(url, "https://");
}

bool IsPrintableAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char byte) { return byte > ' ' && byte < 0x7F; });
}

bool SetUrl(CURLU* parsed, const std::string& text) {
  return curl_url_set(parsed, CURLUPART_URL, text.c_str(), 0) == CURLUE_OK;
}

std::string FullText(CURLU* parsed) {
  char* text = nullptr;
  if (curl_url_get(parsed, CURLUPART_URL, &text, 0) != CURLUE_OK) return {};
  const std::unique_ptr<char, decltype(&curl_free)> owned(text, &curl_free);
  return text;
}

std::optional<std::string> ResolveRelative(const std::string& text, const std::string& base) {
  const ParsedUrl parsed(curl_url());
  if (!parsed || !SetUrl(parsed.get(), base) || !SetUrl(parsed.get(), text)) return std::nullopt;
  std::string full = FullText(parsed.get());
  if (!IsHttp(full) || full.size() > kLongestUrl) return std::nullopt;
  return full;
}

}  // namespace

std::optional<std::string> ResolveUrl(const std::string& text, const std::string* base) {
  if (text.empty() || text.size() > kLongestUrl || !IsPrintableAscii(text)) return std::nullopt;
  if (IsHttp(text)) {
    const ParsedUrl parsed(curl_url());
    return parsed && SetUrl(parsed.get(), text) ? std::optional(text) : std::nullopt;
  }
  if (base == nullptr || !IsHttp(*base)) return std::nullopt;
  return ResolveRelative(text, *base);
}

bool IsSecure(const std::string& url) { return StartsWithoutCase(url, "https://"); }

std::string ShownUrl(const std::string& url) {
  if (url.find('@') == std::string::npos) return url;
  const ParsedUrl parsed(curl_url());
  if (!parsed || !SetUrl(parsed.get(), url)) return {};
  curl_url_set(parsed.get(), CURLUPART_PASSWORD, nullptr, 0);
  return FullText(parsed.get());
}

}  // namespace quillon::link
