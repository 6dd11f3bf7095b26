// Form data files (ISO 32000-1, 12.7.7) as documents of objects.
#pragma once

#include <utility>

#include "plugin/host/host.h"

namespace quillform {

inline constexpr const char* kFdfHeader = "%FDF-1.2";

// An FDF document, closed at the end unless it is released.
struct OwnedFdf {
  explicit OwnedFdf(ObjectDoc document = nullptr) : doc(document) {}
  ~OwnedFdf() { Close(); }
  OwnedFdf(const OwnedFdf&) = delete;
  OwnedFdf& operator=(const OwnedFdf&) = delete;

  ObjectDoc Release() { return std::exchange(doc, nullptr); }
  void Close() {
    if (doc != nullptr) DropFailures([this] { Objects->CloseDocument(Release()); });
  }

  ObjectDoc doc;
};

// Whether the file begins as an FDF does.
bool FileIsFdf(PathHandle path);

// The file as an FDF document, for the caller to close. Raises kErrorBadHeader when it is none.
ObjectDoc OpenFdf(PathHandle path);

// The FDF dictionary; raises ownErrors.invalidFdf without one.
ObjectHandle FdfDictOf(ObjectDoc fdf);

// Whether the identifiers in the FDF, if it has any, are those of the document.
bool FdfIsFor(ObjectHandle fdfDict, DocHandle doc);

// Shows the text of a failure in an alert. A file that is not of the kind expected is spoken of as
// FDF.
void ShowFdfFailure(FailureCode failure);

// Takes the path over. Imports the file into the view's document, after ending a text edit in
// progress. A file that is no FDF is told to the user; every other failure is raised.
void ImportFDFFile(DocView view, PathHandle path);

}  // namespace quillform
