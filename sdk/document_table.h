// `Document` ("DocModel"): documents, pages, annotations, actions, file specifications and text.
#pragma once

#include "table_macros.h"
#include "types.h"

namespace quillon {

using DocEnumProc = Boolean (*)(DocHandle doc, void* clientData);

// Annotation flags (ISO 32000-1, 12.5.3).
enum AnnotFlag : std::uint32_t {
  kAnnotInvisible = 0x1,
  kAnnotHidden = 0x2,
  kAnnotPrint = 0x4,
};

// Bits of Document.GetPermissions.
enum Permission : std::uint32_t {
  kPermitEdit = 0x0008,      // the document may be changed
  kPermitAnnotate = 0x0020,  // annotations may be added and changed
  kPermitForms = 0x8000,     // existing fields may be filled in
};

// Bits of Document.GetFlags.
inline constexpr std::uint32_t kDocModified = 0x1;

// Documents
//   EnumDocuments: every open document, newest first, until the routine answers false.
//   ObjectDocOf and DocOfObjectDoc: between the two layers; null when there is no counterpart.
//   FileOf: the file the document was read from, owned by the host; null for a new document.
//   GetFileID: file identifier 0 or 1 (ISO 32000-1, 14.4) into `buffer`, cut to size - 1 bytes and
//     NUL-terminated; answers the bytes put, 0 when there is none.
//   SetFlags, ClearFlags: set or clear the bits given. Changing an object sets kDocModified.
// Pages are counted from 0. AcquirePage raises kErrorBadParameter outside the document; each page
//   acquired is released. PageRotation: 0, 90, 180 or 270, inherited entries included.
//   PageBox: the crop box (else the media box), normalised.
// Annotations
//   AnnotCount, AnnotAt, AnnotIndex (-1 when not on the page): the page's Annots in order; entries
//     that are no dictionaries are not counted. AnnotFromDict: of any dictionary.
//   AnnotIsValid: the dictionary exists, and has a Subtype or a Rect. AnnotRect: normalised so that
//     left <= right and bottom <= top; zeros when there is none. AnnotFlags: 0 when there are none.
//   AnnotWillChange and AnnotDidChange bracket every change of an annotation dictionary; `key` is
//     what changes, `error` 0 or the code of the failure that ended the change. They send
//     kNoteAnnotWillChange and kNoteAnnotChanged.
//   SetAnnotFlags and AnnotSetRect announce themselves. NewAnnot makes and inserts one at the end
//   of
//     the page; InsertAnnot (index -1: at the end) and RemoveAnnot send kNoteAnnotAdded and
//     kNoteAnnotWillRemove. PageOfAnnot: the page number, -1 when no page shows it.
// Actions
//   ActionFromObject: an action dictionary or a destination; null when the object is neither.
//   ActionType: the name of S (or Subtype); the atom GoTo for a destination.
//   ActionDict: the object behind the action. Handles live as long as their document.
// File specifications (ISO 32000-1, 7.11): FileSpecFromObject null when the object is none.
//   FileSpecFromPath: made in `doc`, relative to `relativeTo` when given. FileSpecAcquirePath: null
//     when it names nothing that exists; the caller releases. Handles live as their document.
// Text. The document's encoding is PDFDocEncoding, one byte a character; host text is the
//   platform's single-byte encoding, Windows-1252 (natively too). A text string that starts with
//   the bytes FE FF is UTF-16BE.
//   HostToPDFText, PDFToHostText: convert `length` bytes into `buffer` of `size` bytes, always
//     NUL-terminated, cut when too long; they answer the bytes put. Characters that the target
//     cannot hold become '?'. PDFToHostText takes both forms.
//   NarrowPDFText: a text string in either form as PDFDocEncoding without NULs, injectively: UTF-16
//     units outside it become "%uXXXX"; answers the whole length, whatever `size` is.
#define QUILLON_DOCUMENT_TABLE(X)                                                                  \
  X(1, void, EnumDocuments, (DocEnumProc proc, void* clientData))                                  \
  X(2, ObjectDoc, ObjectDocOf, (DocHandle doc))                                                    \
  X(3, DocHandle, DocOfObjectDoc, (ObjectDoc doc))                                                 \
  X(4, FileHandle, FileOf, (DocHandle doc))                                                        \
  X(5, std::uint32_t, GetFileID,                                                                   \
    (DocHandle doc, std::uint16_t index, char* buffer, std::uint32_t size))                        \
  X(6, std::uint32_t, GetFlags, (DocHandle doc))                                                   \
  X(7, void, SetFlags, (DocHandle doc, std::uint32_t flags))                                       \
  X(8, void, ClearFlags, (DocHandle doc, std::uint32_t flags))                                     \
  X(9, std::uint32_t, GetPermissions, (DocHandle doc))                                             \
  X(10, std::uint32_t, PageCount, (DocHandle doc))                                                 \
  X(11, PageHandle, AcquirePage, (DocHandle doc, std::uint32_t number))                            \
  X(12, void, ReleasePage, (PageHandle page))                                                      \
  X(13, DocHandle, PageDoc, (PageHandle page))                                                     \
  X(14, std::uint32_t, PageNumber, (PageHandle page))                                              \
  X(15, ObjectHandle, PageDict, (PageHandle page))                                                 \
  X(16, std::uint16_t, PageRotation, (PageHandle page))                                            \
  X(17, void, PageBox, (PageHandle page, FixedRect * box))                                         \
  X(18, std::uint32_t, AnnotCount, (PageHandle page))                                              \
  X(19, AnnotHandle, AnnotAt, (PageHandle page, std::uint32_t index))                              \
  X(20, std::int32_t, AnnotIndex, (PageHandle page, AnnotHandle annot))                            \
  X(21, AnnotHandle, AnnotFromDict, (ObjectHandle dict))                                           \
  X(22, ObjectHandle, AnnotDict, (AnnotHandle annot))                                              \
  X(23, Atom, AnnotSubtype, (AnnotHandle annot))                                                   \
  X(24, void, AnnotRect, (AnnotHandle annot, FixedRect * rect))                                    \
  X(25, void, AnnotSetRect, (AnnotHandle annot, const FixedRect* rect))                            \
  X(26, std::uint32_t, AnnotFlags, (AnnotHandle annot))                                            \
  X(27, void, SetAnnotFlags, (AnnotHandle annot, std::uint32_t flags))                             \
  X(28, Boolean, AnnotIsValid, (AnnotHandle annot))                                                \
  X(29, Boolean, AnnotEqual, (AnnotHandle a, AnnotHandle b))                                       \
  X(30, void, AnnotWillChange, (AnnotHandle annot, Atom key))                                      \
  X(31, void, AnnotDidChange, (AnnotHandle annot, Atom key, FailureCode error))                    \
  X(32, AnnotHandle, NewAnnot, (PageHandle page, Atom subtype, const FixedRect* rect))             \
  X(33, void, InsertAnnot, (PageHandle page, std::int32_t index, AnnotHandle annot))               \
  X(34, void, RemoveAnnot, (PageHandle page, std::uint32_t index))                                 \
  X(35, std::int32_t, PageOfAnnot, (AnnotHandle annot))                                            \
  X(36, ActionHandle, ActionFromObject, (ObjectHandle object))                                     \
  X(37, Atom, ActionType, (ActionHandle action))                                                   \
  X(38, ObjectHandle, ActionDict, (ActionHandle action))                                           \
  X(39, FileSpecHandle, FileSpecFromObject, (ObjectHandle object))                                 \
  X(40, FileSpecHandle, FileSpecFromPath, (DocHandle doc, PathHandle path, PathHandle relativeTo)) \
  X(41, ObjectHandle, FileSpecObject, (FileSpecHandle spec))                                       \
  X(42, PathHandle, FileSpecAcquirePath, (FileSpecHandle spec, PathHandle relativeTo))             \
  X(43, FileSystemHandle, FileSpecFileSystem, (FileSpecHandle spec))                               \
  X(44, std::uint32_t, HostToPDFText,                                                              \
    (const char* text, std::uint32_t length, char* buffer, std::uint32_t size))                    \
  X(45, std::uint32_t, PDFToHostText,                                                              \
    (const char* text, std::uint32_t length, char* buffer, std::uint32_t size))                    \
  X(46, std::uint32_t, NarrowPDFText,                                                              \
    (const char* text, std::uint32_t length, char* buffer, std::uint32_t size))

QUILLON_DECLARE_TABLE(DocumentTable, QUILLON_DOCUMENT_TABLE)

}  // namespace quillon
