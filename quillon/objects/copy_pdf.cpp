// Parts of one document in another.
#include "quillon/objects/copy.h"
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
  const std::string_view key = objects::NameText(other, other.formKey);
  // An entry of that key that is no form stays what it is.
  for (const std::string_view taken : {objects::kFormKey, key}) {
    if (objects::EntryValue(doc, catalog, taken) != objects::kNullValue) return;
  }
  doc.formKey = objects::NameFromText(doc, std::string(key));
}

}  // namespace quillon
