// What is written to a URL: a block of header lines, an empty line, a body.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillon::link {

inline constexpr std::size_t kMostHeaderBytes = 8192;
inline constexpr std::size_t kLargestBody = std::size_t{128} << 20;

struct OutgoingForm {
  std::string line;  // of the headers, not ended yet
  std::size_t headerBytes = 0;
  std::vector<std::string> headers;  // "Name: value", but for Content-Length
  std::optional<std::uint64_t> declaredLength;
  bool inBody = false;
  bool broken = false;  // the lines are no headers; nothing more is taken
  std::string body;
};

// Takes as much as fits the bounds, in pieces cut anywhere, and answers how much. Lines end with a
// line feed, before which a carriage return may stand.
std::uint32_t TakeBytes(OutgoingForm* form, std::string_view bytes);

// Why it must not be sent: a sentence, empty when it is whole and its length is the one declared.
std::string ProblemOf(const OutgoingForm& form);

}  // namespace quillon::link
