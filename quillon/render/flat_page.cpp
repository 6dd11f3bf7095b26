#include "quillon/render/flat_page.h"

#include <array>

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

// What is drawn takes no more of a page than this; the rest may lead to all of the document.
struct PageEntry {
  const char* key;
  bool inherited;
};
constexpr std::array<PageEntry, 7> kDrawnEntries = {{{"MediaBox", true},
                                                     {"CropBox", true},
                                                     {"Rotate", true},
                                                     {"Resources", true},
                                                     {"Contents", false},
                                                     {"Group", false},
                                                     {"UserUnit", false}}};

ObjectHandle EntryOfPage(ObjectHandle page, const PageEntry& entry) {
  const Atom key = Name(entry.key);
  ObjectHandle node = page;
  for (int depth = 0; depth < kMaxPageTreeDepth && IsKind(node, ObjectKind::kDict); ++depth) {
    const ObjectHandle value = objects::DictGet(node, key);
    if (!entry.inherited || !document::IsNull(value)) return value;
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

// Puts the appearances into the page's resources; answers the operators that draw them. `streams`
// are those of the appearances, in the page's document.
std::string AddAppearances(ObjectDoc doc, ObjectHandle page,
                           const std::vector<DrawnAppearance>& appearances,
                           const std::vector<ObjectHandle>& streams) {
  const ObjectHandle resources = CopyOrNewDict(doc, EntryOf(page, Name("Resources")));
  const ObjectHandle forms = CopyOrNewDict(doc, EntryOf(resources, Name("XObject")));
  std::string operators;
  for (std::size_t i = 0; i < appearances.size(); ++i) {
    if (!IsKind(streams[i], ObjectKind::kStream)) continue;
    const std::string name = "QuillonAppearance" + std::to_string(i);
    CompleteForm(doc, streams[i]);
    objects::DictPut(forms, Name(name.c_str()), streams[i]);
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

void PutIfThere(ObjectHandle dict, const char* key, ObjectHandle value) {
  if (!document::IsNull(value)) objects::DictPut(dict, Name(key), value);
}

// A page of a document that has no other.
ObjectHandle AddPage(ObjectDoc doc) {
  const ObjectHandle tree = EntryOf(objects::DocRoot(doc), Name("Pages"));
  const ObjectHandle page = objects::NewDict(doc, 1, 8);
  objects::DictPut(page, Name("Type"), objects::NewName(doc, 0, Name("Page")));
  objects::DictPut(page, Name("Parent"), tree);
  objects::ArrayPut(EntryOf(tree, Name("Kids")), 0, page);
  objects::DictPut(tree, Name("Count"), objects::NewInteger(doc, 0, 1));
  return page;
}

ObjectHandle DictOfPage(DocHandle doc, std::uint32_t number) {
  const PageHandle acquired = document::AcquirePage(doc, number);
  const ObjectHandle page = document::PageDict(acquired);
  document::ReleasePage(acquired);
  return page;
}

}  // namespace

std::string FlatPageDocument(DocHandle doc, std::uint32_t pageNumber,
                             const std::vector<DrawnAppearance>& appearances) {
  const ObjectDoc from = document::ObjectDocOf(doc);
  const ObjectHandle original = DictOfPage(doc, pageNumber);
  // Which optional content shows.
  std::vector<ObjectHandle> wanted = {EntryOf(objects::DocRoot(from), Name("OCProperties"))};
  for (const PageEntry& entry : kDrawnEntries) wanted.push_back(EntryOfPage(original, entry));
  for (const DrawnAppearance& appearance : appearances) wanted.push_back(appearance.stream);

  const OwnedPdf copy{NewPdf()};
  const std::vector<ObjectHandle> copied = CopyPdfObjects(from, wanted, {original}, copy.doc);
  const ObjectHandle page = AddPage(copy.doc);
  auto next = copied.begin();
  PutIfThere(objects::DocRoot(copy.doc), "OCProperties", *next++);
  for (const PageEntry& entry : kDrawnEntries) PutIfThere(page, entry.key, *next++);
  WrapContents(copy.doc, page, AddAppearances(copy.doc, page, appearances, {next, copied.end()}));
  return PdfToBytes(copy.doc);
}

}  // namespace quillon
