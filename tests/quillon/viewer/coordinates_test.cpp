#include "quillon/viewer/coordinates.h"

#include <gtest/gtest.h>

#include <ostream>

namespace quillon {

// For messages and comparisons of this file.
static bool operator==(const DeviceRect& a, const DeviceRect& b) {
  return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}
static std::ostream& operator<<(std::ostream& out, const DeviceRect& rect) {
  return out << rect.left << ' ' << rect.top << ' ' << rect.right << ' ' << rect.bottom;
}

namespace viewer {
namespace {

constexpr Fixed Points(int points) { return points * kFixedOne; }

// A page of 200 by 300 points whose lower left corner is (10, 20).
PageFrame Frame(std::uint16_t rotation, Fixed zoom = kFixedOne) {
  return {{Points(10), Points(320), Points(210), Points(20)}, rotation, zoom, 0, 0};
}

// 30 to the right of the page's left edge, 40 above its lower edge, 50 wide, 60 high.
constexpr FixedRect kUser = {Points(40), Points(120), Points(90), Points(60)};

struct Turned {
  std::uint16_t rotation;
  DeviceRect device;
  DeviceSize size;
};

constexpr Turned kTurned[] = {
    {0, {30, 200, 80, 260}, {200, 300}},
    {90, {40, 30, 100, 80}, {300, 200}},
    {180, {120, 40, 170, 100}, {200, 300}},
    {270, {200, 120, 260, 170}, {300, 200}},
};

TEST(Coordinates, EveryRotationPutsARectangleWhereItIsSeen) {
  for (const Turned& turned : kTurned) {
    const PageFrame frame = Frame(turned.rotation);
    EXPECT_EQ(ToDevice(frame, kUser), turned.device) << turned.rotation;
    EXPECT_EQ(SizeOf(frame).width, turned.size.width) << turned.rotation;
    EXPECT_EQ(SizeOf(frame).height, turned.size.height) << turned.rotation;
  }
}

TEST(Coordinates, DeviceUnitsComeBackFromUserSpace) {
  for (const Turned& turned : kTurned) {
    for (const Fixed zoom : {kFixedOne / 3, kFixedOne, 5 * kFixedOne / 4, 7 * kFixedOne}) {
      PageFrame frame = Frame(turned.rotation, zoom);
      frame.scrollX = 17;
      frame.scrollY = -23;
      for (const DeviceRect device : {DeviceRect{0, 0, 1, 1}, DeviceRect{-40, 5, 611, 799}}) {
        const FixedRect user = ToUser(frame, device);
        EXPECT_LE(user.left, user.right);
        EXPECT_LE(user.bottom, user.top);
        EXPECT_EQ(ToDevice(frame, user), device) << turned.rotation << " at " << zoom;
      }
    }
  }
}

TEST(Coordinates, ZoomAndScrollMoveInDeviceUnits) {
  PageFrame frame = Frame(0, 2 * kFixedOne);
  frame.scrollX = 10;
  frame.scrollY = 100;
  EXPECT_EQ(ToDevice(frame, kUser), (DeviceRect{50, 300, 150, 420}));
  // Half a unit goes up, on both sides of the origin.
  const FixedRect half = {Points(10) + kFixedOne / 4, Points(320) - kFixedOne / 4, Points(10),
                          Points(320) - kFixedOne / 2};
  frame.scrollX = frame.scrollY = 0;
  EXPECT_EQ(ToDevice(frame, half), (DeviceRect{0, 1, 1, 1}));
}

TEST(Coordinates, WhatIsTooFarAwayIsHeldToTheRange) {
  const FixedRect far = {Points(-32768), Points(32767), Points(32767), Points(-32768)};
  EXPECT_EQ(ToDevice(Frame(90, 64 * kFixedOne), far), (DeviceRect{-32768, -32768, 32767, 32767}));
  const FixedRect user = ToUser(Frame(0, 1), {-32768, -32768, 32767, 32767});
  EXPECT_EQ(user.right, 0x7FFFFFFF);
  EXPECT_EQ(user.bottom, -0x7FFFFFFF - 1);
}

}  // namespace
}  // namespace viewer
}  // namespace quillon
