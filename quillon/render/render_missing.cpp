// Stands in for drawing where the rendering library is not installed.
#include "quillon/core/failure.h"
#include "quillon/render/render_page.h"

namespace quillon {

bool CanRenderPages() { return false; }

std::string RenderPageAsPng(DocView, const RenderRequest&, std::vector<std::string>*) {
  Fail(kErrorNotOffered, "this build cannot draw pages: the rendering library was not installed");
}

}  // namespace quillon
