#include "quillon/app/data_format.h"

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "quillon/app/csv.h"
#include "quillon/app/field_listing.h"
#include "quillon/objects/pdf_file.h"

namespace quillon::app {
namespace {

using nlohmann::json;

bool IsButton(FieldKind kind) {
  return kind == FieldKind::kCheckBox || kind == FieldKind::kRadioButton;
}

bool IsExported(const FieldEntry& field) {
  const bool holdsValue = field.kind != FieldKind::kPushButton && field.kind != FieldKind::kOther;
  return holdsValue && (field.flags & kFlagNoExport) == 0;
}

struct ExportedValue {
  std::string name;
  FieldKind kind;
  FieldValueText value;
};

std::vector<ExportedValue> ExportedValues(DocHandle doc) {
  std::vector<std::string> ignored;
  std::vector<ExportedValue> values;
  for (const FieldEntry& field : ListFields(doc, &ignored)) {
    if (!IsExported(field)) continue;
    values.push_back({field.name, field.kind, ReadFieldValue(field.node, field.kind)});
  }
  return values;
}

json JsonOf(const ExportedValue& field) {
  if (field.value.list) return field.value.texts;
  if (field.value.present) return field.value.texts.front();
  return IsButton(field.kind) ? json("Off") : json();
}

std::string CellOf(const ExportedValue& field) {
  std::string cell;
  for (const std::string& text : field.value.texts) {
    if (!cell.empty()) cell += '\n';
    cell += text;
  }
  return cell;
}

struct OpenFdf {
  explicit OpenFdf(ObjectDoc document) : doc(document) {}
  ~OpenFdf() { ClosePdf(doc); }
  OpenFdf(const OpenFdf&) = delete;
  OpenFdf& operator=(const OpenFdf&) = delete;

  ObjectDoc doc;
};

std::string EndingOf(const std::string& file) {
  std::string ending = std::filesystem::path(file).extension().string();
  std::transform(ending.begin(), ending.end(), ending.begin(), [](char byte) {
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
  });
  return ending.substr(ending.empty() ? 0 : 1);
}

}  // namespace

DataFormat FormatOfWord(const std::string& word) {
  if (word == "json") return DataFormat::kJson;
  return word == "csv" ? DataFormat::kCsv : DataFormat::kFdf;
}

DataFormat FormatOfName(const std::string& file) { return FormatOfWord(EndingOf(file)); }

DataFormat FormatOfData(const std::string& file, std::string_view bytes) {
  if (bytes.substr(0, 5) == std::string_view(kFdfHeader, 5)) return DataFormat::kFdf;
  const std::size_t first = bytes.find_first_not_of(" \t\r\n");
  const bool object = first != std::string_view::npos && bytes[first] == '{';
  return object && EndingOf(file) != "csv" ? DataFormat::kJson : FormatOfName(file);
}

// Written piece by piece, so that the fields keep their order.
std::string ValuesAsJson(DocHandle doc) {
  std::string text = "{";
  for (const ExportedValue& field : ExportedValues(doc)) {
    text += text.size() == 1 ? "\n  " : ",\n  ";
    text += json(field.name).dump() + ": " + JsonOf(field).dump();
  }
  return text + "\n}\n";
}

std::string ValuesAsCsv(DocHandle doc) {
  std::vector<std::string> names, cells;
  for (const ExportedValue& field : ExportedValues(doc)) {
    names.push_back(field.name);
    cells.push_back(CellOf(field));
  }
  return CsvLine(names) + CsvLine(cells);
}

std::string ValuesAsFdf(DocHandle doc, const std::string& file) {
  const std::string whole = file.empty() ? file : std::filesystem::absolute(file).string();
  const char* base = whole.empty() ? nullptr : whole.c_str();
  const Boolean yes = 1, no = 0;
  const OpenFdf fdf(
      CallForms(&FormsTable::CreateFDFFromForm, doc, kNullObject, yes, no, yes, yes, base));
  return PdfToBytes(fdf.doc);
}

}  // namespace quillon::app
