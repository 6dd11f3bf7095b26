// The routines of the "Forms" table, with the table's own signatures: truth values are 16 bits wide
// there. sdk/forms_table.h tells what each does.
#pragma once

#include "plugin/host/host.h"
#include "sdk/forms_table.h"

namespace quillform::forms_slots {

#define QUILLFORM_DECLARE_SLOT(slot, Return, Name, Params) Return Name Params;
QUILLFORM_FORMS_TABLE(QUILLFORM_DECLARE_SLOT)
#undef QUILLFORM_DECLARE_SLOT

}  // namespace quillform::forms_slots
