// The tool `breaker`: damages a file in one of many ways, or damages files in all of them and
// prints what the program makes of each.
#include <cstdio>

#include "tests/breaker/outcome.h"
#include "tests/breaker/ways.h"
#include "tests/end_to_end/process.h"

namespace quillon::test {
namespace {

int Usage() {
  std::fputs(
      "breaker damage WAY FILE OUTPUT     damages a copy of FILE\n"
      "breaker table FIELD FILE...        what the program makes of damaged FILEs, as a table\n",
      stderr);
  return 2;
}

int DamageOne(const std::string& name, const std::string& from, const std::string& to) {
  for (const DamageWay& way : DamageWays()) {
    std::string file = ReadFile(from);
    if (name != way.name || !way.damage(file)) continue;
    WriteFile(to, file);
    return 0;
  }
  std::fprintf(stderr, "breaker: there is no such way, or nothing to damage in it\n");
  return 2;
}

std::string Text(const Outcome& outcome) {
  std::string told;
  if (outcome.warnings != 0) told = ", " + std::to_string(outcome.warnings) + " warning";
  if (outcome.warnings > 1) told += "s";
  switch (outcome.verdict) {
    case Verdict::kSound:
      return "sound" + told;
    case Verdict::kAsGood:
      return "sound but for the data" + told;
    case Verdict::kError:
      return "error: " + outcome.text;
    default:
      return "BAD: " + outcome.text;
  }
}

int Table(const std::string& field, const std::vector<std::string>& files) {
  std::printf("| way | what is done |");
  for (const std::string& file : files) {
    std::printf(" %s |", std::filesystem::path(file).stem().string().c_str());
  }
  std::printf("\n|---|---|");
  for (std::size_t i = 0; i < files.size(); ++i) std::printf("---|");
  std::printf("\n");
  bool bad = false;
  const TemporaryFolder folder;
  for (const DamageWay& way : DamageWays()) {
    std::printf("| %s | %s |", way.name, way.what);
    for (const std::string& file : files) {
      std::string bytes = ReadFile(file);
      if (!way.damage(bytes)) {
        std::printf(" - |");
        continue;
      }
      const std::string damaged = folder.File("damaged.pdf");
      WriteFile(damaged, bytes);
      const Outcome outcome = OutcomeOf(damaged, field);
      bad = bad || outcome.verdict == Verdict::kBad;
      std::printf(" %s |", Text(outcome).c_str());
      std::fflush(stdout);
    }
    std::printf("\n");
  }
  return bad ? 1 : 0;
}

int Run(const std::vector<std::string>& arguments) {
  const std::string command = arguments.empty() ? "" : arguments[0];
  if (command == "damage" && arguments.size() == 4) {
    return DamageOne(arguments[1], arguments[2], arguments[3]);
  }
  if (command != "table" || arguments.size() < 3) return Usage();
  return Table(arguments[1], {arguments.begin() + 2, arguments.end()});
}

}  // namespace
}  // namespace quillon::test

int main(int argc, char** argv) { return quillon::test::Run({argv + 1, argv + argc}); }
