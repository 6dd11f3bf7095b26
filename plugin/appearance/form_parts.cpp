#include "plugin/appearance/form_parts.h"

#include <array>

#include "plugin/model/keys.h"

namespace quillform {

namespace {

// Compressing less does not pay for the filter's entry and the coding.
constexpr std::size_t kLongestPlainContent = 256;

template <std::size_t count>
void PutNumbers(ObjectHandle dict, Atom key, ObjectDoc doc,
                const std::array<Fixed, count>& numbers) {
  const ObjectHandle array = PutNewArray(dict, key, doc, count);
  for (std::uint32_t i = 0; i < count; ++i) {
    Objects->ArrayPut(array, i, Objects->NewFixed(doc, false, numbers[i]));
  }
}

ObjectHandle PutNew(ObjectHandle container, Atom key, ObjectHandle made) {
  NewObject object(made);
  Objects->DictPut(container, key, object.handle);
  return object.Release();
}

}  // namespace

NewObject::~NewObject() {
  if (handle.first == 0 && handle.second == 0) return;
  DropFailures([this] { Objects->Destroy(handle); });
}

ObjectHandle NewObject::Release() { return std::exchange(handle, kNullObject); }

ObjectHandle EntryOf(ObjectHandle container, Atom key) {
  const ObjectKind kind = Objects->TypeOf(container);
  if (kind != ObjectKind::kDict && kind != ObjectKind::kStream) return kNullObject;
  return Objects->DictGet(container, key);
}

bool IsNumber(ObjectHandle object) {
  const ObjectKind kind = Objects->TypeOf(object);
  return kind == ObjectKind::kInteger || kind == ObjectKind::kFixed;
}

ObjectHandle PutNewDict(ObjectHandle container, Atom key, ObjectDoc doc, std::uint32_t capacity) {
  return PutNew(container, key, Objects->NewDict(doc, false, capacity));
}

ObjectHandle PutNewArray(ObjectHandle container, Atom key, ObjectDoc doc, std::uint32_t capacity) {
  return PutNew(container, key, Objects->NewArray(doc, false, capacity));
}

ObjectHandle EnsureDict(ObjectHandle container, Atom key, ObjectDoc doc, std::uint32_t capacity) {
  const ObjectHandle present = EntryOf(container, key);
  if (IsKind(present, ObjectKind::kDict)) return present;
  return PutNewDict(container, key, doc, capacity);
}

ObjectHandle ContentAttributes(ObjectDoc doc, std::size_t length) {
  if (length <= kLongestPlainContent) return kNullObject;
  NewObject attributes(Objects->NewDict(doc, false, 1));
  const ObjectHandle filters = PutNewArray(attributes.handle, key::Filter, doc, 1);
  Objects->ArrayPut(filters, 0, Objects->NewName(doc, false, key::FlateDecode));
  return attributes.Release();
}

void PutBBox(ObjectHandle dict, ObjectDoc doc, const FixedRect& box) {
  PutNumbers<4>(dict, key::BBox, doc, {box.left, box.bottom, box.right, box.top});
}

void PutRotationMatrix(ObjectHandle dict, ObjectDoc doc, std::uint16_t rotation, Fixed width,
                       Fixed height) {
  constexpr Fixed one = kFixedOne;
  switch (rotation) {
    case 90:
      PutNumbers<6>(dict, key::Matrix, doc, {0, one, -one, 0, height, 0});
      break;
    case 180:
      PutNumbers<6>(dict, key::Matrix, doc, {-one, 0, 0, -one, width, height});
      break;
    case 270:
      PutNumbers<6>(dict, key::Matrix, doc, {0, -one, one, 0, 0, width});
      break;
    default:
      break;
  }
}

}  // namespace quillform
