// Any bytes as a PDF file: opened, listed, filled, saved, and opened again.
#include "fuzz/fuzz_host.h"
#include "quillon/document/operations.h"

namespace quillon::fuzz {
namespace {

void OpenFillReopen(const std::string& bytes) {
  std::string saved;
  std::uint32_t pages = 0;
  {
    const ShownDocument shown(bytes);
    FillTextFields(shown.doc, "Jo\xE9 (1) \\");
    pages = document::PageCount(shown.doc);
    saved = SavedBytes(shown.view);
  }
  if (saved == bytes) return;  // nothing was filled in, and what is damaged stays as it is
  // There may be more: where the page tree is missing, a save makes one of all pages there are.
  Require(PagesWhenReopened(std::move(saved)) >= pages, "pages were lost on the way to the file");
}

}  // namespace
}  // namespace quillon::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quillon::fuzz;
  StartOnce();
  Attempt([&] { OpenFillReopen(std::string(TextOf(data, size))); });
  return 0;
}
