#include "quillon/viewer/painting.h"

#include "quillon/viewer/operations.h"
#include "quillon/viewer/view_record.h"

namespace quillon {
namespace {

PaintRoutine paint = nullptr;

void Paint(PageView view, PaintKind kind, const DeviceRect* rect, std::uint16_t width) {
  const viewer::PageViewRecord& record = viewer::RecordOf(view);
  if (rect == nullptr) Fail(kErrorBadParameter, "a rectangle is missing");
  if (paint != nullptr) {
    paint(viewer::HandleOf(record.view), {kind, *rect, record.color, width});
  }
}

}  // namespace

void SetPaintRoutine(PaintRoutine routine) { paint = routine; }

namespace viewer {

void PageViewColor(PageView view, ColourRec* color) {
  if (color == nullptr) Fail(kErrorBadParameter, "PageViewColor needs a colour");
  *color = RecordOf(view).color;
}

void PageViewSetColor(PageView view, const ColourRec* color) {
  if (color == nullptr) Fail(kErrorBadParameter, "PageViewSetColor needs a colour");
  RecordOf(view).color = *color;
}

void DrawRect(PageView view, const DeviceRect* rect) { Paint(view, PaintKind::kFilled, rect, 0); }

void DrawRectOutline(PageView view, const DeviceRect* rect, std::uint16_t width) {
  Paint(view, PaintKind::kOutline, rect, width);
}

void InvertRect(PageView view, const DeviceRect* rect, std::uint16_t flag) {
  if (flag != 1) Fail(kErrorBadParameter, "the flag of an inversion is 1");
  Paint(view, PaintKind::kInverted, rect, 0);
}

}  // namespace viewer
}  // namespace quillon
