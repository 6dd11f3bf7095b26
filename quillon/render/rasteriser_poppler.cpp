// Draws with the poppler library.
#include <poppler-document.h>
#include <poppler-global.h>
#include <poppler-image.h>
#include <poppler-page-renderer.h>
#include <poppler-page.h>

#include <cmath>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "quillon/render/png_file.h"
#include "quillon/render/rasteriser.h"

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
    throw std::runtime_error("the picture would be too large; ask for fewer pixels an inch");
  }
}

std::string DrawAsPng(const RasterRequest& request) {
  const std::unique_ptr<poppler::document> document(
      poppler::document::load_from_raw_data(request.bytes, static_cast<int>(request.length)));
  if (!document || document->is_locked()) {
    throw std::runtime_error("the rendering library cannot read the document");
  }
  const std::unique_ptr<poppler::page> page(document->create_page(static_cast<int>(request.page)));
  if (!page) throw std::runtime_error("the rendering library cannot read the page");
  CheckSize(*page, request.dpi);
  poppler::page_renderer renderer;
  renderer.set_render_hint(poppler::page_renderer::antialiasing);
  renderer.set_render_hint(poppler::page_renderer::text_antialiasing);
  renderer.set_image_format(poppler::image::format_rgb24);
  const poppler::image image = renderer.render_page(page.get(), request.dpi, request.dpi);
  if (!image.is_valid()) throw std::runtime_error("the rendering library could not draw the page");
  return EncodePng({image.const_data(), image.width(), image.height(), image.bytes_per_row()});
}

void Give(RasterSink sink, void* client, RasterPart part, const std::string& text) {
  sink(client, part, text.data(), text.size());
}

}  // namespace
}  // namespace quillon

extern "C" __attribute__((visibility("default"))) void QuillonDrawPage(
    const quillon::RasterRequest* request, quillon::RasterSink sink, void* client) {
  using quillon::RasterPart;
  try {
    const quillon::LibraryMessages messages;
    const std::string png = quillon::DrawAsPng(*request);
    for (std::size_t i = 0; i < messages.texts.size() && i < quillon::kMostLibraryWarnings; ++i) {
      quillon::Give(sink, client, RasterPart::kWarning, messages.texts[i]);
    }
    quillon::Give(sink, client, RasterPart::kPicture, png);
  } catch (const std::exception& failure) {
    quillon::Give(sink, client, RasterPart::kFailure, failure.what());
  }
}
