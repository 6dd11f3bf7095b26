// From a page's user space to a view's device units and back.
#pragma once

#include "sdk/types.h"

namespace quillon::viewer {

struct PageViewRecord;

// The page as it lies in a view.
struct PageFrame {
  FixedRect box;           // the part of user space that is shown
  std::uint16_t rotation;  // clockwise: 0, 90, 180 or 270
  Fixed zoom;              // above 0; one is 72 device units an inch
  std::int32_t scrollX;
  std::int32_t scrollY;
};

struct DeviceSize {
  std::int32_t width;
  std::int32_t height;
};

PageFrame FrameOf(const PageViewRecord& view);

// The page's size in device units, turned as it is shown.
DeviceSize SizeOf(const PageFrame& frame);

// Corners go to the nearest device unit; what does not fit 16 bits is held to the range.
DeviceRect ToDevice(const PageFrame& frame, const FixedRect& user);
FixedRect ToUser(const PageFrame& frame, const DeviceRect& device);

DeviceRect UnionOf(const DeviceRect& a, const DeviceRect& b);

}  // namespace quillon::viewer
