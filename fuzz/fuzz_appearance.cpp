// A text field whose appearance another program drew, and its default appearance text: the input
// up to the first NUL is the DA, the rest the appearance's content. Filling merges the two.
#include "fuzz/fuzz_host.h"
#include "tests/support/form_pdf.h"

namespace quillon::fuzz {
namespace {

std::string HexString(std::string_view bytes) {
  constexpr const char* kDigits = "0123456789ABCDEF";
  std::string hex = "<";
  for (const char byte : bytes) {
    hex += kDigits[static_cast<unsigned char>(byte) >> 4];
    hex += kDigits[static_cast<unsigned char>(byte) & 15];
  }
  return hex + ">";
}

void Merge(std::string_view da, std::string_view content) {
  test::FormPdfParts parts;
  parts.objects = {"<< /Type /XObject /Subtype /Form /BBox [0 0 200 20] /Length " +
                   std::to_string(content.size()) + " >>\nstream\n" + std::string(content) +
                   "\nendstream"};
  const std::string appearance = std::to_string(test::kFirstField + 1) + " 0 R";
  const ShownDocument shown(test::FormPdf(
      {test::WidgetField("Tx", "f", "/DA " + HexString(da) + " /AP << /N " + appearance + " >>")},
      parts));
  FillTextFields(shown.doc, "first");
  FillTextFields(shown.doc, "second (2)");
  PagesWhenReopened(SavedBytes(shown.view));
}

}  // namespace
}  // namespace quillon::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quillon::fuzz;
  StartOnce();
  const std::string_view input = TextOf(data, size);
  const std::size_t end = input.find('\0');
  const std::string_view content =
      end == std::string_view::npos ? std::string_view() : input.substr(end + 1);
  Attempt([&] { Merge(input.substr(0, end), content); });
  return 0;
}
