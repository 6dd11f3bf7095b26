#include "tests/plugin/appearance/widget_host.h"

#include "plugin/appearance/form_stream.h"
#include "plugin/model/keys.h"
#include "tests/plugin/appearance/show_object.h"

namespace quillform {

AnnotHandle WidgetHost::OpenFields(const std::vector<std::string>& fields,
                                   const quillon::test::FormPdfParts& parts) {
  doc = quillon::test::OpenTestDocument(quillon::test::FormPdf(fields, parts));
  objects = Document->ObjectDocOf(doc);
  return Widget(0);
}

AnnotHandle WidgetHost::OpenWidget(const std::string& type, const std::string& entries,
                                   const std::string& rect,
                                   const quillon::test::FormPdfParts& parts) {
  return OpenFields({quillon::test::WidgetField(type, "field", entries, rect)}, parts);
}

AnnotHandle WidgetHost::Widget(std::uint32_t index) {
  const PageHandle page = Document->AcquirePage(doc, 0);
  const AnnotHandle annot = Document->AnnotAt(page, index);
  Document->ReleasePage(page);
  return annot;
}

std::string WidgetHost::StreamObject(const std::string& entries, const std::string& data) {
  return "<< " + entries + " /Length " + std::to_string(data.size()) + " >>\nstream\n" + data +
         "\nendstream";
}

ObjectHandle WidgetHost::Text(const std::string& bytes) {
  return Objects->NewString(objects, false, bytes.data(), static_cast<std::uint32_t>(bytes.size()));
}

std::string WidgetHost::Entry(AnnotHandle annot, Atom key) {
  return ShowObject(Objects->DictGet(Document->AnnotDict(annot), key));
}

std::string ContentOf(AnnotHandle annot) {
  const ObjectHandle stream = AppearanceOf(annot, key::N, kNoAtom);
  return IsKind(stream, ObjectKind::kStream) ? StreamText(stream) : "none";
}

}  // namespace quillform
