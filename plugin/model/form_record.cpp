#include "plugin/model/form_record.h"

#include <cstring>
#include <memory>

#include "plugin/model/form_dict.h"
#include "plugin/model/keys.h"

namespace quillform {
namespace {

FormRecord* firstRecord = nullptr;
NodePin* innermostPin = nullptr;

constexpr std::uint32_t kUsablePermissions = quillon::kPermitEdit | quillon::kPermitForms;

std::string_view NameViewOf(const NameEntry& entry) { return {NameTextOf(entry), entry.length}; }

void FreeNameEntry(NameEntry* entry) {
  Support->Free(entry->longText);
  Support->Free(entry);
}

struct NameEntryFree {
  void operator()(NameEntry* entry) const { FreeNameEntry(entry); }
};
using NameEntryPtr = std::unique_ptr<NameEntry, NameEntryFree>;

NameEntryPtr MakeNameEntry(std::string_view name) {
  NameEntryPtr entry(static_cast<NameEntry*>(AllocOrRaise(sizeof(NameEntry))));
  *entry = NameEntry{};
  entry->length = static_cast<std::uint8_t>(name.size());
  char* text = entry->shortText;
  if (name.size() > kShortNameLength) {
    text = entry->longText =
        static_cast<char*>(AllocOrRaise(static_cast<std::uint32_t>(name.size()) + 1));
  }
  std::memcpy(text, name.data(), name.size());
  text[name.size()] = '\0';
  return entry;
}

void LinkEntry(FormRecord& record, NameEntry* entry) {
  NameEntry*& head = record.buckets[HashOfName(NameViewOf(*entry)) % kNameBuckets];
  entry->next = head;
  if (head != nullptr) head->previous = entry;
  head = entry;
}

void UnlinkEntry(FormRecord& record, NameEntry* entry) {
  for (NodeCursor* cursor = record.cursors; cursor != nullptr; cursor = cursor->outer) {
    if (cursor->entry != entry) continue;
    cursor->entry = entry->next;
    cursor->node = nullptr;
    cursor->entryMoved = true;
  }
  if (entry->previous != nullptr) {
    entry->previous->next = entry->next;
  } else {
    record.buckets[HashOfName(NameViewOf(*entry)) % kNameBuckets] = entry->next;
  }
  if (entry->next != nullptr) entry->next->previous = entry->previous;
  record.entryOfName.erase(NameViewOf(*entry));
}

// A field comes before its widgets; anything else goes to the end of its name's chain.
void JoinChain(NameEntry* entry, FieldNode node, bool isField) {
  node->name = entry;
  node->status |= kNodeNameShared;
  if (isField) {
    node->sameNameNext = entry->first;
    entry->first->sameNamePrevious = node;
    entry->first->status |= kNodeNameShared;
    entry->first = node;
  } else {
    node->sameNamePrevious = entry->last;
    entry->last->sameNameNext = node;
    entry->last->status |= kNodeNameShared;
    entry->last = node;
  }
}

// The entry becomes the record's, with one node.
void AddEntry(FormRecord& record, NameEntryPtr entry, FieldNode node) {
  record.entryOfName.emplace(NameViewOf(*entry), entry.get());
  entry->first = entry->last = node;
  node->name = entry.get();
  LinkEntry(record, entry.release());
}

void ForgetDictOf(FieldNode node) {
  auto& nodes = node->record->nodesOfDict;
  const auto [begin, end] = nodes.equal_range(IdentityOf(node->dict));
  for (auto at = begin; at != end; ++at) {
    if (at->second == node) {
      nodes.erase(at);
      return;
    }
  }
}

void ClearPins(FieldNode node) {
  for (NodePin* pin = innermostPin; pin != nullptr; pin = pin->outer) {
    if (pin->node == node) pin->node = nullptr;
  }
}

void ReleaseNode(FieldNode node) {
  ClearPins(node);
  node->record->loadedKids.erase(node);
  *node = FieldNodeRecord{};
  Support->Free(node);
}

template <typename Doomed>
void FreeRecordsThat(Doomed&& doomed) {
  for (FormRecord** link = &firstRecord; *link != nullptr;) {
    FormRecord* record = *link;
    if (!doomed(*record)) {
      link = &record->next;
      continue;
    }
    *link = record->next;
    EmptyFormRecord(*record);
    delete record;
  }
}

FormRecord* LookUp(ObjectDoc doc) {
  for (FormRecord* record = firstRecord; record != nullptr; record = record->next) {
    if (record->objectDoc == doc) return record;
  }
  return nullptr;
}

}  // namespace

NodePin::NodePin(FieldNode pinned) : node(pinned), outer(innermostPin) { innermostPin = this; }
NodePin::~NodePin() { innermostPin = outer; }

NodeCursor::NodeCursor(FormRecord& walked) : record(walked), outer(walked.cursors) {
  record.cursors = this;
}
NodeCursor::~NodeCursor() { record.cursors = outer; }

BulkScope::BulkScope(FormRecord* loaded) : record(loaded) {
  if (record != nullptr) ++record->bulkDepth;
}
BulkScope::~BulkScope() {
  if (record != nullptr && --record->bulkDepth == 0) DropArrayIndices(*record);
}

void DropArrayIndices(FormRecord& record) {
  record.fieldsIndex = ArrayNames{};
  record.levelIndex.clear();
  record.kidsIndex.clear();
  record.loadedKids.clear();
}

std::uint64_t IdentityOf(ObjectHandle object) {
  return (static_cast<std::uint64_t>(object.first) << 32) | object.second;
}

std::uint32_t HashOfName(std::string_view name) {
  const auto word = [](char c) {
    return static_cast<std::uint32_t>(static_cast<std::int32_t>(static_cast<signed char>(c)));
  };
  if (name.size() == 1) return word(name[0]) * 8 + 1;
  std::uint32_t hash = 0;
  for (char c : name) hash = hash * 31 + word(c);
  return hash;
}

const char* NameTextOf(const NameEntry& entry) {
  return entry.longText != nullptr ? entry.longText : entry.shortText;
}

bool IsLive(const FormRecord& record) { return record.usable && !record.closing; }

void RecomputeUsable(FormRecord& record) {
  record.usable = (Document->GetPermissions(record.doc) & kUsablePermissions) != 0;
}

void FreeClosingRecords() {
  // A record that is being walked or loaded stays until that is over.
  FreeRecordsThat([](const FormRecord& record) {
    return record.closing && record.cursors == nullptr && record.bulkDepth == 0;
  });
}

void ReleaseFieldTrees() {
  FreeRecordsThat([](const FormRecord&) { return true; });
  ForgetFormDict();
}

FormRecord* FindFormRecord(ObjectDoc doc) {
  FormRecord* record = LookUp(doc);
  if (record == nullptr) FreeClosingRecords();
  return record;
}

FormRecord* FindOrMakeFormRecord(ObjectDoc doc) {
  if (doc == nullptr) return nullptr;
  if (FormRecord* record = FindFormRecord(doc)) return record;
  const DocHandle shown = Document->DocOfObjectDoc(doc);
  if (shown == nullptr) return nullptr;
  auto record = std::make_unique<FormRecord>();
  record->doc = shown;
  record->objectDoc = doc;
  RecomputeUsable(*record);
  record->next = firstRecord;
  firstRecord = record.release();
  return firstRecord;
}

FormRecord* LiveFormRecord(ObjectDoc doc) {
  FormRecord* record = FindOrMakeFormRecord(doc);
  return record != nullptr && IsLive(*record) ? record : nullptr;
}

void EmptyFormRecord(FormRecord& record) {
  for (NodeCursor* cursor = record.cursors; cursor != nullptr; cursor = cursor->outer) {
    cursor->ended = true;
    cursor->entryMoved = cursor->nodeMoved = true;
    cursor->entry = nullptr;
    cursor->node = nullptr;
  }
  record.entryOfName.clear();
  record.nodesOfDict.clear();
  for (NameEntry*& bucket : record.buckets) {
    while (NameEntry* entry = bucket) {
      bucket = entry->next;
      while (FieldNode node = entry->first) {
        entry->first = node->sameNameNext;
        ReleaseNode(node);
      }
      FreeNameEntry(entry);
    }
  }
  record.recent = nullptr;
  record.terminal = {};
  record.loaded = false;
  record.nodeCount = 0;
  record.volatileFields = VolatileIndex{};
  DropArrayIndices(record);
}

NameEntry* FindNameEntry(const FormRecord& record, std::string_view name) {
  const auto found = record.entryOfName.find(name);
  return found != record.entryOfName.end() ? found->second : nullptr;
}

FieldNode AddNode(FormRecord& record, std::string_view name, ObjectHandle dict) {
  HostPtr<FieldNodeRecord> node(
      static_cast<FieldNodeRecord*>(AllocOrRaise(sizeof(FieldNodeRecord))));
  *node = FieldNodeRecord{};
  node->record = &record;
  node->dict = dict;
  node->status = kNodeIncomplete;
  node->type = kNoAtom;

  NameEntry* entry = FindNameEntry(record, name);
  const bool isField = Objects->DictKnown(dict, key::Kids);
  NameEntryPtr made = entry == nullptr ? MakeNameEntry(name) : nullptr;
  const auto place = record.nodesOfDict.emplace(IdentityOf(dict), node.get());
  try {
    if (made != nullptr) AddEntry(record, std::move(made), node.get());
  } catch (const std::bad_alloc&) {
    record.nodesOfDict.erase(place);
    throw;
  }
  if (entry != nullptr) JoinChain(entry, node.get(), isField);
  ++record.nodeCount;
  record.recent = node.get();
  return node.release();
}

FieldNode UnlinkNode(FieldNode node) {
  FormRecord& record = *node->record;
  NameEntry* entry = node->name;
  ForgetDictOf(node);
  for (NodeCursor* cursor = record.cursors; cursor != nullptr; cursor = cursor->outer) {
    if (cursor->node != node) continue;
    cursor->node = node->sameNameNext;
    cursor->nodeMoved = true;
  }
  if (node->sameNamePrevious != nullptr) {
    node->sameNamePrevious->sameNameNext = node->sameNameNext;
  } else {
    entry->first = node->sameNameNext;
  }
  if (node->sameNameNext != nullptr) {
    node->sameNameNext->sameNamePrevious = node->sameNamePrevious;
  } else {
    entry->last = node->sameNamePrevious;
  }
  node->sameNameNext = node->sameNamePrevious = nullptr;
  node->name = nullptr;
  node->status |= kNodeIncomplete;
  --record.nodeCount;
  record.recent = nullptr;
  if (node->parent != nullptr || node == record.terminal.field) record.terminal = {};

  if (entry->first == nullptr) {
    UnlinkEntry(record, entry);
    FreeNameEntry(entry);
    return nullptr;
  }
  if (entry->first != entry->last) return nullptr;
  entry->first->status &= ~static_cast<std::uint32_t>(kNodeNameShared);
  return entry->first;
}

void FreeNode(FieldNode node) {
  LinkToParent(node, nullptr);
  while (node->firstKid != nullptr) LinkToParent(node->firstKid, nullptr);
  ReleaseNode(node);
}

FieldNode FindNode(const FormRecord& record, const NameEntry& entry, ObjectHandle dict) {
  const auto [begin, end] = record.nodesOfDict.equal_range(IdentityOf(dict));
  for (auto at = begin; at != end; ++at) {
    if (at->second->name == &entry && Objects->Equal(at->second->dict, dict)) return at->second;
  }
  return nullptr;
}

bool LinkToParent(FieldNode node, FieldNode parent) {
  for (FieldNode above = parent; above != nullptr; above = above->parent) {
    if (above == node) return false;
  }
  if (node->parent == parent) return true;
  TerminalField& terminal = node->record->terminal;
  const bool added = parent != nullptr && parent != terminal.field;
  if (added || node == terminal.kid) terminal = {};
  if (FieldNode old = node->parent) {
    old->record->loadedKids.erase(old);
    if (node->previousSibling != nullptr) {
      node->previousSibling->nextSibling = node->nextSibling;
    } else {
      old->firstKid = node->nextSibling;
    }
    if (node->nextSibling != nullptr) node->nextSibling->previousSibling = node->previousSibling;
    node->nextSibling = node->previousSibling = nullptr;
  }
  node->parent = parent;
  if (parent != nullptr) {
    node->nextSibling = parent->firstKid;
    if (parent->firstKid != nullptr) parent->firstKid->previousSibling = node;
    parent->firstKid = node;
  }
  return true;
}

}  // namespace quillform
