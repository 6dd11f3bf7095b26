// Cross-reference streams (ISO 32000-1, 7.5.8).
#include <array>

#include "quillon/objects/limits.h"
#include "quillon/objects/load.h"
#include "quillon/objects/stream_data.h"
#include "quillon/objects/xref_reader.h"

namespace quillon::objects {
namespace {

// Widths, in bytes, of an entry's type and its two fields (table 17).
using FieldWidths = std::array<std::size_t, 3>;
constexpr std::int32_t kMaxFieldWidth = 8;

std::vector<std::int32_t> IntegersOf(Document& doc, const Value& value) {
  std::vector<std::int32_t> integers;
  const std::uint32_t array = CellOf(doc, value, CellKind::kArray);
  if (array == 0) return integers;
  Cell& cell = CellAt(doc.cells, array);
  for (std::uint32_t i = 0; i < cell.size; ++i) {
    std::int32_t integer = 0;
    ReadInteger(doc, ElementsOf(cell)[i], &integer);
    integers.push_back(integer);
  }
  return integers;
}

FieldWidths WidthsOf(Document& doc, const XrefSection& section) {
  const std::vector<std::int32_t> listed = IntegersOf(doc, EntryValue(doc, section.dict, "W"));
  FieldWidths widths{};
  bool fits = listed.size() >= widths.size();
  for (std::size_t i = 0; fits && i < widths.size(); ++i) {
    fits = listed[i] >= 0 && listed[i] <= kMaxFieldWidth;
    widths[i] = static_cast<std::size_t>(listed[i]);
  }
  if (!fits || widths[0] + widths[1] + widths[2] == 0) {
    FailXref(doc, section.position, "The cross-reference stream has no field widths");
  }
  return widths;
}

std::uint64_t TakeField(const char*& at, std::size_t width, std::uint64_t otherwise) {
  if (width == 0) return otherwise;
  std::uint64_t value = 0;
  for (std::size_t i = 0; i < width; ++i) value = value << 8 | static_cast<unsigned char>(*at++);
  return value;
}

struct Fields {
  std::uint64_t type;
  std::uint64_t second;
  std::uint64_t third;
};

void EnterFields(Document& doc, const XrefSection& section, std::uint64_t number,
                 const Fields& fields) {
  const auto generation = static_cast<std::uint16_t>(fields.third);
  if (fields.type == 0) {
    EnterObject(doc, number, SlotState::kFree, section.position, generation);
  } else if (fields.type == 1) {
    EnterObject(doc, number, SlotState::kInFile, fields.second, generation);
  } else if (fields.type == 2 && fields.second <= kMaxObjectNumber && fields.third <= 0xFFFFFFFFu) {
    EnterObject(doc, number, SlotState::kCompressed, fields.second << 32 | fields.third, 0);
  } else {
    FailXref(doc, section.position,
             "The cross-references list object " + std::to_string(number) + " in an unknown way");
  }
}

void EnterEntries(Document& doc, const XrefSection& section, const FieldWidths& widths,
                  std::string_view bytes) {
  std::vector<std::int32_t> index = IntegersOf(doc, EntryValue(doc, section.dict, "Index"));
  if (EntryValue(doc, section.dict, "Index") == kNullValue) {
    index = {0, IntegerEntry(doc, section.dict, "Size", 0)};
  }
  const char* at = bytes.data();
  const char* end = at + bytes.size();
  const auto length = static_cast<std::ptrdiff_t>(widths[0] + widths[1] + widths[2]);
  for (std::size_t i = 0; i + 1 < index.size(); i += 2) {
    for (std::int32_t j = 0; j < index[i + 1]; ++j) {
      if (end - at < length) {
        FailXref(doc, section.position, "The cross-reference stream is shorter than it says");
      }
      const std::uint64_t type = TakeField(at, widths[0], 1);
      const std::uint64_t second = TakeField(at, widths[1], 0);
      const std::uint64_t third = TakeField(at, widths[2], 0);
      const auto number = static_cast<std::uint64_t>(std::int64_t{index[i]} + j);
      EnterFields(doc, section, number, {type, second, third});
    }
  }
  if (end - at >= length) {
    FailXref(doc, section.position, "The cross-reference stream is longer than it says");
  }
}

}  // namespace

void ReadXrefStream(Document& doc, XrefSection* section) {
  Value value = kNullValue;
  if (!ParseObjectAt(doc, section->position, &section->stream, &value)) {
    FailXref(doc, section->position, "The cross-references are not where the file says");
  }
  const std::uint32_t cell = CellOf(doc, value, CellKind::kStream);
  if (cell == 0)
    FailXref(doc, section->position, "The cross-references are not where the file says");
  section->dict = CellAt(doc.cells, cell).capacity;
  const FieldWidths widths = WidthsOf(doc, *section);
  const std::string bytes = DecodedBytes(doc, cell, section->stream);
  Spend(doc, bytes.size());
  EnterEntries(doc, *section, widths, bytes);
}

}  // namespace quillon::objects
