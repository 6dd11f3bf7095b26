// What the host's rooms ask of a document beyond the table.
#include "quillon/objects/pdf_file.h"

#include "quillon/objects/load.h"
#include "quillon/objects/serializer.h"
#include "quillon/objects/stream_data.h"
#include "quillon/objects/writer.h"

namespace quillon {

using objects::Document;
using objects::DocumentOfHandle;
using objects::SlotState;

namespace {

// The value of a dictionary's entry, strings by what they say.
std::string SpellingOf(Document& doc, const objects::Value& dict, Atom key) {
  const std::uint32_t cell = objects::CellOf(doc, dict, objects::CellKind::kDict);
  if (cell == 0) return {};
  const objects::Value value = objects::EntryValue(doc, cell, key);
  const std::uint32_t string = objects::CellOf(doc, value, objects::CellKind::kString);
  if (string != 0) return "(" + std::string(objects::StringBytes(doc, string));
  std::string text;
  objects::AppendValue(doc, &text, value);
  return text;
}

}  // namespace

std::string PdfToBytes(ObjectDoc handle, const SaveOptions& options) {
  Document& doc = DocumentOfHandle(handle);
  std::string bytes;
  objects::Output out{[&bytes](std::string_view piece) { bytes += piece; }, {}, 0, options.keepAll};
  options.append ? objects::WriteUpdate(doc, out) : objects::WriteDocument(doc, doc.header, out);
  return bytes;
}

void WarnOfPdf(ObjectHandle object, const std::string& text) {
  const objects::Target target = objects::TargetOf(object);
  if (target.doc == nullptr) return;
  Warn(*target.doc, text, target.number, FileOffsetOf(object));
}

bool PdfModified(ObjectDoc doc) { return DocumentOfHandle(doc).modified; }

void ClearPdfModified(ObjectDoc doc) { DocumentOfHandle(doc).modified = false; }

bool PdfEntryChanged(ObjectHandle dict, Atom key) {
  const objects::Target target = objects::TargetOf(dict);
  if (target.number == 0) return false;
  Document& doc = *target.doc;
  const objects::ObjectSlot& slot = *FindSlot(doc.objects, target.number);
  if (!slot.changed || slot.state == SlotState::kNew) return false;
  const objects::Value old = objects::ReadAnew(doc, target.number);
  return SpellingOf(doc, target.value, key) != SpellingOf(doc, old, key);
}

std::uint32_t ObjectNumberOf(ObjectHandle object) { return objects::TargetOf(object).number; }

std::int64_t FileOffsetOf(ObjectHandle object) {
  const objects::Target target = objects::TargetOf(object);
  return target.number == 0 ? kNoOffset : ObjectOffset(*target.doc, target.number);
}

ObjectHandle ObjectByNumber(ObjectDoc handle, std::uint32_t number) {
  Document& doc = DocumentOfHandle(handle);
  if (LoadObject(doc, number) == objects::kNullValue) return kNullObject;
  return HandleOfObject(doc, number);
}

std::uint32_t ObjectCount(ObjectDoc doc) { return DocumentOfHandle(doc).objects.count; }

ObjectHandle TrailerOf(ObjectDoc handle) {
  Document& doc = DocumentOfHandle(handle);
  return HandleOfCell(doc, doc.trailer);
}

std::string DecodedStream(ObjectHandle stream) {
  const objects::Target target = objects::TargetOf(stream);
  const std::uint32_t cell = target.doc == nullptr ? 0
                                                   : objects::CellOf(*target.doc, target.value,
                                                                     objects::CellKind::kStream);
  if (cell == 0) Fail(kErrorBadObject, "An object is no stream.", target.number);
  return objects::ReadStream(*target.doc, cell, target.number);
}

}  // namespace quillon
