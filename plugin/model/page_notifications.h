// What the host tells of annotations and pages, as far as fields live on them.
#pragma once

namespace quillform {

// Registers for annotations that are added, removed and changed, and for pages that are inserted
// and deleted. Always true.
bool RegisterPageNotifications();

}  // namespace quillform
