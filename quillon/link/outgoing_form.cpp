#include "quillon/link/outgoing_form.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace quillon::link {
namespace {

// The characters of a token (RFC 9110, 5.6.2).
bool IsToken(std::string_view name) {
  constexpr std::string_view kMarks = "!#$%&'*+-.^_`|~";
  return !name.empty() && std::all_of(name.begin(), name.end(), [&](char byte) {
    return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z') ||
           (byte >= '0' && byte <= '9') || kMarks.find(byte) != std::string_view::npos;
  });
}

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
  return text;
}

bool IsPlainText(std::string_view value) {
  return std::none_of(value.begin(), value.end(), [](char byte) {
    return static_cast<unsigned char>(byte) < ' ' && byte != '\t';
  });
}

bool SameWithoutCase(std::string_view a, std::string_view b) {
  const auto lower = [](char byte) {
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
  };
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [&](char x, char y) { return lower(x) == lower(y); });
}

bool ReadNumber(std::string_view text, std::uint64_t* number) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), *number);
  return error == std::errc() && end == text.data() + text.size();
}

bool TakeLine(OutgoingForm* form, std::string_view line) {
  const std::size_t colon = line.find(':');
  if (colon == std::string_view::npos || !IsToken(line.substr(0, colon))) return false;
  const std::string_view value = Trimmed(line.substr(colon + 1));
  if (!IsPlainText(value)) return false;
  if (SameWithoutCase(line.substr(0, colon), "Content-Length")) {
    std::uint64_t length = 0;
    if (!ReadNumber(value, &length)) return false;
    form->declaredLength = length;
  } else {
    form->headers.push_back(std::string(line.substr(0, colon)) + ": " + std::string(value));
  }
  return true;
}

// Ends the line that has been gathered. False for one that is no header.
bool EndLine(OutgoingForm* form) {
  const std::string line = std::move(form->line);
  form->line.clear();
  std::string_view text = line;
  if (!text.empty() && text.back() == '\r') text.remove_suffix(1);
  form->inBody = text.empty();
  return form->inBody || TakeLine(form, text);
}

}  // namespace

std::uint32_t TakeBytes(OutgoingForm* form, std::string_view bytes) {
  std::uint32_t taken = 0;
  for (; !form->broken && !form->inBody && taken < bytes.size(); ++taken) {
    const char byte = bytes[taken];
    if (byte != '\n') form->line += byte;
    form->broken = ++form->headerBytes > kMostHeaderBytes || (byte == '\n' && !EndLine(form));
  }
  if (form->broken) return 0;
  const std::string_view body = bytes.substr(taken, kLargestBody - form->body.size());
  form->body += body;
  return taken + static_cast<std::uint32_t>(body.size());
}

std::string ProblemOf(const OutgoingForm& form) {
  if (form.broken || !form.inBody) {
    return "The form data does not begin with lines that a server understands.";
  }
  if (form.declaredLength && *form.declaredLength != form.body.size()) {
    return "The form data is not complete. Nothing was sent.";
  }
  return {};
}

}  // namespace quillon::link
