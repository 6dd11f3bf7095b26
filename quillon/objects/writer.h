// Writing a whole document: header, objects, cross-references, trailer.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "quillon/objects/document.h"

namespace quillon::objects {

// Gathers what is written and hands it on in large pieces.
struct Output {
  std::function<void(std::string_view)> pass;
  std::string pending;
  std::uint64_t passed = 0;
  bool keepAll = false;  // an object that cannot be read ends the writing instead of being left out
};

inline std::uint64_t PositionOf(const Output& out) { return out.passed + out.pending.size(); }
void FlushOutput(Output& out);

// The two strings of the trailer's ID (ISO 32000-1, 14.4).
struct FileIds {
  std::string permanent;
  std::string changing;
};

// Writes the document under this header line. Untouched objects are copied byte for byte; a
// document without any change, under its own header, is copied as a whole. Answers the IDs
// written; empty ones when none were.
FileIds WriteDocument(Document& doc, const std::string& header, Output& out);

// Makes the IDs of the file written the document's.
void SetFileIds(Document& doc, const FileIds& ids);

// Writes the file that the document was read from as it is, then what changed: objects,
// cross-references of its kind, trailer. Readers of the old part alone still find the old document.
// Throws kErrorNotOffered when the old cross-references cannot be built upon.
FileIds WriteUpdate(Document& doc, Output& out);

// One line of the cross-references.
struct XrefEntry {
  enum class Kind : std::uint8_t { kFree, kInFile, kCompressed };
  std::uint32_t number;
  Kind kind;
  std::uint16_t generation;
  std::uint64_t place;  // offset; next free number; object stream number << 32 | index
};

struct XrefPart {
  std::vector<XrefEntry> entries;  // in the order of their numbers; free ones are linked on writing
  FileIds ids;
  std::uint32_t size;                     // one more than the highest number
  std::optional<std::uint64_t> previous;  // where the cross-references stand that these add to
};

// Write the cross-references, the trailer entries and "startxref".
void WriteXrefTable(Document& doc, Output& out, XrefPart part);
void WriteXrefStream(Document& doc, Output& out, XrefPart part);

}  // namespace quillon::objects
