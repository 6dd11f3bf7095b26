// Draws with the poppler library.
#include <poppler-document.h>
#include <poppler-global.h>
#include <poppler-image.h>
#include <poppler-page-renderer.h>
#include <poppler-page.h>

#include <cmath>
#include <memory>

#include "quillon/document/operations.h"
#include "quillon/render/flat_page.h"
#include "quillon/render/png_file.h"
#include "quillon/render/render_page.h"
#include "quillon/viewer/operations.h"

namespace quillon {
namespace {

constexpr double kPointsAnInch = 72;
// 100 million pixels are 400 MB while they are drawn.
constexpr double kMostPixels = 100e6;
constexpr std::size_t kMostLibraryWarnings = 5;

// What the library complains of while it draws, for the time of its own life.
struct LibraryMessages {
  LibraryMessages() { poppler::set_debug_error_function(Collect, this); }
  ~LibraryMessages() { poppler::set_debug_error_function(Ignore, nullptr); }
  LibraryMessages(const LibraryMessages&) = delete;
  LibraryMessages& operator=(const LibraryMessages&) = delete;

  static void Collect(const std::string& message, void* self) {
    static_cast<LibraryMessages*>(self)->texts.push_back(message);
  }
  static void Ignore(const std::string&, void*) {}

  std::vector<std::string> texts;
};

void CheckSize(const poppler::page& page, double dpi) {
  const poppler::rectf box = page.page_rect();
  const double scale = dpi / kPointsAnInch;
  const double pixels = box.width() * scale * box.height() * scale;
  if (!std::isfinite(pixels) || pixels > kMostPixels) {
    Fail(kErrorBadParameter, "the picture would be too large; ask for fewer pixels an inch");
  }
}

poppler::image Draw(const std::string& bytes, const RenderRequest& request) {
  const std::unique_ptr<poppler::document> document(
      poppler::document::load_from_raw_data(bytes.data(), static_cast<int>(bytes.size())));
  if (!document) Fail(kErrorBadFile, "the rendering library cannot read the document");
  const std::unique_ptr<poppler::page> page(document->create_page(static_cast<int>(request.page)));
  if (!page) Fail(kErrorBadFile, "the rendering library cannot read the page");
  CheckSize(*page, request.dpi);
  poppler::page_renderer renderer;
  renderer.set_render_hint(poppler::page_renderer::antialiasing);
  renderer.set_render_hint(poppler::page_renderer::text_antialiasing);
  renderer.set_image_format(poppler::image::format_rgb24);
  poppler::image image = renderer.render_page(page.get(), request.dpi, request.dpi);
  if (!image.is_valid()) Fail(kErrorGeneral, "the rendering library could not draw the page");
  return image;
}

}  // namespace

bool CanRenderPages() { return true; }

std::string RenderPageAsPng(DocView view, const RenderRequest& request,
                            std::vector<std::string>* warnings) {
  const DocHandle doc = viewer::DocOf(view);
  const std::uint32_t pages = document::PageCount(doc);
  if (request.page >= pages) {
    Fail(kErrorBadParameter, "there is no page " + std::to_string(request.page + 1) +
                                 "; the document has " + std::to_string(pages));
  }
  std::vector<PlugInFailure> failures;
  const std::vector<DrawnAppearance> appearances = DrawPageAnnots(view, request.page, &failures);
  for (const PlugInFailure& failure : failures) {
    warnings->push_back("an annotation is left out: " + failure.text);
  }
  LibraryMessages messages;
  const poppler::image image = Draw(FlatPageDocument(doc, request.page, appearances), request);
  for (std::size_t i = 0; i < messages.texts.size() && i < kMostLibraryWarnings; ++i) {
    warnings->push_back("drawing: " + messages.texts[i]);
  }
  return EncodePng({image.const_data(), image.width(), image.height(), image.bytes_per_row()});
}

}  // namespace quillon
