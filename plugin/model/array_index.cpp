#include "plugin/model/array_index.h"

#include <algorithm>

#include "plugin/model/field_name_text.h"
#include "plugin/model/form_record.h"
#include "plugin/model/keys.h"

namespace quillform {
namespace {

// Below this, searching costs less.
constexpr std::uint32_t kShortestIndexed = 8;
// No array is as long.
constexpr std::uint32_t kReadAgain = ~std::uint32_t{0};

using Bearer = ArrayNames::Bearer;
using Bearers = ArrayNames::Bearers;
using Place = ArrayNames::Place;

Bearers* BearersFor(ArrayNames& names, ObjectHandle element) {
  std::string name;
  if (!IsKind(element, ObjectKind::kDict) || !names.nameOf(element, &name)) return nullptr;
  return &names.bearersOf[std::move(name)];
}

void AddBearer(Bearers* bearers, Bearer bearer) {
  const auto behind = std::find_if(bearers->rbegin(), bearers->rend(),
                                   [&](const Bearer& other) { return other.order < bearer.order; });
  bearers->insert(behind.base(), bearer);
}

void RemoveBearer(Bearers* bearers, ObjectHandle element, std::uint32_t count) {
  const std::uint64_t identity = IdentityOf(element);
  for (auto at = bearers->end(); at != bearers->begin() && count > 0;) {
    if (IdentityOf((--at)->element) != identity) continue;
    at = bearers->erase(at);
    --count;
  }
}

void AddElement(ArrayNames& names, ObjectHandle element, std::uint32_t order) {
  const bool indirect = Objects->IsIndirect(element);
  Bearers* bearers = BearersFor(names, element);
  if (bearers != nullptr) AddBearer(bearers, {order, element});
  if (bearers == nullptr || !indirect) ++names.nameless;
  if (!indirect) return;
  Place& place = names.placeOf[IdentityOf(element)];
  place.order = place.count == 0 ? order : std::max(place.order, order);
  place.bearers = bearers;
  ++place.count;
}

void DropElement(ArrayNames& names, ObjectHandle element) {
  const auto found = names.placeOf.find(IdentityOf(element));
  if (found == names.placeOf.end()) return;
  const Place place = found->second;
  names.placeOf.erase(found);
  if (place.bearers != nullptr) {
    RemoveBearer(place.bearers, element, place.count);
  } else {
    names.nameless -= place.count;
  }
}

void Read(ArrayNames& names, ObjectHandle array, std::uint32_t length,
          bool (*nameOf)(ObjectHandle, std::string*)) {
  names = ArrayNames{};
  names.nameOf = nameOf;
  for (std::uint32_t i = 0; i < length; ++i) AddElement(names, Objects->ArrayGet(array, i), i);
  names.array = array;
  names.length = names.nextOrder = length;
}

// Runs `note` on each index of the array that was right when the array had `length` elements. An
// index that cannot follow is not worth a failure.
template <typename Note>
void UpdateIndices(FormRecord& record, ObjectHandle array, std::uint32_t length, Note&& note) {
  if (record.bulkDepth == 0) return;
  record.kidsIndex.erase(IdentityOf(array));
  const FailureCode failure = CatchFailure([&] {
    ArrayNames& fields = record.fieldsIndex;
    if (!IsNull(fields.array) && Objects->Equal(fields.array, array) && fields.length == length) {
      note(fields);
    }
    const auto level = record.levelIndex.find(IdentityOf(array));
    if (level != record.levelIndex.end() && level->second.length == length) note(level->second);
  });
  if (failure != quillon::kErrorNone) DropArrayIndices(record);
}

}  // namespace

bool FullNameOfElement(ObjectHandle element, std::string* name) {
  if (!IsKind(element, ObjectKind::kDict)) return false;
  NameText text;
  bool named = false;
  const FailureCode failure = CatchFailure([&] { named = FullNameTextOf(element, &text); });
  if (failure != quillon::kErrorNone && failure != quillon::kErrorBadStructure) Raise(failure);
  if (named) *name = ViewOf(text);
  return named;
}

ArrayNames* NamesOnLevel(FormRecord& record, ObjectHandle array) {
  if (record.bulkDepth == 0) return nullptr;
  const std::uint32_t length = Objects->ArrayLength(array);
  const auto known = record.levelIndex.find(IdentityOf(array));
  if (known != record.levelIndex.end() && known->second.length == length) return &known->second;
  if (length < kShortestIndexed) return nullptr;
  ArrayNames& names = record.levelIndex[IdentityOf(array)];
  Read(names, array, length, &PartialNameOf);
  return &names;
}

const ArrayNames& NamesInFields(FormRecord& record, ObjectHandle fields) {
  ArrayNames& names = record.fieldsIndex;
  const std::uint32_t length = Objects->ArrayLength(fields);
  if (names.length != length || IsNull(names.array) || !Objects->Equal(names.array, fields)) {
    Read(names, fields, length, &FullNameOfElement);
  }
  return names;
}

// Elements go from the end, from the beginning or page by page: then one of both ends of where it
// can stand is near.
std::uint32_t PositionOf(const ArrayNames& names, const ArrayNames::Place& place,
                         ObjectHandle element) {
  const std::uint32_t gone = names.nextOrder - names.length;
  std::uint32_t low = place.order > gone ? place.order - gone : 0;
  std::uint32_t high = std::min(place.order + 1, names.length);
  while (low < high) {
    if (Objects->Equal(Objects->ArrayGet(names.array, --high), element)) return high;
    if (low < high && Objects->Equal(Objects->ArrayGet(names.array, low), element)) return low;
    ++low;
  }
  return names.length;
}

void NoteAppended(FormRecord& record, ObjectHandle array, ObjectHandle element) {
  const std::uint32_t length = Objects->ArrayLength(array);
  UpdateIndices(record, array, length - 1, [&](ArrayNames& names) {
    AddElement(names, element, names.nextOrder++);
    names.length = length;
  });
}

void NoteRemoved(FormRecord& record, ObjectHandle array, ObjectHandle element,
                 std::uint32_t count) {
  const std::uint32_t length = Objects->ArrayLength(array);
  UpdateIndices(record, array, length + count, [&](ArrayNames& names) {
    DropElement(names, element);
    names.length = length;
  });
}

void NoteReplaced(FormRecord& record, ObjectHandle array, ObjectHandle old,
                  ObjectHandle replacement) {
  UpdateIndices(record, array, Objects->ArrayLength(array), [&](ArrayNames& names) {
    const auto found = names.placeOf.find(IdentityOf(old));
    if (found == names.placeOf.end()) return;
    if (found->second.count != 1) {
      names.length = kReadAgain;
      return;
    }
    const std::uint32_t order = found->second.order;
    DropElement(names, old);
    AddElement(names, replacement, order);
  });
}

void NoteRenamed(FormRecord& record, ObjectHandle array, ObjectHandle element) {
  NoteReplaced(record, array, element, element);
}

}  // namespace quillform
