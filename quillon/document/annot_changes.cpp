// Annotations: changing them, and placing them on pages.
#include <algorithm>

#include "quillon/document/annots.h"
#include "quillon/document/document_record.h"
#include "quillon/document/names.h"
#include "quillon/document/notify.h"
#include "quillon/document/object_reading.h"
#include "quillon/objects/operations.h"

namespace quillon::document {
namespace {

constexpr std::uint32_t kAnnotCapacity = 10;

ObjectHandle NeedArray(PageRecord& page) {
  ObjectHandle array = AnnotsArray(page.dict);
  if (!IsNull(array)) return array;
  array = objects::NewArray(page.doc->objects, 0, 1);
  objects::DictPut(page.dict, Names().Annots, array);
  return array;
}

// The entry of the array before which an annotation gets the index.
std::uint32_t EntryFor(const PageRecord& page, ObjectHandle array, std::int32_t index) {
  const PageAnnots& annots = AnnotsOnPage(page.doc, page.number);
  const bool within = index >= 0 && static_cast<std::size_t>(index) < annots.entries.size();
  return within ? annots.entries[static_cast<std::size_t>(index)] : objects::ArrayLength(array);
}

}  // namespace

void AnnotWillChange(AnnotHandle annot, Atom key) {
  SendAnnotNote(kNoteAnnotWillChange, annot, PageOfAnnot(annot), key);
}

void AnnotDidChange(AnnotHandle annot, Atom key, FailureCode error) {
  SendAnnotNote(kNoteAnnotChanged, annot, PageOfAnnot(annot), key, error);
}

void AnnotSetRect(AnnotHandle annot, const FixedRect* rect) {
  if (rect == nullptr) Fail(kErrorBadParameter, "AnnotSetRect needs a rectangle");
  const ObjectHandle dict = DictOf(annot);
  ChangeAnnot(annot, Names().Rect, [&] {
    objects::DictPut(dict, Names().Rect, NewRect(objects::DocumentOf(dict), *rect));
  });
}

void SetAnnotFlags(AnnotHandle annot, std::uint32_t flags) {
  const ObjectHandle dict = DictOf(annot);
  ChangeAnnot(annot, Names().F, [&] {
    objects::DictPut(
        dict, Names().F,
        objects::NewInteger(objects::DocumentOf(dict), 0, static_cast<std::int32_t>(flags)));
  });
}

AnnotHandle NewAnnot(PageHandle page, Atom subtype, const FixedRect* rect) {
  if (rect == nullptr) Fail(kErrorBadParameter, "NewAnnot needs a rectangle");
  const ObjectDoc doc = RecordOf(page).doc->objects;
  const ObjectHandle dict = objects::NewDict(doc, 1, kAnnotCapacity);
  objects::DictPut(dict, Names().Type, objects::NewName(doc, 0, Names().Annot));
  objects::DictPut(dict, Names().Subtype, objects::NewName(doc, 0, subtype));
  objects::DictPut(dict, Names().Rect, NewRect(doc, *rect));
  InsertAnnot(page, -1, AnnotOf(dict));
  return AnnotOf(dict);
}

void InsertAnnot(PageHandle page, std::int32_t index, AnnotHandle annot) {
  PageRecord& record = RecordOf(page);
  const ObjectHandle dict = DictOf(annot);
  if (!IsKind(dict, ObjectKind::kDict)) Fail(kErrorBadObject, "an annotation is a dictionary");
  if (objects::DocumentOf(dict) != record.doc->objects) {
    Fail(kErrorBadParameter, "the annotation belongs to another document than the page");
  }
  const ObjectHandle array = NeedArray(record);
  // P is a reference, so a page that is written in its node cannot be named there.
  if (objects::IsIndirect(record.dict) != 0) objects::DictPut(dict, Names().P, record.dict);
  objects::ArrayInsert(array, EntryFor(record, array, index), dict);
  SendAnnotNote(kNoteAnnotAdded, annot, static_cast<std::int32_t>(record.number));
}

void RemoveAnnot(PageHandle page, std::uint32_t index) {
  const PageRecord record = RecordOf(page);
  const AnnotHandle annot = AnnotAt(page, index);
  SendAnnotNote(kNoteAnnotWillRemove, annot, static_cast<std::int32_t>(record.number));
  // Who was told may have changed the page meanwhile.
  const std::int32_t now = AnnotIndex(page, annot);
  if (now < 0) return;
  const PageAnnots& annots = AnnotsOnPage(record.doc, record.number);
  objects::ArrayRemove(annots.array, annots.entries[static_cast<std::size_t>(now)]);
}

}  // namespace quillon::document
