#include "tests/breaker/outcome.h"

#include <algorithm>
#include <sstream>

#include "tests/end_to_end/process.h"

namespace quillon::test {
namespace {

constexpr int kDone = 0;
constexpr int kError = 2;
constexpr int kWarnings = 3;

ProcessResult Run(const std::vector<std::string>& arguments) {
  std::vector<std::string> command = {"timeout", "120", QUILLON_PROGRAM};
  command.insert(command.end(), arguments.begin(), arguments.end());
  return RunProcess(command);
}

// Without what names the file, which differs from run to run.
std::string Message(const std::string& err, const std::string& file) {
  std::string line = err.substr(0, err.find('\n'));
  const std::string start = "quillon: " + file + ": ";
  return line.starts_with(start) ? line.substr(start.size()) : line;
}

int WarningCount(const std::string& err) {
  int count = 0;
  for (std::size_t at = 0; (at = err.find("warning: ", at)) != std::string::npos; ++at) ++count;
  return count;
}

// What the checker says of the data of a stream.
constexpr const char* kAboutData[] = {
    "decoding stream data",     "content stream",        "inflate",
    "input stream is complete", "content normalization", "parse error while reading"};

// A line of the checker that finds fault with something else.
std::string FaultBesidesData(const std::string& findings) {
  std::istringstream lines(findings);
  for (std::string line; std::getline(lines, line);) {
    const bool fault = line.starts_with("WARNING") || line.starts_with("ERROR");
    const bool data =
        std::any_of(std::begin(kAboutData), std::end(kAboutData),
                    [&](const char* text) { return line.find(text) != std::string::npos; });
    if (fault && !data) return line;
  }
  return {};
}

Outcome Judge(const std::string& written, int warnings) {
  if (!HasTool("qpdf")) return {Verdict::kSound, warnings, {}};
  const ProcessResult check = RunProcess({"qpdf", "--check", written});
  if (check.status == kDone) return {Verdict::kSound, warnings, {}};
  const std::string fault = FaultBesidesData(check.err);
  return {fault.empty() ? Verdict::kAsGood : Verdict::kBad, warnings, fault};
}

}  // namespace

Outcome OutcomeOf(const std::string& file, const std::string& field) {
  const ProcessResult list = Run({"fields", file});
  const bool listed = list.status == kDone || list.status == kWarnings;
  if (!listed && (list.status != kError || list.err.empty())) {
    return {Verdict::kBad, 0, "listing ended with " + std::to_string(list.status)};
  }
  const std::string written = file + ".written.pdf";
  std::filesystem::remove(written);
  const ProcessResult fill = Run({"fill", file, field + "=broken", "-o", written});
  const bool exists = std::filesystem::exists(written);
  if (fill.status == kError && !fill.err.empty() && !exists) {
    return {Verdict::kError, 0, Message(fill.err, file)};
  }
  if ((fill.status != kDone && fill.status != kWarnings) || !exists) {
    return {Verdict::kBad, 0, "filling ended with " + std::to_string(fill.status)};
  }
  if ((fill.status == kWarnings) != (WarningCount(fill.err) > 0)) {
    return {Verdict::kBad, 0, "the status does not tell of the warnings"};
  }
  return Judge(written, WarningCount(fill.err));
}

}  // namespace quillon::test
