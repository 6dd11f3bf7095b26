#include "plugin/model/form_dict.h"

#include "plugin/host/form_events.h"
#include "plugin/model/form_hooks.h"
#include "plugin/model/keys.h"

namespace quillform {
namespace {

// Forms of older revisions carry their number; 0.8 is the first that is understood. A producer that
// rounds down writes a little less.
constexpr Fixed kOldestRevision = 0xCCCB;

constexpr std::uint32_t kFormDictCapacity = 20;

// The dictionary that was found valid last; it is taken as valid without another look.
ObjectHandle knownForm = kNullObject;

bool IsOlderRevision(ObjectHandle form) {
  const ObjectHandle revision = Objects->DictGet(form, key::FormRevision);
  if (!IsKind(revision, ObjectKind::kInteger) && !IsKind(revision, ObjectKind::kFixed)) {
    return false;
  }
  return Objects->FixedValue(revision) < kOldestRevision;
}

bool IsValidForm(ObjectHandle form) {
  if (!IsNull(knownForm) && Objects->Equal(form, knownForm)) return true;
  if (!IsKind(form, ObjectKind::kDict) || !Objects->IsIndirect(form) ||
      !IsKind(Objects->DictGet(form, key::Fields), ObjectKind::kArray) || IsOlderRevision(form)) {
    return false;
  }
  knownForm = form;
  return true;
}

ObjectHandle NewFormDict(ObjectDoc doc, ObjectHandle catalog) {
  const ObjectHandle form = Objects->NewDict(doc, true, kFormDictCapacity);
  const FailureCode failure = CatchFailure([&] {
    Objects->DictPut(form, key::Fields, Objects->NewArray(doc, false, 0));
    Objects->DictPut(catalog, key::FormDict, form);
  });
  if (failure != quillon::kErrorNone) {
    DropFailures([&] { Objects->Destroy(form); });
    Raise(failure);
  }
  return form;
}

ObjectHandle TakeOrMakeFormDict(ObjectDoc doc) {
  const ObjectHandle catalog = Objects->DocRoot(doc);
  const ObjectHandle existing = Objects->DictGet(catalog, key::FormDict);
  if (!IsKind(existing, ObjectKind::kDict)) return NewFormDict(doc, catalog);
  if (Objects->DictKnown(existing, key::FormRevision)) {
    Objects->DictRemove(existing, key::FormRevision);
  }
  return existing;
}

}  // namespace

ObjectHandle CatalogFormOf(ObjectDoc doc) {
  if (doc == nullptr) return kNullObject;
  const ObjectHandle catalog = Objects->DocRoot(doc);
  if (!IsKind(catalog, ObjectKind::kDict)) return kNullObject;
  return Objects->DictGet(catalog, key::FormDict);
}

ObjectHandle FormDictOfObjects(ObjectDoc doc) {
  const ObjectHandle form = CatalogFormOf(doc);
  return !IsNull(form) && IsValidForm(form) ? form : kNullObject;
}

ObjectHandle FormDictOf(DocHandle doc) {
  return doc != nullptr ? FormDictOfObjects(Document->ObjectDocOf(doc)) : kNullObject;
}

bool DocumentHasForm(DocHandle doc) { return !IsNull(FormDictOf(doc)); }

ObjectHandle CreateFormDict(DocHandle doc) {
  ForgetFormDict();
  ObjectHandle form = kNullObject;
  const FailureCode failure =
      CatchFailure([&] { form = TakeOrMakeFormDict(Document->ObjectDocOf(doc)); });
  if (failure != quillon::kErrorNone) return kNullObject;
  if (appearanceHooks.SetDefaultFormAppearance != nullptr) {
    appearanceHooks.SetDefaultFormAppearance(form);
  }
  FormEventRecord record{};
  record.document = doc;
  FormEventAnnounce(kEventFormMade, &record);
  return form;
}

void ForgetFormDict() { knownForm = kNullObject; }

}  // namespace quillform
