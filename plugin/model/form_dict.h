// A document's form dictionary (ISO 32000-1, 12.7.2), under the catalog key QuillForm.
#pragma once

#include "plugin/host/host.h"

namespace quillform {

// The form dictionary; the null object when the document has none or it is not valid: it must be an
// indirect dictionary with a Fields array and no older-revision marker below 0.8.
ObjectHandle FormDictOf(DocHandle doc);
ObjectHandle FormDictOfObjects(ObjectDoc doc);

// What the catalog has under its form key, valid or not; the null object for nothing.
ObjectHandle CatalogFormOf(ObjectDoc doc);

bool DocumentHasForm(DocHandle doc);

// Makes the form dictionary, or takes over an existing one as a form of this revision; gives it the
// default resources and announces form event 2. The null object when the host cannot make it; what
// fails afterwards is raised.
ObjectHandle CreateFormDict(DocHandle doc);

// Forgets which dictionary was found valid last (a document closed, a form was made).
void ForgetFormDict();

// Run before a document's form stops being live. After a merge of widgets ($Wa): widgets that could
// not be placed leave their pages, fields that no page shows leave the tree. The values of password
// fields ($Vo) are cleared. A MaxLen of the form itself is removed. One failing part does not keep
// the others from being done; the first failure is raised at the end.
void CloseForm(DocHandle doc);

}  // namespace quillform
