#include "plugin/host/dialog_hooks.h"

#include "plugin/host/modal_scope.h"

namespace quillform {

DialogHooks dialogHooks{};

bool AskOpenFile(OPENFILENAMEA* question) {
  const ModalScope modal;
  if (dialogHooks.AskOpenFile != nullptr) return dialogHooks.AskOpenFile(question);
  return GetOpenFileNameA(question) != FALSE;
}

bool AskSaveFile(OPENFILENAMEA* question) {
  const ModalScope modal;
  if (dialogHooks.AskSaveFile != nullptr) return dialogHooks.AskSaveFile(question);
  return GetSaveFileNameA(question) != FALSE;
}

}  // namespace quillform
