// What a file may make this program do. A file of honest making stays far below each bound; one
// that is made to hurt ends with an error, within seconds and a few hundred megabytes.
#pragma once

#include <cstddef>
#include <cstdint>

#include "quillon/objects/document.h"

namespace quillon::objects {

// Reading a file goes over each of its bytes a few times: finding objects, parsing them, copying
// them. Objects that lie within one another, or an unterminated string that each of a million
// objects starts anew, would go over the same bytes without end. Decoded bytes of object streams
// and cross-reference streams count like the file's own. A save starts the count anew.
inline constexpr std::uint64_t kWorkPerByte = 12;
inline constexpr std::uint64_t kWorkBesides = std::uint64_t{32} << 20;

// Object streams stay decoded while the document is open. They hold text that deflates to an eighth
// of its size at best; the rest of a factor of sixteen is reserve.
inline constexpr std::uint64_t kKeptPerByte = 16;
inline constexpr std::uint64_t kKeptBesides = std::uint64_t{64} << 20;

// A string, array or dictionary costs a cell of 32 bytes, and often more of the same size where it
// is used. Files in use have one for every fifteen bytes of text, deflated text counted as
// inflated.
inline constexpr std::uint64_t kBytesPerCell = 8;
inline constexpr std::uint64_t kCellsBesides = std::uint64_t{1} << 20;

// Names that find no atom any more: atoms are 65,534 for all documents together.
inline constexpr std::size_t kMaxFurtherNames = 100000;

// An object has a line of cross-references that takes three bytes or more before it is deflated,
// and text of its own.
inline constexpr std::uint64_t kBytesPerEntry = 8;
inline constexpr std::uint64_t kEntriesBesides = std::uint64_t{1} << 20;

// Values and appearances are read as often as a command asks, and each time counts where many
// fields share one. Most are too short to deflate much. A save starts the count anew.
inline constexpr std::uint64_t kDecodedPerByte = 4;
inline constexpr std::uint64_t kDecodedBesides = std::uint64_t{16} << 20;

// Of one value or appearance: nobody typed or drew as much.
inline constexpr std::uint64_t kMaxReadStream = std::uint64_t{4} << 20;

// Each wrong thing in a file is told; a file that has more of them than anybody reads is not.
inline constexpr std::size_t kMaxWarnings = 1000;

// Adds to what was done for the document; throws HostFailure (kErrorBadFile) when it is too much.
void Spend(Document& doc, std::uint64_t bytes);
void StartSpendingAnew(Document& doc);

// The same for decoded bytes of a stream that was read for its contents.
void SpendDecoded(Document& doc, std::uint64_t bytes);

// Throws when an object stream of `bytes` more is too much to keep.
void CheckKept(Document& doc, std::uint64_t bytes);

// Throws when the document has more cells than its size explains.
void CheckCells(const Document& doc);

// Throws when the document has as many names without atoms as it may have.
void CheckNames(const Document& doc);

// Throws when the cross-references have `count` more entries than the file has room for.
void SpendEntries(Document& doc, std::uint64_t count);

}  // namespace quillon::objects
