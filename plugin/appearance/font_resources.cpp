#include "plugin/appearance/font_resources.h"

#include <algorithm>
#include <cstdlib>

#include "plugin/appearance/encoding_table.h"
#include "plugin/appearance/form_parts.h"
#include "plugin/model/field_dicts.h"
#include "plugin/model/field_tree.h"
#include "plugin/model/field_values.h"
#include "plugin/model/form_dict.h"
#include "plugin/model/keys.h"

namespace quillform {

std::array<BaseFont, 14> baseFonts;

namespace {

constexpr std::uint32_t kResourceCapacity = 5;
constexpr std::uint32_t kFontCapacity = 6;
constexpr std::uint32_t kEncodingCapacity = 3;

// How many fields are asked for a font that the form's resources lack.
constexpr int kMostFieldsSearched = 100;

ObjectHandle FontsOfForm(DocHandle doc) {
  return EntryOf(EntryOf(FormDictOf(doc), key::DR), key::Font);
}

// The dictionary that resources keep under the base font's short name, if it is that font's.
ObjectHandle FontUnder(ObjectHandle fonts, Atom base) {
  const ObjectHandle font = EntryOf(fonts, ShortNameOf(base));
  return BaseFontOf(font) == base ? font : kNullObject;
}

// The last font made for each base font. One that no resources keep is asked for again with every
// appearance that uses it, and a document needs it once only.
struct MadeFont {
  ObjectDoc doc;
  ObjectHandle dict;
};
std::array<MadeFont, 14> madeFonts;

MadeFont& MadeFontOf(Atom base) {
  std::size_t index = 0;
  while (index + 1 < baseFonts.size() && baseFonts[index].base != base) ++index;
  return madeFonts[index];
}

// Null when it was made for another document, or destroyed or changed since.
ObjectHandle StillMade(const MadeFont& made, ObjectDoc doc, Atom base) {
  if (doc == nullptr || made.doc != doc) return kNullObject;
  bool valid = false;
  DropFailures([&] { valid = BaseFontOf(made.dict) == base; });
  return valid ? made.dict : kNullObject;
}

struct FieldSearch {
  Atom base;
  int left;
  ObjectHandle found;  // null until found
};

Boolean SearchField(FieldNode node, void* clientData) {
  auto* search = static_cast<FieldSearch*>(clientData);
  const ObjectHandle fonts = EntryOf(EntryOf(node->dict, key::DR), key::Font);
  search->found = FontUnder(fonts, search->base);
  return IsNull(search->found) && --search->left > 0;
}

void PutName(ObjectHandle dict, Atom key, ObjectDoc doc, Atom name) {
  Objects->DictPut(dict, key, Objects->NewName(doc, false, name));
}

ObjectHandle NewEncodingDict(ObjectDoc doc) {
  NewObject encoding(Objects->NewDict(doc, true, kEncodingCapacity));
  PutName(encoding.handle, key::Type, doc, key::Encoding);
  const ObjectHandle differences = PutNewArray(encoding.handle, Core->AtomFromName("Differences"),
                                               doc, kEncodingDifferenceCount);
  std::uint32_t index = 0;
  for (const char* const* element = kEncodingDifferences; **element != '\0'; ++element) {
    const bool isCode = **element >= '0' && **element <= '9';
    Objects->ArrayPut(differences, index++,
                      isCode ? Objects->NewInteger(doc, false, std::atoi(*element))
                             : Objects->NewName(doc, false, Core->AtomFromName(*element)));
  }
  return encoding.Release();
}

bool HasOwnEncoding(Atom base) { return base == key::Symbol || base == key::ZapfDingbats; }

ObjectHandle NewFontDict(DocHandle doc, ObjectDoc objects, Atom base) {
  NewObject font(Objects->NewDict(objects, true, kFontCapacity));
  PutName(font.handle, key::Type, objects, key::Font);
  PutName(font.handle, key::Subtype, objects, key::Type1);
  PutName(font.handle, key::Name, objects, ShortNameOf(base));
  PutName(font.handle, key::BaseFont, objects, base);
  if (!HasOwnEncoding(base)) {
    const ObjectHandle encoding = SharedEncodingDict(doc);
    if (!IsNull(encoding)) PutCopy(font.handle, key::Encoding, encoding);
  }
  return font.Release();
}

// The Font dictionary of resources, made when missing. Null when the resources are none.
ObjectHandle FontsOf(ObjectHandle resources, ObjectDoc doc) {
  if (!IsKind(resources, ObjectKind::kDict)) return kNullObject;
  return EnsureDict(resources, key::Font, doc, kResourceCapacity);
}

Boolean CopyEntry(ObjectHandle key, ObjectHandle value, void* clientData) {
  const auto copy = *static_cast<ObjectHandle*>(clientData);
  PutCopy(copy, Objects->NameValue(key), value);
  return true;
}

// Helvetica under another name, so that a default appearance that names a lost font works again.
void AddHelveticaAs(FieldNode node, DocHandle doc, Atom name) {
  const ObjectDoc objects = Document->ObjectDocOf(doc);
  const ObjectHandle helvetica = FindOrMakeFontDict(doc, key::Helvetica);
  NewObject copy(Objects->NewDict(objects, true, kFontCapacity));
  Objects->EnumDict(helvetica, Wrap<&CopyEntry>, &copy.handle);
  PutName(copy.handle, key::Name, objects, name);
  AddFontToFieldResources(node, copy.handle);
  copy.Release();
}

}  // namespace

void FillBaseFontTable() {
  baseFonts = {{{key::TimesRoman, key::TiRo, 36},
                {key::TimesItalic, key::TiIt, 38},
                {key::TimesBold, key::TiBo, 37},
                {key::TimesBoldItalic, key::TiBI, 39},
                {key::Helvetica, key::Helv, 40},
                {key::HelveticaOblique, key::HeOb, 42},
                {key::HelveticaBold, key::HeBo, 41},
                {key::HelveticaBoldOblique, key::HeBO, 43},
                {key::Courier, key::Cour, 44},
                {key::CourierOblique, key::CoOb, 46},
                {key::CourierBold, key::CoBo, 45},
                {key::CourierBoldOblique, key::CoBO, 47},
                {key::Symbol, key::Symb, 48},
                {key::ZapfDingbats, key::ZaDb, 49}}};
}

bool IsBaseFont(Atom base) {
  return std::any_of(baseFonts.begin(), baseFonts.end(),
                     [base](const BaseFont& font) { return font.base == base; });
}

Atom ShortNameOf(Atom base) {
  for (const BaseFont& font : baseFonts) {
    if (font.base == base) return font.shortName;
  }
  return base;
}

Atom BaseNameOf(Atom shortName) {
  for (const BaseFont& font : baseFonts) {
    if (font.shortName == shortName) return font.base;
  }
  return kNoAtom;
}

Atom BaseFontOf(ObjectHandle fontDict) {
  if (!IsKind(fontDict, ObjectKind::kDict)) return kNoAtom;
  const ObjectHandle name = Objects->DictGet(fontDict, key::BaseFont);
  return IsKind(name, ObjectKind::kName) ? Objects->NameValue(name) : kNoAtom;
}

Atom FontKeyOf(ObjectHandle fontDict) {
  const ObjectHandle name = EntryOf(fontDict, key::Name);
  if (IsKind(name, ObjectKind::kName)) return Objects->NameValue(name);
  return ShortNameOf(BaseFontOf(fontDict));
}

ObjectHandle SharedEncodingDict(DocHandle doc) {
  const ObjectHandle fonts = FontsOfForm(doc);
  for (const BaseFont& font : baseFonts) {
    const ObjectHandle dict = EntryOf(fonts, font.shortName);
    if (!IsKind(dict, ObjectKind::kDict)) continue;
    const ObjectHandle encoding = Objects->DictGet(dict, key::Encoding);
    if (IsKind(encoding, ObjectKind::kDict)) return encoding;
  }
  ObjectHandle made = kNullObject;
  DropFailures([&] { made = NewEncodingDict(Document->ObjectDocOf(doc)); });
  return made;
}

ObjectHandle FindOrMakeFontDict(DocHandle doc, Atom base) {
  if (base == kNoAtom) return kNullObject;
  const ObjectHandle ofForm = FontUnder(FontsOfForm(doc), base);
  if (!IsNull(ofForm)) return ofForm;
  const ObjectDoc objects = Document->ObjectDocOf(doc);
  MadeFont& made = MadeFontOf(base);
  const ObjectHandle madeBefore = StillMade(made, objects, base);
  if (!IsNull(madeBefore)) return madeBefore;
  FieldSearch search{base, kMostFieldsSearched, kNullObject};
  ForEachFieldNode(doc, false, true, &SearchField, &search);
  if (!IsNull(search.found)) return search.found;
  if (!IsBaseFont(base)) return kNullObject;
  made = {objects, NewFontDict(doc, objects, base)};
  return made.dict;
}

Atom AddFontToFieldResources(FieldNode node, ObjectHandle fontDict) {
  if (!FieldNodeIsValid(node) || BaseFontOf(fontDict) == kNoAtom) return kNoAtom;
  const Atom name = FontKeyOf(fontDict);
  const ObjectDoc doc = Objects->DocumentOf(node->dict);
  ObjectHandle resources = GetFieldEntry(node, kBitDR);
  if (!IsKind(resources, ObjectKind::kDict)) {
    resources = PutNewDict(node->dict, key::DR, doc, kResourceCapacity);
    RecomputeOwnEntries(node);
  }
  const ObjectHandle fonts = FontsOf(resources, doc);
  if (IsNull(fonts)) Raise(quillon::kErrorBadStructure);
  if (!Objects->DictKnown(fonts, name)) PutCopy(fonts, name, fontDict);
  return name;
}

std::uint32_t AddFontToFormResources(ObjectHandle formDict, ObjectHandle fontDict) {
  const ObjectDoc doc = Objects->DocumentOf(formDict);
  const ObjectHandle resources = EnsureDict(formDict, key::DR, doc, kResourceCapacity);
  bool changed = !IsKind(EntryOf(resources, key::Font), ObjectKind::kDict);
  const ObjectHandle fonts = FontsOf(resources, doc);
  if (IsNull(fonts)) Raise(quillon::kErrorBadStructure);
  if (changed) {
    // Check boxes and radio buttons draw their marks with it.
    const ObjectHandle marks = FindOrMakeFontDict(Document->DocOfObjectDoc(doc), key::ZapfDingbats);
    PutCopy(fonts, FontKeyOf(marks), marks);
  }
  const Atom name = FontKeyOf(fontDict);
  if (!Objects->Equal(Objects->DictGet(fonts, name), fontDict)) {
    PutCopy(fonts, name, fontDict);
    changed = true;
  }
  return changed ? std::uint32_t{kBitDR} : 0;
}

Atom ResolveFieldFont(FieldNode node, Atom resource) {
  const ObjectHandle fonts = EntryOf(GetFieldEntry(node, kBitDR), key::Font);
  if (!IsKind(fonts, ObjectKind::kDict)) Raise(quillon::kErrorBadStructure);
  const ObjectHandle font = Objects->DictGet(fonts, resource);
  if (IsKind(font, ObjectKind::kDict)) return BaseFontOf(font);

  const DocHandle doc = Document->DocOfObjectDoc(Objects->DocumentOf(node->dict));
  const Atom base = BaseNameOf(resource);
  if (base != kNoAtom) {
    AddFontToFieldResources(node, FindOrMakeFontDict(doc, base));
    return base;
  }
  AddHelveticaAs(node, doc, resource);
  return key::Helvetica;
}

}  // namespace quillform
