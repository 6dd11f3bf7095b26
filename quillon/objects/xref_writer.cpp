// Writing cross-references (ISO 32000-1, 7.5.4 and 7.5.8).
#include <array>
#include <cstdio>

#include "quillon/objects/filters.h"
#include "quillon/objects/load.h"
#include "quillon/objects/numbers.h"
#include "quillon/objects/serializer.h"
#include "quillon/objects/writer.h"

namespace quillon::objects {
namespace {

using Kind = XrefEntry::Kind;

// Ten digits is all that a table has room for.
constexpr std::uint64_t kMaxTableOffset = 9999999999u;

// Each free entry names the next free number, the last one 0.
void LinkFreeEntries(std::vector<XrefEntry>* entries) {
  std::uint32_t next = 0;
  for (auto entry = entries->rbegin(); entry != entries->rend(); ++entry) {
    if (entry->kind != Kind::kFree) continue;
    entry->place = next;
    next = entry->number;
  }
}

// Calls use(first, count) for each run of consecutive numbers.
template <typename Use>
void ForEachRun(const std::vector<XrefEntry>& entries, const Use& use) {
  for (std::size_t start = 0; start < entries.size();) {
    std::size_t end = start + 1;
    while (end < entries.size() && entries[end].number == entries[end - 1].number + 1) ++end;
    use(start, end - start);
    start = end;
  }
}

void AppendTableEntry(std::string* out, const XrefEntry& entry) {
  if (entry.place > kMaxTableOffset) {
    Fail(kErrorGeneral, "The document is too large for a file with a cross-reference table.");
  }
  std::array<char, 24> line;
  std::snprintf(line.data(), line.size(), "%010llu %05u %c\r\n",
                static_cast<unsigned long long>(entry.place),
                static_cast<unsigned>(entry.generation), entry.kind == Kind::kFree ? 'f' : 'n');
  *out += line.data();
}

// The trailer's entries without brackets: the document's own, Size and ID.
void AppendTrailerEntries(Document& doc, std::string* out, const XrefPart& part) {
  const FileIds& ids = part.ids;
  Cell& trailer = CellAt(doc.cells, doc.trailer);
  const NameCode idKey = NameFromText(doc, "ID");
  *out += "/Size ";
  AppendInteger(out, part.size);
  if (part.previous) {
    *out += "/Prev ";
    AppendInteger(out, static_cast<std::int64_t>(*part.previous));
  }
  for (std::uint32_t i = 0; i < trailer.size; ++i) {
    const DictEntry entry = EntriesOf(trailer)[i];
    if (entry.key == idKey && !ids.permanent.empty()) continue;
    AppendName(out, NameText(doc, entry.key));
    AppendValue(doc, out, entry.value);
  }
  if (ids.permanent.empty()) return;
  *out += "/ID[";
  AppendString(out, ids.permanent, true);
  AppendString(out, ids.changing, true);
  out->push_back(']');
}

void AppendEnd(Output& out, std::uint64_t start) {
  out.pending += "startxref\n";
  AppendInteger(&out.pending, static_cast<std::int64_t>(start));
  out.pending += "\n%%EOF\n";
}

void AppendBigEndian(std::string* out, std::uint64_t value, int width) {
  for (int shift = (width - 1) * 8; shift >= 0; shift -= 8) {
    out->push_back(static_cast<char>(value >> shift & 0xFF));
  }
}

struct FieldWidths {
  int second;
  int third;
};

std::uint64_t SecondField(const XrefEntry& entry) {
  return entry.kind == Kind::kCompressed ? entry.place >> 32 : entry.place;
}
std::uint64_t ThirdField(const XrefEntry& entry) {
  return entry.kind == Kind::kCompressed ? entry.place & 0xFFFFFFFFu : entry.generation;
}

FieldWidths WidthsFor(const std::vector<XrefEntry>& entries) {
  FieldWidths widths{2, 2};
  for (const XrefEntry& entry : entries) {
    while (SecondField(entry) >> (8 * widths.second) != 0) ++widths.second;
    while (ThirdField(entry) >> (8 * widths.third) != 0) ++widths.third;
  }
  return widths;
}

// The stream needs a number: that of an older one, which is not written again, or a new one. An
// update leaves the old ones where they are.
std::uint32_t StreamNumber(const Document& doc, const XrefPart& part) {
  for (const XrefEntry& entry : part.entries) {
    const ObjectSlot* slot = FindSlot(doc.objects, entry.number);
    const bool old = entry.kind == Kind::kFree && slot != nullptr && slot->structure;
    if (old && !part.previous) return entry.number;
  }
  return part.size;
}

void EnterStream(XrefPart* part, std::uint32_t number, std::uint64_t position) {
  const XrefEntry own{number, Kind::kInFile, 0, position};
  if (number >= part->size) {
    part->entries.push_back(own);
    part->size = number + 1;
    return;
  }
  for (XrefEntry& entry : part->entries) {
    if (entry.number == number) entry = own;
  }
}

std::string IndexText(const std::vector<XrefEntry>& entries) {
  std::string text = "/Index[";
  ForEachRun(entries, [&](std::size_t start, std::size_t count) {
    if (text.back() != '[') text.push_back(' ');
    AppendInteger(&text, entries[start].number);
    text.push_back(' ');
    AppendInteger(&text, static_cast<std::int64_t>(count));
  });
  return text + "]";
}

std::string FieldBytes(const std::vector<XrefEntry>& entries, const FieldWidths& widths) {
  std::string bytes;
  for (const XrefEntry& entry : entries) {
    bytes.push_back(static_cast<char>(entry.kind));
    AppendBigEndian(&bytes, SecondField(entry), widths.second);
    AppendBigEndian(&bytes, ThirdField(entry), widths.third);
  }
  return bytes;
}

}  // namespace

void WriteXrefTable(Document& doc, Output& out, XrefPart part) {
  const std::vector<XrefEntry>& entries = part.entries;
  LinkFreeEntries(&part.entries);
  const std::uint64_t start = PositionOf(out);
  out.pending += "xref\n";
  ForEachRun(entries, [&](std::size_t first, std::size_t count) {
    AppendInteger(&out.pending, entries[first].number);
    out.pending.push_back(' ');
    AppendInteger(&out.pending, static_cast<std::int64_t>(count));
    out.pending.push_back('\n');
    for (std::size_t i = first; i < first + count; ++i) AppendTableEntry(&out.pending, entries[i]);
  });
  out.pending += "trailer\n<<";
  AppendTrailerEntries(doc, &out.pending, part);
  out.pending += ">>\n";
  AppendEnd(out, start);
}

void WriteXrefStream(Document& doc, Output& out, XrefPart part) {
  const std::uint64_t start = PositionOf(out);
  const std::uint32_t number = StreamNumber(doc, part);
  EnterStream(&part, number, start);
  LinkFreeEntries(&part.entries);
  const FieldWidths widths = WidthsFor(part.entries);
  const std::string data = EncodeFlate(FieldBytes(part.entries, widths));
  std::string& text = out.pending;
  AppendInteger(&text, number);
  text += " 0 obj\n<</Type/XRef/W[1 " + std::to_string(widths.second) + " " +
          std::to_string(widths.third) + "]" + IndexText(part.entries);
  AppendTrailerEntries(doc, &text, part);
  text += "/Filter/FlateDecode/Length " + std::to_string(data.size()) + ">>\nstream\n";
  text += data;
  text += "\nendstream\nendobj\n";
  AppendEnd(out, start);
}

}  // namespace quillon::objects
