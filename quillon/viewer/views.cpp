// Views and page views: what they show and where they are.
#include "quillon/document/operations.h"
#include "quillon/viewer/coordinates.h"
#include "quillon/viewer/notify.h"
#include "quillon/viewer/operations.h"
#include "quillon/viewer/platform_operations.h"
#include "quillon/viewer/view_control.h"
#include "quillon/viewer/view_record.h"

namespace quillon::viewer {
namespace {

PlatformWindow mainWindow = nullptr;
RedrawRoutine redraw = nullptr;

void SendChange(const PageViewRecord& view, Notification special, std::uint32_t changes) {
  const PageView handle = HandleOf(&view);
  SendPageViewNote(special, handle, changes);
  SendPageViewNote(kNoteViewChanged, handle, changes);
}

}  // namespace

DocHandle DocOf(DocView view) { return view == nullptr ? nullptr : RecordOf(view).doc; }

Boolean DocIsExternal(DocView view) { return RecordOf(view).external; }

PageView DocPageView(DocView view) {
  return view == nullptr ? nullptr : HandleOf(&RecordOf(view).pageView);
}

DocView PageViewDoc(PageView view) {
  return view == nullptr ? nullptr : HandleOf(RecordOf(view).view);
}

WindowHandle DocWindow(DocView view) { return reinterpret_cast<WindowHandle>(&RecordOf(view)); }

PlatformWindow PlatformWindowOf(WindowHandle window) {
  return window == nullptr ? nullptr : RecordOf(reinterpret_cast<DocView>(window)).window;
}

std::uint32_t PageViewPageNumber(PageView view) { return RecordOf(view).page; }

std::uint32_t FirstVisiblePage(DocView view) { return RecordOf(view).pageView.page; }

std::uint32_t LastVisiblePage(DocView view) { return RecordOf(view).pageView.page; }

Boolean IsPageVisible(DocView view, std::uint32_t page) {
  return RecordOf(view).pageView.page == page;
}

void SetPageViewPage(PageView view, std::uint32_t page) {
  PageViewRecord& record = RecordOf(view);
  // Acquiring is what tells whether the document has the page.
  document::ReleasePage(document::AcquirePage(record.view->doc, page));
  if (record.page == page) return;
  record.page = page;
  record.scrollX = 0;
  record.scrollY = 0;
  InvalidateRect(view, nullptr);
  SendChange(record, kNotePageChanged, kViewChangePage | kViewChangePosition);
}

Fixed PageViewZoom(PageView view) { return RecordOf(view).zoom; }

void InvalidateRect(PageView view, const DeviceRect* rect) {
  PageViewRecord& record = RecordOf(view);
  DeviceRect area{};
  if (rect != nullptr) {
    area = *rect;
  } else {
    PageViewAperture(view, &area);
  }
  record.invalid = record.invalid ? UnionOf(*record.invalid, area) : area;
}

void UpdateView(PageView view) {
  PageViewRecord& record = RecordOf(view);
  if (!record.invalid || record.operations != 0) return;
  const DeviceRect invalid = *record.invalid;
  record.invalid.reset();
  if (redraw != nullptr) redraw(HandleOf(record.view), invalid);
}

void DrawNow(WindowHandle window) { UpdateView(DocPageView(reinterpret_cast<DocView>(window))); }

void ScrollTo(PageView view, std::int16_t x, std::int16_t y) {
  const PageViewRecord& record = RecordOf(view);
  ScrollView(HandleOf(record.view), record.scrollX + x, record.scrollY + y);
  InvalidateRect(view, nullptr);
}

void PageViewBeginOp(PageView view) { ++RecordOf(view).operations; }

void PageViewEndOp(PageView view) {
  PageViewRecord& record = RecordOf(view);
  if (record.operations == 0) Fail(kErrorBadParameter, "no operation was begun");
  if (--record.operations == 0) UpdateView(view);
}

}  // namespace quillon::viewer

namespace quillon {

void SetViewSize(DocView view, std::int32_t width, std::int32_t height) {
  viewer::PageViewRecord& record = viewer::RecordOf(view).pageView;
  record.width = width;
  record.height = height;
  SendPageViewNote(kNoteViewChanged, viewer::HandleOf(&record), kViewChangeSize);
}

void SetViewZoom(DocView view, Fixed zoom) {
  if (zoom <= 0 || zoom > kLargestZoom) Fail(kErrorBadParameter, "the zoom is out of range");
  viewer::PageViewRecord& record = viewer::RecordOf(view).pageView;
  record.zoom = zoom;
  SendPageViewNote(kNoteViewChanged, viewer::HandleOf(&record), kViewChangePosition);
}

void ScrollView(DocView view, std::int32_t x, std::int32_t y) {
  viewer::PageViewRecord& record = viewer::RecordOf(view).pageView;
  record.scrollX = x;
  record.scrollY = y;
  viewer::SendChange(record, kNoteScrolled, kViewChangePosition);
}

void ActivateView(DocView view) { viewer::SetActiveView(view); }

void SetViewWindow(DocView view, PlatformWindow window) { viewer::RecordOf(view).window = window; }

void SetFallbackWindow(PlatformWindow window) { viewer::mainWindow = window; }

void SetRedrawRoutine(RedrawRoutine routine) { viewer::redraw = routine; }

}  // namespace quillon

namespace quillon::platform {

PlatformWindow DocViewWindow(DocView view) {
  if (!viewer::IsOpen(view)) return viewer::mainWindow;
  const PlatformWindow window = viewer::RecordOf(view).window;
  return window != nullptr ? window : viewer::mainWindow;
}

}  // namespace quillon::platform
