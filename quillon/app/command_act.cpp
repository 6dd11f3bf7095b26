// `quillon act`: sets off what a mouse sets off on a field, and writes what comes of it. The
// plug-ins perform the actions; this is the mouse.
#include <algorithm>
#include <utility>

#include "quillon/app/commands.h"
#include "quillon/app/console.h"
#include "quillon/app/field_listing.h"
#include "quillon/app/fill_plan.h"
#include "quillon/app/open_save_options.h"
#include "quillon/app/session.h"
#include "quillon/app/widget_action.h"
#include "quillon/core/operations.h"
#include "quillon/document/operations.h"
#include "quillon/viewer/action_run.h"
#include "quillon/viewer/deliveries.h"
#include "quillon/viewer/open_view.h"
#include "quillon/viewer/operations.h"

namespace quillon::app {
namespace {

FieldEntry FindField(DocHandle doc, const std::string& name) {
  std::vector<std::string> ignored;
  for (FieldEntry& field : ListFields(doc, &ignored)) {
    if (field.name == name) return std::move(field);
  }
  const std::string problem = ProblemWithName(doc, name);
  Fail(kErrorBadParameter,
       problem.empty() ? Printable(name) + ": the field is not in the field tree" : problem);
}

ActionHandle FindAction(const FieldEntry& field, const ActArguments& arguments) {
  const std::size_t count = field.widgets.size();
  if (arguments.widget > count) {
    Fail(kErrorBadParameter, Printable(field.name) + ": the field is shown in " +
                                 std::to_string(count) + (count == 1 ? " place" : " places"));
  }
  for (std::size_t i = 0; i < count; ++i) {
    if (arguments.widget != 0 && arguments.widget != i + 1) continue;
    const ActionHandle action = ActionOfWidget(field.widgets[i], arguments.trigger);
    if (action != nullptr) return action;
  }
  Fail(kErrorBadParameter,
       Printable(field.name) + ": it has no action for the trigger " + arguments.trigger);
}

std::string LineOf(ActionHandle action) {
  const char* type = core::NameFromAtom(document::ActionType(action));
  const std::string description = DescribeAction(action);
  return Printable(type) + (description.empty() ? "" : ": " + Printable(description)) + "\n";
}

std::string PassedOverText(Atom type) {
  return "nothing that is loaded performs actions of the type " +
         Printable(core::NameFromAtom(type));
}

// Answers whether anything was performed; what was not is told in `warnings`.
bool Perform(ActionHandle action, DocView view, bool tell, std::vector<std::string>* warnings) {
  const ActionRun run = RunActions(action, view, [tell](ActionHandle one) {
    if (tell) WriteStandardOutput(LineOf(one));
  });
  const DeliveryCount deliveries = DeliverWaitingData();
  if (deliveries.refused > 0) warnings->emplace_back("a server's answer could not be used");
  for (const Atom type : run.passedOver) warnings->push_back(PassedOverText(type));
  return run.performed > 0;
}

}  // namespace

int RunAct(const ActArguments& arguments) {
  const OpenedView opened(arguments.file);
  CheckFillable(opened.doc);
  const bool writes = !arguments.output.empty();
  if (writes) CheckSignatures(opened.doc, {arguments.append, arguments.force});
  CallForms(&FormsTable::LoadAllFields, opened.doc);
  const FieldEntry field = FindField(opened.doc, arguments.field);
  std::vector<std::string> warnings;
  const bool tell = arguments.output != kStandardStream;
  if (!Perform(FindAction(field, arguments), opened.view, tell, &warnings)) {
    for (const std::string& warning : warnings) PrintError(arguments.file, warning);
    PrintError(arguments.file, "nothing was performed");
    return kExitError;
  }
  if (writes) WriteDocument(opened.view, arguments.output, {arguments.append, arguments.force});
  return FinishDocument(arguments.file, opened.doc, warnings);
}

}  // namespace quillon::app
