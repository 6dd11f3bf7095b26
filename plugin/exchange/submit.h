// Submitting a form (ISO 32000-1, 12.7.5.2).
#pragma once

#include "plugin/host/host.h"

namespace quillform {

// Bits of Flags (ISO 32000-1, table 237); a ResetForm action has the first one (table 239).
enum SubmitFlag : std::int32_t {
  kExcludeListed = 0x1,
  kIncludeEmpty = 0x2,
  kUrlEncoded = 0x4,
};

// What a SubmitForm action asks for.
struct SubmitRequest {
  ObjectHandle fields;  // the list, or the null object
  bool inclusion;       // the list names the fields to send; otherwise those to leave out
  bool includeEmpty;    // fields without a value too
  bool urlEncoded;      // as name=value pairs, otherwise as FDF
};
SubmitRequest ReadSubmitRequest(ActionHandle action);

// Performs a SubmitForm action for a view that a web browser shows; for any other it says so and
// sends nothing. The values go through a temporary file, which is gone afterwards. What goes wrong
// is told to the user; nothing is raised for it.
void PerformSubmitForm(ActionHandle action, DocView view);

}  // namespace quillform
