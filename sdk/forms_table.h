// "Forms", version 0x10000: what the forms plug-in offers to other plug-ins. Ask for it with
// Core.GetTable(Core.AtomFromName(kFormsTableName), kFormsVersion).
#pragma once

#include <cstddef>

#include "table_macros.h"
#include "types.h"

namespace quillform {

using quillon::Atom;
using quillon::Boolean;
using quillon::DocHandle;
using quillon::FailureCode;
using quillon::ObjectDoc;
using quillon::ObjectHandle;
using quillon::StreamHandle;

inline constexpr const char* kFormsTableName = "Forms";
inline constexpr std::uint32_t kFormsVersion = 0x10000;

// A field or widget dictionary as the plug-in knows it; owned by the plug-in, valid until the field
// is deleted or its document closes.
using FieldNode = struct FieldNodeRecord*;

// Form events. "Before" events can be stopped by setting `cancel`.
enum FormEvent : std::uint32_t {
  kEventValueWillChange = 0,  // before; document, node, value (which may be replaced)
  kEventValueChanged = 1,     // document, node, value
  kEventFormMade = 2,         // document
  kEventDefaultsChanged = 3,  // document, mask
  kEventReserved = 4,         // never announced
  kEventFieldSplit = 5,       // document, node; a non-zero cancel refuses the merge
  kEventNameUnshared = 6,     // document, node
  kEventKeystroke = 7,        // before; document, node, keyCode, modifiers
  kEventFocusWillMove = 8,    // before; document, node, secondNode, keyCode, modifiers
  kEventFocusMoved = 9,       // as kEventFocusWillMove
};
inline constexpr std::uint32_t kFormEventCount = 10;

// Offsets on 32-bit Windows: 0 document, 4 node, 8 second node, 12 value, 20 mask, 24 key code,
// 28 modifiers, 32 cancel. Only the fields listed for the event are set.
struct FormEventRecord {
  DocHandle document;
  FieldNode node;
  FieldNode secondNode;
  ObjectHandle value;
  std::uint32_t mask;  // of changed form defaults: 1 DV, 2 V, 4 DA, 8 OH, 0x10 DR, 0x20 Q
  std::uint16_t keyCode;
  std::uint16_t unused26;
  std::uint32_t modifiers;
  std::uint32_t cancel;
};
#if UINTPTR_MAX == 0xFFFFFFFFu
static_assert(offsetof(FormEventRecord, value) == 12 && offsetof(FormEventRecord, mask) == 20 &&
              offsetof(FormEventRecord, keyCode) == 24 &&
              offsetof(FormEventRecord, modifiers) == 28 &&
              offsetof(FormEventRecord, cancel) == 32 && sizeof(FormEventRecord) == 36);
#endif

using FormEventNotify = void (*)(FormEventRecord* record, void* clientData);
using FormEventFailure = void (*)(FailureCode error, FormEventRecord* record, void* clientData);
using FieldNodeProc = Boolean (*)(FieldNode node, void* clientData);

// Names are text in the document's encoding, as they stand in the file. A node that is not valid
// gives 0, false, null or the null object; otherwise what an operation raises reaches the caller's
// guarded block.
//   ForEachFieldNode: visits until the routine answers false; "terminal only" passes over nodes
//     with kids, "one per name" visits the first node of each name.
//   FieldNodeName: valid while the node is.
//   GetFieldFlags, SetFieldFlags: index 0 the annotation flags F, 1 the field flags Ff.
//   SetFieldValue: V of the whole field; a copy is stored. Push buttons take none.
//   SetFieldOptions: 0 done, 1 when the node is not valid; an empty array, or anything but an
//     array, removes Opt.
//   CreateFDFFromForm, WriteURLEncoded, ResetFields: `list`, an array of field dictionaries, tells
//     the fields to take, one with fields under it standing for all of those; or, when `inclusion`
//     is false, the fields to leave out, each for itself only. Anything but an array: all fields.
//     For CreateFDFFromForm its strings are full names; elements that stand for no field are
//     passed over.
//   CreateFDFFromForm: `basePath`, the platform's spelling of the FDF's own path, makes the
//     document's name in it relative; null: the full path. Closed with Objects.CloseDocument.
//   ImportFDF: true when the FDF carried values only.
//   FormEventRegister: the registration's identifier, 0 for an event number outside 0 to 9.
#define QUILLFORM_FORMS_TABLE(X)                                                               \
  X(1, Boolean, DocumentHasForm, (DocHandle doc))                                              \
  X(2, void, LoadAllFields, (DocHandle doc))                                                   \
  X(3, void, ForEachFieldNode,                                                                 \
    (DocHandle doc, Boolean terminalOnly, Boolean onePerName, FieldNodeProc proc,              \
     void* clientData))                                                                        \
  X(4, FieldNode, FindFieldByName, (DocHandle doc, const char* name))                          \
  X(5, FieldNode, FieldNodeOf, (ObjectHandle dict))                                            \
  X(6, ObjectHandle, FieldNodeDict, (FieldNode node))                                          \
  X(7, Boolean, FieldNodeIsValid, (FieldNode node))                                            \
  X(8, Boolean, FieldNodeIsTerminal, (FieldNode node))                                         \
  X(9, ObjectHandle, GetFieldValue, (FieldNode node))                                          \
  X(10, std::uint32_t, GetFieldFlags, (FieldNode node, std::uint16_t index))                   \
  X(11, const char*, FieldNodeName, (FieldNode node))                                          \
  X(12, Boolean, NodeIsWidget, (FieldNode node))                                               \
  X(13, void, SetFieldValue, (FieldNode node, ObjectHandle value))                             \
  X(14, void, SetFieldFlags, (FieldNode node, std::uint16_t index, std::uint32_t flags))       \
  X(15, std::uint32_t, SetFieldOptions, (FieldNode node, ObjectHandle options))                \
  X(16, void, ResetFieldValue, (FieldNode node))                                               \
  X(17, ObjectDoc, CreateFDFFromForm,                                                          \
    (DocHandle doc, ObjectHandle list, Boolean inclusion, Boolean includeEmpty,                \
     Boolean exportCommand, Boolean loadAll, const char* basePath))                            \
  X(18, void, WriteURLEncoded,                                                                 \
    (DocHandle doc, ObjectHandle list, Boolean inclusion, Boolean includeEmpty,                \
     StreamHandle stream))                                                                     \
  X(19, Boolean, ImportFDF, (DocHandle doc, ObjectDoc fdf))                                    \
  X(20, void, ResetFields, (DocHandle doc, ObjectHandle list, Boolean inclusion))              \
  X(21, std::uint32_t, FormEventRegister,                                                      \
    (std::uint32_t event, FormEventNotify notify, FormEventFailure failure, void* clientData)) \
  X(22, void, FormEventUnregister, (std::uint32_t event, std::uint32_t identifier))

QUILLON_DECLARE_TABLE(FormsTable, QUILLFORM_FORMS_TABLE)

}  // namespace quillform
