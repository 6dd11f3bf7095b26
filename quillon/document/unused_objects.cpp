#include "quillon/document/unused_objects.h"

#include <unordered_map>

#include "quillon/core/failure.h"
#include "quillon/objects/operations.h"
#include "quillon/objects/pdf_file.h"

namespace quillon::document {
namespace {

using Reached = std::unordered_map<std::uint32_t, ObjectHandle>;  // by object number

struct Search {
  Reached reached;
  std::vector<ObjectHandle> pending;
};

Boolean Meet(ObjectHandle, ObjectHandle value, void* data) {
  auto& search = *static_cast<Search*>(data);
  switch (objects::TypeOf(value)) {
    case ObjectKind::kDict:
    case ObjectKind::kArray:
    case ObjectKind::kStream:
      break;
    default:
      // Strings and the like lead nowhere, but may be objects of their own.
      if (const std::uint32_t number = ObjectNumberOf(value)) search.reached.emplace(number, value);
      return 1;
  }
  const std::uint32_t number = ObjectNumberOf(value);
  if (number == 0 || search.reached.emplace(number, value).second) search.pending.push_back(value);
  return 1;
}

// A damaged object leads nowhere.
void LookInside(ObjectHandle object, Search* search) {
  try {
    objects::EnumDict(object, &Meet, search);
  } catch (const HostFailure&) {
  }
}

Reached ReachFrom(const std::vector<ObjectHandle>& starts) {
  Search search;
  for (const ObjectHandle start : starts) Meet(kNullObject, start, &search);
  while (!search.pending.empty()) {
    const ObjectHandle next = search.pending.back();
    search.pending.pop_back();
    LookInside(next, &search);
  }
  return search.reached;
}

}  // namespace

void RemoveWithUnused(ObjectDoc doc, const std::vector<ObjectHandle>& removed) {
  Reached candidates = ReachFrom(removed);
  for (const ObjectHandle object : removed) {
    candidates.erase(ObjectNumberOf(object));
    objects::Destroy(object);
  }
  const Reached used = ReachFrom({TrailerOf(doc)});
  for (const auto& [number, object] : candidates) {
    if (used.count(number) == 0) objects::Destroy(object);
  }
}

}  // namespace quillon::document
