// Choosing what happens when a page is opened and closed.
#pragma once

namespace quillform {

// Adds the item after the host's one for cropping pages; it asks actionDialogs for the page shown.
void AddPageActionsItem();

}  // namespace quillform
