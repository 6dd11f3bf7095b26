// Comma-separated values (RFC 4180).
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quillon::app {

struct CsvRow {
  std::size_t line;  // on which it begins, counted from 1
  std::vector<std::string> cells;
};

// The rows of a text; empty lines are none. Lines may end in any way, and a byte-order mark is
// passed over. What is wrong (a quotation that does not end, text after one) is added to
// `problems`, one sentence each.
std::vector<CsvRow> ParseCsv(std::string_view text, std::vector<std::string>* problems);

// One line with its end.
std::string CsvLine(const std::vector<std::string>& cells);

}  // namespace quillon::app
