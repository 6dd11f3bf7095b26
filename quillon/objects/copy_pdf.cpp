// Parts of one document in another.
#include "quillon/objects/copy.h"
#include "quillon/objects/dictionary.h"
#include "quillon/objects/form_key.h"
#include "quillon/objects/load.h"
#include "quillon/objects/pdf_file.h"

namespace quillon {

std::vector<ObjectHandle> CopyPdfObjects(ObjectDoc fromHandle,
                                         const std::vector<ObjectHandle>& copied,
                                         const std::vector<ObjectHandle>& leftOut,
                                         ObjectDoc toHandle) {
  objects::Document& from = objects::DocumentOfHandle(fromHandle);
  objects::Document& to = objects::DocumentOfHandle(toHandle);
  if (&from == &to) Fail(kErrorBadParameter, "Objects are copied into another document only.");
  objects::CopiedNumbers numbers;
  for (const ObjectHandle object : leftOut) numbers.emplace(objects::TargetOf(object).number, 0);
  std::vector<ObjectHandle> copies;
  copies.reserve(copied.size());
  for (const ObjectHandle object : copied) {
    const objects::Target target = objects::TargetOf(object);
    const bool isWord = target.doc == nullptr;
    copies.push_back(
        isWord ? object
               : HandleOfObject(to, CopyAsObject(from, target.value, target.number, to, &numbers)));
  }
  return copies;
}

void AdoptFormKey(ObjectDoc docHandle, ObjectDoc otherHandle) {
  objects::Document& doc = objects::DocumentOfHandle(docHandle);
  const objects::Document& other = objects::DocumentOfHandle(otherHandle);
  if (doc.formKey != kNoAtom || other.formKey == kNoAtom) return;
  const std::uint32_t catalog =
      objects::CellOf(doc, objects::LoadObject(doc, doc.root), objects::CellKind::kDict);
  if (catalog == 0) return;
  if (objects::EntryValue(doc, catalog, objects::kFormKey) != objects::kNullValue) return;
  const std::string name(objects::NameText(other, other.formKey));
  const objects::NameCode key = objects::NameFromText(doc, name);
  const objects::Value taken = objects::EntryValue(doc, catalog, key);
  if (objects::Dereference(doc, taken) != objects::kNullValue) {
    Fail(kErrorNotOffered, "The document's own form (" + name +
                               ") cannot be read, and a second one beside it would be lost to "
                               "other programs. Mend the document first.");
  }
  // A reference to nothing.
  objects::RemoveEntry(doc, catalog, key);
  doc.formKey = key;
}

}  // namespace quillon
