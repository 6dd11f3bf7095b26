#include "quillon/objects/unlisted.h"

#include <algorithm>

#include "quillon/objects/file_parts.h"
#include "quillon/objects/load.h"

namespace quillon::objects {
namespace {

bool IsFree(const Document& doc, std::uint32_t number) {
  const ObjectSlot* slot = FindSlot(doc.objects, number);
  return slot == nullptr || !InUse(*slot);
}

Unlisted& UnlistedOf(Document& doc) {
  if (doc.unlisted) return *doc.unlisted;
  auto unlisted = std::make_unique<Unlisted>();
  FileParts parts = ReadThrough(doc);
  for (const FoundObject& found : parts.objects) {
    if (!IsFree(doc, found.number)) continue;
    unlisted->objects.insert_or_assign(found.number, ObjectPlace{found.position, found.generation});
  }
  unlisted->named = std::move(parts.named);
  doc.unlisted = std::move(unlisted);
  return *doc.unlisted;
}

// What the members of object streams refer to is not seen in the file's text.
void NoteNamesInStreams(Document& doc, Unlisted& unlisted) {
  if (unlisted.streamsNoted) return;
  ReadObjectStreams(doc);
  for (const auto& [number, stream] : doc.objectStreams) {
    NoteReferences(stream->bytes, &unlisted.named);
  }
  unlisted.streamsNoted = true;
}

bool IsNamed(const Unlisted& unlisted, std::uint32_t number) {
  return number < unlisted.named.size() && unlisted.named[number];
}

// An object is freed by a later update than the one it stands in: by cross-references that are not
// the first ones behind it.
bool WasFreed(const Document& doc, const ObjectSlot& slot, const ObjectPlace& place) {
  if (place.position > slot.position) return false;
  return std::any_of(doc.sections.begin(), doc.sections.end(), [&](std::uint64_t section) {
    return section > place.position && section < slot.position;
  });
}

}  // namespace

bool AdoptObject(Document& doc, std::uint32_t number) {
  // Without a trailer the cross-references are still being read; a scan has entered everything.
  if (doc.trailer == 0 || doc.scanned || doc.source.bytes.empty()) return false;
  if (number == 0 || number > kMaxObjectNumber) return false;
  const ObjectSlot* known = FindSlot(doc.objects, number);
  if (known != nullptr && known->changed) return false;
  const Unlisted& unlisted = UnlistedOf(doc);
  const auto found = unlisted.objects.find(number);
  if (found == unlisted.objects.end()) return false;
  const bool freed = known != nullptr && known->state == SlotState::kFree;
  if (freed && WasFreed(doc, *known, found->second)) return false;
  ObjectSlot& slot = SlotFor(doc.objects, number);
  slot.state = SlotState::kInFile;
  slot.position = found->second.position;
  slot.generation = found->second.generation;
  slot.misplaced = true;
  Warn(doc,
       "Object " + std::to_string(number) + " stands in the file, but the cross-references " +
           (freed ? "list it as free." : "leave it out."),
       number, FileOffset(doc, slot.position));
  return true;
}

void AdoptNamedObjects(Document& doc) {
  if (doc.source.bytes.empty() || doc.scanned) return;
  Unlisted& unlisted = UnlistedOf(doc);
  NoteNamesInStreams(doc, unlisted);
  for (const auto& [number, place] : unlisted.objects) {
    if (IsNamed(unlisted, number) && IsFree(doc, number)) AdoptObject(doc, number);
  }
}

std::uint32_t NewNumber(Document& doc) {
  std::uint32_t number = doc.objects.count;
  if (!doc.source.bytes.empty()) {
    Unlisted& unlisted = UnlistedOf(doc);
    NoteNamesInStreams(doc, unlisted);
    number = std::max(number, doc.objects.count);
    while (IsNamed(unlisted, number) || unlisted.objects.count(number) != 0) ++number;
  }
  if (number > kMaxObjectNumber) Fail(kErrorGeneral, "The document has too many objects.");
  return number;
}

}  // namespace quillon::objects
