// `quillon reset`: gives fields the values that the form has for them from the start.
#include <utility>

#include "quillon/app/commands.h"
#include "quillon/app/console.h"
#include "quillon/app/field_listing.h"
#include "quillon/app/fill_plan.h"
#include "quillon/app/open_save_options.h"
#include "quillon/app/session.h"
#include "quillon/app/value_watch.h"

namespace quillon::app {
namespace {

bool IsNamedBy(const std::string& field, const std::string& name) {
  return field.starts_with(name) && (field.size() == name.size() || field[name.size()] == '.');
}

// The fields of that name, or in the group of that name; of no name, all. Fields without a kind
// that takes values, signatures above all, are left alone.
std::vector<FieldEntry> FieldsNamed(const std::vector<FieldEntry>& fields,
                                    const std::vector<std::string>& names,
                                    std::vector<bool>* found) {
  std::vector<FieldEntry> named;
  found->assign(names.size(), false);
  for (const FieldEntry& field : fields) {
    bool wanted = names.empty();
    for (std::size_t i = 0; i < names.size(); ++i) {
      if (!IsNamedBy(field.name, names[i])) continue;
      wanted = true;
      (*found)[i] = true;
    }
    if (wanted && field.kind != FieldKind::kOther) named.push_back(field);
  }
  return named;
}

std::vector<std::string> ResetEach(const std::vector<FieldEntry>& fields) {
  std::vector<std::string> problems;
  const ValueWatch watch;
  Progress progress("resetting fields", fields.size());
  for (const FieldEntry& field : fields) {
    try {
      CallForms(&FormsTable::ResetFieldValue, field.node);
      if (WasRefused(watch, field.node)) {
        problems.push_back(Printable(field.name) + ": a plug-in did not let it be reset");
      }
    } catch (const HostFailure& failure) {
      problems.push_back(Printable(field.name) + ": " + Describe(failure));
    }
    progress.Step();
  }
  return problems;
}

}  // namespace

int RunReset(const ResetArguments& arguments) {
  const OpenedView opened(arguments.file);
  CheckFillable(opened.doc);
  CheckSignatures(opened.doc, {arguments.append, arguments.force});
  CallForms(&FormsTable::LoadAllFields, opened.doc);
  std::vector<std::string> ignored;
  const std::vector<FieldEntry> all = ListFields(opened.doc, &ignored);
  std::vector<bool> found;
  const std::vector<FieldEntry> fields = FieldsNamed(all, arguments.names, &found);
  std::vector<std::string> problems;
  for (std::size_t i = 0; i < found.size(); ++i) {
    if (!found[i]) problems.push_back(ProblemWithName(opened.doc, arguments.names[i]));
  }
  if (problems.empty()) problems = ResetEach(fields);
  if (!problems.empty()) return FailDocument(arguments.file, opened.doc, problems);
  WriteDocument(opened.view, arguments.output, {arguments.append, arguments.force});
  return FinishDocument(arguments.file, opened.doc);
}

}  // namespace quillon::app
