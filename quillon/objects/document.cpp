#include "quillon/objects/document.h"

#include <array>

#include "quillon/objects/characters.h"
#include "quillon/objects/form_key.h"
#include "quillon/objects/limits.h"
#include "quillon/objects/load.h"
#include "quillon/objects/unlisted.h"

namespace quillon::objects {
namespace {

// handle.first: tag (4 bits), document number (12 bits), generation of the cell (16 bits).
enum HandleTag : std::uint32_t {
  kTagInteger = 1,
  kTagFixed = 2,
  kTagBoolean = 3,
  kTagName = 4,
  kTagCell = 5,
  kTagObject = 6,
};
constexpr std::uint32_t kTagMask = 0xF;
constexpr unsigned kDocumentShift = 4;
constexpr unsigned kGenerationShift = 16;
constexpr std::uint32_t kDocumentCount = 0x1000;

struct Registry {
  std::array<std::unique_ptr<Document>, kDocumentCount> documents;
  std::uint32_t last = 0;
  std::size_t open = 0;
};

Registry& Documents() {
  static Registry registry;
  return registry;
}

std::uint32_t FirstWord(const Document& doc, HandleTag tag) {
  return tag | doc.number << kDocumentShift;
}

Document& DocumentOfWord(std::uint32_t first) {
  Document* doc = FindDocument(first >> kDocumentShift & (kDocumentCount - 1));
  if (doc == nullptr) Fail(kErrorBadObject, "The document of an object is closed.");
  return *doc;
}

Value ValueOfCell(Document& doc, ObjectHandle object) {
  const std::uint32_t number = object.second;
  if (number != 0 && number < doc.cells.used) {
    const Cell& cell = CellAt(doc.cells, number);
    if (cell.kind != CellKind::kFree && cell.generation == object.first >> kGenerationShift) {
      return CellValue(number);
    }
  }
  Fail(kErrorBadObject, "An object was used after it was destroyed.");
}

Value ValueOfObject(Document& doc, std::uint32_t number) {
  const ObjectSlot* slot = FindSlot(doc.objects, number);
  if (slot == nullptr || !InUse(*slot)) {
    Fail(kErrorBadObject, "An object was used after it was destroyed.", number);
  }
  return LoadObject(doc, number);
}

}  // namespace

Document& AddDocument() {
  Registry& registry = Documents();
  for (std::uint32_t i = 1; i < kDocumentCount; ++i) {
    const std::uint32_t number = (registry.last + i - 1) % (kDocumentCount - 1) + 1;
    if (registry.documents[number]) continue;
    registry.documents[number] = std::make_unique<Document>();
    registry.last = number;
    ++registry.open;
    registry.documents[number]->number = number;
    return *registry.documents[number];
  }
  Fail(kErrorGeneral, "Too many documents are open. Close some and try again.");
}

void RemoveDocument(Document& doc) {
  Registry& registry = Documents();
  --registry.open;
  registry.documents[doc.number].reset();
}

Document* FindDocument(std::uint32_t number) {
  return number < kDocumentCount ? Documents().documents[number].get() : nullptr;
}

Document& DocumentOfHandle(ObjectDoc handle) {
  const auto number = reinterpret_cast<std::uintptr_t>(handle);
  Document* doc =
      number < kDocumentCount ? FindDocument(static_cast<std::uint32_t>(number)) : nullptr;
  if (doc == nullptr) Fail(kErrorBadParameter, "The document is not open.");
  return *doc;
}

ObjectDoc HandleOfDocument(const Document& doc) {
  return reinterpret_cast<ObjectDoc>(static_cast<std::uintptr_t>(doc.number));
}

Target TargetOf(ObjectHandle object) {
  switch (object.first & kTagMask) {
    case 0:
      if (object.first == 0) return {nullptr, kNullValue, 0};
      break;
    case kTagInteger:
      return {nullptr, {ValueTag::kInteger, 0, object.second}, 0};
    case kTagFixed:
      return {nullptr, {ValueTag::kFixed, 0, object.second}, 0};
    case kTagBoolean:
      return {nullptr, {ValueTag::kBoolean, 0, object.second}, 0};
    case kTagName: {
      // Only further names need their document, to be written and compared.
      Document* doc = object.second < kFirstFurtherName ? nullptr : &DocumentOfWord(object.first);
      return {doc, NameOf(object.second), 0};
    }
    case kTagCell: {
      Document& doc = DocumentOfWord(object.first);
      return {&doc, ValueOfCell(doc, object), 0};
    }
    case kTagObject: {
      Document& doc = DocumentOfWord(object.first);
      return {&doc, ValueOfObject(doc, object.second), object.second};
    }
    default:
      break;
  }
  Fail(kErrorBadObject, "A word that is no object was used as one.");
}

ObjectHandle HandleOfCell(Document& doc, std::uint32_t number) {
  const Cell& cell = CellAt(doc.cells, number);
  if (cell.kind == CellKind::kInteger) return {kTagInteger, cell.capacity};
  if (cell.kind == CellKind::kFixed) return {kTagFixed, cell.capacity};
  const std::uint32_t generation = cell.generation;
  return {FirstWord(doc, kTagCell) | generation << kGenerationShift, number};
}

ObjectHandle HandleOfObject(Document& doc, std::uint32_t number) {
  return {FirstWord(doc, kTagObject), number};
}

ObjectHandle HandleOf(Document& doc, const Value& value) {
  switch (value.tag) {
    case ValueTag::kNull:
      return kNullObject;
    case ValueTag::kInteger:
      return {kTagInteger, value.payload};
    case ValueTag::kFixed:
      return {kTagFixed, value.payload};
    case ValueTag::kBoolean:
      return {kTagBoolean, value.payload};
    case ValueTag::kName:
      if (value.payload < kFirstFurtherName) return {kTagName, value.payload};
      return {FirstWord(doc, kTagName), value.payload};
    case ValueTag::kCell:
      return HandleOfCell(doc, value.payload);
    case ValueTag::kReference:
      break;
  }
  return Dereference(doc, value) == kNullValue ? kNullObject : HandleOfObject(doc, value.payload);
}

ObjectKind KindOf(Document* doc, const Value& value) {
  switch (value.tag) {
    case ValueTag::kInteger:
      return ObjectKind::kInteger;
    case ValueTag::kFixed:
      return ObjectKind::kFixed;
    case ValueTag::kBoolean:
      return ObjectKind::kBoolean;
    case ValueTag::kName:
      return ObjectKind::kName;
    case ValueTag::kNull:
    case ValueTag::kReference:
      return ObjectKind::kNull;
    case ValueTag::kCell:
      break;
  }
  switch (CellAt(doc->cells, value.payload).kind) {
    case CellKind::kString:
      return ObjectKind::kString;
    case CellKind::kDict:
      return ObjectKind::kDict;
    case CellKind::kArray:
      return ObjectKind::kArray;
    case CellKind::kStream:
      return ObjectKind::kStream;
    case CellKind::kInteger:
      return ObjectKind::kInteger;
    case CellKind::kFixed:
      return ObjectKind::kFixed;
    case CellKind::kFree:
      break;
  }
  return ObjectKind::kNull;
}

void MarkCellChanged(Document& doc, std::uint32_t cell) {
  std::uint32_t parent = cell;
  while (parent != 0 && (parent & kIndirectParent) == 0) {
    parent = CellAt(doc.cells, parent).parent;
  }
  if (parent != 0) MarkObjectChanged(doc, parent & ~kIndirectParent);
}

void MarkObjectChanged(Document& doc, std::uint32_t number) {
  ObjectSlot* slot = FindSlot(doc.objects, number);
  if (slot == nullptr) return;
  doc.changed = doc.modified = true;
  ++doc.changes;
  if (slot->changed) return;
  slot->changed = true;
  SpreadFormChange(doc, number);
}

std::uint32_t AddObject(Document& doc, const Value& value) {
  const std::uint32_t number = NewNumber(doc);
  ObjectSlot& slot = SlotFor(doc.objects, number);
  slot.state = SlotState::kNew;
  slot.value = value;
  slot.loaded = true;
  slot.changed = true;
  if (value.tag == ValueTag::kCell) {
    CellAt(doc.cells, value.payload).parent = kIndirectParent | number;
  }
  doc.changed = doc.modified = true;
  ++doc.changes;
  return number;
}

bool WarningsAreFull(const Document& doc) { return doc.warnings.size() > kMaxWarnings; }

void Warn(Document& doc, const std::string& text, std::uint32_t object, std::int64_t offset) {
  if (WarningsAreFull(doc)) return;
  if (object == kLentNumber) object = doc.root;
  if (!doc.warned.insert(std::to_string(object) + " " + text).second) return;
  if (doc.warnings.size() == kMaxWarnings) {
    doc.warnings.push_back({"More is wrong with the file than is told.", 0, kNoOffset});
    return;
  }
  doc.warnings.push_back({text, object, offset});
}

bool HasVersion(std::string_view header) {
  constexpr std::size_t kPlace = 5;
  return header.size() >= kPlace + 3 && IsDecimalDigit(header[kPlace]) &&
         header[kPlace + 1] == '.' && IsDecimalDigit(header[kPlace + 2]);
}

std::int64_t FileOffset(const Document& doc, std::uint64_t position) {
  return static_cast<std::int64_t>(doc.headerAt + position);
}

std::int64_t ObjectOffset(const Document& doc, std::uint32_t number) {
  const ObjectSlot* slot = FindSlot(doc.objects, number);
  if (slot != nullptr && slot->state == SlotState::kCompressed) {
    slot = FindSlot(doc.objects, static_cast<std::uint32_t>(slot->position >> 32));
  }
  if (slot == nullptr || slot->state != SlotState::kInFile) return kNoOffset;
  return FileOffset(doc, slot->position);
}

}  // namespace quillon::objects

namespace quillon {

std::uint64_t PdfChangeCount(ObjectDoc doc) { return objects::DocumentOfHandle(doc).changes; }

std::size_t OpenPdfCount() { return objects::Documents().open; }

void CloseAllPdfs() {
  for (std::uint32_t number = 1; number < objects::kDocumentCount; ++number) {
    if (objects::Document* doc = objects::FindDocument(number)) objects::RemoveDocument(*doc);
  }
}

}  // namespace quillon
