// `quillon fill --records`: a filled document for each row of a table. Rows do not depend on each
// other: what is wrong with one keeps none of the others from being written.
#include <algorithm>
#include <filesystem>
#include <system_error>
#include <thread>
#include <unordered_map>

#include "quillon/app/commands.h"
#include "quillon/app/console.h"
#include "quillon/app/fill_plan.h"
#include "quillon/app/open_save_options.h"
#include "quillon/app/output_names.h"
#include "quillon/app/records.h"
#include "quillon/app/session.h"
#include "quillon/app/worker_processes.h"
#include "quillon/objects/replace_file.h"
#include "quillon/viewer/open_view.h"

namespace quillon::app {
namespace {

struct Batch {
  const FillArguments& arguments;
  std::string form;  // the document's bytes
  RecordTable table;
  std::vector<std::string> names;         // of the outputs; empty for a row without one
  std::vector<std::string> nameProblems;  // why there is none
  std::vector<bool> isField;              // by column; the others only name outputs
};

// What a process tells of a row: lines that begin with one of these.
constexpr char kProblem = '!';  // the row was not written
constexpr char kWarning = '?';

std::vector<std::string> FillRow(const Batch& batch, std::size_t row,
                                 std::vector<std::string>* warnings) {
  if (batch.names[row].empty()) return {batch.nameProblems[row]};
  const OpenedView opened(OpenDocumentBytes(batch.form, OptionsForOpening()));
  CallForms(&FormsTable::LoadAllFields, opened.doc);
  ValueInput input;
  std::vector<GivenValue> values = ValuesOf(batch.table, batch.table.records[row]);
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (batch.isField[i]) input.values.push_back(std::move(values[i]));
  }
  const FillPlan plan = PlanFills(opened.doc, input, batch.arguments.force);
  if (!plan.problems.empty()) return plan.problems;
  std::vector<std::string> problems = SetValues(opened.doc, plan.fills, warnings);
  if (!problems.empty()) return problems;
  PrepareWriting(opened.view, {batch.arguments.append, batch.arguments.force});
  const std::string bytes = DocumentToBytes(opened.doc, SaveOptions{batch.arguments.append});
  // The table is still there should the power fail.
  objects::ReplaceFile(
      batch.names[row], [&bytes](const objects::TakeBytes& take) { take(bytes); },
      objects::Flushing::kLeftToSystem);
  return {};
}

std::string LinesOf(char kind, const std::vector<std::string>& texts) {
  std::string lines;
  for (const std::string& text : texts) lines += kind + text + '\n';
  return lines;
}

std::string ReportOfRow(const Batch& batch, std::size_t row) {
  try {
    std::vector<std::string> warnings;
    const std::vector<std::string> problems = FillRow(batch, row, &warnings);
    return problems.empty() ? LinesOf(kWarning, warnings) : LinesOf(kProblem, problems);
  } catch (const HostFailure& failure) {
    return LinesOf(kProblem, {Describe(failure)});
  } catch (const std::bad_alloc&) {
    return LinesOf(kProblem, {"there is not enough memory"});
  }
}

// A column that is no field may name outputs; otherwise it is a mistake in every row.
void CheckColumns(const NamePattern& pattern, DocHandle doc, Batch* batch,
                  std::vector<std::string>* problems) {
  for (std::size_t i = 0; i < batch->table.columns.size(); ++i) {
    std::string problem = ProblemWithName(doc, batch->table.columns[i]);
    batch->isField.push_back(problem.empty());
    if (!problem.empty() && !UsesColumn(pattern, i)) problems->push_back(std::move(problem));
  }
}

void NameOutputs(const NamePattern& pattern, Batch* batch) {
  std::unordered_map<std::string, std::size_t> rowOf;
  for (std::size_t row = 0; row < batch->table.records.size(); ++row) {
    std::string problem;
    std::string name = NameFor(pattern, batch->table, row, &problem).value_or("");
    const auto [place, isNew] = rowOf.try_emplace(name, row);
    if (!name.empty() && !isNew) {
      problem = "the output " + Printable(name) + " is that of row " +
                std::to_string(place->second + 1) + " already";
      name.clear();
    }
    batch->names.push_back(std::move(name));
    batch->nameProblems.push_back(std::move(problem));
  }
}

void MakeFolders(const std::vector<std::string>& files) {
  std::string last;
  for (const std::string& file : files) {
    const std::string folder = std::filesystem::path(file).parent_path().string();
    if (folder.empty() || folder == last) continue;
    // What goes wrong shows when the file is written.
    std::error_code ignored;
    std::filesystem::create_directories(folder, ignored);
    last = folder;
  }
}

struct RowCount {
  std::size_t failed = 0;  // were not written
  std::size_t warned = 0;  // were written, and deserve a look
};

RowCount PrintResults(const Batch& batch, const std::vector<WorkResult>& results) {
  RowCount count;
  for (std::size_t row = 0; row < results.size(); ++row) {
    const std::string report = results[row].done
                                   ? results[row].report
                                   : LinesOf(kProblem, {"the process that filled it ended"});
    if (report.empty()) continue;
    const bool failed = report.front() == kProblem;
    ++(failed ? count.failed : count.warned);
    const std::string place = "row " + std::to_string(row + 1) + " (line " +
                              std::to_string(batch.table.records[row].line) + "): ";
    for (std::size_t start = 0; start < report.size();) {
      const std::size_t end = report.find('\n', start);
      const std::string text = place + report.substr(start + 1, end - start - 1);
      (failed ? PrintError : PrintWarning)(batch.arguments.records, text);
      start = end + 1;
    }
  }
  return count;
}

unsigned JobCount(unsigned asked) {
  return asked != 0 ? asked : std::max(1u, std::thread::hardware_concurrency());
}

}  // namespace

int RunFillRecords(const FillArguments& arguments) {
  std::vector<std::string> problems;
  Batch batch{arguments, {}, ReadRecords(ReadWhole(arguments.records), &problems), {}, {}, {}};
  if (!problems.empty()) return FailWith(arguments.records, problems);
  std::string problem;
  const auto pattern = ParsePattern(arguments.output, batch.table.columns, &problem);
  if (!pattern) return FailWith(arguments.records, {problem});

  batch.form = ReadWhole(arguments.file);
  std::vector<std::string> warnings;
  {
    const OpenedView opened(OpenDocumentBytes(batch.form, OptionsForOpening()));
    CheckFillable(opened.doc);
    CheckSignatures(opened.doc, {arguments.append, arguments.force});
    CallForms(&FormsTable::LoadAllFields, opened.doc);
    CheckColumns(*pattern, opened.doc, &batch, &problems);
    warnings = FileWarnings(opened.doc);
  }
  if (!problems.empty()) return FailWith(arguments.records, problems);
  NameOutputs(*pattern, &batch);
  MakeFolders(batch.names);

  const std::size_t count = batch.table.records.size();
  std::vector<WorkResult> results;
  {
    Progress progress("filling documents", count);
    results = WorkInProcesses(
        count, JobCount(arguments.jobs),
        [&batch](std::size_t row) { return ReportOfRow(batch, row); },
        [&progress] { progress.Step(); });
  }
  const RowCount rows = PrintResults(batch, results);
  if (rows.failed > 0) {
    PrintError(arguments.records, std::to_string(rows.failed) + " of " + std::to_string(count) +
                                      " rows were not written");
  }
  const int status = FinishWith(arguments.file, warnings);
  if (rows.failed > 0 && rows.failed == count) return kExitError;
  return rows.failed + rows.warned > 0 ? kExitWarnings : status;
}

}  // namespace quillon::app
