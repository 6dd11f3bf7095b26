// The standard filters, one way and, where streams are written, the other (ISO 32000-1, 7.4).
// What cannot be decoded throws HostFailure (kErrorBadStream).
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillon::objects {

// More than the content of any page in use; pictures are not decoded here. A few bytes of input can
// ask for far more, and each of a chain of filters holds its input and its output.
inline constexpr std::size_t kMaxDecodedBytes = std::size_t{96} << 20;

// Data that are cut off decode to what is there; *cutOff, which may be null, then becomes true.
std::string DecodeFlate(std::string_view data, std::size_t limit = kMaxDecodedBytes,
                        bool* cutOff = nullptr);
std::string DecodeLzw(std::string_view data, bool earlyChange);
std::string DecodeAsciiHex(std::string_view data);
std::string DecodeAscii85(std::string_view data);
std::string DecodeRunLength(std::string_view data);

// DecodeParms of Flate and LZW (ISO 32000-1, table 8).
struct PredictorParams {
  int predictor = 1;  // 1 none, 2 TIFF, 10 and above PNG
  int colors = 1;
  int bitsPerComponent = 8;
  int columns = 1;
};
std::string UndoPredictor(std::string data, const PredictorParams& params);

std::string EncodeFlate(std::string_view data);
std::string EncodeAsciiHex(std::string_view data);
std::string EncodeAscii85(std::string_view data);

[[noreturn]] void FailDecoding(const std::string& what);

// Throws when a decoded stream grows beyond the limit.
void CheckDecodedSize(std::size_t size, std::size_t limit = kMaxDecodedBytes);

}  // namespace quillon::objects
