// The files in which field values are exchanged.
#pragma once

#include <string>
#include <string_view>

#include "quillon/document/open_document.h"

namespace quillon::app {

enum class DataFormat { kFdf, kJson, kCsv };

inline constexpr const char* kFdfHeader = "%FDF-1.2";

// By a word (fdf, json or csv), and by the ending of a file's name; FDF for any other.
DataFormat FormatOfWord(const std::string& word);
DataFormat FormatOfName(const std::string& file);

// By what the bytes begin with, then by the name's ending.
DataFormat FormatOfData(const std::string& file, std::string_view bytes);

// The values of every field that may be exported. JSON has one object, with null for a field
// without a value; CSV a row of names and a row of values, in which several options stand in lines
// of one cell.
std::string ValuesAsJson(DocHandle doc);
std::string ValuesAsCsv(DocHandle doc);

// The FDF that the forms plug-in makes. `file`, the path it will have, makes the document's name in
// it relative; empty for none.
std::string ValuesAsFdf(DocHandle doc, const std::string& file);

}  // namespace quillon::app
