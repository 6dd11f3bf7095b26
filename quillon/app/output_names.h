// Names of many files, made from one pattern.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "quillon/app/records.h"

namespace quillon::app {

// A pattern such as "out/{name}.pdf": a column's name in braces stands for the row's cell, {row}
// (unless a column has that name) for the row's number, counted from 1.
struct NamePattern {
  struct Part {
    std::string text;    // before the place
    std::size_t column;  // kNoColumn: nothing follows; kRowNumber
  };
  std::vector<Part> parts;
};

// Tells in *problem what is wrong with it: a brace without its other, a column that is not there,
// or no place at all.
std::optional<NamePattern> ParsePattern(const std::string& pattern,
                                        const std::vector<std::string>& columns,
                                        std::string* problem);

bool UsesColumn(const NamePattern& pattern, std::size_t column);

// The name for a row (counted from 0). What a file's name cannot have (slashes, control characters)
// becomes "_", so that no cell leads to another folder. None, and *problem, for an empty cell.
std::optional<std::string> NameFor(const NamePattern& pattern, const RecordTable& table,
                                   std::size_t row, std::string* problem);

}  // namespace quillon::app
