// Undoing predictors: PNG (ISO/IEC 15948, 9) and TIFF (TIFF 6.0, section 14).
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <utility>
#include <vector>

#include "quillon/objects/filters.h"

namespace quillon::objects {
namespace {

constexpr int kFirstPng = 10;
constexpr int kMaxColors = 32;
constexpr int kMaxColumns = 1 << 20;

using Byte = unsigned char;

Byte Paeth(int left, int up, int upLeft) {
  const int estimate = left + up - upLeft;
  const int toLeft = std::abs(estimate - left);
  const int toUp = std::abs(estimate - up);
  const int toUpLeft = std::abs(estimate - upLeft);
  if (toLeft <= toUp && toLeft <= toUpLeft) return static_cast<Byte>(left);
  return static_cast<Byte>(toUp <= toUpLeft ? up : upLeft);
}

void UndoPngRow(int kind, std::vector<Byte>& row, const std::vector<Byte>& above,
                std::size_t pixel) {
  for (std::size_t i = 0; i < row.size(); ++i) {
    const int left = i >= pixel ? row[i - pixel] : 0;
    const int up = above[i];
    const int upLeft = i >= pixel ? above[i - pixel] : 0;
    int add = 0;
    if (kind == 1) add = left;
    if (kind == 2) add = up;
    if (kind == 3) add = (left + up) / 2;
    if (kind == 4) add = Paeth(left, up, upLeft);
    row[i] = static_cast<Byte>(row[i] + add);
  }
}

// Each row is preceded by the number of its own filter, whatever the parameters say.
std::string UndoPng(const std::string& data, std::size_t rowBytes, std::size_t pixel) {
  std::vector<Byte> above(rowBytes);
  std::vector<Byte> row(rowBytes);
  std::string out;
  out.reserve(data.size());
  for (std::size_t at = 0; at < data.size(); at += rowBytes + 1) {
    const int kind = static_cast<Byte>(data[at]);
    if (kind > 4) FailDecoding("Data with a PNG predictor are damaged");
    const std::size_t bytes = std::min(rowBytes, data.size() - at - 1);
    row.assign(data.begin() + static_cast<std::ptrdiff_t>(at + 1),
               data.begin() + static_cast<std::ptrdiff_t>(at + 1 + bytes));
    row.resize(rowBytes);
    UndoPngRow(kind, row, above, pixel);
    out.append(row.begin(), row.begin() + static_cast<std::ptrdiff_t>(bytes));
    std::swap(row, above);
  }
  return out;
}

// One component of `bits` bits at bit position `at` of a row.
unsigned TakeComponent(const Byte* row, std::size_t at, unsigned bits) {
  if (bits == 16) return static_cast<unsigned>(row[at / 8]) << 8 | row[at / 8 + 1];
  return static_cast<unsigned>(row[at / 8]) >> (8 - bits - at % 8) & ((1u << bits) - 1);
}

void PutComponent(Byte* row, std::size_t at, unsigned bits, unsigned value) {
  if (bits == 16) {
    row[at / 8] = static_cast<Byte>(value >> 8);
    row[at / 8 + 1] = static_cast<Byte>(value);
    return;
  }
  const unsigned shift = static_cast<unsigned>(8 - bits - at % 8);
  const unsigned mask = ((1u << bits) - 1) << shift;
  row[at / 8] = static_cast<Byte>((row[at / 8] & ~mask) | (value << shift & mask));
}

void UndoTiffRow(Byte* row, const PredictorParams& params) {
  const auto bits = static_cast<unsigned>(params.bitsPerComponent);
  const auto colors = static_cast<std::size_t>(params.colors);
  const std::size_t components = colors * static_cast<std::size_t>(params.columns);
  for (std::size_t i = colors; i < components; ++i) {
    const unsigned sum =
        TakeComponent(row, i * bits, bits) + TakeComponent(row, (i - colors) * bits, bits);
    PutComponent(row, i * bits, bits, sum & ((1u << bits) - 1));
  }
}

bool ParamsFit(const PredictorParams& params) {
  const int bits = params.bitsPerComponent;
  return params.colors >= 1 && params.colors <= kMaxColors && params.columns >= 1 &&
         params.columns <= kMaxColumns &&
         (bits == 1 || bits == 2 || bits == 4 || bits == 8 || bits == 16);
}

}  // namespace

std::string UndoPredictor(std::string data, const PredictorParams& params) {
  if (params.predictor == 1) return data;
  if (!ParamsFit(params)) FailDecoding("A stream's predictor has parameters that do not fit");
  const auto pixelBits =
      static_cast<std::size_t>(params.colors) * static_cast<std::size_t>(params.bitsPerComponent);
  const std::size_t rowBytes = (pixelBits * static_cast<std::size_t>(params.columns) + 7) / 8;
  if (params.predictor >= kFirstPng) return UndoPng(data, rowBytes, (pixelBits + 7) / 8);
  if (params.predictor != 2) FailDecoding("A stream has an unknown predictor");
  for (std::size_t at = 0; at + rowBytes <= data.size(); at += rowBytes) {
    UndoTiffRow(reinterpret_cast<Byte*>(data.data()) + at, params);
  }
  return data;
}

}  // namespace quillon::objects
