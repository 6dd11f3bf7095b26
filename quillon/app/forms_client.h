// How the program reaches form fields: through the "Forms" table, as any other plug-in would.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "quillon/core/guard.h"
#include "sdk/forms_table.h"

namespace quillon::app {

using quillform::FieldNode;
using quillform::FormsTable;

// The table, asked for once a start of the host. Throws HostFailure when no plug-in offers it.
const FormsTable& Forms();

// Forgets the table; call it when the host stops.
void ForgetForms();

// Calls a slot in a guarded block: CallForms(&FormsTable::FindFieldByName, doc, name). What the
// plug-in raises arrives as a HostFailure.
template <typename Return, typename... Params, typename... Args>
Return CallForms(Return (*FormsTable::*slot)(Params...), Args... args) {
  const auto routine = Forms().*slot;
  return CallGuarded([&]() -> Return { return routine(args...); });
}

// A field's kind follows from its type and field flags (ISO 32000-1, 12.7.4).
enum class FieldKind { kText, kCheckBox, kRadioButton, kPushButton, kComboBox, kListBox, kOther };

// In words, such as "check box"; what `fields` prints and --json carries.
const char* KindName(FieldKind kind);

// Field flags (ISO 32000-1, tables 221, 226, 228 and 230).
enum FieldFlag : std::uint32_t {
  kFlagReadOnly = 0x1,
  kFlagRequired = 0x2,
  kFlagNoExport = 0x4,
  kFlagMultiLine = 0x1000,
  kFlagPassword = 0x2000,
  kFlagNoToggleToOff = 0x4000,
  kFlagRadio = 0x8000,
  kFlagPushButton = 0x10000,
  kFlagCombo = 0x20000,
  kFlagEditable = 0x40000,
  kFlagMultiSelect = 0x200000,
};

// The nearest entry of the dictionary or its ancestors; the null object when none has it. Chains of
// parents longer than any sensible form has, and cycles, end the search.
ObjectHandle InheritedFieldEntry(ObjectHandle dict, Atom key);

FieldKind KindOfField(ObjectHandle dict, std::uint32_t fieldFlags);

// MaxLen, inherited; 0 when there is none.
std::uint32_t MaxLengthOfField(ObjectHandle dict);

// Field names are bytes at the seam and UTF-8 in the program. A name that the document stores in
// UTF-16 comes as Document.NarrowPDFText gives it; these undo and redo that.
std::string NameToUtf8(std::string_view name);
std::string Utf8ToName(std::string_view utf8);

}  // namespace quillon::app
