#include "plugin/appearance/form_stream.h"

#include "plugin/appearance/font_resources.h"
#include "plugin/appearance/form_parts.h"
#include "plugin/host/owned_files.h"
#include "plugin/model/field_dicts.h"
#include "plugin/model/form_dict.h"
#include "plugin/model/keys.h"

namespace quillform {

namespace {

// The form's font of that name, if it is that base font. Programs keep fonts of their own, and the
// base fonts, under names of their choice.
ObjectHandle FormFontNamed(DocHandle doc, Atom name, Atom baseFont) {
  const ObjectHandle fonts = EntryOf(EntryOf(FormDictOf(doc), key::DR), key::Font);
  const ObjectHandle font = EntryOf(fonts, name);
  return BaseFontOf(font) == baseFont ? font : kNullObject;
}

// Puts the font under its own key and under the name by which the content selects it. A font that
// is nowhere to be found was measured as Helvetica and is shown as that. False without any font.
bool PutFont(ObjectHandle resources, ObjectDoc objects, const ContentWriter& writer) {
  const DocHandle doc = Document->DocOfObjectDoc(objects);
  const Atom baseFont = writer.font.baseFont;
  const Atom name = writer.fontResource;
  const ObjectHandle font = FindOrMakeFontDict(doc, baseFont);
  const bool found = IsKind(font, ObjectKind::kDict);
  if (!found && name == kNoAtom) return false;

  const ObjectHandle fonts = PutNewDict(resources, key::Font, objects, 2);
  const Atom ownKey = found ? FontKeyOf(font) : kNoAtom;
  if (found) PutCopy(fonts, ownKey, font);
  if (name == kNoAtom || name == ownKey) return true;
  ObjectHandle selected = FormFontNamed(doc, name, baseFont);
  if (IsNull(selected)) selected = found ? font : FindOrMakeFontDict(doc, key::Helvetica);
  PutCopy(fonts, name, selected);
  return true;
}

ObjectHandle NewContentStream(ObjectDoc doc, const ContentWriter& writer) {
  const auto length = static_cast<std::uint32_t>(writer.text.size());
  const OwnedStream source(Support->OpenMemoryStream(writer.text.data(), length));
  NewObject attributes(ContentAttributes(doc, length));
  const ObjectHandle stream = Objects->NewStream(doc, source.get(), attributes.handle);
  attributes.Release();
  return stream;
}

// False when the font that the content selects cannot be had.
bool PutResources(ObjectHandle dict, ObjectDoc doc, const ContentWriter& writer) {
  const ObjectHandle resources = PutNewDict(dict, key::Resources, doc, 3);
  const ObjectHandle procSet = PutNewArray(resources, key::ProcSet, doc, 2);
  Objects->ArrayPut(procSet, 0, Objects->NewName(doc, false, key::PDF));
  if ((writer.flags & kWriterUsesFont) != 0) {
    Objects->ArrayPut(procSet, 1, Objects->NewName(doc, false, key::Text));
    if (writer.font.baseFont != 0 && !PutFont(resources, doc, writer)) return false;
  }
  if ((writer.flags & kWriterUsesIcon) != 0 && !IsNull(writer.icon)) {
    PutCopy(PutNewDict(resources, key::XObject, doc, 1), key::FRM, writer.icon);
  }
  return true;
}

}  // namespace

ObjectHandle MakeFormStream(ObjectDoc doc, const ContentWriter& writer) {
  if (writer.text.empty() || writer.lost) return kNullObject;
  ObjectHandle result = kNullObject;
  DropFailures([&] {
    NewObject stream(NewContentStream(doc, writer));
    const ObjectHandle dict = Objects->StreamDict(stream.handle);
    PutBBox(dict, doc, writer.box);
    PutRotationMatrix(dict, doc, writer.rotation, BoxWidth(writer), BoxHeight(writer));
    if (PutResources(dict, doc, writer)) result = stream.Release();
  });
  return result;
}

}  // namespace quillform
