#include "quillon/app/records.h"

#include <unordered_set>

#include "quillon/app/console.h"
#include "quillon/app/csv.h"

namespace quillon::app {
namespace {

void CheckColumns(const std::vector<std::string>& columns, std::vector<std::string>* problems) {
  std::unordered_set<std::string> seen;
  for (const std::string& column : columns) {
    if (column.empty()) {
      problems->emplace_back("a column has no name");
    } else if (!IsUtf8(column)) {
      problems->push_back("the column " + Printable(column) + " is not UTF-8");
    } else if (!seen.insert(column).second) {
      problems->push_back("the column " + Printable(column) + " is there twice");
    }
  }
}

std::string CellCount(const CsvRow& row, std::size_t columns) {
  return "line " + std::to_string(row.line) + ": the row has " + std::to_string(row.cells.size()) +
         " cells, the first row " + std::to_string(columns);
}

}  // namespace

RecordTable ReadRecords(const std::string& csv, std::vector<std::string>* problems) {
  std::vector<CsvRow> rows = ParseCsv(csv, problems);
  RecordTable table;
  if (rows.empty()) {
    problems->emplace_back("there is no row that names the columns");
    return table;
  }
  table.columns = std::move(rows.front().cells);
  CheckColumns(table.columns, problems);
  for (std::size_t i = 1; i < rows.size(); ++i) {
    if (rows[i].cells.size() != table.columns.size()) {
      problems->push_back(CellCount(rows[i], table.columns.size()));
    } else {
      table.records.push_back({rows[i].line, std::move(rows[i].cells)});
    }
  }
  return table;
}

std::vector<GivenValue> ValuesOf(const RecordTable& table, const Record& record) {
  std::vector<GivenValue> values;
  values.reserve(table.columns.size());
  for (std::size_t i = 0; i < table.columns.size(); ++i) {
    const std::string& cell = record.cells[i];
    values.push_back({table.columns[i], cell.empty() ? nlohmann::json() : nlohmann::json(cell)});
  }
  return values;
}

}  // namespace quillon::app
