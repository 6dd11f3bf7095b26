#include "quillon/app/form_fonts.h"

#include <string_view>

#include "quillon/app/form_keys.h"
#include "quillon/app/forms_client.h"
#include "quillon/core/operations.h"
#include "quillon/document/object_reading.h"
#include "quillon/document/operations.h"
#include "quillon/objects/operations.h"
#include "quillon/objects/pdf_file.h"

namespace quillon::app {
namespace {

using document::EntryOf;
using document::IsKind;

struct Font {
  const char* resource;  // the name that default appearances call it by
  const char* base;
};
constexpr Font kFonts[] = {{"Helv", "Helvetica"}, {"ZaDb", "ZapfDingbats"}};
constexpr std::string_view kText = "/Helv 0 Tf 0 g ";

ObjectHandle DictIn(ObjectHandle holder, Atom key) {
  const ObjectHandle present = EntryOf(holder, key);
  if (IsKind(present, ObjectKind::kDict)) return present;
  const ObjectHandle made = objects::NewDict(objects::DocumentOf(holder), 0, 4);
  objects::DictPut(holder, key, made);
  return made;
}

void PutName(ObjectHandle dict, const char* key, const char* name) {
  objects::DictPut(dict, core::AtomFromName(key),
                   objects::NewName(objects::DocumentOf(dict), 0, core::AtomFromName(name)));
}

void AddFonts(ObjectHandle form) {
  const ObjectHandle fonts = DictIn(DictIn(form, Keys().DR), Keys().Font);
  for (const Font& font : kFonts) {
    const Atom resource = core::AtomFromName(font.resource);
    if (IsKind(EntryOf(fonts, resource), ObjectKind::kDict)) continue;
    const ObjectHandle dict = objects::NewDict(objects::DocumentOf(form), 1, 4);
    objects::DictPut(fonts, resource, dict);
    PutName(dict, "Type", "Font");
    PutName(dict, "Subtype", "Type1");
    PutName(dict, "BaseFont", font.base);
    PutName(dict, "Name", font.resource);
  }
}

ObjectHandle FormOf(DocHandle doc) {
  return EntryOf(objects::DocRoot(document::ObjectDocOf(doc)), Keys().QuillForm);
}

// Whether the field or a widget of it finds none but the form's.
bool LacksAppearance(ObjectHandle field) {
  if (!document::IsNull(InheritedFieldEntry(field, Keys().DA))) return false;
  const ObjectHandle kids = EntryOf(field, Keys().Kids);
  if (!IsKind(kids, ObjectKind::kArray)) return true;
  for (std::uint32_t i = 0; i < objects::ArrayLength(kids); ++i) {
    if (document::IsNull(EntryOf(objects::ArrayGet(kids, i), Keys().DA))) return true;
  }
  return false;
}

bool NamesFont(ObjectHandle appearance) {
  return IsKind(appearance, ObjectKind::kString) &&
         document::BytesOf(appearance).find("Tf") != std::string::npos;
}

void PutDefaultAppearance(ObjectHandle form) {
  objects::DictPut(form, Keys().DA,
                   objects::NewString(objects::DocumentOf(form), 0, kText.data(),
                                      static_cast<std::uint32_t>(kText.size())));
}

}  // namespace

void AddMissingFonts(DocHandle doc) {
  const ObjectHandle form = FormOf(doc);
  const ObjectHandle fonts = EntryOf(EntryOf(form, Keys().DR), Keys().Font);
  if (IsKind(fonts, ObjectKind::kDict)) return;
  AddFonts(form);
  if (!NamesFont(EntryOf(form, Keys().DA))) PutDefaultAppearance(form);
  WarnOfPdf(form, "The form had no fonts; it got Helvetica and ZapfDingbats.");
}

void CompleteAppearance(DocHandle doc, ObjectHandle field) {
  const ObjectHandle form = FormOf(doc);
  if (!LacksAppearance(field) || NamesFont(EntryOf(form, Keys().DA))) return;
  AddFonts(form);
  PutDefaultAppearance(form);
  WarnOfPdf(form, "The form had no default appearance; it got Helvetica.");
}

}  // namespace quillon::app
