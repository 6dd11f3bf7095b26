// Texts of error codes: the host's own failures explain themselves, plug-ins register theirs, and a
// table has the rest.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "quillon/core/raised.h"
#include "quillon/support/operations.h"

namespace quillon {
namespace {

struct KnownText {
  FailureCode code;
  const char* text;
};

constexpr KnownText kTexts[] = {
    {kErrorNone, "No error."},
    {kErrorNoMemory, "There is not enough memory."},
    {kErrorGeneral, "The operation could not be done."},
    {kErrorBadParameter, "The operation was asked for with something that does not fit."},
    {kErrorNotOffered, "This viewer does not offer that."},
    {kErrorTooManyNames, "There are too many different names."},
    {kErrorBadHeader, "The file is not of the kind that was expected."},
    {kErrorBadObject, "An object in the document is not what it must be."},
    {kErrorBadFile, "The file is damaged and cannot be read."},
    {kErrorFieldExists, "A field of that name exists already."},
    {kErrorBadStructure, "The form lacks an entry that it must have, such as its fonts (DR)."},
    {kErrorBadStream, "The data of a stream in the document is damaged."},
    {kErrorOpenDocument, "The document cannot be opened."},
    {kErrorPassword, "The document needs a password, or the one given is wrong."},
    {kErrorEncoding, "The text has characters that the document's encoding does not hold."},
    {kErrorOpenFile, "The file cannot be opened."},
    {kErrorReadFile, "The file cannot be read."},
    {kErrorWriteFile, "The file cannot be written."},
};

// Their codes follow one another from kErrorFirstRegistered on. Kept for the life of the process:
// a code that a plug-in remembers never gets another meaning.
std::vector<std::string>& RegisteredTexts() {
  static std::vector<std::string> texts;
  return texts;
}

std::string TextOf(FailureCode code) {
  const std::int64_t registered = std::int64_t{code} - kErrorFirstRegistered;
  if (registered >= 0 && registered < static_cast<std::int64_t>(RegisteredTexts().size())) {
    return RegisteredTexts()[static_cast<std::size_t>(registered)];
  }
  const HostFailure* failure = RememberedFailure(code);
  if (failure != nullptr && failure->what()[0] != '\0') return failure->what();
  for (const KnownText& known : kTexts) {
    if (known.code == code) return known.text;
  }
  char text[32];
  std::snprintf(text, sizeof text, "Error 0x%08x.", static_cast<unsigned>(code));
  return text;
}

}  // namespace

namespace support {

FailureCode RegisterErrorString(std::uint16_t /*severity*/, const char* text) {
  if (text == nullptr) Fail(kErrorBadParameter, "the text of an error is missing");
  std::vector<std::string>& texts = RegisteredTexts();
  const auto place = std::find(texts.begin(), texts.end(), text);
  const auto index = place - texts.begin();
  if (place == texts.end()) texts.emplace_back(text);
  return static_cast<FailureCode>(kErrorFirstRegistered + index);
}

char* ErrorText(FailureCode code, char* buffer, std::uint32_t size) {
  if (buffer == nullptr || size == 0) return buffer;
  const std::string text = TextOf(code);
  const std::size_t length = std::min<std::size_t>(text.size(), size - 1);
  std::memcpy(buffer, text.data(), length);
  buffer[length] = '\0';
  return buffer;
}

}  // namespace support
}  // namespace quillon
