// What is being typed into a field while its values are asked for.
#pragma once

#include "plugin/host/host.h"

namespace quillform {

// Ends the text edit of the view, if there is one, so that what was typed is the field's value. An
// edit is the view's selection; its owner stores the text when the selection is taken away.
void CommitEditInProgress(DocView view);

}  // namespace quillform
