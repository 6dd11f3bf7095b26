// Each filter on any bytes; the first bytes choose the filter and its parameters. What a filter of
// ours encodes must decode to the same.
#include "fuzz/fuzz_host.h"
#include "quillon/objects/filters.h"

namespace quillon::fuzz {
namespace {

constexpr std::size_t kChoice = 5;  // bytes that choose
constexpr std::size_t kLimit = std::size_t{1} << 20;

void Decode(const std::uint8_t* choice, std::string_view bytes) {
  using namespace objects;
  const PredictorParams params = {choice[1], choice[2], choice[3], choice[4]};
  switch (choice[0] % 7) {
    case 0:
      UndoPredictor(DecodeFlate(bytes, kLimit), params);
      break;
    case 1:
      UndoPredictor(DecodeLzw(bytes, choice[1] % 2 != 0), params);
      break;
    case 2:
      DecodeAsciiHex(bytes);
      break;
    case 3:
      DecodeAscii85(bytes);
      break;
    case 4:
      DecodeRunLength(bytes);
      break;
    case 5:
      UndoPredictor(std::string(bytes), params);
      break;
    default:
      Require(DecodeFlate(EncodeFlate(bytes)) == bytes, "Flate does not lead back");
      Require(DecodeAsciiHex(EncodeAsciiHex(bytes)) == bytes, "ASCIIHex does not lead back");
      Require(DecodeAscii85(EncodeAscii85(bytes)) == bytes, "ASCII85 does not lead back");
  }
}

}  // namespace
}  // namespace quillon::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quillon::fuzz;
  if (size < kChoice) return 0;
  StartOnce();
  Attempt([&] { Decode(data, TextOf(data + kChoice, size - kChoice)); });
  return 0;
}
