#include "plugin/exchange/form_actions.h"

#include "plugin/appearance/form_parts.h"
#include "plugin/exchange/path_text.h"
#include "plugin/exchange/reset.h"
#include "plugin/exchange/submit.h"
#include "plugin/model/keys.h"

namespace quillform {

namespace {

void PutOrRemove(ObjectHandle dict, Atom key, ObjectHandle value) {
  if (!IsNull(value)) {
    Objects->DictPut(dict, key, value);
  } else if (Objects->DictKnown(dict, key)) {
    Objects->DictRemove(dict, key);
  }
}

void WriteFlags(ObjectHandle dict, std::int32_t flags) {
  const ObjectDoc doc = Objects->DocumentOf(dict);
  PutOrRemove(dict, key::Flags, flags != 0 ? Objects->NewInteger(doc, false, flags) : kNullObject);
}

// Answers whether there is a list.
bool WriteFields(ObjectHandle dict, ObjectHandle fields) {
  const bool list = IsKind(fields, ObjectKind::kArray);
  if (!list || !Objects->Equal(fields, Objects->DictGet(dict, key::Fields))) {
    PutOrRemove(dict, key::Fields, list ? fields : kNullObject);
  }
  return list;
}

void WriteUrl(ObjectHandle dict, const std::string& url) {
  const ObjectDoc doc = Objects->DocumentOf(dict);
  if (url.empty()) return PutOrRemove(dict, key::FileSpec, kNullObject);
  NewObject spec(Objects->NewDict(doc, false, 2));
  Objects->DictPut(spec.handle, key::FS, Objects->NewName(doc, false, key::URL));
  Objects->DictPut(
      spec.handle, key::FileSpec,
      Objects->NewString(doc, false, url.data(), static_cast<std::uint32_t>(url.size())));
  Objects->DictPut(dict, key::FileSpec, spec.handle);
  spec.Release();
}

}  // namespace

std::string FileSpecText(ActionHandle action) {
  const ObjectHandle spec = EntryOf(Document->ActionDict(action), key::FileSpec);
  return TextOfFileSpec(spec).substr(0, kUrlSize - 1);
}

SubmitSettings ReadSubmitSettings(ActionHandle action) {
  const SubmitRequest request = ReadSubmitRequest(action);
  return {FileSpecText(action), request.fields, !request.inclusion, request.includeEmpty,
          request.urlEncoded};
}

ResetSettings ReadResetSettings(ActionHandle action) {
  const ResetRequest request = ReadResetRequest(action);
  return {request.fields, !request.inclusion};
}

void WriteSubmitSettings(ActionHandle action, const SubmitSettings& settings) {
  const ObjectHandle dict = Document->ActionDict(action);
  WriteUrl(dict, settings.url);
  const bool list = WriteFields(dict, settings.fields);
  WriteFlags(dict, (list && settings.exclusion ? kExcludeListed : 0) |
                       (settings.includeEmpty ? kIncludeEmpty : 0) |
                       (settings.urlEncoded ? kUrlEncoded : 0));
}

void WriteResetSettings(ActionHandle action, const ResetSettings& settings) {
  const ObjectHandle dict = Document->ActionDict(action);
  const bool list = WriteFields(dict, settings.fields);
  WriteFlags(dict, list && settings.exclusion ? kExcludeListed : 0);
}

void EditSubmitForm(ActionHandle action, DocView view) {
  if (actionDialogs.EditSubmit == nullptr) return;
  SubmitSettings settings = ReadSubmitSettings(action);
  if (actionDialogs.EditSubmit(view, &settings)) WriteSubmitSettings(action, settings);
}

void EditResetForm(ActionHandle action, DocView view) {
  if (actionDialogs.EditReset == nullptr) return;
  ResetSettings settings = ReadResetSettings(action);
  if (actionDialogs.EditReset(view, &settings)) WriteResetSettings(action, settings);
}

}  // namespace quillform
