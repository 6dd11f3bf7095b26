// `quillon fill`: everything is checked before anything is changed, and nothing is written unless
// every value was taken.
#include <memory>
#include <utility>

#include "quillon/app/commands.h"
#include "quillon/app/console.h"
#include "quillon/app/fill_plan.h"
#include "quillon/app/form_keys.h"
#include "quillon/app/forms_client.h"
#include "quillon/app/open_save_options.h"
#include "quillon/app/session.h"
#include "quillon/document/object_reading.h"
#include "quillon/document/operations.h"
#include "quillon/objects/operations.h"
#include "quillon/viewer/open_view.h"

namespace quillon::app {
namespace {

// A second description of the form in XML, which other programs may show in its place.
bool HasXmlForm(DocHandle doc) {
  const ObjectHandle catalog = objects::DocRoot(document::ObjectDocOf(doc));
  const ObjectHandle form = objects::DictGet(catalog, Keys().QuillForm);
  return !document::IsNull(document::EntryOf(form, Keys().XFA));
}

ValueInput ReadInput(const FillArguments& arguments) {
  ValueInput input;
  if (!arguments.valuesFile.empty()) {
    try {
      AddValuesFile(arguments.valuesFile, ReadWhole(arguments.valuesFile), &input);
    } catch (const HostFailure& failure) {
      input.problems.push_back(arguments.valuesFile + ": " + Describe(failure));
    }
  }
  AddAssignments(arguments.assignments, &input);
  if (input.values.empty() && input.problems.empty()) {
    input.problems.emplace_back("no values are given");
  }
  return input;
}

// What is wrong with the values is told even when the document is of no use.
std::unique_ptr<OpenedView> OpenToFill(const std::string& file, const ValueInput& input) {
  try {
    auto opened = std::make_unique<OpenedView>(file);
    CheckFillable(opened->doc);
    return opened;
  } catch (const HostFailure&) {
    for (const std::string& problem : input.problems) PrintError(file, problem);
    throw;
  }
}

}  // namespace

int RunFill(const FillArguments& arguments) {
  if (!arguments.records.empty()) return RunFillRecords(arguments);
  const ValueInput input = ReadInput(arguments);
  const std::unique_ptr<OpenedView> view = OpenToFill(arguments.file, input);
  const OpenedView& opened = *view;
  if (arguments.inPlace && opened.throughData) {
    return FailWith(arguments.file, {"this is form data, which the form cannot replace; use -o"});
  }
  CheckSignatures(opened.doc, {arguments.append, arguments.force});
  CallForms(&FormsTable::LoadAllFields, opened.doc);
  const FillPlan plan = PlanFills(opened.doc, input, arguments.force);
  if (!plan.problems.empty()) return FailDocument(arguments.file, opened.doc, plan.problems);
  std::vector<std::string> warnings;
  const std::vector<std::string> refused = SetValues(opened.doc, plan.fills, &warnings);
  if (!refused.empty()) return FailDocument(arguments.file, opened.doc, refused);
  WriteDocument(opened.view, arguments.inPlace ? arguments.file : arguments.output,
                {arguments.append, arguments.force});
  WarnOfPasswords(plan.fills, &warnings);
  if (HasXmlForm(opened.doc)) {
    warnings.emplace_back(
        "the form is also described in XML (XFA), which still has the old values");
  }
  return FinishDocument(arguments.file, opened.doc, warnings);
}

}  // namespace quillon::app
