// Form data as name=value pairs: the media type application/x-www-form-urlencoded of HTML 4.01,
// 17.13.4, which servers of HTML forms take.
#pragma once

#include "plugin/host/host.h"

namespace quillform {

// Where pairs go. The first one that is written to an empty output has no "&" before it.
struct PairOutput {
  StreamHandle stream;
  bool holdsData;
};

// Writes one pair; nothing for a value that is neither text, nor a name, nor null (such as several
// options at once). Letters and digits stand for themselves, a space is "+", a line end of any
// kind "%0d%0a", every other byte "%" and two digits. Raises kErrorWriteFile when the stream does
// not take all of it.
void WritePair(PairOutput* output, const char* name, ObjectHandle value);

// Loads all fields, and writes those selected (field_collection.h) in the order in which they are
// visited. What stands in the stream before is not looked at. Fields marked as not exported and
// passwords are left out. Raises the error for an empty field that is required, after its message.
void WriteURLEncoded(DocHandle doc, ObjectHandle list, bool inclusion, bool includeEmpty,
                     StreamHandle stream);

}  // namespace quillform
