#include "tests/plugin/appearance/appearance_host.h"

#include "plugin/appearance/form_stream.h"
#include "plugin/frame/plugin_main.h"
#include "plugin/model/form_dict.h"
#include "plugin/model/keys.h"
#include "tests/plugin/appearance/show_object.h"

namespace quillform {

AppearanceHost::AppearanceHost() : host({&PlugInMain}) { OpenForm(""); }

void AppearanceHost::OpenForm(const std::string& entries, const std::vector<std::string>& fields) {
  OpenFields(fields, {.formEntries = entries, .defaultAppearance = "", .defaultResources = ""});
}

void AppearanceHost::OpenFields(const std::vector<std::string>& fields,
                                const quillon::test::FormPdfParts& parts) {
  doc = quillon::test::OpenTestDocument(quillon::test::FormPdf(fields, parts));
  objects = Document->ObjectDocOf(doc);
}

AnnotHandle AppearanceHost::OpenWidget(const std::string& type, const std::string& entries,
                                       const std::string& rect,
                                       const quillon::test::FormPdfParts& parts) {
  OpenFields({quillon::test::WidgetField(type, "field", entries, rect)}, parts);
  return Widget(0);
}

AnnotHandle AppearanceHost::Widget(std::uint32_t index) {
  const PageHandle page = Document->AcquirePage(doc, 0);
  const AnnotHandle annot = Document->AnnotAt(page, index);
  Document->ReleasePage(page);
  return annot;
}

ObjectHandle AppearanceHost::Form() { return FormDictOf(doc); }

ObjectHandle AppearanceHost::Text(const std::string& bytes) {
  return Objects->NewString(objects, false, bytes.data(), static_cast<std::uint32_t>(bytes.size()));
}

std::string AppearanceHost::StreamObject(const std::string& entries, const std::string& data) {
  return "<< " + entries + " /Length " + std::to_string(data.size()) + " >>\nstream\n" + data +
         "\nendstream";
}

std::string AppearanceHost::Entry(AnnotHandle annot, Atom key) {
  return ShowObject(Objects->DictGet(Document->AnnotDict(annot), key));
}

std::string ContentOf(AnnotHandle annot) {
  const ObjectHandle stream = AppearanceOf(annot, key::N, kNoAtom);
  return IsKind(stream, ObjectKind::kStream) ? StreamText(stream) : "none";
}

}  // namespace quillform
