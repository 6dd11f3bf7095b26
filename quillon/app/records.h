// Field values as rows of a table: one column a field, one row a document.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "quillon/app/field_values_input.h"

namespace quillon::app {

struct Record {
  std::size_t line;                // in the file, for messages
  std::vector<std::string> cells;  // as many as there are columns
};

struct RecordTable {
  std::vector<std::string> columns;
  std::vector<Record> records;
};

// The text of a CSV file whose first row names the columns, each once. What is wrong is added to
// `problems`, one sentence each; a row with too few or too many cells is one of them and is left
// out.
RecordTable ReadRecords(const std::string& csv, std::vector<std::string>* problems);

// What a row asks for. An empty cell empties its field; lines in a cell are lines of a text, or
// several options.
std::vector<GivenValue> ValuesOf(const RecordTable& table, const Record& record);

}  // namespace quillon::app
