#include "quillon/app/csv.h"

#include <utility>

namespace quillon::app {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

struct CsvReader {
  std::string_view text;
  std::vector<std::string>* problems;
  std::size_t position = 0;
  std::size_t line = 1;

  bool AtEnd() const { return position == text.size(); }
  bool AtLineEnd() const { return AtEnd() || text[position] == '\r' || text[position] == '\n'; }
  void Problem(const char* what) {
    problems->push_back("line " + std::to_string(line) + ": " + what);
  }
};

// A line end is a line feed, a carriage return, or both.
void PassLineEnd(CsvReader* reader) {
  if (reader->AtEnd()) return;
  const bool both = reader->text.substr(reader->position, 2) == "\r\n";
  reader->position += both ? 2 : 1;
  ++reader->line;
}

std::string ReadQuoted(CsvReader* reader) {
  const std::size_t firstLine = reader->line;
  std::string cell;
  ++reader->position;
  while (!reader->AtEnd()) {
    const char byte = reader->text[reader->position++];
    if (byte == '"') {
      if (reader->AtEnd() || reader->text[reader->position] != '"') return cell;
      ++reader->position;
    }
    if (byte == '\n') ++reader->line;
    cell += byte;
  }
  reader->line = firstLine;
  reader->Problem("a quotation begins here and does not end");
  return cell;
}

std::string ReadCell(CsvReader* reader) {
  const bool quoted = !reader->AtEnd() && reader->text[reader->position] == '"';
  std::string cell = quoted ? ReadQuoted(reader) : std::string();
  const std::size_t start = reader->position;
  while (!reader->AtLineEnd() && reader->text[reader->position] != ',') ++reader->position;
  if (quoted && reader->position > start) reader->Problem("text follows the end of a quotation");
  return cell.append(reader->text, start, reader->position - start);
}

CsvRow ReadRow(CsvReader* reader) {
  CsvRow row{reader->line, {}};
  row.cells.push_back(ReadCell(reader));
  while (!reader->AtLineEnd()) {
    ++reader->position;
    row.cells.push_back(ReadCell(reader));
  }
  return row;
}

bool NeedsQuotes(const std::string& cell) {
  return cell.find_first_of(",\"\r\n") != std::string::npos;
}

}  // namespace

std::vector<CsvRow> ParseCsv(std::string_view text, std::vector<std::string>* problems) {
  if (text.substr(0, kByteOrderMark.size()) == kByteOrderMark) {
    text.remove_prefix(kByteOrderMark.size());
  }
  CsvReader reader{text, problems};
  std::vector<CsvRow> rows;
  while (!reader.AtEnd()) {
    if (!reader.AtLineEnd()) rows.push_back(ReadRow(&reader));
    PassLineEnd(&reader);
  }
  return rows;
}

std::string CsvLine(const std::vector<std::string>& cells) {
  std::string line;
  for (std::size_t i = 0; i < cells.size(); ++i) {
    if (i > 0) line += ',';
    if (!NeedsQuotes(cells[i]) && (cells.size() > 1 || !cells[i].empty())) {
      line += cells[i];
      continue;
    }
    line += '"';
    for (const char byte : cells[i]) line.append(byte == '"' ? 2 : 1, byte);
    line += '"';
  }
  return line + "\r\n";
}

}  // namespace quillon::app
