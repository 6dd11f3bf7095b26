#include "tests/breaker/outcome.h"

#include <algorithm>
#include <sstream>

#include "tests/end_to_end/process.h"

namespace quillon::test {
namespace {

constexpr int kDone = 0;
constexpr int kError = 2;
constexpr int kWarnings = 3;

ProcessResult Run(const std::vector<std::string>& arguments, int seconds) {
  std::vector<std::string> command = {"timeout", std::to_string(seconds), QUILLON_PROGRAM};
  command.insert(command.end(), arguments.begin(), arguments.end());
  return RunProcess(command);
}

std::string FirstLine(const std::string& text) { return text.substr(0, text.find('\n')); }

// Without what names the file, which differs from run to run.
std::string Message(const std::string& err, const std::string& file) {
  std::string line = FirstLine(err);
  const std::string start = "quillon: " + file + ": ";
  return line.rfind(start, 0) == 0 ? line.substr(start.size()) : line;
}

int WarningCount(const std::string& err) {
  int count = 0;
  std::istringstream lines(err);
  for (std::string line; std::getline(lines, line);) {
    count += line.find("warning: ") != std::string::npos ? 1 : 0;
  }
  return count;
}

// Lines of the checker that find fault with something other than the data of a stream.
std::string FaultBesidesData(const std::string& findings) {
  std::istringstream lines(findings);
  for (std::string line; std::getline(lines, line);) {
    const bool fault = line.rfind("WARNING", 0) == 0 || line.rfind("ERROR", 0) == 0;
    const bool data = line.find("decoding stream data") != std::string::npos ||
                      line.find("content stream") != std::string::npos ||
                      line.find("inflate") != std::string::npos ||
                      line.find("input stream is complete") != std::string::npos ||
                      line.find("content normalization") != std::string::npos ||
                      line.find("parse error while reading") != std::string::npos;
    if (fault && !data) return line;
  }
  return {};
}

Outcome Judge(const std::string& written, int warnings) {
  if (!HasTool("qpdf")) return {Verdict::kSound, warnings, {}};
  const ProcessResult check = RunProcess({"qpdf", "--check", written});
  if (check.status == kDone) return {Verdict::kSound, warnings, {}};
  const std::string fault = FaultBesidesData(check.err);
  if (fault.empty()) return {Verdict::kAsGood, warnings, {}};
  return {Verdict::kBad, warnings, "the checker: " + fault};
}

}  // namespace

Outcome OutcomeOf(const std::string& file, const std::string& field, int seconds) {
  const ProcessResult list = Run({"fields", file}, seconds);
  const bool listed = list.status == kDone || list.status == kWarnings;
  if (!listed && (list.status != kError || list.err.empty())) {
    return {Verdict::kBad, 0, "listing ended with " + std::to_string(list.status)};
  }
  const std::string written = file + ".written.pdf";
  std::filesystem::remove(written);
  const ProcessResult fill = Run({"fill", file, field + "=broken", "-o", written}, seconds);
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
