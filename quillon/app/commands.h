// The program's commands: what each takes from the command line, and what runs it. A command
// answers an ExitStatus and lets HostFailure out; main tells the user.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quillon::app {

struct FieldsArguments {
  std::string file;
  bool json = false;
};
int RunFields(const FieldsArguments& arguments);

struct FillArguments {
  std::string file;
  std::vector<std::string> assignments;  // NAME=VALUE
  std::string valuesFile;                // JSON, empty for none
  std::string output;                    // empty when in place
  bool inPlace = false;
  bool force = false;  // fill read-only fields too
};
int RunFill(const FillArguments& arguments);

struct RenderArguments {
  std::string file;
  std::uint32_t page = 1;  // counted from 1
  double dpi = 96;
  std::string output;
};
int RunRender(const RenderArguments& arguments);

enum class PagesAction { kInsert, kDelete, kExtract };
struct PagesArguments {
  PagesAction action = PagesAction::kInsert;
  std::string file;
  std::string other;                   // whose pages are inserted
  std::string range;                   // as page_range.h has it; of `other` when inserting
  std::optional<std::uint32_t> after;  // counted from 1, 0 for the front; none: the end
  std::string output;
};
int RunPages(const PagesArguments& arguments);

int RunPlugins();

}  // namespace quillon::app
