#include "quillon/app/form_fonts.h"

#include <string_view>

#include "quillon/app/form_keys.h"
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

}  // namespace

void AddMissingFonts(DocHandle doc) {
  const ObjectDoc objects = document::ObjectDocOf(doc);
  const ObjectHandle form = EntryOf(objects::DocRoot(objects), Keys().QuillForm);
  const ObjectHandle fonts = EntryOf(EntryOf(form, Keys().DR), Keys().Font);
  if (IsKind(fonts, ObjectKind::kDict)) return;
  AddFonts(form);
  if (!IsKind(EntryOf(form, Keys().DA), ObjectKind::kString)) {
    objects::DictPut(
        form, Keys().DA,
        objects::NewString(objects, 0, kText.data(), static_cast<std::uint32_t>(kText.size())));
  }
  WarnOfPdf(form, "The form had no fonts; it got Helvetica and ZapfDingbats.");
}

}  // namespace quillon::app
