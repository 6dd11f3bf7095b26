// Opening, making and closing documents.
#include <utility>

#include "quillon/objects/characters.h"
#include "quillon/objects/dictionary.h"
#include "quillon/objects/form_key.h"
#include "quillon/objects/load.h"
#include "quillon/objects/new_document.h"
#include "quillon/objects/pdf_file.h"
#include "quillon/objects/scanner.h"
#include "quillon/objects/security_handler.h"
#include "quillon/objects/xref_reader.h"

namespace quillon::objects {
namespace {

// How far a header may stand from the start of the file: mail and web gateways put lines before it.
constexpr std::size_t kMaxHeaderAt = 1024;

void FindHeader(Document& doc, const OpenOptions& options) {
  const std::string_view bytes = doc.source.bytes;
  const std::string_view start = bytes.substr(0, kMaxHeaderAt + options.header.size());
  const std::size_t at = start.find(options.header);
  if (at == std::string_view::npos) {
    Fail(kErrorBadHeader,
         "The file is of another kind: it does not begin with " + options.header + ".");
  }
  doc.headerAt = at;
  doc.text = bytes.substr(at);
  const std::size_t lineEnd = doc.text.find_first_of("\r\n");
  doc.header = doc.text.substr(0, std::min(lineEnd, doc.text.size()));
  doc.isPdf = doc.header.rfind("%FDF-", 0) != 0;
  if (doc.isPdf && !HasVersion(doc.header)) {
    Warn(doc, "The file's header names no version.", 0, FileOffset(doc, 0));
  }
}

// The cross-references could be followed, but not to the catalog.
void FindCatalogByScanning(Document& doc) {
  Warn(doc, "The cross-references do not lead to the catalog.", doc.root, kNoOffset);
  doc.trailer = 0;
  ScanDocument(doc);
}

// A catalog that is direct in the trailer becomes an object, as it must be; that is no change yet.
void NumberCatalog(Document& doc) {
  Warn(doc, "The catalog had no object number of its own.", 0, kNoOffset);
  DictEntry* entry = FindEntry(CellAt(doc.cells, doc.trailer), NameFromText(doc, "Root"));
  doc.root = AddObject(doc, entry->value);
  entry->value = ReferenceTo(doc.root, 0);
  doc.changed = doc.modified = false;
}

void ReadStructure(Document& doc) {
  if (!ReadCrossReferences(doc)) {
    // FDF files do without cross-references; nothing is wrong with them.
    if (!doc.isPdf) {
      doc.warnings.clear();
      doc.warned.clear();
    }
    ScanDocument(doc);
  } else {
    PrepareDecryption(doc, doc.trailer);
    if (!NamesCatalog(doc, doc.trailer)) FindCatalogByScanning(doc);
  }
  if (!NamesCatalog(doc, doc.trailer)) Fail(kErrorBadFile, "The file has no catalog.");
  if (doc.isPdf && doc.root == 0) NumberCatalog(doc);
  PrepareCatalog(doc);
}

struct ClosingGuard {
  Document* doc;
  ~ClosingGuard() {
    if (doc != nullptr) RemoveDocument(*doc);
  }
};

ObjectDoc Open(SourceBytes source, const OpenOptions& options, std::vector<FileWarning>* warnings) {
  Document& doc = AddDocument();
  ClosingGuard guard{&doc};
  doc.source = std::move(source);
  doc.password = options.password;
  FindHeader(doc, options);
  ReadStructure(doc);
  doc.password.clear();
  if (warnings != nullptr) *warnings = doc.warnings;
  guard.doc = nullptr;
  return HandleOfDocument(doc);
}

std::uint32_t AddDict(Document& doc, std::string_view type) {
  const std::uint32_t dict = NewCell(doc.cells, CellKind::kDict);
  if (!type.empty())
    SetEntry(doc, dict, NameFromText(doc, "Type"), NameOf(NameFromText(doc, type)));
  return dict;
}

Document& AddEmptyDocument(const std::string& header, std::string_view catalogType) {
  Document& doc = AddDocument();
  doc.header = header;
  doc.trailer = AddDict(doc, {});
  CellAt(doc.cells, doc.trailer).parent = kIndirectParent;
  doc.root = AddObject(doc, CellValue(AddDict(doc, catalogType)));
  SetEntry(doc, doc.trailer, NameFromText(doc, "Root"), ReferenceTo(doc.root, 0));
  return doc;
}

}  // namespace

ObjectDoc NewFdf() {
  Document& doc = AddEmptyDocument("%FDF-1.2", {});
  doc.isPdf = false;
  doc.modified = false;
  return HandleOfDocument(doc);
}

}  // namespace quillon::objects

namespace quillon {

ObjectDoc OpenPdfFile(const std::string& file, const OpenOptions& options,
                      std::vector<FileWarning>* warnings) {
  // Looked at first: a change while it is read is one.
  const std::optional<objects::FileStamp> stamp = objects::StampOf(file);
  const ObjectDoc handle = objects::Open(objects::ReadSource(file), options, warnings);
  objects::Document& doc = objects::DocumentOfHandle(handle);
  doc.file = file;
  doc.stamp = stamp;
  return handle;
}

ObjectDoc OpenPdfBytes(std::string bytes, const OpenOptions& options,
                       std::vector<FileWarning>* warnings) {
  return objects::Open(objects::SourceFromString(std::move(bytes)), options, warnings);
}

ObjectDoc NewPdf() {
  using namespace objects;
  Document& doc = AddEmptyDocument("%PDF-1.7", "Catalog");
  const std::uint32_t pages = AddDict(doc, "Pages");
  const std::uint32_t kids = NewCell(doc.cells, CellKind::kArray);
  SetEntry(doc, pages, NameFromText(doc, "Kids"), CellValue(kids));
  SetEntry(doc, pages, NameFromText(doc, "Count"), IntegerOf(0));
  const std::uint32_t number = AddObject(doc, CellValue(pages));
  const std::uint32_t catalog = LoadObject(doc, doc.root).payload;
  SetEntry(doc, catalog, NameFromText(doc, "Pages"), ReferenceTo(number, 0));
  doc.modified = false;
  return HandleOfDocument(doc);
}

const std::vector<FileWarning>& PdfWarnings(ObjectDoc doc) {
  return objects::DocumentOfHandle(doc).warnings;
}

void ClosePdf(ObjectDoc doc) { objects::RemoveDocument(objects::DocumentOfHandle(doc)); }

}  // namespace quillon
