#include "quillon/objects/stream_data.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

#include "quillon/objects/dictionary.h"
#include "quillon/objects/filters.h"
#include "quillon/objects/limits.h"
#include "quillon/objects/load.h"

namespace quillon::objects {
namespace {

// More filters than anybody chains; each may multiply the size of the data.
constexpr std::size_t kMaxFilters = 8;

struct DecodingStep {
  std::string_view filter;
  std::uint32_t params;  // dictionary cell, 0 when there is none
};

PredictorParams PredictorOf(Document& doc, std::uint32_t params) {
  if (params == 0) return {};
  return {IntegerEntry(doc, params, "Predictor", 1), IntegerEntry(doc, params, "Colors", 1),
          IntegerEntry(doc, params, "BitsPerComponent", 8),
          IntegerEntry(doc, params, "Columns", 1)};
}

std::string StepFlate(Document& doc, std::string_view data, std::uint32_t params, bool* cutOff) {
  return UndoPredictor(DecodeFlate(data, kMaxDecodedBytes, cutOff), PredictorOf(doc, params));
}

std::string StepLzw(Document& doc, std::string_view data, std::uint32_t params, bool*) {
  const bool early = params == 0 || IntegerEntry(doc, params, "EarlyChange", 1) != 0;
  return UndoPredictor(DecodeLzw(data, early), PredictorOf(doc, params));
}

template <std::string (*Decode)(std::string_view)>
std::string StepPlain(Document&, std::string_view data, std::uint32_t, bool*) {
  return Decode(data);
}

// A document without encryption of its own has nothing to undo for Crypt.
std::string StepIdentity(Document&, std::string_view data, std::uint32_t, bool*) {
  return std::string(data);
}

struct Filter {
  std::string_view name;
  std::string_view shortName;  // allowed in inline images, found in streams
  std::string (*decode)(Document& doc, std::string_view data, std::uint32_t params, bool* cutOff);
  std::string (*encode)(std::string_view data);  // null: cannot be written
};
constexpr std::array<Filter, 6> kFilters = {{
    {"FlateDecode", "Fl", StepFlate, EncodeFlate},
    {"LZWDecode", "LZW", StepLzw, nullptr},
    {"ASCIIHexDecode", "AHx", StepPlain<DecodeAsciiHex>, EncodeAsciiHex},
    {"ASCII85Decode", "A85", StepPlain<DecodeAscii85>, EncodeAscii85},
    {"RunLengthDecode", "RL", StepPlain<DecodeRunLength>, nullptr},
    {"Crypt", "Crypt", StepIdentity, nullptr},
}};

const Filter* FindFilter(std::string_view name) {
  for (const Filter& filter : kFilters) {
    if (filter.name == name || filter.shortName == name) return &filter;
  }
  return nullptr;
}

// The elements of an array, or the value itself; nothing for null.
std::vector<Value> OneOrMany(Document& doc, const Value& value) {
  const Value target = Dereference(doc, value);
  const std::uint32_t array = CellOf(doc, target, CellKind::kArray);
  if (array != 0) {
    Cell& cell = CellAt(doc.cells, array);
    return {ElementsOf(cell), ElementsOf(cell) + cell.size};
  }
  if (target.tag == ValueTag::kNull) return {};
  return {target};
}

std::vector<DecodingStep> StepsOf(Document& doc, std::uint32_t dict) {
  const std::vector<Value> filters = OneOrMany(doc, EntryValue(doc, dict, "Filter"));
  Value params = EntryValue(doc, dict, "DecodeParms");
  if (params.tag == ValueTag::kNull) params = EntryValue(doc, dict, "DP");
  const std::vector<Value> allParams = OneOrMany(doc, params);
  if (filters.size() > kMaxFilters) FailDecoding("A stream has too many filters");
  std::vector<DecodingStep> steps;
  for (std::size_t i = 0; i < filters.size(); ++i) {
    const Value name = Dereference(doc, filters[i]);
    if (name.tag != ValueTag::kName) FailDecoding("A stream's filter is not a name");
    const std::uint32_t cell =
        i < allParams.size() ? CellOf(doc, allParams[i], CellKind::kDict) : 0;
    steps.push_back({NameText(doc, name.payload), cell});
  }
  return steps;
}

std::string RunSteps(Document& doc, std::string_view stored, const std::vector<DecodingStep>& steps,
                     bool* cutOff) {
  if (steps.empty()) return std::string(stored);
  std::string bytes;
  std::string_view input = stored;
  for (const DecodingStep& step : steps) {
    const Filter* filter = FindFilter(step.filter);
    if (filter == nullptr) {
      FailDecoding("The filter " + std::string(step.filter) + " cannot be undone here");
    }
    bytes = filter->decode(doc, input, step.params, cutOff);
    input = bytes;
  }
  return bytes;
}

// LZW is read, but its place in new streams is taken by what replaced it.
void ReplaceLzw(Document& doc, Value* filter) {
  if (filter->tag == ValueTag::kName && NameText(doc, filter->payload) == "LZWDecode") {
    filter->payload = NameFromText(doc, "FlateDecode");
  }
}

void ReplaceLzwFilters(Document& doc, std::uint32_t dict) {
  DictEntry* entry = FindEntry(CellAt(doc.cells, dict), NameFromText(doc, "Filter"));
  if (entry == nullptr) return;
  ReplaceLzw(doc, &entry->value);
  if (entry->value.tag != ValueTag::kCell) return;
  Cell& cell = CellAt(doc.cells, entry->value.payload);
  if (cell.kind != CellKind::kArray) return;
  for (std::uint32_t i = 0; i < cell.size; ++i) ReplaceLzw(doc, &ElementsOf(cell)[i]);
}

std::string Encoded(Document& doc, std::string_view bytes, std::uint32_t dict) {
  const std::vector<DecodingStep> steps = StepsOf(doc, dict);
  std::string data;
  std::string_view input = bytes;
  for (std::size_t i = steps.size(); i > 0; --i) {
    const Filter* filter = FindFilter(steps[i - 1].filter);
    if (filter == nullptr || filter->encode == nullptr) {
      FailDecoding("A stream cannot be written with the filter " +
                   std::string(steps[i - 1].filter));
    }
    data = filter->encode(input);
    input = data;
  }
  return steps.empty() ? std::string(bytes) : data;
}

}  // namespace

std::string DecodedBytes(Document& doc, std::uint32_t streamCell, std::uint32_t number,
                         bool* cutOff) {
  const std::string_view stored = StoredBytes(doc, streamCell, number);
  try {
    return RunSteps(doc, stored, StepsOf(doc, CellAt(doc.cells, streamCell).capacity), cutOff);
  } catch (const HostFailure& failure) {
    if (failure.code != kErrorBadStream || failure.objectNumber != 0) throw;
    Fail(failure.code,
         std::string(failure.what()) + " It is object " + std::to_string(number) + ".", number,
         ObjectOffset(doc, number));
  }
}

std::string ReadStream(Document& doc, std::uint32_t streamCell, std::uint32_t number) {
  std::string bytes = DecodedBytes(doc, streamCell, number);
  if (BodyOf(CellAt(doc.cells, streamCell)).owned) return bytes;
  SpendDecoded(doc, bytes.size());
  if (bytes.size() > kMaxReadStream) {
    Fail(kErrorBadStream,
         "The stream " + std::to_string(number) + " decodes to more than can be used here.", number,
         ObjectOffset(doc, number));
  }
  return bytes;
}

std::uint32_t MakeStreamCell(Document& doc, std::string_view bytes, std::uint32_t attributes) {
  ReplaceLzwFilters(doc, attributes);
  const std::string encoded = Encoded(doc, bytes, attributes);
  RemoveEntry(doc, attributes, NameFromText(doc, "DecodeParms"));
  SetEntry(doc, attributes, NameFromText(doc, "Length"),
           IntegerOf(static_cast<std::int32_t>(encoded.size())));
  const std::uint32_t number = NewCell(doc.cells, CellKind::kStream);
  auto* body = AllocateArray<StreamBody>(doc.pool, 1);
  auto* data = AllocateArray<char>(doc.pool, encoded.size());
  std::copy(encoded.begin(), encoded.end(), data);
  *body = StreamBody{data, encoded.size(), true, true};
  Cell& cell = CellAt(doc.cells, number);
  cell.data = body;
  cell.capacity = attributes;
  CellAt(doc.cells, attributes).parent = number;
  return number;
}

}  // namespace quillon::objects
