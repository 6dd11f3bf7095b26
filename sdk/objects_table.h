// `Objects` ("Cel"): the objects of open PDF and FDF documents (ISO 32000-1, 7.3).
#pragma once

#include "table_macros.h"
#include "types.h"

namespace quillon {

// Called with each entry; answers whether to go on. For a dictionary or stream `key` is the name
// object of the key; for an array `key` is the null object and `value` the element.
using EnumProc = Boolean (*)(ObjectHandle key, ObjectHandle value, void* clientData);

// How a document is opened as objects only (used for FDF).
struct OpenDocumentParams {
  std::uint32_t size;  // of this record
  std::uint32_t mode;  // 1
  std::uint32_t reserved;
  PathHandle path;
  const char* header;  // what the file must begin with, such as "%FDF-1.2"
};

struct SaveDocumentParams {
  std::uint32_t reserved0;
  std::uint32_t reserved1;
  const char* header;  // the first line of the file, without its line end
  std::uint32_t reserved2;
  std::uint32_t reserved3;
  std::uint32_t reserved4;
};
#if UINTPTR_MAX == 0xFFFFFFFFu
static_assert(sizeof(OpenDocumentParams) == 20 && sizeof(SaveDocumentParams) == 24);
#endif

inline constexpr std::uint32_t kSaveWhole = 2;  // SaveDocument: everything, not an update

// How Objects.OpenStream reads.
enum StreamMode : std::uint16_t {
  kStreamRaw = 0,      // the bytes as stored
  kStreamDecoded = 1,  // through the stream's filters
};

// Identity: references are followed before an object is handed out, so a handle never is a
// reference. Two handles of one indirect object, or of one direct container or string at the same
// place, are Equal; numbers, booleans, names and null are Equal by value.
//
// New objects belong to the document given. An indirect one gets its number at once; a direct one
// must be put into a container (each into one only) or destroyed. Put and insert take a direct
// object over, and store a reference for an indirect one.
//
// DictGet and ArrayGet: the null object for a missing key or index, and for a value that is null.
//   DictGet on a stream reads its dictionary. On other kinds they raise kErrorBadObject.
// DictPut with the null object removes the key. EnumDict goes over dictionaries, streams and
//   arrays in file order (put keys come last) and works on a copy of the list, so the routine may
//   change the container. ArrayPut beyond the end pads with nulls. ArrayInsert at an index beyond
//   the end appends.
// IntegerValue: of a fixed, its value with the fraction cut off; FixedValue: of an integer, shifted
//   left by 16 and held to the range; NameValue, BooleanValue: of that kind. All raise
//   kErrorBadObject for another kind.
// StringValue: the bytes, owned by the object until it is changed or destroyed or its document
//   closes; a NUL follows the last byte. *length may be null.
// NewStream: an indirect stream from all bytes of `source` (which stays the caller's);
//   `attributes`, a direct dictionary or null, is taken over as its dictionary. The bytes given are
//   the decoded ones: the host encodes them with the attributes' Filter (FlateDecode,
//   ASCIIHexDecode and ASCII85Decode can be written; LZWDecode is stored as FlateDecode).
// CopyObject: a deep copy, made in `target` as a direct object (streams: indirect). Within one
//   document indirect parts are shared; into another one they are copied, each once, and what
//   refers back to something already being copied refers to its copy.
// Destroy: forgets an object. An indirect one is gone from the document; references to it read
// null. DocumentOf: null for the null object and for direct numbers, booleans and names. DocRoot:
// the catalog of a PDF, the root dictionary of an FDF. SaveDocument: writes the document into an
// open file; it stays open. CloseDocument: only for
//   documents from NewDocument and OpenDocument.
#define QUILLON_OBJECTS_TABLE(X)                                                                \
  X(1, ObjectKind, TypeOf, (ObjectHandle object))                                               \
  X(2, Boolean, Equal, (ObjectHandle a, ObjectHandle b))                                        \
  X(3, Boolean, IsIndirect, (ObjectHandle object))                                              \
  X(4, ObjectDoc, DocumentOf, (ObjectHandle object))                                            \
  X(5, ObjectHandle, NewInteger, (ObjectDoc doc, Boolean indirect, std::int32_t value))         \
  X(6, ObjectHandle, NewFixed, (ObjectDoc doc, Boolean indirect, Fixed value))                  \
  X(7, ObjectHandle, NewBoolean, (ObjectDoc doc, Boolean indirect, Boolean value))              \
  X(8, ObjectHandle, NewName, (ObjectDoc doc, Boolean indirect, Atom name))                     \
  X(9, ObjectHandle, NewString,                                                                 \
    (ObjectDoc doc, Boolean indirect, const char* bytes, std::uint32_t length))                 \
  X(10, ObjectHandle, NewArray, (ObjectDoc doc, Boolean indirect, std::uint32_t capacity))      \
  X(11, ObjectHandle, NewDict, (ObjectDoc doc, Boolean indirect, std::uint32_t capacity))       \
  X(12, ObjectHandle, NewStream, (ObjectDoc doc, StreamHandle source, ObjectHandle attributes)) \
  X(13, ObjectHandle, CopyObject, (ObjectHandle object, ObjectDoc target))                      \
  X(14, void, Destroy, (ObjectHandle object))                                                   \
  X(15, std::int32_t, IntegerValue, (ObjectHandle object))                                      \
  X(16, Fixed, FixedValue, (ObjectHandle object))                                               \
  X(17, Boolean, BooleanValue, (ObjectHandle object))                                           \
  X(18, Atom, NameValue, (ObjectHandle object))                                                 \
  X(19, const char*, StringValue, (ObjectHandle object, std::uint32_t * length))                \
  X(20, ObjectHandle, DictGet, (ObjectHandle dict, Atom key))                                   \
  X(21, void, DictPut, (ObjectHandle dict, Atom key, ObjectHandle value))                       \
  X(22, void, DictRemove, (ObjectHandle dict, Atom key))                                        \
  X(23, Boolean, DictKnown, (ObjectHandle dict, Atom key))                                      \
  X(24, void, EnumDict, (ObjectHandle container, EnumProc proc, void* clientData))              \
  X(25, ObjectHandle, ArrayGet, (ObjectHandle array, std::uint32_t index))                      \
  X(26, void, ArrayPut, (ObjectHandle array, std::uint32_t index, ObjectHandle value))          \
  X(27, void, ArrayInsert, (ObjectHandle array, std::uint32_t index, ObjectHandle value))       \
  X(28, void, ArrayRemove, (ObjectHandle array, std::uint32_t index))                           \
  X(29, std::uint32_t, ArrayLength, (ObjectHandle array))                                       \
  X(30, ObjectHandle, StreamDict, (ObjectHandle stream))                                        \
  X(31, StreamHandle, OpenStream, (ObjectHandle stream, std::uint16_t mode))                    \
  X(32, ObjectDoc, NewDocument, ())                                                             \
  X(33, ObjectDoc, OpenDocument, (const OpenDocumentParams* params))                            \
  X(34, ObjectHandle, DocRoot, (ObjectDoc doc))                                                 \
  X(35, void, SaveDocument,                                                                     \
    (ObjectDoc doc, FileHandle file, std::uint32_t options, const SaveDocumentParams* params))  \
  X(36, void, CloseDocument, (ObjectDoc doc))

QUILLON_DECLARE_TABLE(ObjectsTable, QUILLON_OBJECTS_TABLE)

}  // namespace quillon
