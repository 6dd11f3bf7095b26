// Setting fields to the values that a user gives: all of them are checked before the first is set.
#pragma once

#include <string>
#include <vector>

#include "quillon/app/field_conversion.h"
#include "quillon/app/field_values_input.h"

namespace quillon::app {

struct PlannedFill {
  std::string name;
  FieldNode node;
  ObjectHandle dict;
  FieldKind kind;
  bool password;
  FieldValue value;
};

struct FillPlan {
  std::vector<PlannedFill> fills;
  std::vector<std::string> problems;  // a sentence each, with the name of the field
};

// Throw HostFailure when the document has no form; the second also when it may not be filled. It
// makes sure that the form has fonts (form_fonts.h).
void CheckHasForm(DocHandle doc);
void CheckFillable(DocHandle doc);

// Looks every name up and converts every value, and changes nothing. `force` takes read-only fields
// too. The document's fields are loaded before.
FillPlan PlanFills(DocHandle doc, const ValueInput& input, bool force);

// Why no value can be given to a field of this name; empty when one can.
std::string ProblemWithName(DocHandle doc, const std::string& name);

// What went wrong, a sentence each; the other fields are set all the same. Plug-ins may put other
// values in the place of those given: when nothing went wrong, `warnings` tells which fields hold
// another one in the end.
std::vector<std::string> SetValues(DocHandle doc, const std::vector<PlannedFill>& fills,
                                   std::vector<std::string>* warnings);

// Call it after PrepareSave.
void WarnOfPasswords(const std::vector<PlannedFill>& fills, std::vector<std::string>* warnings);

}  // namespace quillon::app
