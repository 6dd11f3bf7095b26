// Walking a form's field tree as the file has it, whatever plug-ins make of it.
#pragma once

#include <functional>
#include <string>

#include "sdk/types.h"

namespace quillon::app {

struct VisitedField {
  ObjectHandle dict;
  bool signature;             // by its own type or an inherited one
  const VisitedField* above;  // the field that lists it, null at the top; as long as the walk lasts
};

// Its full name, UTF-8, with nothing for a field that has no name of its own. Empty when it is
// longer than names of fields can be.
std::string FullNameOf(const VisitedField& field);

// Visits each field of the form once, parents first. What is wrong with the tree becomes warnings
// of the document.
void WalkForm(DocHandle doc, const std::function<void(const VisitedField& field)>& visit);

// For those warnings alone.
void InspectForm(DocHandle doc);

}  // namespace quillon::app
