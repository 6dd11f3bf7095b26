#include "quillon/app/field_choices.h"

#include <algorithm>

#include "quillon/app/console.h"
#include "quillon/app/form_keys.h"
#include "quillon/core/operations.h"
#include "quillon/document/object_reading.h"
#include "quillon/document/text_encoding.h"
#include "quillon/objects/operations.h"

namespace quillon::app {
namespace {

using document::EntryOf;
using document::IsKind;

// Widgets stand right below their field; what goes deeper, or up further, is damaged.
constexpr int kMaxLevels = 8;

// The dictionary that has the field's name: widgets below it have none.
ObjectHandle NamedDict(ObjectHandle dict) {
  for (int level = 0; level < kMaxLevels; ++level) {
    const ObjectHandle parent = EntryOf(dict, Keys().Parent);
    if (objects::DictKnown(dict, Keys().T) != 0 || !IsKind(parent, ObjectKind::kDict)) break;
    dict = parent;
  }
  return dict;
}

Boolean AddState(ObjectHandle key, ObjectHandle, void* clientData) {
  auto* states = static_cast<std::vector<OnState>*>(clientData);
  const Atom name = objects::NameValue(key);
  const bool known = std::any_of(states->begin(), states->end(),
                                 [name](const OnState& state) { return state.name == name; });
  if (name != Keys().Off && !known) states->push_back({TextOfName(name), name});
  return 1;
}

void AddStates(ObjectHandle dict, int level, std::vector<OnState>* states) {
  AddOnStatesOfWidget(dict, states);
  const ObjectHandle kids = EntryOf(dict, Keys().Kids);
  if (level == kMaxLevels || !IsKind(kids, ObjectKind::kArray)) return;
  for (std::uint32_t i = 0; i < objects::ArrayLength(kids); ++i) {
    AddStates(objects::ArrayGet(kids, i), level + 1, states);
  }
}

std::string BytesOfText(ObjectHandle text) {
  return IsKind(text, ObjectKind::kString) ? document::BytesOf(text) : std::string();
}

}  // namespace

void AddOnStatesOfWidget(ObjectHandle widget, std::vector<OnState>* states) {
  const ObjectHandle normal = EntryOf(EntryOf(widget, Keys().AP), Keys().N);
  if (IsKind(normal, ObjectKind::kDict)) objects::EnumDict(normal, AddState, states);
}

std::vector<OnState> OnStatesOf(ObjectHandle dict) {
  std::vector<OnState> states;
  AddStates(NamedDict(dict), 0, &states);
  return states;
}

std::vector<ChoiceOption> ChoiceOptionsOf(ObjectHandle dict) {
  std::vector<ChoiceOption> options;
  const ObjectHandle array = InheritedFieldEntry(dict, Keys().Opt);
  if (!IsKind(array, ObjectKind::kArray)) return options;
  const std::uint32_t count = objects::ArrayLength(array);
  options.reserve(count);
  for (std::uint32_t i = 0; i < count; ++i) {
    const ObjectHandle option = objects::ArrayGet(array, i);
    const bool pair = IsKind(option, ObjectKind::kArray);
    const ObjectHandle second = pair ? objects::ArrayGet(option, 1) : option;
    const ObjectHandle first = pair ? objects::ArrayGet(option, 0) : option;
    const std::string bytes = BytesOfText(document::IsNull(first) ? second : first);
    options.push_back({bytes, PdfTextToUtf8(bytes), PdfTextToUtf8(BytesOfText(second))});
  }
  return options;
}

// Names in files are UTF-8 by convention and single bytes in older ones.
std::string TextOfName(Atom name) {
  const char* text = core::NameFromAtom(name);
  if (text == nullptr) return {};
  return IsUtf8(text) ? text : PdfDocToUtf8(text);
}

}  // namespace quillon::app
