// `quillon import`: fills a form from files of values. Nothing is written unless all of it went in.
#include <utility>

#include "quillon/app/commands.h"
#include "quillon/app/console.h"
#include "quillon/app/data_format.h"
#include "quillon/app/fill_plan.h"
#include "quillon/app/open_save_options.h"
#include "quillon/app/records.h"
#include "quillon/app/session.h"
#include "quillon/app/value_watch.h"
#include "quillon/document/operations.h"
#include "quillon/objects/pdf_file.h"
#include "quillon/viewer/open_view.h"

namespace quillon::app {
namespace {

struct OpenData {
  explicit OpenData(std::string bytes)
      : doc(OpenPdfBytes(std::move(bytes), {.header = kFdfHeader, .password = {}}, nullptr)) {}
  ~OpenData() { ClosePdf(doc); }
  OpenData(const OpenData&) = delete;
  OpenData& operator=(const OpenData&) = delete;

  ObjectDoc doc;
};

void ImportFdf(DocHandle doc, std::string bytes, std::vector<std::string>* problems) {
  const OpenData data(std::move(bytes));
  const ValueWatch watch;
  try {
    CallForms(&FormsTable::ImportFDF, doc, data.doc);
  } catch (const HostFailure& failure) {
    const std::string where = watch.name[0] == '\0'
                                  ? "before the first field"
                                  : "at or after the field " + Printable(NameToUtf8(watch.name));
    problems->push_back("the import stopped " + where + ": " + Describe(failure));
  }
}

ValueInput RowOfValues(const std::string& csv) {
  ValueInput input;
  const RecordTable table = ReadRecords(csv, &input.problems);
  if (table.records.size() == 1) {
    input.values = ValuesOf(table, table.records.front());
  } else if (input.problems.empty()) {
    input.problems.push_back(
        "there are " + std::to_string(table.records.size()) +
        " rows of values, and one document (fill --records makes one of each)");
  }
  return input;
}

// What the files asked for and what became of it, to be told of after saving.
struct ImportedFills {
  std::vector<PlannedFill> fills;
  std::vector<std::string> warnings;
};

void ImportValues(DocHandle doc, const ValueInput& input, bool force, ImportedFills* imported,
                  std::vector<std::string>* problems) {
  FillPlan plan = PlanFills(doc, input, force);
  *problems = std::move(plan.problems);
  if (problems->empty()) *problems = SetValues(doc, plan.fills, &imported->warnings);
  for (PlannedFill& fill : plan.fills) imported->fills.push_back(std::move(fill));
}

std::vector<std::string> ImportFile(const ImportArguments& arguments, const std::string& file,
                                    DocHandle doc, ImportedFills* imported) {
  std::vector<std::string> problems;
  try {
    std::string bytes = ReadWhole(file);
    switch (FormatOfData(file, bytes)) {
      case DataFormat::kFdf:
        ImportFdf(doc, std::move(bytes), &problems);
        break;
      case DataFormat::kCsv:
        ImportValues(doc, RowOfValues(bytes), arguments.force, imported, &problems);
        break;
      default: {
        ValueInput input;
        AddValuesFile(file, bytes, &input);
        ImportValues(doc, input, arguments.force, imported, &problems);
      }
    }
  } catch (const HostFailure& failure) {
    problems.push_back(Describe(failure));
  }
  return problems;
}

int FailImport(const ImportArguments& arguments, DocHandle doc, const std::string& data,
               const std::vector<std::string>& problems) {
  for (const std::string& problem : problems) PrintError(data, problem);
  return FailDocument(arguments.file, doc, {});
}

}  // namespace

int RunImport(const ImportArguments& arguments) {
  const OpenedView opened(arguments.file);
  CheckFillable(opened.doc);
  CheckSignatures(opened.doc, {arguments.append, arguments.force});
  CallForms(&FormsTable::LoadAllFields, opened.doc);
  ImportedFills imported;
  for (const std::string& data : arguments.data) {
    const std::vector<std::string> problems = ImportFile(arguments, data, opened.doc, &imported);
    if (!problems.empty()) return FailImport(arguments, opened.doc, data, problems);
  }
  WriteDocument(opened.view, arguments.output, {arguments.append, arguments.force});
  WarnOfPasswords(imported.fills, &imported.warnings);
  return FinishDocument(arguments.file, opened.doc, imported.warnings);
}

}  // namespace quillon::app
