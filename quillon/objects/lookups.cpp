// Looking into values that were read.
#include <cstring>

#include "quillon/objects/load.h"
#include "quillon/objects/parser.h"

namespace quillon::objects {

Value EntryValue(Document& doc, std::uint32_t dictCell, NameCode key) {
  Cell& dict = CellAt(doc.cells, dictCell);
  const DictEntry* entries = EntriesOf(dict);
  for (std::uint32_t i = dict.size; i > 0; --i) {
    if (entries[i - 1].key == key) return entries[i - 1].value;
  }
  return kNullValue;
}

Value EntryValue(Document& doc, std::uint32_t dictCell, std::string_view key) {
  return EntryValue(doc, dictCell, NameFromText(doc, key));
}

bool TypeIs(Document& doc, std::uint32_t dictCell, std::string_view name) {
  const Value type = Dereference(doc, EntryValue(doc, dictCell, "Type"));
  return type.tag == ValueTag::kName && NameText(doc, type.payload) == name;
}

bool ReadInteger(Document& doc, const Value& value, std::int32_t* integer) {
  if (value.tag == ValueTag::kInteger) {
    *integer = static_cast<std::int32_t>(value.payload);
    return true;
  }
  if (value.tag != ValueTag::kCell) return false;
  const Cell& cell = CellAt(doc.cells, value.payload);
  if (cell.kind != CellKind::kInteger) return false;
  *integer = static_cast<std::int32_t>(cell.capacity);
  return true;
}

std::int32_t IntegerEntry(Document& doc, std::uint32_t dictCell, std::string_view key,
                          std::int32_t otherwise) {
  std::int32_t integer = otherwise;
  ReadInteger(doc, Dereference(doc, EntryValue(doc, dictCell, key)), &integer);
  return integer;
}

std::uint32_t CellOf(Document& doc, const Value& value, CellKind kind) {
  const Value target = Dereference(doc, value);
  if (target.tag != ValueTag::kCell) return 0;
  return CellAt(doc.cells, target.payload).kind == kind ? target.payload : 0;
}

// Those of encrypted objects were decrypted when the object was read.
std::string_view StringBytes(Document& doc, std::uint32_t stringCell) {
  Cell& cell = CellAt(doc.cells, stringCell);
  if (cell.raw) {
    const std::string decoded = DecodeStringText({TextOf(cell), cell.size});
    auto* bytes = AllocateArray<char>(doc.pool, decoded.size() + 1);
    std::memcpy(bytes, decoded.c_str(), decoded.size() + 1);
    cell.raw = false;
    cell.owned = true;
    cell.size = static_cast<std::uint32_t>(decoded.size());
    cell.capacity = cell.size + 1;
    cell.data = bytes;
  }
  return {TextOf(cell), cell.size};
}

std::string FirstFileId(Document& doc, std::uint32_t trailer) {
  const std::uint32_t array = CellOf(doc, EntryValue(doc, trailer, "ID"), CellKind::kArray);
  if (array == 0 || CellAt(doc.cells, array).size == 0) return {};
  const Value first = ElementsOf(CellAt(doc.cells, array))[0];
  const std::uint32_t string = CellOf(doc, first, CellKind::kString);
  return string == 0 ? std::string() : std::string(StringBytes(doc, string));
}

}  // namespace quillon::objects
