// `quillon export`: the values of a form in a file of their own.
#include "quillon/app/commands.h"
#include "quillon/app/console.h"
#include "quillon/app/data_format.h"
#include "quillon/app/fill_plan.h"
#include "quillon/app/form_inspection.h"
#include "quillon/app/session.h"

namespace quillon::app {
namespace {

std::string ValuesAs(DataFormat format, DocHandle doc, const std::string& output) {
  switch (format) {
    case DataFormat::kJson:
      return ValuesAsJson(doc);
    case DataFormat::kCsv:
      return ValuesAsCsv(doc);
    default:
      return ValuesAsFdf(doc, output == kStandardStream ? "" : output);
  }
}

}  // namespace

int RunExport(const ExportArguments& arguments) {
  const OpenedView opened(arguments.file);
  PermitReading(opened.doc);
  CheckHasForm(opened.doc);
  InspectForm(opened.doc);
  const DataFormat format =
      arguments.format.empty() ? FormatOfName(arguments.output) : FormatOfWord(arguments.format);
  const std::string bytes = ValuesAs(format, opened.doc, arguments.output);
  if (arguments.output == kStandardStream) {
    WriteStandardOutput(bytes);
  } else {
    WriteFileWhole(arguments.output, bytes);
  }
  return FinishDocument(arguments.file, opened.doc);
}

}  // namespace quillon::app
