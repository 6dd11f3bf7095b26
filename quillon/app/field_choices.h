// What the fields that do not take any text can be set to: states of buttons, options of lists.
#pragma once

#include <string>
#include <vector>

#include "quillon/app/forms_client.h"

namespace quillon::app {

// A state other than Off of a check box or radio button.
struct OnState {
  std::string text;  // UTF-8
  Atom name;
};

// Of all widgets of the field, in file order, each once: the keys of their normal appearances
// (ISO 32000-1, 12.7.4.2.3). `dict` is the field's dictionary or that of one of its widgets.
std::vector<OnState> OnStatesOf(ObjectHandle dict);

// Adds those of one widget that are not among the states yet.
void AddOnStatesOfWidget(ObjectHandle widget, std::vector<OnState>* states);

// An option of a choice field. Both texts are the same when the file gives only one.
struct ChoiceOption {
  std::string bytes;  // the export form as it stands in the file, which is what a value is
  std::string exported;
  std::string display;
};
std::vector<ChoiceOption> ChoiceOptionsOf(ObjectHandle dict);

// The text of a name in a file, as UTF-8.
std::string TextOfName(Atom name);

}  // namespace quillon::app
