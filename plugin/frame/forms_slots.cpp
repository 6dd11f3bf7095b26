#include "plugin/frame/forms_slots.h"

#include "plugin/exchange/fdf_apply.h"
#include "plugin/exchange/fdf_writer.h"
#include "plugin/exchange/reset.h"
#include "plugin/exchange/url_encoding.h"
#include "plugin/host/form_events.h"
#include "plugin/model/field_tree.h"
#include "plugin/model/field_values.h"
#include "plugin/model/form_dict.h"

namespace quillform::forms_slots {

namespace {

Boolean Truth(bool value) { return value ? 1 : 0; }

}  // namespace

Boolean DocumentHasForm(DocHandle doc) { return Truth(quillform::DocumentHasForm(doc)); }

void LoadAllFields(DocHandle doc) { quillform::LoadAllFields(doc); }

void ForEachFieldNode(DocHandle doc, Boolean terminalOnly, Boolean onePerName, FieldNodeProc proc,
                      void* clientData) {
  quillform::ForEachFieldNode(doc, terminalOnly != 0, onePerName != 0, proc, clientData);
}

FieldNode FindFieldByName(DocHandle doc, const char* name) {
  return quillform::FindFieldByName(doc, name);
}

FieldNode FieldNodeOf(ObjectHandle dict) { return quillform::FieldNodeOf(dict); }

ObjectHandle FieldNodeDict(FieldNode node) { return quillform::FieldNodeDict(node); }

Boolean FieldNodeIsValid(FieldNode node) { return Truth(quillform::FieldNodeIsValid(node)); }

Boolean FieldNodeIsTerminal(FieldNode node) { return Truth(quillform::FieldNodeIsTerminal(node)); }

ObjectHandle GetFieldValue(FieldNode node) { return quillform::GetFieldValue(node); }

std::uint32_t GetFieldFlags(FieldNode node, std::uint16_t index) {
  return quillform::GetFieldFlags(node, index);
}

const char* FieldNodeName(FieldNode node) { return quillform::FieldNodeName(node); }

Boolean NodeIsWidget(FieldNode node) { return Truth(quillform::NodeIsWidget(node)); }

void SetFieldValue(FieldNode node, ObjectHandle value) { quillform::SetFieldValue(node, value); }

void SetFieldFlags(FieldNode node, std::uint16_t index, std::uint32_t flags) {
  quillform::SetFieldFlags(node, index, flags);
}

std::uint32_t SetFieldOptions(FieldNode node, ObjectHandle options) {
  return quillform::SetFieldOptions(node, options);
}

void ResetFieldValue(FieldNode node) { quillform::ResetFieldValue(node); }

ObjectDoc CreateFDFFromForm(DocHandle doc, ObjectHandle list, Boolean inclusion,
                            Boolean includeEmpty, Boolean exportCommand, Boolean loadAll,
                            const char* basePath) {
  return quillform::CreateFDFFromForm(doc, list, inclusion != 0, includeEmpty != 0,
                                      exportCommand != 0, loadAll != 0, basePath);
}

void WriteURLEncoded(DocHandle doc, ObjectHandle list, Boolean inclusion, Boolean includeEmpty,
                     StreamHandle stream) {
  quillform::WriteURLEncoded(doc, list, inclusion != 0, includeEmpty != 0, stream);
}

Boolean ImportFDF(DocHandle doc, ObjectDoc fdf) { return Truth(quillform::ImportFDF(doc, fdf)); }

void ResetFields(DocHandle doc, ObjectHandle list, Boolean inclusion) {
  quillform::ResetFields(doc, list, inclusion != 0);
}

std::uint32_t FormEventRegister(std::uint32_t event, FormEventNotify notify,
                                FormEventFailure failure, void* clientData) {
  return quillform::FormEventRegister(event, notify, failure, clientData);
}

void FormEventUnregister(std::uint32_t event, std::uint32_t identifier) {
  quillform::FormEventUnregister(event, identifier);
}

}  // namespace quillform::forms_slots
