// `Support`: memory, fixed-point arithmetic, paths, files, byte streams, error texts, and the
// tables and file systems that plug-ins provide.
#pragma once

#include "table_macros.h"
#include "types.h"

namespace quillon {

// How Support.OpenFile opens a file.
enum OpenMode : std::uint16_t {
  kOpenRead = 1,       // must exist
  kOpenWrite = 2,      // made when missing, emptied when not
  kOpenReadWrite = 6,  // made when missing, emptied when not
  kOpenReplace = 7,    // as kOpenReadWrite
};

// Support.RegisterErrorString's severities.
inline constexpr std::uint16_t kSeverityError = 4;

// A procedure stream's source: puts up to `size` bytes into `buffer`, answers how many; 0 ends the
// stream. It may raise.
using StreamProc = std::uint32_t (*)(void* buffer, std::uint32_t size, void* clientData);

// Makes a plug-in's table when some plug-in first asks for it: answers the table, or null when the
// version is not offered.
using TableProviderProc = TableHandle (*)(TableServer server, std::uint32_t version,
                                          void* clientData);

// A file system of a plug-in's own. Path texts are full ones that `resolve` answered. Any routine
// may raise.
struct FileSystemRecord {
  std::uint32_t size;  // of this record
  // The full text of a path into `buffer` (cut to capacity - 1 bytes, NUL-terminated), and its
  // whole length; 0 when `text` names nothing that the file system could hold. A relative text is
  // taken from the folder of the file `base`, which is null for none and may be a path of another
  // file system.
  std::uint32_t (*resolve)(const char* text, const char* base, char* buffer,
                           std::uint32_t capacity);
  // 0 and the file's own word, or an error code. `mode` is one of OpenMode.
  FailureCode (*open)(const char* path, std::uint16_t mode, void** file);
  // Frees the file: 0, or the code of what went wrong at the last moment. `abandoned`: nobody asked
  // for the closing, so nothing is to come of what was written.
  FailureCode (*close)(void* file, Boolean abandoned);
  std::uint32_t (*read)(void* file, void* buffer, std::uint32_t size);
  std::uint32_t (*write)(void* file, const void* bytes, std::uint32_t size);
  std::uint32_t (*position)(void* file);
  void (*setPosition)(void* file, std::uint32_t position);
  std::uint32_t (*fileSize)(void* file);
  FailureCode (*remove)(const char* path);  // null when nothing can be deleted
};
#if UINTPTR_MAX == 0xFFFFFFFFu
static_assert(sizeof(FileSystemRecord) == 40);
#endif

// Memory
//   Alloc: `size` bytes, not zeroed, aligned for any record; null when exhausted (never raises);
//     size 0 gives a block of its own. Free: gives a block back; null is ignored.
// Numbers (none of them raises)
//   FixedMul: a*b/65536, rounded to nearest with halves away from zero, held to the range of Fixed.
//   FixedDiv: a*65536/b, rounded and held the same way; b = 0 gives the largest value with a's sign
//     (0/0 gives 0).
//   FixedToText: the decimal text of `value` with at most `precision` decimals (0 to 9) into
//     `buffer` of `capacity` bytes, NUL-terminated: rounded to nearest (halves away from zero),
//     without trailing zeros, without a point for whole numbers, "0." before the decimals of values
//     below 1, never "-0". Decimals that do not fit are dropped. Answers the length without NUL.
//   TextToFixed: the value of a decimal number at the start of `text` (blanks before it are passed
//     over): sign, digits, point, digits; rounded to nearest, held to the range; 0 when none.
// Paths and file systems. Texts of paths are host text (Document.HostToPDFText tells more).
//   FileSystemOf: a path's file system; of a null path: the default one. Never raises.
//   FileSystemByName: null when no file system has that name.
//   NewPath: a path from text; with `relativeTo` (a file's path) a relative text is taken from that
//     file's folder. Null when the text names nothing the file system could hold.
//   PathFromPlatform: the same for the platform's own absolute spelling.
//   CopyPath, ReleasePath: each path is released by its owner. TempPath: a path in the file system
//     that names no file yet.
//   PathText: the full text into `buffer` (cut to size - 1 bytes); answers the whole length.
//   PathRelativeText: the text of `path` relative to the folder of `relativeTo`, forward slashes;
//     the full text when they share no root.
// Files
//   OpenFile: 0 and the file, or an error code and none; does not raise. CloseFile: 0 or the code
//   of
//     what went wrong at the last moment; the handle is gone either way.
//   ReadFile, WriteFile: bytes moved; less than asked at the end of the file or on a full disk.
//   FilePath: a new path, released by the caller. DeleteFile: 0 or an error code.
// Streams
//   OpenMemoryStream: reads `length` bytes that must stay valid until CloseStream.
//   OpenProcStream: reads what `proc` gives. OpenFileStream: reads or writes an open file from its
//     position on; the file stays open afterwards. ReadStream: bytes read, 0 at the end.
// Errors
//   RegisterErrorString: a new code for a text of the plug-in's own; the same text gives the same
//     code. ErrorText: the text of a code into `buffer` (cut to size - 1); answers `buffer`.
// Tables of plug-ins
//   RegisterTableProvider: offers a table by name; true when taken. The last two words are 0.
//   NewTable: a table of `slotCount` empty slots, kept by the host for ever.
//   SetSlot: puts a routine into a slot (1 to the slot count) of a table, the host's own included;
//     the routine that it replaces stays reachable. `flag` is 0.
//   CallReplaced: the routine that `current` replaced in that slot, or null.
// File systems of plug-ins
//   RegisterFileSystem: offers one by name, until the plug-ins are unloaded; null when the name is
//     taken. The record stays the plug-in's and must outlive the host's last call.
#define QUILLON_SUPPORT_TABLE(X)                                                                  \
  X(1, void*, Alloc, (std::uint32_t size))                                                        \
  X(2, void, Free, (void* block))                                                                 \
  X(3, Fixed, FixedMul, (Fixed a, Fixed b))                                                       \
  X(4, Fixed, FixedDiv, (Fixed a, Fixed b))                                                       \
  X(5, std::uint32_t, FixedToText,                                                                \
    (Fixed value, char* buffer, std::uint32_t capacity, std::uint16_t precision))                 \
  X(6, Fixed, TextToFixed, (const char* text))                                                    \
  X(7, FileSystemHandle, FileSystemOf, (PathHandle path))                                         \
  X(8, FileSystemHandle, FileSystemByName, (Atom name))                                           \
  X(9, PathHandle, NewPath,                                                                       \
    (FileSystemHandle fileSystem, const char* text, PathHandle relativeTo))                       \
  X(10, PathHandle, PathFromPlatform, (const char* platformText))                                 \
  X(11, PathHandle, CopyPath, (PathHandle path))                                                  \
  X(12, void, ReleasePath, (PathHandle path))                                                     \
  X(13, std::uint32_t, PathText, (PathHandle path, char* buffer, std::uint32_t size))             \
  X(14, std::uint32_t, PathRelativeText,                                                          \
    (PathHandle path, PathHandle relativeTo, char* buffer, std::uint32_t size))                   \
  X(15, PathHandle, TempPath, (FileSystemHandle fileSystem))                                      \
  X(16, FailureCode, OpenFile, (PathHandle path, std::uint16_t mode, FileHandle * file))          \
  X(17, FailureCode, CloseFile, (FileHandle file))                                                \
  X(18, std::uint32_t, ReadFile, (FileHandle file, void* buffer, std::uint32_t size))             \
  X(19, std::uint32_t, WriteFile, (FileHandle file, const void* bytes, std::uint32_t size))       \
  X(20, std::uint32_t, FilePosition, (FileHandle file))                                           \
  X(21, void, SetFilePosition, (FileHandle file, std::uint32_t position))                         \
  X(22, std::uint32_t, FileSize, (FileHandle file))                                               \
  X(23, PathHandle, FilePath, (FileHandle file))                                                  \
  X(24, FileSystemHandle, FileFileSystem, (FileHandle file))                                      \
  X(25, FailureCode, DeleteFile, (PathHandle path))                                               \
  X(26, StreamHandle, OpenMemoryStream, (const void* bytes, std::uint32_t length))                \
  X(27, StreamHandle, OpenProcStream, (StreamProc proc, void* clientData))                        \
  X(28, StreamHandle, OpenFileStream, (FileHandle file))                                          \
  X(29, std::uint32_t, ReadStream, (StreamHandle stream, void* buffer, std::uint32_t size))       \
  X(30, std::uint32_t, WriteStream, (StreamHandle stream, const void* bytes, std::uint32_t size)) \
  X(31, void, CloseStream, (StreamHandle stream))                                                 \
  X(32, FailureCode, RegisterErrorString, (std::uint16_t severity, const char* text))             \
  X(33, char*, ErrorText, (FailureCode code, char* buffer, std::uint32_t size))                   \
  X(34, Boolean, RegisterTableProvider,                                                           \
    (const char* name, TableProviderProc provider, void* clientData, std::uint32_t reserved))     \
  X(35, TableHandle, NewTable, (TableServer server, std::uint32_t slotCount))                     \
  X(36, void, SetSlot,                                                                            \
    (TableHandle table, std::uint32_t slot, Callback routine, std::uint32_t flag))                \
  X(37, Callback, CallReplaced, (TableHandle table, std::uint32_t slot, Callback current))        \
  X(38, FileSystemHandle, RegisterFileSystem,                                                     \
    (ExtensionId extension, Atom name, const FileSystemRecord* record))

QUILLON_DECLARE_TABLE(SupportTable, QUILLON_SUPPORT_TABLE)

}  // namespace quillon
