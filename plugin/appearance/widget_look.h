// The whole look of one widget in one record, as dialogs, tools and builders exchange it.
#pragma once

#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "plugin/appearance/border.h"
#include "plugin/appearance/text_appearance.h"

namespace quillform {

// A plain option stands in both lists with the same text. Host encoding.
struct OptionList {
  std::vector<std::string> display;
  std::vector<std::string> exported;
};

struct TextPart {
  std::string defaultText;  // host encoding
  bool multiLine;
  std::int32_t maxLen;  // 0 for none
  bool password;
  std::uint16_t quadding;
  Fixed fontSize;
};

struct ComboPart {
  bool sorted;
  bool editable;
  std::int32_t defaultIndex;  // -1 for none
  OptionList options;
};

struct ListPart {
  bool sorted;
  std::int32_t defaultIndex;  // -1 for none
  std::int32_t topIndex;
  OptionList options;
};

struct CheckPart {
  ObjectHandle icon;    // MK I
  std::string caption;  // MK CA, host encoding
  bool onByDefault;
  Atom onState;
};

struct ButtonPart {
  std::string caption;  // host encoding
  std::string downCaption;
  ObjectHandle icon;
  ObjectHandle downIcon;
  std::int32_t layout;  // MK TP
  Atom highlight;       // H
};

using KindPart = std::variant<std::monostate, TextPart, ComboPart, ListPart, CheckPart, ButtonPart>;

struct WidgetLook {
  Atom kind;
  Atom baseFont;
  std::string name;  // host encoding
  FixedRect rect;
  ColourRec borderColour;
  ColourRec markColour;  // RGB (1, 0, 0) when read; never written
  ColourRec textColour;
  ColourRec background;
  BorderStyle border;
  Fixed fontSize;  // scaled by OH; 0 automatic
  std::uint32_t fieldFlags;
  std::uint32_t annotFlags;
  std::uint16_t quadding;
  std::uint16_t rotation;
  KindPart kindPart;
  std::string valueText;  // host encoding
};

// Null when memory runs out. The caller owns the record.
std::unique_ptr<WidgetLook> ReadWidgetLook(AnnotHandle annot);
void DefaultWidgetLook(DocHandle doc, WidgetLook* look);
// Raises kErrorBadParameter for a look without a name; then nothing has changed.
void WriteWidgetLook(AnnotHandle annot, WidgetLook& look);

// Adds to a look what is particular to a kind: its part and, where it has one, the value's text. An
// unknown kind has none.
void ReadKindPart(AnnotHandle annot, Atom kind, WidgetLook* look);

// WriteWidgetLook with the part that the look carries. While the field's node is marked as edited
// by an author (kNodeEdited) options, limits and defaults are written too; otherwise only what the
// user's filling in has changed.
void ApplyWidgetLook(AnnotHandle annot, WidgetLook& look);

// The name of a check box's or radio button's checked state.
Atom OnStateOf(AnnotHandle annot);

enum class ValueType : std::int32_t {
  kInteger = 1,
  kFixed = 2,
  kBoolean = 3,
  kName = 4,
  kString = 5
};
// Sets the field's value from text in the host's encoding; an empty text clears it.
void SetValueFromText(AnnotHandle annot, ValueType type, const std::string& text);

}  // namespace quillform
