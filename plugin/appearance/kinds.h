// What the six kinds of fields do with their appearances and looks.
#pragma once

namespace quillform {

// Registers the records of the six kinds. The key atoms must exist.
void RegisterAppearanceKinds();

}  // namespace quillform
