#include "quillon/document/open_document.h"

#include <utility>

#include "quillon/document/document_record.h"
#include "quillon/document/operations.h"
#include "quillon/support/operations.h"

namespace quillon {
namespace {

using document::DocumentRecord;
using document::RecordOf;

constexpr std::uint32_t kReadSize = 1 << 16;

std::string ReadWhole(FileHandle file) {
  std::string bytes;
  support::SetFilePosition(file, 0);
  for (;;) {
    const std::size_t filled = bytes.size();
    bytes.resize(filled + kReadSize);
    const std::uint32_t count = support::ReadFile(file, bytes.data() + filled, kReadSize);
    bytes.resize(filled + count);
    if (count == 0) return bytes;
  }
}

}  // namespace

DocHandle OpenDocumentFile(const std::string& file, const OpenOptions& options) {
  DocumentRecord& record = document::AddDocument(OpenPdfFile(file, options, nullptr));
  record.path = file;
  return document::HandleOf(&record);
}

DocHandle OpenDocumentBytes(std::string bytes, const OpenOptions& options) {
  const ObjectDoc objects = OpenPdfBytes(std::move(bytes), options, nullptr);
  return document::HandleOf(&document::AddDocument(objects));
}

DocHandle OpenDocumentStream(FileHandle file) {
  const DocHandle doc = OpenDocumentBytes(ReadWhole(file));
  RecordOf(doc).file = file;
  return doc;
}

void SaveDocumentFile(DocHandle doc, const std::string& file, const SaveOptions& options) {
  SavePdfFile(RecordOf(doc).objects, file, options);
  document::ClearFlags(doc, kDocModified);
}

std::string DocumentToBytes(DocHandle doc, const SaveOptions& options) {
  return PdfToBytes(RecordOf(doc).objects, options);
}

void CloseDocument(DocHandle doc) {
  DocumentRecord& record = RecordOf(doc);
  const ObjectDoc objects = record.objects;
  const FileHandle file = record.file;
  document::RemoveDocument(&record);
  // The file was only read; what its closing reports concerns nobody.
  if (file != nullptr) support::CloseFile(file);
  ClosePdf(objects);
}

const std::vector<FileWarning>& DocumentWarnings(DocHandle doc) {
  return PdfWarnings(RecordOf(doc).objects);
}

const std::string& DocumentPath(DocHandle doc) { return RecordOf(doc).path; }

}  // namespace quillon
