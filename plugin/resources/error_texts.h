// The module's own errors: codes that the host gives for the module's texts.
#pragma once

#include "plugin/host/host.h"

namespace quillform {

struct OwnErrors {
  FailureCode invalidFdf;
  FailureCode exportFailed;
  FailureCode openUrlFailed;
  FailureCode requiredFieldEmpty;  // its text has been shown when it is raised
};

// All 0 until RegisterErrorTexts has run.
extern OwnErrors ownErrors;

// Gives the host the texts, in the user interface's language.
void RegisterErrorTexts();

}  // namespace quillform
