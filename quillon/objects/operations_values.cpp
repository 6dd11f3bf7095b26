// Objects: kinds, identity, making and reading values.
#include "quillon/objects/copy.h"
#include "quillon/objects/dictionary.h"
#include "quillon/objects/load.h"
#include "quillon/objects/operands.h"
#include "quillon/objects/operations.h"

namespace quillon::objects {
namespace {

ObjectHandle NewObject(Document& doc, Boolean indirect, const Value& value) {
  if (indirect != 0) return HandleOfObject(doc, AddObject(doc, value));
  return HandleOf(doc, value);
}

// A reserve is a wish, not a promise to use it.
constexpr std::uint32_t kMaxReserve = 4096;

std::string_view NameTextOf(const Target& target) {
  return target.doc == nullptr ? std::string_view() : NameText(*target.doc, target.value.payload);
}

// The value of a number, whatever form it is held in.
Value NumberOf(const Target& target) {
  if (target.value.tag != ValueTag::kCell) return target.value;
  const Cell& cell = CellAt(target.doc->cells, target.value.payload);
  if (cell.kind == CellKind::kInteger) return {ValueTag::kInteger, 0, cell.capacity};
  if (cell.kind == CellKind::kFixed) return {ValueTag::kFixed, 0, cell.capacity};
  return target.value;
}

std::uint32_t NewNullCell(Document& doc, CellKind kind, std::uint32_t capacity) {
  const std::uint32_t number = NewCell(doc.cells, kind);
  Cell& cell = CellAt(doc.cells, number);
  cell.capacity = capacity < kMaxReserve ? capacity : kMaxReserve;
  const std::size_t item = kind == CellKind::kDict ? sizeof(DictEntry) : sizeof(Value);
  cell.data = Allocate(doc.pool, cell.capacity * item);
  return number;
}

}  // namespace

ObjectKind TypeOf(ObjectHandle object) {
  const Target target = TargetOf(object);
  return KindOf(target.doc, target.value);
}

Boolean Equal(ObjectHandle a, ObjectHandle b) {
  if (a.first == b.first && a.second == b.second) return 1;
  const Target left = TargetOf(a);
  const Target right = TargetOf(b);
  const Value leftValue = NumberOf(left);
  if (leftValue.tag == ValueTag::kCell) {
    return left.doc == right.doc && leftValue == right.value ? 1 : 0;
  }
  if (leftValue.tag == ValueTag::kName && leftValue.payload >= kFirstFurtherName) {
    return right.value.tag == ValueTag::kName && NameTextOf(left) == NameTextOf(right) ? 1 : 0;
  }
  return leftValue == NumberOf(right) ? 1 : 0;
}

Boolean IsIndirect(ObjectHandle object) { return TargetOf(object).number != 0 ? 1 : 0; }

ObjectDoc DocumentOf(ObjectHandle object) {
  const Target target = TargetOf(object);
  if (target.doc == nullptr) return nullptr;
  if (target.number == 0 && target.value.tag != ValueTag::kCell) return nullptr;
  return HandleOfDocument(*target.doc);
}

ObjectHandle NewInteger(ObjectDoc doc, Boolean indirect, std::int32_t value) {
  return NewObject(DocumentOfHandle(doc), indirect, IntegerOf(value));
}

ObjectHandle NewFixed(ObjectDoc doc, Boolean indirect, Fixed value) {
  return NewObject(DocumentOfHandle(doc), indirect, FixedOf(value));
}

ObjectHandle NewBoolean(ObjectDoc doc, Boolean indirect, Boolean value) {
  return NewObject(DocumentOfHandle(doc), indirect, BooleanOf(value != 0));
}

ObjectHandle NewName(ObjectDoc handle, Boolean indirect, Atom name) {
  Document& doc = DocumentOfHandle(handle);
  if (NameText(doc, name).data() == nullptr) Fail(kErrorBadParameter, "An atom names nothing.");
  return NewObject(doc, indirect, NameOf(name));
}

ObjectHandle NewString(ObjectDoc handle, Boolean indirect, const char* bytes,
                       std::uint32_t length) {
  if (bytes == nullptr && length != 0) Fail(kErrorBadParameter, "A string has no bytes.");
  Document& doc = DocumentOfHandle(handle);
  const std::string_view text = length == 0 ? std::string_view() : std::string_view(bytes, length);
  return NewObject(doc, indirect, CellValue(NewStringCell(doc, text)));
}

ObjectHandle NewArray(ObjectDoc handle, Boolean indirect, std::uint32_t capacity) {
  Document& doc = DocumentOfHandle(handle);
  return NewObject(doc, indirect, CellValue(NewNullCell(doc, CellKind::kArray, capacity)));
}

ObjectHandle NewDict(ObjectDoc handle, Boolean indirect, std::uint32_t capacity) {
  Document& doc = DocumentOfHandle(handle);
  return NewObject(doc, indirect, CellValue(NewNullCell(doc, CellKind::kDict, capacity)));
}

ObjectHandle CopyObject(ObjectHandle object, ObjectDoc target) {
  Document& to = DocumentOfHandle(target);
  const Target source = TargetOf(object);
  if (source.doc == nullptr) return object;
  return HandleOf(to, CopyValue(*source.doc, source.value, to, source.number));
}

void Destroy(ObjectHandle object) {
  const Target target = TargetOf(object);
  if (target.doc == nullptr) return;
  Document& doc = *target.doc;
  if (target.number != 0) {
    MarkObjectChanged(doc, target.number);
    ObjectSlot& slot = *FindSlot(doc.objects, target.number);
    slot.state = SlotState::kFree;
    slot.value = kNullValue;
    // A generation of 65535 tells that the number is never used again.
    if (slot.generation != 0xFFFF) ++slot.generation;
  }
  if (target.value.tag != ValueTag::kCell) return;
  if (target.number == 0 && CellAt(doc.cells, target.value.payload).parent != 0) {
    MarkCellChanged(doc, target.value.payload);
    DetachCell(doc, target.value.payload);
  }
  FreeCellTree(doc.cells, doc.pool, target.value.payload);
}

std::int32_t IntegerValue(ObjectHandle object) {
  const Target target = TargetOf(object);
  const Value value = NumberOf(target);
  if (value.tag == ValueTag::kInteger) return static_cast<std::int32_t>(value.payload);
  if (value.tag != ValueTag::kFixed) FailKind(target, "a number");
  return static_cast<Fixed>(value.payload) / kFixedOne;
}

Fixed FixedValue(ObjectHandle object) {
  const Target target = TargetOf(object);
  const Value value = NumberOf(target);
  if (value.tag == ValueTag::kFixed) return static_cast<Fixed>(value.payload);
  if (value.tag != ValueTag::kInteger) FailKind(target, "a number");
  const auto integer = static_cast<std::int32_t>(value.payload);
  if (integer > 0x7FFF) return 0x7FFFFFFF;
  if (integer < -0x8000) return -0x7FFFFFFF - 1;
  return integer * kFixedOne;
}

Boolean BooleanValue(ObjectHandle object) {
  const Target target = TargetOf(object);
  if (target.value.tag != ValueTag::kBoolean) FailKind(target, "a boolean");
  return target.value.payload != 0 ? 1 : 0;
}

Atom NameValue(ObjectHandle object) {
  const Target target = TargetOf(object);
  if (target.value.tag != ValueTag::kName) FailKind(target, "a name");
  if (target.value.payload >= kFirstFurtherName) {
    Fail(kErrorTooManyNames, "There are more names than can be told apart; reopen the program.");
  }
  return static_cast<Atom>(target.value.payload);
}

const char* StringValue(ObjectHandle object, std::uint32_t* length) {
  const Target target = TargetOf(object);
  const std::uint32_t cell =
      target.doc == nullptr ? 0 : CellOf(*target.doc, target.value, CellKind::kString);
  if (cell == 0) FailKind(target, "a string");
  const std::string_view bytes = StringBytes(*target.doc, cell);
  if (length != nullptr) *length = static_cast<std::uint32_t>(bytes.size());
  return bytes.data();
}

}  // namespace quillon::objects
