#include "quillon/app/commands.h"
#include "quillon/app/console.h"
#include "quillon/app/session.h"
#include "quillon/render/render_page.h"

namespace quillon::app {

int RunRender(const RenderArguments& arguments) {
  const OpenedView opened(arguments.file);
  RenderRequest request;
  request.page = arguments.page - 1;
  request.dpi = arguments.dpi;
  std::vector<std::string> warnings;
  const std::string png = RenderPageAsPng(opened.view, request, &warnings);
  if (arguments.output == kStandardStream) {
    WriteStandardOutput(png);
  } else {
    WriteFileWhole(arguments.output, png);
  }
  return FinishDocument(arguments.file, opened.doc, warnings);
}

}  // namespace quillon::app
