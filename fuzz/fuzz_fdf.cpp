// Any bytes as an FDF file, imported into a form with a field of every kind.
#include "fuzz/fuzz_host.h"
#include "quillon/objects/pdf_file.h"
#include "tests/support/form_pdf.h"

namespace quillon::fuzz {
namespace {

const std::string& Form() {
  using test::WidgetField;
  static const std::string form = test::FormPdf({
      WidgetField("Tx", "text", "/V (old)"),
      WidgetField("Btn", "box", "/AP << /N << /Yes 9 0 R /Off 9 0 R >> >> /AS /Off"),
      WidgetField("Btn", "button", "/Ff 65536 /MK << /CA (Push) >>"),
      WidgetField("Ch", "combo", "/Ff 131072 /Opt [(red) (green)]"),
      WidgetField("Ch", "list", "/Opt [[(r) (red)] [(g) (green)]]"),
  });
  return form;
}

// Closes the data however the import ends.
struct OpenedData {
  explicit OpenedData(std::string bytes) {
    OpenOptions options;
    options.header = "%FDF-";
    doc = OpenPdfBytes(std::move(bytes), options, nullptr);
  }
  ~OpenedData() { ClosePdf(doc); }
  OpenedData(const OpenedData&) = delete;
  OpenedData& operator=(const OpenedData&) = delete;

  ObjectDoc doc = nullptr;
};

void Import(std::string bytes) {
  const ShownDocument shown(Form());
  const OpenedData data(std::move(bytes));
  Attempt([&] { Forms().ImportFDF(shown.doc, data.doc); });
  PagesWhenReopened(SavedBytes(shown.view));
}

}  // namespace
}  // namespace quillon::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quillon::fuzz;
  StartOnce();
  Attempt([&] { Import(std::string(TextOf(data, size))); });
  return 0;
}
