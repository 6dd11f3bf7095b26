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
  std::string output;                    // empty when in place; with records, a pattern of names
  std::string records;                   // CSV, one document a row; empty for one document
  unsigned jobs = 0;                     // processes that fill records; 0: one a processor
  bool inPlace = false;
  bool force = false;   // fill read-only fields too, and write signed documents anew
  bool append = false;  // write the changes behind the file's own bytes
};
int RunFill(const FillArguments& arguments);
int RunFillRecords(const FillArguments& arguments);

struct ExportArguments {
  std::string file;
  std::string output;
  std::string format;  // fdf, json or csv; empty: by the ending of the output's name
};
int RunExport(const ExportArguments& arguments);

struct ImportArguments {
  std::string file;
  std::vector<std::string> data;  // files, in the order in which they are imported
  std::string output;
  bool force = false;   // JSON and CSV fill read-only fields too; write signed documents anew
  bool append = false;  // as in FillArguments
};
int RunImport(const ImportArguments& arguments);

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
  bool force = false;   // write signed documents anew
  bool append = false;  // as in FillArguments
};
int RunPages(const PagesArguments& arguments);

struct SubmitArguments {
  std::string url;
  std::string button;                    // the full name of the field
  std::vector<std::string> assignments;  // NAME=VALUE
  std::string output;
  std::uint32_t timeLimit = 0;  // of one request, in seconds; 0: what is usual
  bool verbose = false;         // tell each address before it is used
  bool force = false;           // write signed documents anew
  bool append = false;          // as in FillArguments
};
int RunSubmit(const SubmitArguments& arguments);

struct ActArguments {
  std::string file;
  std::string field;          // its full name
  std::string trigger = "U";  // the key of an additional action
  std::uint32_t widget = 0;   // counted from 1; 0: the first one that has such an action
  std::string output;         // empty: nothing is written
  bool force = false;         // write signed documents anew
  bool append = false;        // as in FillArguments
};
int RunAct(const ActArguments& arguments);

struct ResetArguments {
  std::string file;
  std::vector<std::string> names;  // full names of fields or of groups of them; none: all fields
  std::string output;
  bool force = false;   // write signed documents anew
  bool append = false;  // as in FillArguments
};
int RunReset(const ResetArguments& arguments);

int RunPlugins();

}  // namespace quillon::app
