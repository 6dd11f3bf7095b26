#include "quillon/render/flat_page.h"

#include <string_view>

#include "quillon/core/operations.h"
#include "quillon/document/object_reading.h"
#include "quillon/document/operations.h"
#include "quillon/objects/operations.h"
#include "quillon/objects/pdf_file.h"
#include "quillon/support/operations.h"

namespace quillon {
namespace {

using document::EntryOf;
using document::IsKind;

constexpr int kMaxPageTreeDepth = 64;

Atom Name(const char* text) { return core::AtomFromName(text); }

// An object-layer document of our own.
struct OwnedPdf {
  ~OwnedPdf() { ClosePdf(doc); }
  ObjectDoc doc;
};

ObjectHandle InheritedResources(ObjectHandle page) {
  ObjectHandle node = page;
  for (int depth = 0; depth < kMaxPageTreeDepth && IsKind(node, ObjectKind::kDict); ++depth) {
    const ObjectHandle resources = objects::DictGet(node, Name("Resources"));
    if (IsKind(resources, ObjectKind::kDict)) return resources;
    node = objects::DictGet(node, Name("Parent"));
  }
  return kNullObject;
}

// A direct copy that may be changed without changing what else uses the original.
ObjectHandle CopyOrNewDict(ObjectDoc doc, ObjectHandle dict) {
  return IsKind(dict, ObjectKind::kDict) ? objects::CopyObject(dict, doc)
                                         : objects::NewDict(doc, 0, 4);
}

ObjectHandle NewContent(ObjectDoc doc, const std::string& text) {
  const StreamHandle source =
      support::OpenMemoryStream(text.data(), static_cast<std::uint32_t>(text.size()));
  const ObjectHandle stream = objects::NewStream(doc, source, kNullObject);
  support::CloseStream(source);
  return stream;
}

void AppendFixed(Fixed value, std::string* text) {
  char buffer[32];
  text->append(buffer, support::FixedToText(value, buffer, sizeof buffer, 5));
  *text += ' ';
}

std::string DrawOperators(const FixedMatrix& matrix, const std::string& name) {
  std::string text = "q ";
  for (const Fixed value : {matrix.a, matrix.b, matrix.c, matrix.d, matrix.e, matrix.f}) {
    AppendFixed(value, &text);
  }
  return text + "cm /" + name + " Do Q\n";
}

// A form XObject must say that it is one; appearance streams in files do not always.
void CompleteForm(ObjectDoc doc, ObjectHandle stream) {
  const ObjectHandle dict = objects::StreamDict(stream);
  if (objects::DictKnown(dict, Name("Subtype")) != 0) return;
  objects::DictPut(dict, Name("Subtype"), objects::NewName(doc, 0, Name("Form")));
}

// Puts the appearances into the page's resources; answers the operators that draw them.
std::string AddAppearances(ObjectDoc doc, ObjectHandle page,
                           const std::vector<DrawnAppearance>& appearances) {
  const ObjectHandle resources = CopyOrNewDict(doc, InheritedResources(page));
  const ObjectHandle forms = CopyOrNewDict(doc, EntryOf(resources, Name("XObject")));
  std::string operators;
  for (std::size_t i = 0; i < appearances.size(); ++i) {
    const ObjectHandle stream = ObjectByNumber(doc, ObjectNumberOf(appearances[i].stream));
    if (!IsKind(stream, ObjectKind::kStream)) continue;
    const std::string name = "QuillonAppearance" + std::to_string(i);
    CompleteForm(doc, stream);
    objects::DictPut(forms, Name(name.c_str()), stream);
    operators += DrawOperators(appearances[i].placement, name);
  }
  objects::DictPut(resources, Name("XObject"), forms);
  objects::DictPut(page, Name("Resources"), resources);
  return operators;
}

// The old content between q and Q, so that what it leaves behind does not move the appearances; the
// closing stream starts with a line end because the old content need not end with one.
void WrapContents(ObjectDoc doc, ObjectHandle page, const std::string& operators) {
  const ObjectHandle old = objects::DictGet(page, Name("Contents"));
  const ObjectHandle contents = objects::NewArray(doc, 0, 3);
  std::uint32_t count = 0;
  objects::ArrayPut(contents, count++, NewContent(doc, "q\n"));
  if (IsKind(old, ObjectKind::kArray)) {
    for (std::uint32_t i = 0; i < objects::ArrayLength(old); ++i) {
      const ObjectHandle part = objects::ArrayGet(old, i);
      if (IsKind(part, ObjectKind::kStream)) objects::ArrayPut(contents, count++, part);
    }
  } else if (IsKind(old, ObjectKind::kStream)) {
    objects::ArrayPut(contents, count++, old);
  }
  objects::ArrayPut(contents, count++, NewContent(doc, "\nQ\n" + operators));
  objects::DictPut(page, Name("Contents"), contents);
}

Boolean AddKey(ObjectHandle key, ObjectHandle, void* keys) {
  static_cast<std::vector<Atom>*>(keys)->push_back(objects::NameValue(key));
  return 1;
}

// Whoever draws reads what else the catalog names, though nothing of it is drawn: a form made to
// hurt keeps a library busy that has no bounds of ours.
void ReduceCatalog(ObjectHandle catalog) {
  std::vector<Atom> keys;
  objects::EnumDict(catalog, &AddKey, &keys);
  for (const Atom key : keys) {
    const std::string_view name = core::NameFromAtom(key);
    if (name != "Type" && name != "Pages" && name != "OCProperties") {
      objects::DictRemove(catalog, key);
    }
  }
}

}  // namespace

std::string FlatPageDocument(DocHandle doc, std::uint32_t pageNumber,
                             const std::vector<DrawnAppearance>& appearances) {
  const PageHandle acquired = document::AcquirePage(doc, pageNumber);
  const std::uint32_t number = ObjectNumberOf(document::PageDict(acquired));
  document::ReleasePage(acquired);
  const OwnedPdf copy{OpenPdfBytes(PdfToBytes(document::ObjectDocOf(doc)), OpenOptions{}, nullptr)};
  const ObjectHandle page = ObjectByNumber(copy.doc, number);
  if (!IsKind(page, ObjectKind::kDict)) Fail(kErrorBadObject, "a page is no indirect dictionary");
  WrapContents(copy.doc, page, AddAppearances(copy.doc, page, appearances));
  objects::DictRemove(page, Name("Annots"));
  ReduceCatalog(objects::DocRoot(copy.doc));
  return PdfToBytes(copy.doc);
}

}  // namespace quillon
