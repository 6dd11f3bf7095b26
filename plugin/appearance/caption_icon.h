// A caption, an icon or both inside a box, as push buttons show them; check marks are captions of
// one character.
#pragma once

#include "plugin/appearance/content_writer.h"
#include "plugin/appearance/text_appearance.h"

namespace quillform {

struct WidgetLook;

// MK TP (ISO 32000-1, table 189); any other value is drawn as text only.
enum CaptionLayout : std::int32_t {
  kTextOnly = 0,
  kIconOnly = 1,
  kIconAboveText = 2,
  kTextAboveIcon = 3,
  kIconLeftOfText = 4,
  kTextLeftOfIcon = 5,
  kTextOverIcon = 6,
};

// Text in the look's colour and size, set in this font, with nothing else of the field's.
TextAppearance CaptionAppearance(const WidgetLook& look, Atom baseFont);

// Draws into the writer's box less the margin. `icon` is a form XObject or the null object; `text`
// is in the font's encoding. A size of 0 fits text alone, and text over an icon, to the box, and is
// 12 points beside an icon. A glyph is placed by its own height instead of the font's line height.
// True when what is drawn stays inside the left and the top margin. Raises kErrorBadParameter for
// an appearance that cannot be written.
bool DrawCaptionAndIcon(ContentWriter& writer, Fixed margin, std::int32_t layout, ObjectHandle icon,
                        const TextAppearance& caption, const char* text, bool glyph);

}  // namespace quillform
