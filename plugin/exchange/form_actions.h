// The entries of SubmitForm and ResetForm actions (ISO 32000-1, 12.7.5) as people set them up.
#pragma once

#include "plugin/exchange/action_dialogs.h"

namespace quillform {

SubmitSettings ReadSubmitSettings(ActionHandle action);
ResetSettings ReadResetSettings(ActionHandle action);

// The URL or path in the action's file specification, cut to kUrlSize - 1 bytes; empty for none.
std::string FileSpecText(ActionHandle action);

// Entries that say no more than their absence does are removed. `fields` is left in place when it
// is the action's list already; a new direct array is taken over.
void WriteSubmitSettings(ActionHandle action, const SubmitSettings& settings);
void WriteResetSettings(ActionHandle action, const ResetSettings& settings);

// Ask the user, and write what was confirmed.
void EditSubmitForm(ActionHandle action, DocView view);
void EditResetForm(ActionHandle action, DocView view);

}  // namespace quillform
