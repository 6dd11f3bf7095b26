#include "quillon/viewer/coordinates.h"

#include <algorithm>
#include <limits>

#include "quillon/document/operations.h"
#include "quillon/viewer/held_page.h"
#include "quillon/viewer/operations.h"
#include "quillon/viewer/view_record.h"

namespace quillon::viewer {
namespace {

// A point in 64 bits: nothing overflows on the way.
struct Point {
  std::int64_t x;
  std::int64_t y;
};

template <typename Narrow>
Narrow Hold(std::int64_t value) {
  return static_cast<Narrow>(std::clamp<std::int64_t>(value, std::numeric_limits<Narrow>::min(),
                                                      std::numeric_limits<Narrow>::max()));
}

// From user space to the page as it is shown at zoom 1: its upper left corner is (0, 0), y grows
// downwards.
Point Turn(const PageFrame& frame, Point user) {
  const FixedRect& box = frame.box;
  switch (frame.rotation) {
    case 90:
      return {user.y - box.bottom, user.x - box.left};
    case 180:
      return {box.right - user.x, user.y - box.bottom};
    case 270:
      return {box.top - user.y, box.right - user.x};
    default:
      return {user.x - box.left, box.top - user.y};
  }
}

Point TurnBack(const PageFrame& frame, Point shown) {
  const FixedRect& box = frame.box;
  switch (frame.rotation) {
    case 90:
      return {shown.y + box.left, shown.x + box.bottom};
    case 180:
      return {box.right - shown.x, shown.y + box.bottom};
    case 270:
      return {box.right - shown.y, box.top - shown.x};
    default:
      return {shown.x + box.left, box.top - shown.y};
  }
}

std::int64_t ToUnits(std::int64_t length, Fixed zoom) {
  return (length * zoom + (std::int64_t{1} << 31)) >> 32;
}

std::int64_t FromUnits(std::int64_t units, Fixed zoom) {
  const std::int64_t scaled = units * (std::int64_t{1} << 32);
  const std::int64_t half = zoom / 2;
  return (scaled + (scaled < 0 ? -half : half)) / zoom;
}

}  // namespace

PageFrame FrameOf(const PageViewRecord& view) {
  const HeldPage page(view.view->doc, view.page);
  PageFrame frame{{}, document::PageRotation(page.handle), view.zoom, view.scrollX, view.scrollY};
  document::PageBox(page.handle, &frame.box);
  return frame;
}

DeviceSize SizeOf(const PageFrame& frame) {
  const std::int64_t width = ToUnits(std::int64_t{frame.box.right} - frame.box.left, frame.zoom);
  const std::int64_t height = ToUnits(std::int64_t{frame.box.top} - frame.box.bottom, frame.zoom);
  const bool lying = frame.rotation % 180 != 0;
  return {Hold<std::int32_t>(lying ? height : width), Hold<std::int32_t>(lying ? width : height)};
}

DeviceRect ToDevice(const PageFrame& frame, const FixedRect& user) {
  const Point a = Turn(frame, {user.left, user.top});
  const Point b = Turn(frame, {user.right, user.bottom});
  const auto x = std::minmax({ToUnits(a.x, frame.zoom), ToUnits(b.x, frame.zoom)});
  const auto y = std::minmax({ToUnits(a.y, frame.zoom), ToUnits(b.y, frame.zoom)});
  return {Hold<std::int16_t>(x.first - frame.scrollX), Hold<std::int16_t>(y.first - frame.scrollY),
          Hold<std::int16_t>(x.second - frame.scrollX),
          Hold<std::int16_t>(y.second - frame.scrollY)};
}

FixedRect ToUser(const PageFrame& frame, const DeviceRect& device) {
  const auto back = [&](std::int64_t x, std::int64_t y) {
    return TurnBack(frame, {FromUnits(x + frame.scrollX, frame.zoom),
                            FromUnits(y + frame.scrollY, frame.zoom)});
  };
  const Point a = back(device.left, device.top);
  const Point b = back(device.right, device.bottom);
  return {Hold<Fixed>(std::min(a.x, b.x)), Hold<Fixed>(std::max(a.y, b.y)),
          Hold<Fixed>(std::max(a.x, b.x)), Hold<Fixed>(std::min(a.y, b.y))};
}

DeviceRect UnionOf(const DeviceRect& a, const DeviceRect& b) {
  return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
          std::max(a.bottom, b.bottom)};
}

void PageViewAperture(PageView view, DeviceRect* rect) {
  if (rect == nullptr) Fail(kErrorBadParameter, "PageViewAperture needs a rectangle");
  const PageViewRecord& record = RecordOf(view);
  const DeviceSize size = SizeOf(FrameOf(record));
  *rect = {0, 0, Hold<std::int16_t>(record.width > 0 ? record.width : size.width),
           Hold<std::int16_t>(record.height > 0 ? record.height : size.height)};
}

void UserToDeviceRect(PageView view, const FixedRect* user, DeviceRect* device) {
  if (user == nullptr || device == nullptr) Fail(kErrorBadParameter, "a rectangle is missing");
  *device = ToDevice(FrameOf(RecordOf(view)), *user);
}

void DeviceToUserRect(PageView view, const DeviceRect* device, FixedRect* user) {
  if (user == nullptr || device == nullptr) Fail(kErrorBadParameter, "a rectangle is missing");
  *user = ToUser(FrameOf(RecordOf(view)), *device);
}

void AnnotDeviceRect(PageView view, AnnotHandle annot, DeviceRect* rect) {
  FixedRect user{};
  document::AnnotRect(annot, &user);
  UserToDeviceRect(view, &user, rect);
}

}  // namespace quillon::viewer
