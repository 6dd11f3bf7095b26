#include "tests/plugin/model/model_host.h"

#include "plugin/frame/plugin_main.h"
#include "plugin/model/form_dict.h"
#include "plugin/model/keys.h"
#include "quillon/objects/pdf_file.h"
#include "quillon/viewer/open_view.h"

namespace quillform {

ModelHost::ModelHost() : host({&PlugInMain}) { fieldPlacement = {}; }

ModelHost::~ModelHost() {
  fieldPlacement = {};
  exchangeHooks = {};
}

void ModelHost::Open(const std::vector<std::string>& fields,
                     const quillon::test::FormPdfParts& parts) {
  doc = quillon::test::OpenTestDocument(quillon::test::FormPdf(fields, parts));
  objects = Document->ObjectDocOf(doc);
}

void ModelHost::Load(const std::vector<std::string>& fields,
                     const quillon::test::FormPdfParts& parts) {
  Open(fields, parts);
  LoadAllFields(doc);
}

void ModelHost::Show(const std::vector<std::string>& fields,
                     const quillon::test::FormPdfParts& parts) {
  Open(fields, parts);
  view = quillon::OpenViewOfDocument(doc);
}

ObjectHandle ModelHost::Form() { return CatalogFormOf(objects); }

ObjectHandle ModelHost::FieldsArray() { return Objects->DictGet(Form(), key::Fields); }

ObjectHandle ModelHost::Field(std::uint32_t index) {
  return Objects->ArrayGet(FieldsArray(), index);
}

ActionHandle ModelHost::Action(std::uint32_t index) {
  return Document->ActionFromObject(
      quillon::ObjectByNumber(Document->ObjectDocOf(doc), quillon::test::kFirstField + index));
}

std::uint32_t ModelHost::WidgetCount() {
  const PageHandle page = Document->AcquirePage(doc, 0);
  const std::uint32_t count = Document->AnnotCount(page);
  Document->ReleasePage(page);
  return count;
}

AnnotHandle ModelHost::Widget(std::uint32_t index) {
  const PageHandle page = Document->AcquirePage(doc, 0);
  const AnnotHandle annot = Document->AnnotAt(page, index);
  Document->ReleasePage(page);
  return annot;
}

ObjectHandle ModelHost::Text(const std::string& bytes) {
  return Objects->NewString(objects, false, bytes.data(), static_cast<std::uint32_t>(bytes.size()));
}

ObjectHandle ModelHost::Name(const char* text) {
  return Objects->NewName(objects, false, Core->AtomFromName(text));
}

std::string FieldRef(int index) { return quillon::test::Ref(quillon::test::kFirstField + index); }

std::vector<std::string> TwoWidgets(const std::string& entries) {
  return {"/FT /Tx /T (pair) /Kids [" + FieldRef(1) + " " + FieldRef(2) + "] " + entries,
          "/Subtype /Widget /Rect [0 0 9 9] /Parent " + FieldRef(0),
          "/Subtype /Widget /Rect [0 0 9 9] /Parent " + FieldRef(0)};
}

ObjectHandle KidOf(ObjectHandle dict, std::uint32_t index) {
  return Objects->ArrayGet(Objects->DictGet(dict, key::Kids), index);
}

std::string FullName(ObjectHandle dict) {
  const HostPtr<char> name(FullNameOf(dict));
  return name != nullptr ? name.get() : "(none)";
}

std::string Entry(ObjectHandle dict, const char* key) {
  return ShowObject(Objects->DictGet(dict, Core->AtomFromName(key)));
}

void Subscribe(std::uint32_t event, FormEventNotify notify) {
  FormEventRegister(event, notify, nullptr, nullptr);
}

std::string WalkedNames(DocHandle doc, bool terminalOnly, bool onePerName) {
  std::string names;
  ForEachFieldNode(
      doc, terminalOnly, onePerName,
      [](FieldNode node, void* data) -> Boolean {
        auto& list = *static_cast<std::string*>(data);
        if (!list.empty()) list += ' ';
        list += FieldNodeName(node);
        return 1;
      },
      &names);
  return names;
}

}  // namespace quillform
