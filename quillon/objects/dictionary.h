// Changing containers, with the order of their parts kept. These record no change
// (MarkCellChanged) and know nothing of references.
#pragma once

#include <cstdint>

#include "quillon/objects/document.h"

namespace quillon::objects {

// The entry that counts, or null. It stays valid until the dictionary changes.
DictEntry* FindEntry(Cell& dict, NameCode key);

// Replaces or appends. A cell in `value` gets this dictionary as its parent; one that is replaced
// stands in no container afterwards.
void SetEntry(Document& doc, std::uint32_t dictCell, NameCode key, const Value& value);
bool RemoveEntry(Document& doc, std::uint32_t dictCell, NameCode key);

void SetElement(Document& doc, std::uint32_t arrayCell, std::uint32_t index, const Value& value);
void InsertElement(Document& doc, std::uint32_t arrayCell, std::uint32_t index, const Value& value);
void RemoveElement(Document& doc, std::uint32_t arrayCell, std::uint32_t index);

// A string cell that stands in no container yet.
std::uint32_t NewStringCell(Document& doc, std::string_view bytes);

// Takes a cell out of the container it stands in.
void DetachCell(Document& doc, std::uint32_t cell);

}  // namespace quillon::objects
