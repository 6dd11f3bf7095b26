// PDF and FDF files as documents of objects: opening, saving, and what the host's own rooms ask of
// the object layer beyond its table. Everything here throws HostFailure.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "quillon/core/failure.h"
#include "sdk/types.h"

namespace quillon {

// Something in a file that was wrong and could be lived with.
struct FileWarning {
  std::string text;
  std::uint32_t objectNumber;  // 0 when no one object is meant
  std::int64_t offset;         // byte offset in the file, kNoOffset when there is none
};

struct OpenOptions {
  std::string header = "%PDF-";  // what the file must begin with; up to 1,024 bytes may precede it
  std::string password;          // UTF-8, the user's or the owner's; the empty one is tried too
};

// `file` is UTF-8. Objects are read when they are first touched, so the file must stay as it is
// until ClosePdf; saving over it is safe (the new file is another one under the same name).
// `warnings` may be null; it gets those of the opening itself.
// kErrorOpenFile: cannot be read; kErrorBadHeader: not such a file; kErrorBadFile: no catalog, or
// made to do harm; kErrorPassword: encrypted, and the password does not open it; kErrorNotOffered:
// encrypted in an unknown way.
ObjectDoc OpenPdfFile(const std::string& file, const OpenOptions& options,
                      std::vector<FileWarning>* warnings);
ObjectDoc OpenPdfBytes(std::string bytes, const OpenOptions& options,
                       std::vector<FileWarning>* warnings);

// A document with a catalog and an empty page tree.
ObjectDoc NewPdf();

// Whether the document is encrypted and was opened with the password of its owner, whom it
// restricts in nothing. One that is the user's too counts as the user's.
bool OpenedAsOwner(ObjectDoc doc);

// All warnings so far, those found when objects were touched later included.
const std::vector<FileWarning>& PdfWarnings(ObjectDoc doc);

// Adds one, told once, for what is wrong beyond the objects themselves.
void WarnOfPdf(ObjectHandle object, const std::string& text);

void ClosePdf(ObjectDoc doc);
void CloseAllPdfs();
std::size_t OpenPdfCount();  // FDF documents included

struct SaveOptions {
  // Writes what changed after the file's own bytes instead of writing all anew, so that signatures
  // over them still hold. kErrorNotOffered for a file whose cross-references are damaged, and for
  // a document that is no file yet.
  bool append = false;
  // Fails (kErrorBadObject) when an object cannot be read, which writing all anew would leave out:
  // for a save over the only copy.
  bool keepAll = false;
};

// The whole document as a file. A document without changes gives the bytes it was read from.
std::string PdfToBytes(ObjectDoc doc, const SaveOptions& options = {});

// Writes a file beside `file`, then puts it in its place, so that `file` is whole at every moment.
// The permissions of a replaced file are kept. The document then counts as not modified. Over the
// file that it was read from, it fails (kErrorWriteFile) when another program changed that
// meanwhile.
void SavePdfFile(ObjectDoc doc, const std::string& file, const SaveOptions& options = {});

// Whether something changed since the document was opened or last saved with SavePdfFile.
bool PdfModified(ObjectDoc doc);
void ClearPdfModified(ObjectDoc doc);

// Rises with every change of the document's objects, and only then: what was read while it stood
// the same still holds.
std::uint64_t PdfChangeCount(ObjectDoc doc);

// Whether an entry of a dictionary that is an object of the file differs from the file's.
bool PdfEntryChanged(ObjectHandle dict, Atom key);

// 0 for a direct object.
std::uint32_t ObjectNumberOf(ObjectHandle object);

// Where the indirect object stands in the file; kNoOffset for others and for new ones. An object
// in an object stream stands where its stream does.
std::int64_t FileOffsetOf(ObjectHandle object);

// The null object for a number that is not in use.
ObjectHandle ObjectByNumber(ObjectDoc doc, std::uint32_t number);

// The highest object number in use or once in use, plus one.
std::uint32_t ObjectCount(ObjectDoc doc);

// Copies objects into another PDF document, with all that they refer to: each object once, and
// references to objects of `leftOut` read null. The copies, in order: indirect objects, but for
// direct numbers, booleans and names, which stay what they are.
std::vector<ObjectHandle> CopyPdfObjects(ObjectDoc from, const std::vector<ObjectHandle>& copied,
                                         const std::vector<ObjectHandle>& leftOut, ObjectDoc to);

// Has a document that has no form dictionary yet keep one under the key that the other keeps its
// own under, so that the same programs know it. kErrorNotOffered when something else stands there.
void AdoptFormKey(ObjectDoc doc, ObjectDoc other);

// What a page tree's entry is: a node has Kids; kNone leads to no page.
enum class PagePart { kNone, kNode, kPage };
PagePart PagePartOf(ObjectHandle dict);

// Pages listed again are pages of their own, as many as somebody may have meant.
inline constexpr int kMaxPageCopies = 1000;

// Null when the document has no pages. A tree that is missing is made of the pages there are.
ObjectHandle PageTreeRoot(ObjectDoc doc);

// A direct dictionary: Root, Info, ID ... (ISO 32000-1, 7.5.5).
ObjectHandle TrailerOf(ObjectDoc doc);

// All bytes of a stream through its filters.
std::string DecodedStream(ObjectHandle stream);

}  // namespace quillon
