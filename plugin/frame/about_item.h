// The item that tells about the plug-in.
#pragma once

namespace quillform {

// Shows who made the plug-in and which version this is; null as long as nothing can show it.
struct AboutHooks {
  void (*ShowAbout)();
};
extern AboutHooks aboutHooks;

// Adds the item to the host's list of its extensions. Choosing it raises kErrorNotOffered while
// nothing can show it.
void AddAboutItem();

}  // namespace quillform
