// The tool `breaker`: damages a file in one of many ways, or damages files in all of them and
// prints what the program makes of each.
#include <algorithm>
#include <cstdio>
#include <cstring>

#include "tests/breaker/outcome.h"
#include "tests/breaker/ways.h"
#include "tests/end_to_end/process.h"

namespace quillon::test {
namespace {

int Usage() {
  std::fputs(
      "breaker list                       the ways\n"
      "breaker damage WAY FILE OUTPUT     damages a copy of FILE\n"
      "breaker table FIELD FILE...        what the program makes of damaged FILEs, as a table\n",
      stderr);
  return 2;
}

int List() {
  for (const DamageWay& way : DamageWays()) std::printf("%-22s %s\n", way.name, way.what);
  return 0;
}

int DamageOne(const char* name, const char* from, const char* to) {
  for (const DamageWay& way : DamageWays()) {
    if (std::strcmp(way.name, name) != 0) continue;
    std::string file = ReadFile(from);
    if (!way.damage(&file)) {
      std::fprintf(stderr, "breaker: the file has nothing to damage in this way\n");
      return 2;
    }
    WriteFile(to, file);
    return 0;
  }
  std::fprintf(stderr, "breaker: there is no way of this name (breaker list)\n");
  return 2;
}

std::string Text(const Outcome& outcome) {
  const std::string count = std::to_string(outcome.warnings);
  const std::string told = outcome.warnings == 0
                               ? ""
                               : ", " + count + (outcome.warnings == 1 ? " warning" : " warnings");
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
  const TempFolder folder;
  for (const DamageWay& way : DamageWays()) {
    std::printf("| %s | %s |", way.name, way.what);
    for (const std::string& file : files) {
      std::string bytes = ReadFile(file);
      if (!way.damage(&bytes)) {
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
  if (arguments.empty()) return Usage();
  if (arguments[0] == "list") return List();
  if (arguments[0] == "damage" && arguments.size() == 4) {
    return DamageOne(arguments[1].c_str(), arguments[2].c_str(), arguments[3].c_str());
  }
  if (arguments[0] != "table" || arguments.size() < 3) return Usage();
  return Table(arguments[1], {arguments.begin() + 2, arguments.end()});
}

}  // namespace
}  // namespace quillon::test

int main(int argc, char** argv) { return quillon::test::Run({argv + 1, argv + argc}); }
