#include "quillon/objects/operands.h"

#include "quillon/objects/copy.h"
#include "quillon/objects/form_key.h"
#include "quillon/objects/load.h"

namespace quillon::objects {
namespace {

std::uint32_t CellIn(const Target& target, CellKind kind) {
  return target.doc == nullptr ? 0 : CellOf(*target.doc, target.value, kind);
}

// True when `cell` stands in `container` or is it: putting it there would close a circle.
bool Holds(Document& doc, std::uint32_t cell, std::uint32_t container) {
  std::uint32_t at = container;
  while (at != 0 && (at & kIndirectParent) == 0) {
    if (at == cell) return true;
    at = CellAt(doc.cells, at).parent;
  }
  return false;
}

void CheckDepth(Document& doc, std::uint32_t container) {
  int depth = 0;
  for (std::uint32_t at = container; at != 0 && (at & kIndirectParent) == 0; ++depth) {
    at = CellAt(doc.cells, at).parent;
  }
  if (depth > kMaxNesting) Fail(kErrorBadParameter, "Objects are nested too deep.");
}

}  // namespace

void FailKind(const Target& target, const char* wanted) {
  Fail(kErrorBadObject, std::string("An object is not ") + wanted + ".", target.number,
       target.number == 0 ? kNoOffset : ObjectOffset(*target.doc, target.number));
}

Container DictOperand(ObjectHandle object) {
  const Target target = TargetOf(object);
  if (const std::uint32_t dict = CellIn(target, CellKind::kDict)) return {*target.doc, dict};
  const std::uint32_t stream = CellIn(target, CellKind::kStream);
  if (stream == 0) FailKind(target, "a dictionary");
  return {*target.doc, CellAt(target.doc->cells, stream).capacity};
}

Container ArrayOperand(ObjectHandle object) {
  const Target target = TargetOf(object);
  const std::uint32_t array = CellIn(target, CellKind::kArray);
  if (array == 0) FailKind(target, "an array");
  return {*target.doc, array};
}

Container StreamOperand(ObjectHandle object) {
  const Target target = TargetOf(object);
  const std::uint32_t stream = CellIn(target, CellKind::kStream);
  if (stream == 0) FailKind(target, "a stream");
  return {*target.doc, stream};
}

Value StoredValue(const Container& container, ObjectHandle object) {
  const Target target = TargetOf(object);
  Document& doc = container.doc;
  if (target.doc == nullptr) return target.value;
  if (target.doc != &doc) {
    Fail(kErrorBadParameter, "An object was put into another document. Copy it first.");
  }
  if (target.number != 0) {
    const std::uint32_t number = target.number == kLentNumber ? KeepLentForm(doc) : target.number;
    return ReferenceTo(number, FindSlot(doc.objects, number)->generation);
  }
  if (target.value.tag != ValueTag::kCell) return target.value;
  const std::uint32_t cell = target.value.payload;
  CheckDepth(doc, container.cell);
  if (CellAt(doc.cells, cell).parent == 0 && !Holds(doc, cell, container.cell)) {
    return target.value;
  }
  return CopyValue(doc, target.value, doc);
}

}  // namespace quillon::objects
