#include "quillon/app/output_names.h"

#include <algorithm>
#include <string_view>

#include "quillon/app/console.h"

namespace quillon::app {
namespace {

constexpr std::size_t kNoColumn = static_cast<std::size_t>(-1);
constexpr std::size_t kRowNumber = static_cast<std::size_t>(-2);
constexpr std::string_view kRow = "row";

// kNoColumn when there is none.
std::size_t PlaceOf(std::string_view name, const std::vector<std::string>& columns) {
  const auto place = std::find(columns.begin(), columns.end(), name);
  if (place != columns.end()) return static_cast<std::size_t>(place - columns.begin());
  return name == kRow ? kRowNumber : kNoColumn;
}

bool CanStandInName(char byte) {
  const auto value = static_cast<unsigned char>(byte);
  return value >= 0x20 && value != 0x7F && byte != '/' && byte != '\\';
}

std::string AsFileName(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](char byte) { return !CanStandInName(byte); }, '_');
  // The names of this folder and the one above, and of hidden files.
  if (!text.empty() && text.front() == '.') text.front() = '_';
  return text;
}

}  // namespace

std::optional<NamePattern> ParsePattern(const std::string& pattern,
                                        const std::vector<std::string>& columns,
                                        std::string* problem) {
  NamePattern parsed;
  std::size_t position = 0;
  for (std::size_t open; (open = pattern.find('{', position)) != std::string::npos;) {
    const std::size_t close = pattern.find('}', open);
    if (close == std::string::npos) {
      *problem = "a \"{\" in the output has no \"}\"";
      return std::nullopt;
    }
    const std::string name = pattern.substr(open + 1, close - open - 1);
    const std::size_t column = PlaceOf(name, columns);
    if (column == kNoColumn) {
      *problem = "the output names the column " + Printable(name) + ", which is not there";
      return std::nullopt;
    }
    parsed.parts.push_back({pattern.substr(position, open - position), column});
    position = close + 1;
  }
  if (parsed.parts.empty()) {
    *problem =
        "every row would be written to the same file: the output needs a column, such as "
        "{name}, or {row}";
    return std::nullopt;
  }
  parsed.parts.push_back({pattern.substr(position), kNoColumn});
  return parsed;
}

bool UsesColumn(const NamePattern& pattern, std::size_t column) {
  return std::any_of(pattern.parts.begin(), pattern.parts.end(),
                     [column](const NamePattern::Part& part) { return part.column == column; });
}

std::optional<std::string> NameFor(const NamePattern& pattern, const RecordTable& table,
                                   std::size_t row, std::string* problem) {
  std::string name;
  for (const NamePattern::Part& part : pattern.parts) {
    name += part.text;
    if (part.column == kNoColumn) continue;
    if (part.column == kRowNumber) {
      name += std::to_string(row + 1);
      continue;
    }
    const std::string& cell = table.records[row].cells[part.column];
    if (cell.empty()) {
      *problem = "the column " + Printable(table.columns[part.column]) +
                 ", which names the output, is empty";
      return std::nullopt;
    }
    name += AsFileName(cell);
  }
  return name;
}

}  // namespace quillon::app
