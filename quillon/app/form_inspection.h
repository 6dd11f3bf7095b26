// Walking a form's field tree as the file has it, whatever plug-ins make of it.
#pragma once

#include <functional>
#include <string>

#include "sdk/types.h"

namespace quillon::app {

struct VisitedField {
  ObjectHandle dict;
  std::string name;  // full, UTF-8; that of the field above for one without a name of its own
  bool signature;    // by its own type or an inherited one
};

// Visits each field of the form once, parents first. What is wrong with the tree becomes warnings
// of the document.
void WalkForm(DocHandle doc, const std::function<void(const VisitedField& field)>& visit);

// For those warnings alone.
void InspectForm(DocHandle doc);

}  // namespace quillon::app
