// The dialogs with which people set up actions.
#pragma once

#include <string>

#include "plugin/host/host.h"

namespace quillform {

// What the dialogs are given and change. `fields` is an array of field dictionaries and names, or
// the null object; a new array is a direct object that nothing refers to.
struct SubmitSettings {
  std::string url;  // bytes as in the file; kUrlSize - 1 at most
  ObjectHandle fields;
  bool exclusion;  // the list names the fields that are left out; no list: all fields are sent
  bool includeEmpty;
  bool urlEncoded;
};
struct ResetSettings {
  ObjectHandle fields;
  bool exclusion;
};
struct HideSettings {
  std::string name;  // a field's full name, in the document's encoding
  bool hide;
};

inline constexpr std::uint32_t kUrlSize = 257;

// Each answers whether the user has confirmed; only then is what it was given looked at again. They
// are null as long as there are no such dialogs, which counts as a user who cancels.
struct ActionDialogs {
  bool (*EditSubmit)(DocView view, SubmitSettings* settings);
  bool (*EditReset)(DocView view, ResetSettings* settings);
  bool (*EditHide)(DocView view, HideSettings* settings);
  void (*EditPageActions)(DocView view, std::uint32_t page);
};
extern ActionDialogs actionDialogs;

}  // namespace quillform
