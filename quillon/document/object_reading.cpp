#include "quillon/document/object_reading.h"

#include <algorithm>
#include <array>

#include "quillon/objects/operations.h"

namespace quillon::document {

bool IsKind(ObjectHandle object, ObjectKind kind) { return objects::TypeOf(object) == kind; }
bool IsNull(ObjectHandle object) { return IsKind(object, ObjectKind::kNull); }

bool HasEntries(ObjectHandle object) {
  const ObjectKind kind = objects::TypeOf(object);
  return kind == ObjectKind::kDict || kind == ObjectKind::kStream;
}

ObjectHandle EntryOf(ObjectHandle dict, Atom key) {
  return HasEntries(dict) ? objects::DictGet(dict, key) : kNullObject;
}

std::optional<Fixed> NumberOf(ObjectHandle object) {
  const ObjectKind kind = objects::TypeOf(object);
  if (kind != ObjectKind::kInteger && kind != ObjectKind::kFixed) return std::nullopt;
  return objects::FixedValue(object);
}

Atom NameOr(ObjectHandle object, Atom otherwise) {
  return IsKind(object, ObjectKind::kName) ? objects::NameValue(object) : otherwise;
}

std::int32_t IntegerOr(ObjectHandle object, std::int32_t otherwise) {
  const ObjectKind kind = objects::TypeOf(object);
  if (kind != ObjectKind::kInteger && kind != ObjectKind::kFixed) return otherwise;
  return objects::IntegerValue(object);
}

std::string BytesOf(ObjectHandle string) {
  if (!IsKind(string, ObjectKind::kString)) return {};
  std::uint32_t length = 0;
  const char* bytes = objects::StringValue(string, &length);
  return {bytes, length};
}

std::optional<FixedRect> RectOf(ObjectHandle object) {
  if (!IsKind(object, ObjectKind::kArray) || objects::ArrayLength(object) < 4) return std::nullopt;
  std::array<Fixed, 4> edges{};
  for (std::uint32_t i = 0; i < edges.size(); ++i) {
    const std::optional<Fixed> edge = NumberOf(objects::ArrayGet(object, i));
    if (!edge) return std::nullopt;
    edges[i] = *edge;
  }
  const auto [left, right] = std::minmax(edges[0], edges[2]);
  const auto [bottom, top] = std::minmax(edges[1], edges[3]);
  return FixedRect{left, top, right, bottom};
}

ObjectHandle NewRect(ObjectDoc doc, const FixedRect& rect) {
  const ObjectHandle array = objects::NewArray(doc, 0, 4);
  const Fixed edges[] = {rect.left, rect.bottom, rect.right, rect.top};
  for (std::uint32_t i = 0; i < 4; ++i) {
    objects::ArrayPut(array, i, objects::NewFixed(doc, 0, edges[i]));
  }
  return array;
}

}  // namespace quillon::document
