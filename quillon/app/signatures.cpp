#include "quillon/app/signatures.h"

#include <algorithm>

#include "quillon/app/console.h"
#include "quillon/app/form_inspection.h"
#include "quillon/app/form_keys.h"
#include "quillon/document/object_reading.h"
#include "quillon/document/operations.h"
#include "quillon/document/text_encoding.h"
#include "quillon/objects/operations.h"
#include "quillon/objects/pdf_file.h"

namespace quillon::app {
namespace {

using document::EntryOf;
using document::IsKind;
using document::NameOr;

constexpr std::int32_t kAppendOnly = 2;  // of SigFlags
constexpr std::int32_t kNoChange = 1;    // P of DocMDP and of Lock
constexpr std::int32_t kFillIn = 2;

std::vector<ObjectHandle> ElementsOf(ObjectHandle array) {
  std::vector<ObjectHandle> elements;
  if (!IsKind(array, ObjectKind::kArray)) return elements;
  for (std::uint32_t i = 0; i < objects::ArrayLength(array); ++i) {
    elements.push_back(objects::ArrayGet(array, i));
  }
  return elements;
}

// From a Lock dictionary or the parameters of FieldMDP.
void AddLock(const std::string& signer, ObjectHandle lock, SignatureRules* rules) {
  const Atom action = NameOr(EntryOf(lock, Keys().Action), kNoAtom);
  if (action == kNoAtom) return;
  FieldLock added{signer, action != Keys().Include, {}};
  for (const ObjectHandle name : ElementsOf(EntryOf(lock, Keys().Fields))) {
    if (action == Keys().All || !IsKind(name, ObjectKind::kString)) continue;
    added.names.push_back(PdfTextToUtf8(document::BytesOf(name)));
  }
  rules->locks.push_back(std::move(added));
}

void AddPermission(std::int32_t permission, SignatureRules* rules) {
  rules->permitsNoPages = true;
  rules->permitsNothing = rules->permitsNothing || permission == kNoChange;
}

void AddSignature(const std::string& signer, ObjectHandle signature, SignatureRules* rules) {
  rules->isSigned = true;
  for (const ObjectHandle reference : ElementsOf(EntryOf(signature, Keys().Reference))) {
    const Atom method = NameOr(EntryOf(reference, Keys().TransformMethod), kNoAtom);
    const ObjectHandle params = EntryOf(reference, Keys().TransformParams);
    if (method == Keys().FieldMDP) AddLock(signer, params, rules);
    if (method == Keys().DocMDP) {
      AddPermission(document::IntegerOr(EntryOf(params, Keys().P), kFillIn), rules);
    }
  }
}

void AddFieldSignature(const VisitedField& field, SignatureRules* rules) {
  const ObjectHandle value = EntryOf(field.dict, Keys().V);
  if (!field.signature || !IsKind(value, ObjectKind::kDict)) return;
  AddSignature(field.name, value, rules);
  const ObjectHandle lock = EntryOf(field.dict, Keys().Lock);
  AddLock(field.name, lock, rules);
  const std::int32_t permission = document::IntegerOr(EntryOf(lock, Keys().P), 0);
  if (permission != 0) AddPermission(permission, rules);
}

// A signature that somebody took out of the form, but not off the page.
void AddWidgetSignatures(DocHandle doc, SignatureRules* rules) {
  const std::uint32_t pages = document::PageCount(doc);
  for (std::uint32_t number = 0; number < pages; ++number) {
    const PageHandle page = document::AcquirePage(doc, number);
    const ObjectHandle annots = EntryOf(document::PageDict(page), Keys().Annots);
    document::ReleasePage(page);
    for (const ObjectHandle annot : ElementsOf(annots)) {
      const bool signature = NameOr(EntryOf(annot, Keys().FT), kNoAtom) == Keys().Sig;
      const ObjectHandle value = EntryOf(annot, Keys().V);
      if (signature && IsKind(value, ObjectKind::kDict)) AddSignature({}, value, rules);
    }
  }
}

bool IsIn(const std::string& name, const std::vector<std::string>& groups) {
  return std::any_of(groups.begin(), groups.end(), [&name](const std::string& group) {
    return name == group || name.starts_with(group + ".");
  });
}

}  // namespace

SignatureRules RulesOfSignatures(DocHandle doc) {
  const ObjectHandle catalog = objects::DocRoot(document::ObjectDocOf(doc));
  const ObjectHandle form = EntryOf(catalog, Keys().QuillForm);
  const ObjectHandle permissions = EntryOf(catalog, Keys().Perms);
  SignatureRules rules;
  WalkForm(doc, [&rules](const VisitedField& field) { AddFieldSignature(field, &rules); });
  AddWidgetSignatures(doc, &rules);
  const std::int32_t flags = document::IntegerOr(EntryOf(form, Keys().SigFlags), 0);
  rules.isSigned = rules.isSigned || (flags & kAppendOnly) != 0;
  for (const Atom granted : {Keys().DocMDP, Keys().UR, Keys().UR3}) {
    const ObjectHandle signature = EntryOf(permissions, granted);
    if (document::HasEntries(signature)) AddSignature({}, signature, &rules);
  }
  return rules;
}

void CheckLockedFields(DocHandle doc) {
  const SignatureRules rules = RulesOfSignatures(doc);
  if (rules.locks.empty()) return;
  WalkForm(doc, [&rules](const VisitedField& field) {
    if (!PdfEntryChanged(field.dict, Keys().V)) return;
    for (const FieldLock& lock : rules.locks) {
      if (IsIn(field.name, lock.names) == lock.allOthers) continue;
      Fail(kErrorOpenDocument,
           "the signature " + Printable(lock.signer) + " locks the value of " +
               Printable(field.name) +
               ": even a change that is written behind what was signed makes it invalid; --force "
               "writes it all the same");
    }
  });
}

}  // namespace quillon::app
