// From dictionaries and names to field nodes and back: per document, a table of fully qualified
// names (ISO 32000-1, 12.7.3.2) and the nodes that bear them.
#pragma once

#include <memory>
#include <string>

#include "plugin/model/field_node.h"

namespace quillform {

// The node of a field or widget dictionary, made on first use; null when the object is not an
// indirect dictionary, when no node can be made, and while the document's form is not live. Making
// one may change the document: a widget whose name is a path is placed under the fields of that
// path, and while NeedAppearances stands in the form, a top-level dictionary is merged into an
// existing field of its name. Raises kErrorBadStructure for a partial name with a "." below the top
// level, and what the host raises.
FieldNode FieldNodeOf(ObjectHandle dict);

// The node that a dictionary has already, or null; none is made.
FieldNode ExistingNodeOf(ObjectHandle dict);

// Null unless the annotation is valid and a Widget.
FieldNode FieldNodeOfWidget(AnnotHandle annot);

// The first node of the name, or null. Names are bytes in the document's encoding.
FieldNode FindFieldByName(DocHandle doc, const char* name);
FieldNode FindFieldByNameEntry(DocHandle doc, const NameEntry* entry);

// Gives every leaf under the form's Fields its node, once per document. An element whose name
// breaks the rules is left out; other failures reach the caller, and the next call loads again.
void LoadAllFields(DocHandle doc);

// Lets many nodes be made in a row in linear time: while one stands, searches of arrays in the
// making of nodes go through an index. Only the model may change Fields and Kids meanwhile.
struct BulkScope;
struct BulkLoad {
  explicit BulkLoad(DocHandle doc);
  ~BulkLoad();

  std::unique_ptr<BulkScope> scope;
};

// Visits nodes bucket by bucket, from the last to the first, until the routine answers false.
// `terminalOnly` passes over nodes with kids, `onePerName` visits the first node of each name that
// is not passed over. The routine may make and delete nodes.
void ForEachFieldNode(DocHandle doc, bool terminalOnly, bool onePerName, FieldNodeProc proc,
                      void* clientData);

// The longest fully qualified name, in bytes.
inline constexpr std::uint32_t kMaxNameLength = 254;

// No path from a field up to the top is followed further: a name has at most 254 bytes and each
// named level takes at least one, so what is deeper is a cycle.
inline constexpr std::uint32_t kMaxFieldDepth = 256;

// The fully qualified name, freed with Support.Free; null when there is none. Raises
// kErrorBadStructure for a partial name with a "." below the top level.
char* FullNameOf(ObjectHandle dict);

// A text string as a name: its bytes up to a NUL; UTF-16 as Document.NarrowPDFText gives it.
std::string NameOfText(ObjectHandle text);

// Unlinks a node from the table and its dictionary from the tree, and frees the node. A parent that
// loses its last kid by it goes too. Announces form event 6 for a last remaining node of the name.
// What fails is raised when the node is gone.
void DeleteFieldNode(FieldNode node);

// Links a node into a parent's kids (or out of its parent's, for null). Refuses with false what
// would make a node its own ancestor.
bool LinkToParent(FieldNode node, FieldNode parent);

// 0 the name can be given to the widget; 1 it is empty; 2 to 4 it conflicts with a field of another
// kind, a non-terminal field, or a terminal field above it. Cuts trailing "." off `name`.
std::uint16_t CheckFieldName(DocHandle doc, AnnotHandle widget, Atom kind, char* name);

// The highest node upwards that still bears the node's name (the node itself when it is that).
FieldNode HighestOfName(FieldNode node);

// The first node of the chain of the node's name.
FieldNode FirstOfName(FieldNode node);

// Re-reads a node's flags, own-entry mask and type from its dictionary.
void InitFieldNode(FieldNode node);
void ReadFieldFlags(FieldNode node);
void RecomputeOwnEntries(FieldNode node);

// Whether forms are live in the document (permissions allow it and it is not closing).
bool FormIsUsable(DocHandle doc);

// Frees what is kept of all documents, when the plug-in is unloaded.
void ReleaseFieldTrees();

// Registers the document notifications and the listener of form event 3. Always true.
bool RegisterFieldTreeNotifications();

}  // namespace quillform
