// The in-memory mirror of one field or widget dictionary.
#pragma once

#include <cstdint>

#include "plugin/host/host.h"
#include "sdk/forms_table.h"

namespace quillform {

struct NameEntry;
struct FormRecord;

// Bits of FieldNodeRecord::status.
enum NodeStatus : std::uint32_t {
  kNodeIncomplete = 0x01,    // being made; counts as no node
  kNodeSettingValue = 0x02,  // a value is being set on it (guards against re-entry)
  kNodeNameShared = 0x08,    // more than one node bears the name
  kNodeStale = 0x10,         // the widget's appearance is out of date
  kNodeLoadingKids = 0x20,
  kNodeNonTerminal = 0x40,      // has kids with other names than its own
  kNodeMoving = 0x80,           // the widget is being moved to another page
  kNodeEdited = 0x100,          // a mark of the authoring side; a rename carries it over
  kNodeSweepMark = 0x200,       // used while sweeping merged widgets at close
  kNodeMultiLineCommit = 0x400  // the in-place editor has just committed a multi-line value
};

// Allocated from the host, owned by the document's form record. `FieldNode` (sdk/forms_table.h) is
// the pointer that other plug-ins see. The links are null at their ends.
struct FieldNodeRecord {
  FieldNode parent;
  FieldNode sameNameNext;  // the chain of all dictionaries that share the full name
  FieldNode sameNamePrevious;
  FieldNode nextSibling;  // the next kid of the same parent; the newest kid comes first
  FieldNode previousSibling;
  FieldNode firstKid;
  NameEntry* name;           // shared by the nodes of one name
  FormRecord* record;        // whose node this is
  ObjectHandle dict;         // stays the document's
  std::uint32_t ownEntries;  // InheritableBit of each entry that this dictionary itself holds
  std::uint32_t flags[2];    // 0 annotation flags F, 1 field flags Ff (inherited)
  std::uint32_t status;      // NodeStatus
  Atom type;                 // Btn, Tx or Ch (inherited), or kNoAtom
};

// Field flags Ff (ISO 32000-1, 12.7.3.1 and 12.7.4).
enum FieldFlag : std::uint32_t {
  kFieldReadOnly = 0x1,
  kFieldRequired = 0x2,
  kFieldNoExport = 0x4,
  kFieldMultiLine = 0x1000,
  kFieldPassword = 0x2000,
  kFieldNoToggleOff = 0x4000,
  kFieldRadio = 0x8000,
  kFieldPushButton = 0x10000,
  kFieldCombo = 0x20000,
  kFieldEditable = 0x40000,
  kFieldSorted = 0x80000,
};

// A node that exists and is completely made. Every operation on nodes does nothing (or answers 0,
// false, null or the null object) for one that is not.
bool FieldNodeIsValid(FieldNode node);

ObjectHandle FieldNodeDict(FieldNode node);

// The fully qualified name, owned by the table of names; valid while a node bears it.
const char* FieldNodeName(FieldNode node);

// Whether the node's dictionary is a widget annotation.
bool NodeIsWidget(FieldNode node);
bool DictIsWidget(ObjectHandle dict);

// Whether every kid, and every kid's kid, bears the node's own name. The first other answer is
// remembered (kNodeNonTerminal).
bool FieldNodeIsTerminal(FieldNode node);

// The annotation of a widget's node.
AnnotHandle AnnotOfNode(FieldNode node);

// Holds on to a node over calls after which it may be gone (subscribers, appearance builders):
// `node` becomes null when the node is freed.
struct NodePin {
  explicit NodePin(FieldNode pinned);
  ~NodePin();
  NodePin(const NodePin&) = delete;
  NodePin& operator=(const NodePin&) = delete;

  FieldNode node;
  NodePin* outer;
};

}  // namespace quillform
