// What the plug-in keeps of one open document: its field nodes, and the table of their fully
// qualified names. The model's own; other rooms use field_tree.h.
#pragma once

#include <array>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "plugin/model/array_index.h"
#include "plugin/model/field_tree.h"

namespace quillform {

inline constexpr std::uint32_t kNameBuckets = 23;
inline constexpr std::uint32_t kShortNameLength = 6;

// One distinct name, allocated from the host. Names of up to six characters stand in the entry.
struct NameEntry {
  NameEntry* next;  // in the same bucket
  NameEntry* previous;
  FieldNode first;  // of the nodes that bear the name; never null while the entry is in its bucket
  FieldNode last;
  char* longText;  // null for a short name
  std::uint8_t length;
  char shortText[kShortNameLength + 1];
};

const char* NameTextOf(const NameEntry& entry);

// A position in the table that survives the making and deleting of nodes while a walk calls out.
// When the node (or entry) it stands on goes, it moves on to the next one and notes that.
struct NodeCursor {
  explicit NodeCursor(FormRecord& record);
  ~NodeCursor();
  NodeCursor(const NodeCursor&) = delete;
  NodeCursor& operator=(const NodeCursor&) = delete;

  FormRecord& record;
  NodeCursor* outer;
  NameEntry* entry = nullptr;
  FieldNode node = nullptr;
  bool entryMoved = false;
  bool nodeMoved = false;
  bool ended = false;  // the table was emptied
};

// Where the elements of one array stand, for the time of a bulk load. Of equal elements the last
// position counts, as for a search from the end.
struct ArrayIndex {
  std::uint32_t length = 0;
  std::unordered_map<std::uint64_t, std::uint32_t> positionOf;
};

// The dictionaries that $Vo lists, so that most additions need no search. It is rebuilt when the
// array is another one or has another length than it had.
struct VolatileIndex {
  ObjectHandle array = kNullObject;
  std::uint32_t length = 0;
  std::unordered_set<std::uint64_t> listed;
};

// A field whose kids from one on were all found to bear its name; new kids come before them. Empty
// as soon as any of that may have changed.
struct TerminalField {
  FieldNode field = nullptr;
  FieldNode kid = nullptr;
};

struct FormRecord {
  FormRecord* next = nullptr;  // the list of records, newest first
  DocHandle doc = nullptr;
  ObjectDoc objectDoc = nullptr;
  FieldNode recent = nullptr;  // the node found last
  TerminalField terminal;
  std::array<NameEntry*, kNameBuckets> buckets{};
  bool loaded = false;
  bool usable = false;
  bool closing = false;
  std::uint32_t nodeCount = 0;

  // Beside the buckets, which give the order of walks: finding without searching.
  std::unordered_map<std::string_view, NameEntry*> entryOfName;
  std::unordered_multimap<std::uint64_t, FieldNode> nodesOfDict;

  NodeCursor* cursors = nullptr;
  VolatileIndex volatileFields;

  std::uint32_t makingDepth = 0;  // nodes whose making leads to each other's
  std::uint32_t bulkDepth = 0;
  ArrayNames fieldsIndex;
  std::unordered_map<std::uint64_t, ArrayNames> levelIndex;  // of each array, by its identity
  std::unordered_map<std::uint64_t, ArrayIndex> kidsIndex;
  // How many elements of a field's Kids were given their nodes: those behind are new.
  std::unordered_map<FieldNode, std::uint32_t> loadedKids;
};

// An object's identity as a word to look it up by.
std::uint64_t IdentityOf(ObjectHandle object);

// The bucket is the hash modulo kNameBuckets. Characters count as signed bytes.
std::uint32_t HashOfName(std::string_view name);

// The record of an object-layer document, or null. A look-up without success frees the records of
// documents that are closing.
FormRecord* FindFormRecord(ObjectDoc doc);

// The same, made when there is none; null for a document that has no pages behind it (FDF), and
// while the document's form is not live.
FormRecord* LiveFormRecord(ObjectDoc doc);

// As LiveFormRecord, live or not.
FormRecord* FindOrMakeFormRecord(ObjectDoc doc);

// Deletes a node as DeleteFieldNode does, complete or not.
void DeleteNode(FieldNode node);

bool IsLive(const FormRecord& record);
void RecomputeUsable(FormRecord& record);

// Frees all nodes and names; the record can be filled again.
void EmptyFormRecord(FormRecord& record);

// Frees the records of documents that are closing.
void FreeClosingRecords();

NameEntry* FindNameEntry(const FormRecord& record, std::string_view name);

// A zeroed node of a dictionary (incomplete, without a type), in the table under a name. Frees what
// it made when it fails.
FieldNode AddNode(FormRecord& record, std::string_view name, ObjectHandle dict);

// Takes a node out of its name's chain and the look-ups. Answers the node that alone remains of the
// name, or null. Then FreeNode.
FieldNode UnlinkNode(FieldNode node);

// Frees an unlinked node; its kids lose their parent.
void FreeNode(FieldNode node);

// The node of a dictionary under one name, complete or not.
FieldNode FindNode(const FormRecord& record, const NameEntry& entry, ObjectHandle dict);

// A bulk load of a record that is known already; null loads nothing.
struct BulkScope {
  explicit BulkScope(FormRecord* record);
  ~BulkScope();
  BulkScope(const BulkScope&) = delete;
  BulkScope& operator=(const BulkScope&) = delete;

  FormRecord* record;
};

// Drops the indices of a bulk load, after something else may have changed the arrays.
void DropArrayIndices(FormRecord& record);

// Visits the nodes of a name in the order of its chain; `visit` may make and delete nodes.
template <typename Visit>
void VisitNodesOfName(FieldNode node, Visit&& visit) {
  NodeCursor cursor(*node->record);
  cursor.entry = node->name;
  cursor.node = node->name->first;
  while (cursor.node != nullptr && !cursor.ended) {
    cursor.nodeMoved = false;
    if (FieldNodeIsValid(cursor.node)) visit(cursor.node);
    if (cursor.ended || cursor.entryMoved) return;
    if (!cursor.nodeMoved) cursor.node = cursor.node->sameNameNext;
  }
}

// ForEachFieldNode for callables.
template <typename Visit>
void VisitFieldNodes(DocHandle doc, bool terminalOnly, bool onePerName, Visit&& visit) {
  using Callable = std::remove_reference_t<Visit>;
  ForEachFieldNode(
      doc, terminalOnly, onePerName,
      [](FieldNode node, void* data) -> Boolean { return (*static_cast<Callable*>(data))(node); },
      &visit);
}

}  // namespace quillform
