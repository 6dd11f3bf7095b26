// What an FDF asks of a widget annotation (ISO 32000-1, table 243).
#pragma once

#include <optional>

#include "plugin/host/host.h"

namespace quillform {

// Gives a widget dictionary the entry's AP, AS, A and AA, copied, and its flags. The appearances
// are icons: each is drawn inside the widget's own border and background.
void ApplyToWidget(ObjectHandle widget, ObjectHandle entry);

// Flags in an FDF entry; none when there is no integer under the key.
std::optional<std::uint32_t> FlagsEntry(ObjectHandle entry, Atom key);

// The current flags with those that the entry sets and without those that it clears; none when it
// does neither.
std::optional<std::uint32_t> ChangedFlags(std::uint32_t current, ObjectHandle entry, Atom setKey,
                                          Atom clearKey);

}  // namespace quillform
