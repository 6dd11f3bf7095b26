// Any bytes as text of each encoding; what can be converted must lead back.
#include "fuzz/fuzz_host.h"
#include "quillon/document/text_encoding.h"

namespace quillon::fuzz {
namespace {

void Convert(std::string_view bytes) {
  PdfTextCharacters(bytes);
  const std::string shown = PdfTextToUtf8(bytes);
  for (std::size_t at = 0; at < shown.size();) {
    Require(NextUtf8(shown, &at).has_value(), "what is shown is no UTF-8");
  }
  std::size_t bad = 0;
  const std::optional<std::string> stored = Utf8ToPdfDoc(bytes, &bad);
  if (stored) {
    Require(PdfDocToUtf8(*stored) == bytes, "text does not lead back");
  } else {
    Require(bad < bytes.size(), "the bad character lies outside the text");
  }
}

}  // namespace
}  // namespace quillon::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quillon::fuzz;
  Convert(TextOf(data, size));
  return 0;
}
