#include "quillon/app/console.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>

#include "quillon/document/text_encoding.h"
#include "quillon/support/operations.h"

namespace quillon::app {
namespace {

constexpr auto kProgressDelay = std::chrono::milliseconds(500);
constexpr auto kProgressInterval = std::chrono::milliseconds(100);
constexpr std::size_t kStepsBetweenLooks = 256;  // at the clock
constexpr std::size_t kMostWarnings = 50;

void PrintMessage(std::string_view file, std::string_view kind, std::string_view what) {
  std::string line = "quillon: ";
  if (!file.empty()) line.append(file == "-" ? "standard input" : Printable(file)).append(": ");
  line.append(kind).append(what).append("\n");
  std::fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace

void PrintError(std::string_view file, std::string_view what) { PrintMessage(file, "", what); }

void PrintWarning(std::string_view file, std::string_view what) {
  PrintMessage(file, "warning: ", what);
}

ExitStatus FinishWith(std::string_view file, const std::vector<std::string>& warnings) {
  const std::size_t shown = std::min(warnings.size(), kMostWarnings);
  for (std::size_t i = 0; i < shown; ++i) PrintWarning(file, warnings[i]);
  if (shown < warnings.size()) {
    PrintWarning(file, "... and " + std::to_string(warnings.size() - shown) + " more");
  }
  return warnings.empty() ? kExitDone : kExitWarnings;
}

std::string DescribePlace(const std::string& what, std::uint32_t objectNumber,
                          std::int64_t offset) {
  std::string place;
  if (objectNumber != 0) place = "object " + std::to_string(objectNumber);
  if (offset != kNoOffset) {
    place += (place.empty() ? "byte " : ", byte ") + std::to_string(offset);
  }
  return place.empty() ? what : what + " (" + place + ")";
}

ExitStatus FailWith(std::string_view file, const std::vector<std::string>& problems,
                    std::string_view outcome) {
  for (const std::string& problem : problems) PrintError(file, problem);
  PrintError(file, outcome);
  return kExitError;
}

std::string Describe(const HostFailure& failure) {
  std::string what = failure.what();
  if (what.empty()) {
    // A plug-in's own error has its text with the host, which knows it by its code.
    char text[256];
    what = support::ErrorText(failure.code, text, sizeof text);
  }
  return DescribePlace(what, failure.objectNumber, failure.offset);
}

std::string Printable(std::string_view utf8) {
  static constexpr char kDigits[] = "0123456789abcdef";
  std::string text;
  text.reserve(utf8.size());
  for (std::size_t position = 0; position < utf8.size();) {
    const std::size_t start = position;
    const std::optional<char32_t> character = NextUtf8(utf8, &position);
    // C0, DEL and C1: a terminal may take any of them for a command.
    const bool control =
        !character || *character < 0x20 || (*character >= 0x7F && *character < 0xA0);
    if (!control) {
      text.append(utf8.substr(start, position - start));
    } else if (character == U'\n' || character == U'\r') {
      text += *character == U'\n' ? "\\n" : "\\r";
    } else if (character == U'\t') {
      text += "\\t";
    } else {
      const unsigned value =
          character ? static_cast<unsigned>(*character) : static_cast<unsigned char>(utf8[start]);
      text += "\\x";
      text += kDigits[value >> 4 & 0xF];
      text += kDigits[value & 0xF];
    }
  }
  return text;
}

bool IsUtf8(std::string_view utf8) {
  for (std::size_t position = 0; position < utf8.size();) {
    if (!NextUtf8(utf8, &position)) return false;
  }
  return true;
}

Progress::Progress(const char* jobName, std::size_t jobTotal)
    : job(jobName),
      total(jobTotal),
      terminal(isatty(STDERR_FILENO) != 0),
      next(std::chrono::steady_clock::now() + kProgressDelay) {}

Progress::~Progress() {
  if (shown) std::fputs("\r\033[K", stderr);
}

void Progress::Step() {
  if (++done % kStepsBetweenLooks != 0 || !terminal) return;
  const auto now = std::chrono::steady_clock::now();
  if (now < next) return;
  next = now + kProgressInterval;
  shown = true;
  std::fprintf(stderr, "\r%s: %zu of %zu", job, done, total);
  std::fflush(stderr);
}

}  // namespace quillon::app
