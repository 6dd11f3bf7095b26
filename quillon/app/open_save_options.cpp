#include "quillon/app/open_save_options.h"

#include <unordered_set>
#include <utility>
#include <vector>

#include "quillon/app/form_keys.h"
#include "quillon/app/session.h"
#include "quillon/core/operations.h"
#include "quillon/document/object_reading.h"
#include "quillon/document/operations.h"
#include "quillon/objects/operations.h"
#include "quillon/viewer/open_view.h"
#include "quillon/viewer/operations.h"

namespace quillon::app {
namespace {

using document::EntryOf;
using document::IsKind;

constexpr std::int32_t kAppendOnly = 2;

std::string givenPassword;

ObjectHandle EntryNamed(ObjectHandle dict, const char* key) {
  return EntryOf(dict, core::AtomFromName(key));
}

struct PlacedField {
  ObjectHandle dict;
  ObjectHandle holder;  // the field or the form that lists it
  bool signature;       // by inheritance
};

void PushKids(ObjectHandle holder, Atom key, bool signature, std::vector<PlacedField>* pending) {
  const ObjectHandle kids = EntryOf(holder, key);
  if (!IsKind(kids, ObjectKind::kArray)) return;
  for (std::uint32_t i = 0; i < objects::ArrayLength(kids); ++i) {
    pending->push_back({objects::ArrayGet(kids, i), holder, signature});
  }
}

struct FormTree {
  ObjectHandle form;
  Atom typeKey = core::AtomFromName("FT");
  Atom signature = core::AtomFromName("Sig");
  std::unordered_set<std::uint32_t> met{};
  std::vector<PlacedField> pending{};
  bool isSigned = false;
};

// Whether the field is one, met for the first time.
bool IsNewField(FormTree& tree, const PlacedField& field) {
  if (!IsKind(field.dict, ObjectKind::kDict)) {
    WarnOfPdf(field.holder, "An entry of the field tree is no field.");
    return false;
  }
  const std::uint32_t number = ObjectNumberOf(field.dict);
  if (number == 0 || tree.met.insert(number).second) return true;
  WarnOfPdf(field.dict, "A field is listed twice in the field tree; it counts once.");
  return false;
}

void PassField(FormTree& tree, const PlacedField& field) {
  const ObjectHandle parent = EntryOf(field.dict, Keys().Parent);
  if (!document::IsNull(parent) && objects::Equal(parent, field.holder) == 0) {
    WarnOfPdf(field.dict, "A field names another parent than the one that lists it.");
  }
  const Atom type = document::NameOr(EntryOf(field.dict, tree.typeKey), kNoAtom);
  const bool isSignature = type == kNoAtom ? field.signature : type == tree.signature;
  const bool hasValue = IsKind(EntryOf(field.dict, Keys().V), ObjectKind::kDict);
  tree.isSigned = tree.isSigned || (isSignature && hasValue);
  PushKids(field.dict, Keys().Kids, isSignature, &tree.pending);
}

// Walks all of the tree, telling what is wrong with it; answers whether a field holds a signature.
bool HasSignature(ObjectHandle form) {
  FormTree tree{form};
  PushKids(form, Keys().Fields, false, &tree.pending);
  while (!tree.pending.empty()) {
    const PlacedField field = tree.pending.back();
    tree.pending.pop_back();
    if (IsNewField(tree, field)) PassField(tree, field);
  }
  return tree.isSigned;
}

}  // namespace

std::string PasswordFromFile(const std::string& file) {
  std::string text;
  try {
    text = ReadWhole(file);
  } catch (const HostFailure& failure) {
    Fail(failure.code, "the password file " + file + " cannot be read");
  }
  return text.substr(0, text.find_first_of("\r\n"));
}

void UsePassword(const std::string& password) { givenPassword = password; }

OpenOptions OptionsForOpening() {
  OpenOptions options;
  options.password = givenPassword;
  return options;
}

bool InspectForm(DocHandle doc) {
  const ObjectHandle catalog = objects::DocRoot(document::ObjectDocOf(doc));
  const ObjectHandle form = EntryOf(catalog, Keys().QuillForm);
  if (HasSignature(form)) return true;
  if ((document::IntegerOr(EntryNamed(form, "SigFlags"), 0) & kAppendOnly) != 0) return true;
  return document::HasEntries(EntryNamed(EntryNamed(catalog, "Perms"), "DocMDP"));
}

void CheckSignatures(DocHandle doc, bool append, bool force) {
  const bool isSigned = InspectForm(doc);
  if (append || force || !isSigned) return;
  Fail(kErrorOpenDocument,
       "the document is signed, and writing it anew would make its signatures invalid; --append "
       "writes the changes behind what was signed, --force writes it anew all the same");
}

void WriteDocument(DocView view, const std::string& target, bool append) {
  PrepareSave(view);
  const DocHandle doc = viewer::DocOf(view);
  const SaveOptions options{append};
  if (target == kStandardStream) {
    WriteStandardOutput(DocumentToBytes(doc, options));
  } else {
    SaveDocumentFile(doc, target, options);
  }
}

}  // namespace quillon::app
