#include "quillon/app/signatures.h"

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

// Entries of lists that are gone over, and bytes of names. Lists that many objects share are gone
// over for each of them. Ten thousand pages of a hundred annotations make a million.
constexpr std::uint64_t kMaxSteps = 8'000'000;

struct Search {
  SignatureRules rules;
  std::uint64_t steps = 0;
};

void Spend(std::uint64_t* steps, std::uint64_t more) {
  *steps += more;
  if (*steps <= kMaxSteps) return;
  Fail(kErrorBadFile,
       "Looking for signatures takes too long: many objects share the same long lists. The file "
       "may have been made to do harm.");
}

std::vector<ObjectHandle> ElementsOf(Search* search, ObjectHandle array) {
  std::vector<ObjectHandle> elements;
  if (!IsKind(array, ObjectKind::kArray)) return elements;
  Spend(&search->steps, objects::ArrayLength(array));
  for (std::uint32_t i = 0; i < objects::ArrayLength(array); ++i) {
    elements.push_back(objects::ArrayGet(array, i));
  }
  return elements;
}

// From a Lock dictionary or the parameters of FieldMDP.
void AddLock(const std::string& signer, ObjectHandle lock, Search* search) {
  const Atom action = NameOr(EntryOf(lock, Keys().Action), kNoAtom);
  if (action == kNoAtom) return;
  FieldLock added{signer, action != Keys().Include, {}};
  for (const ObjectHandle name : ElementsOf(search, EntryOf(lock, Keys().Fields))) {
    if (action == Keys().All || !IsKind(name, ObjectKind::kString)) continue;
    const std::string bytes = document::BytesOf(name);
    Spend(&search->steps, bytes.size());
    added.names.insert(PdfTextToUtf8(bytes));
  }
  search->rules.locks.push_back(std::move(added));
}

void AddPermission(std::int32_t permission, SignatureRules* rules) {
  rules->permitsNoPages = true;
  rules->permitsNothing = rules->permitsNothing || permission == kNoChange;
}

void AddSignature(const std::string& signer, ObjectHandle signature, Search* search) {
  search->rules.isSigned = true;
  for (const ObjectHandle reference : ElementsOf(search, EntryOf(signature, Keys().Reference))) {
    const Atom method = NameOr(EntryOf(reference, Keys().TransformMethod), kNoAtom);
    const ObjectHandle params = EntryOf(reference, Keys().TransformParams);
    if (method == Keys().FieldMDP) AddLock(signer, params, search);
    if (method == Keys().DocMDP) {
      AddPermission(document::IntegerOr(EntryOf(params, Keys().P), kFillIn), &search->rules);
    }
  }
}

void AddFieldSignature(const VisitedField& field, Search* search) {
  if (!field.signature) return;
  const ObjectHandle value = EntryOf(field.dict, Keys().V);
  if (!IsKind(value, ObjectKind::kDict)) return;
  const std::string name = FullNameOf(field);
  AddSignature(name, value, search);
  const ObjectHandle lock = EntryOf(field.dict, Keys().Lock);
  AddLock(name, lock, search);
  const std::int32_t permission = document::IntegerOr(EntryOf(lock, Keys().P), 0);
  if (permission != 0) AddPermission(permission, &search->rules);
}

// A signature that somebody took out of the form, but not off the page.
void AddWidgetSignatures(DocHandle doc, Search* search) {
  const std::uint32_t pages = document::PageCount(doc);
  for (std::uint32_t number = 0; number < pages; ++number) {
    const PageHandle page = document::AcquirePage(doc, number);
    const ObjectHandle annots = EntryOf(document::PageDict(page), Keys().Annots);
    document::ReleasePage(page);
    for (const ObjectHandle annot : ElementsOf(search, annots)) {
      const bool signature = NameOr(EntryOf(annot, Keys().FT), kNoAtom) == Keys().Sig;
      const ObjectHandle value = EntryOf(annot, Keys().V);
      if (signature && IsKind(value, ObjectKind::kDict)) AddSignature({}, value, search);
    }
  }
}

// The field itself or a group that it is in.
bool IsIn(const std::string& name, const std::unordered_set<std::string>& groups) {
  for (std::size_t end = 0; end < name.size(); ++end) {
    if (name[end] == '.' && groups.contains(name.substr(0, end))) return true;
  }
  return groups.contains(name);
}

}  // namespace

SignatureRules RulesOfSignatures(DocHandle doc) {
  const ObjectHandle catalog = objects::DocRoot(document::ObjectDocOf(doc));
  const ObjectHandle form = EntryOf(catalog, Keys().QuillForm);
  const ObjectHandle permissions = EntryOf(catalog, Keys().Perms);
  Search search;
  WalkForm(doc, [&search](const VisitedField& field) { AddFieldSignature(field, &search); });
  AddWidgetSignatures(doc, &search);
  const std::int32_t flags = document::IntegerOr(EntryOf(form, Keys().SigFlags), 0);
  if ((flags & kAppendOnly) != 0) search.rules.isSigned = true;
  for (const Atom granted : {Keys().DocMDP, Keys().UR, Keys().UR3}) {
    const ObjectHandle signature = EntryOf(permissions, granted);
    if (document::HasEntries(signature)) AddSignature({}, signature, &search);
  }
  return search.rules;
}

void CheckLockedFields(DocHandle doc) {
  const SignatureRules rules = RulesOfSignatures(doc);
  if (rules.locks.empty()) return;
  std::uint64_t steps = 0;
  WalkForm(doc, [&rules, &steps](const VisitedField& field) {
    if (!PdfEntryChanged(field.dict, Keys().V)) return;
    const std::string name = FullNameOf(field);
    for (const FieldLock& lock : rules.locks) {
      Spend(&steps, name.size() + 1);
      if (IsIn(name, lock.names) == lock.allOthers) continue;
      Fail(kErrorOpenDocument,
           "the signature " + Printable(lock.signer) + " locks the value of " + Printable(name) +
               ": even a change that is written behind what was signed makes it invalid; --force "
               "writes it all the same");
    }
  });
}

}  // namespace quillon::app
