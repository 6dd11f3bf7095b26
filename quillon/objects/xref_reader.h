// Reading cross-references: tables, streams, hybrids, chains of updates (ISO 32000-1, 7.5.4-8).
#pragma once

#include <cstdint>

#include "quillon/objects/document.h"

namespace quillon::objects {

// Fills the object table and the trailer from "startxref" on. False when that cannot be followed;
// the document is then as before, with a warning that tells where it failed.
bool ReadCrossReferences(Document& doc);

// Makes a dictionary the document's trailer: takes out what only describes the file.
void AdoptTrailer(Document& doc, std::uint32_t dictCell);

// One section of cross-references, being read.
struct XrefSection {
  std::uint64_t position;
  std::uint32_t dict;    // trailer dictionary, or the stream's
  std::uint32_t stream;  // object number of a cross-reference stream, else 0
};

// Each reads the section at section->position and enters what is not yet known; throws HostFailure
// (kErrorBadFile and others) when it is no such section, or less or more than it says. Entries of
// free objects of a table go to `freed`: in a hybrid file the stream that belongs to the table may
// still have the object.
struct FreeEntry {
  std::uint32_t number;
  std::uint16_t generation;
};
void ReadXrefTable(Document& doc, XrefSection* section, std::vector<FreeEntry>* freed);
void ReadXrefStream(Document& doc, XrefSection* section);

// Enters an object that has no entry yet. Numbers beyond kMaxObjectNumber are left out.
void EnterObject(Document& doc, std::uint64_t number, SlotState state, std::uint64_t position,
                 std::uint16_t generation);

[[noreturn]] void FailXref(const Document& doc, std::uint64_t position, const std::string& what);

}  // namespace quillon::objects
