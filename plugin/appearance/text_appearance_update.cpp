#include <cctype>

#include "plugin/appearance/font_resources.h"
#include "plugin/appearance/text_appearance.h"
#include "plugin/appearance/widget_entries.h"
#include "plugin/host/form_events.h"
#include "plugin/model/field_tree.h"
#include "plugin/model/field_values.h"
#include "plugin/model/form_dict.h"
#include "plugin/model/keys.h"

namespace quillform {

namespace {

constexpr int kDeepestKid = 64;  // damaged files may have kids without end

void RebuildWidgets(FieldNode node, int depth) {
  if (!FieldNodeIsValid(node) || depth > kDeepestKid) return;
  if (NodeIsWidget(node)) {
    MarkAppearanceStale(node);
    RefreshWidget(node, GetFieldValue(node), kNoAtom);
    return;
  }
  const ObjectHandle kids = Objects->DictGet(FieldNodeDict(node), key::Kids);
  if (!IsKind(kids, ObjectKind::kArray)) return;
  const std::uint32_t count = Objects->ArrayLength(kids);
  for (std::uint32_t i = 0; i < count; ++i) {
    RebuildWidgets(FieldNodeOf(Objects->ArrayGet(kids, i)), depth + 1);
  }
}

ObjectHandle NewText(ObjectDoc doc, const std::string& text) {
  return Objects->NewString(doc, false, text.data(), static_cast<std::uint32_t>(text.size()));
}

ObjectDoc DocOfNode(FieldNode node) { return Objects->DocumentOf(FieldNodeDict(node)); }

void RemoveFieldLook(FieldNode node) {
  bool removed = false;
  for (const std::uint32_t bit : {kBitDA, kBitDR, kBitQ}) {
    if ((node->ownEntries & bit) == 0) continue;
    PutNodeEntry(node, InheritableKey(bit), quillon::kNullObject);
    removed = true;
  }
  if (removed && Objects->DictKnown(FieldNodeDict(node), key::Kids)) RebuildWidgets(node, 0);
}

// Makes the look's font one of the field's; when that fails the look keeps the current one.
void AdoptFont(FieldNode node, const TextAppearance& current, TextAppearance& look) {
  Atom resource = kNoAtom;
  DropFailures([&] {
    const DocHandle doc = Document->DocOfObjectDoc(DocOfNode(node));
    const ObjectHandle font = FindOrMakeFontDict(doc, look.baseFont);
    if (!IsNull(font)) resource = AddFontToFieldResources(node, font);
  });
  const bool adopted = resource != kNoAtom;
  look.fontResource = adopted ? resource : current.fontResource;
  if (!adopted) look.baseFont = current.baseFont;
}

// The look without the field's own DA is what the field inherits. A field that inherits none that
// can be read equals nothing.
bool InheritsLook(FieldNode node, const TextAppearance& look) {
  TextAppearance inherited;
  const FailureCode code = CatchFailure([&] { FieldTextAppearance(node, &inherited); });
  return code == quillon::kErrorNone && TextAppearancesEqual(inherited, look);
}

void WriteFieldDA(FieldNode node, const TextAppearance& look) {
  std::string text = DAText(look, kFieldDACapacity);
  while (!text.empty() && std::isspace(static_cast<unsigned char>(text.back())) != 0) {
    text.pop_back();
  }
  if ((node->ownEntries & kBitDA) != 0) {
    PutNodeEntry(node, key::DA, quillon::kNullObject);
    if (InheritsLook(node, look)) return;
  }
  PutNodeEntry(node, key::DA, NewText(DocOfNode(node), text));
}

// Answers kBitQ when the form's own quadding changed.
std::uint32_t PutFormQuadding(ObjectHandle formDict, std::uint16_t quadding) {
  const ObjectHandle current = Objects->DictGet(formDict, key::Q);
  const std::int32_t old =
      IsKind(current, ObjectKind::kInteger) ? Objects->IntegerValue(current) : 0;
  if (old == quadding) return 0;
  Objects->DictPut(formDict, key::Q,
                   Objects->NewInteger(Objects->DocumentOf(formDict), false, quadding));
  return kBitQ;
}

// Answers kBitDA when the form's text changed. A text that cannot be read is replaced.
std::uint32_t PutFormDA(ObjectHandle formDict, const TextAppearance& look) {
  TextAppearance current;
  const FailureCode code = CatchFailure([&] { FormTextAppearance(formDict, &current); });
  if (code == quillon::kErrorNone && TextAppearancesEqual(current, look)) return 0;
  const std::string text = DAText(look, kFormDACapacity);
  Objects->DictPut(formDict, key::DA, NewText(Objects->DocumentOf(formDict), text));
  return kBitDA;
}

Atom NameOfFont(ObjectHandle font, Atom fallback) {
  const ObjectHandle name = Objects->DictGet(font, key::Name);
  return IsKind(name, ObjectKind::kName) ? Objects->NameValue(name) : fallback;
}

}  // namespace

void SetFieldQuadding(FieldNode node, std::uint16_t quadding) {
  if (!FieldNodeIsValid(node)) return;
  const ObjectHandle current = GetFieldEntry(node, kBitQ);
  const std::int32_t old =
      IsKind(current, ObjectKind::kInteger) ? Objects->IntegerValue(current) : 0;
  if (old == quadding) return;
  PutNodeEntry(node, key::Q, Objects->NewInteger(DocOfNode(node), false, quadding));
}

void SetFieldTextAppearance(FieldNode node, const TextAppearance* look) {
  if (!FieldNodeIsValid(node)) return;
  if (look == nullptr) {
    RemoveFieldLook(node);
    return;
  }
  const DocHandle doc = Document->DocOfObjectDoc(DocOfNode(node));
  if (!DocumentHasForm(doc) || !TextAppearanceIsValid(*look)) Raise(quillon::kErrorBadParameter);
  TextAppearance wanted = *look;
  NormaliseColours(wanted);
  TextAppearance current;
  FieldTextAppearance(node, &current);
  if (TextAppearancesEqual(current, wanted)) return;
  if (current.quadding != wanted.quadding) SetFieldQuadding(node, wanted.quadding);
  if (current.baseFont != wanted.baseFont) AdoptFont(node, current, wanted);
  WriteFieldDA(node, wanted);
  RebuildWidgets(node, 0);
  MarkAppearanceStale(node);
}

void SetFormTextAppearance(ObjectHandle formDict, const TextAppearance& look) {
  const DocHandle doc = Document->DocOfObjectDoc(Objects->DocumentOf(formDict));
  const ObjectHandle font = FindOrMakeFontDict(doc, look.baseFont);
  if (IsNull(font)) Raise(quillon::kErrorBadParameter);
  TextAppearance wanted = look;
  std::uint32_t changed = PutFormQuadding(formDict, wanted.quadding);
  wanted.fontResource = NameOfFont(font, wanted.baseFont);
  changed |= AddFontToFormResources(formDict, font);
  NormaliseColours(wanted);
  changed |= PutFormDA(formDict, wanted);
  if (changed == 0) return;
  FormEventRecord record{};
  record.document = doc;
  record.mask = changed;
  FormEventAnnounce(kEventDefaultsChanged, &record);
}

void SetDefaultFormAppearance(ObjectHandle formDict) {
  SetFormTextAppearance(formDict, DefaultTextAppearance());
}

}  // namespace quillform
