// Form data that a server sends: the answer to a form that was submitted.
#pragma once

#include "plugin/host/host.h"

namespace quillform {

// Takes FDF for a view: fills its form, or has the form opened that the data names and lets the
// data wait for it. Data that does more than setting values is kept, to be applied again when the
// same form opens. True when the data was used; what went wrong has been told to the user.
Boolean FDFDataHandler(const void* data, std::uint32_t length, DocView view);

// Registers it with the host, for as long as the plug-in lives.
void RegisterFdfDataHandler();

}  // namespace quillform
