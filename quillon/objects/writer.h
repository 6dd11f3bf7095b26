// Writing a whole document: header, objects, cross-references, trailer.
#pragma once

#include <cstdint>
#include <functional>
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

// One line of the cross-references.
struct XrefEntry {
  enum class Kind : std::uint8_t { kFree, kInFile, kCompressed };
  std::uint32_t number;
  Kind kind;
  std::uint16_t generation;
  std::uint64_t place;  // offset; next free number; object stream number << 32 | index
};

// Write the cross-references, the trailer entries and "startxref". `entries` are in the order of
// their numbers and start with object 0; free ones are linked here.
void WriteXrefTable(Document& doc, Output& out, std::vector<XrefEntry> entries, const FileIds& ids);
void WriteXrefStream(Document& doc, Output& out, std::vector<XrefEntry> entries,
                     const FileIds& ids);

}  // namespace quillon::objects
