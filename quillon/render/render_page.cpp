#include "quillon/render/render_page.h"

#include <filesystem>

#include "quillon/core/failure.h"
#include "quillon/core/module.h"
#include "quillon/document/operations.h"
#include "quillon/render/flat_page.h"
#include "quillon/render/rasteriser.h"
#include "quillon/viewer/operations.h"

namespace quillon {
namespace {

// What came back from the rasteriser.
struct Drawn {
  std::string picture;
  std::string failure;
  std::vector<std::string>* warnings;
};

void TakePart(void* client, RasterPart part, const char* bytes, std::size_t length) {
  Drawn& drawn = *static_cast<Drawn*>(client);
  switch (part) {
    case RasterPart::kPicture:
      drawn.picture.assign(bytes, length);
      break;
    case RasterPart::kWarning:
      drawn.warnings->push_back("drawing: " + std::string(bytes, length));
      break;
    case RasterPart::kFailure:
      drawn.failure.assign(bytes, length);
      break;
  }
}

// Loaded once and kept: the library cannot be relied on to unload cleanly.
RasterRoutine Rasteriser() {
  static const Module module = [] {
    const std::string file = FileBesideProgram(kRasterModuleName);
    if (!std::filesystem::exists(file)) {
      Fail(kErrorNotOffered,
           "this build cannot draw pages: " + std::string(kRasterModuleName) +
               " is not beside the program; build it where the rendering library is installed");
    }
    return LoadModule(file);
  }();
  const Callback routine = FindRoutine(module, kRasterEntryName);
  if (routine == nullptr) {
    Fail(kErrorNotOffered, std::string(kRasterModuleName) + " is not the module that draws pages");
  }
  return reinterpret_cast<RasterRoutine>(routine);
}

}  // namespace

std::string RenderPageAsPng(DocView view, const RenderRequest& request,
                            std::vector<std::string>* warnings) {
  const DocHandle doc = viewer::DocOf(view);
  const std::uint32_t pages = document::PageCount(doc);
  if (request.page >= pages) {
    Fail(kErrorBadParameter, "there is no page " + std::to_string(request.page + 1) +
                                 "; the document has " + std::to_string(pages));
  }
  const RasterRoutine draw = Rasteriser();
  std::vector<PlugInFailure> failures;
  const std::vector<DrawnAppearance> appearances = DrawPageAnnots(view, request.page, &failures);
  for (const PlugInFailure& failure : failures) {
    warnings->push_back("an annotation is left out: " + failure.text);
  }
  const std::string bytes = FlatPageDocument(doc, request.page, appearances);
  const RasterRequest raster{bytes.data(), bytes.size(), 0, request.dpi};
  Drawn drawn{{}, {}, warnings};
  draw(&raster, &TakePart, &drawn);
  if (!drawn.failure.empty()) Fail(kErrorGeneral, drawn.failure);
  return std::move(drawn.picture);
}

}  // namespace quillon
