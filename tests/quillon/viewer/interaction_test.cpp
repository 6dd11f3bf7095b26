#include <gtest/gtest.h>

#include <vector>

#include "quillon/document/operations.h"
#include "quillon/viewer/open_view.h"
#include "quillon/viewer/operations.h"
#include "quillon/viewer/painting.h"
#include "quillon/viewer/pointer.h"
#include "quillon/viewer/view_control.h"
#include "tests/support/form_pdf.h"
#include "tests/support/test_host.h"

namespace quillon {
namespace {

using test::RaisedBy;

std::vector<DeviceRect> drawn;
std::vector<PaintedRect> painted;

// Of the first annotation of the page.
DeviceRect WidgetRect(PageView page) {
  const PageHandle shown = document::AcquirePage(viewer::DocOf(viewer::ActiveDocView()), 0);
  DeviceRect rect{};
  viewer::AnnotDeviceRect(page, document::AnnotAt(shown, 0), &rect);
  document::ReleasePage(shown);
  return rect;
}

struct InteractionTest : testing::Test {
  InteractionTest() {
    painted.clear();
    view =
        OpenViewOfDocument(test::OpenTestDocument(test::FormPdf({test::WidgetField("Tx", "a")})));
    page = viewer::DocPageView(view);
    SetPaintRoutine([](DocView, const PaintedRect& rect) { painted.push_back(rect); });
    SetRedrawRoutine([](DocView, const DeviceRect& rect) { drawn.push_back(rect); });
  }
  ~InteractionTest() override {
    SetPaintRoutine(nullptr);
    SetRedrawRoutine(nullptr);
  }

  test::TestHost host;
  DocView view = nullptr;
  PageView page = nullptr;
};

void ExpectRect(const DeviceRect& rect, int left, int top, int right, int bottom) {
  EXPECT_EQ(rect.left, left);
  EXPECT_EQ(rect.top, top);
  EXPECT_EQ(rect.right, right);
  EXPECT_EQ(rect.bottom, bottom);
}

TEST_F(InteractionTest, AnAnnotationIsFoundUpToItsEdgesAndMovesWithTheView) {
  const DeviceRect rect = WidgetRect(page);
  AnnotHandle annot{};
  EXPECT_TRUE(viewer::AnnotAtPoint(page, rect.right, rect.bottom, &annot));
  EXPECT_FALSE(
      viewer::AnnotAtPoint(page, static_cast<std::int16_t>(rect.right + 1), rect.top, &annot));
  viewer::ScrollTo(page, rect.left, rect.top);
  const DeviceRect moved = WidgetRect(page);
  ExpectRect(moved, 0, 0, rect.right - rect.left, rect.bottom - rect.top);
  viewer::ScrollTo(page, 0, 0);
  EXPECT_EQ(WidgetRect(page).left, 0) << "the corner given is one of what is shown now";
}

TEST_F(InteractionTest, AChangeOfSeveralStepsIsDrawnOnceWithAllThatIsInvalid) {
  const DeviceRect one = {10, 10, 20, 20};
  const DeviceRect two = {15, 5, 40, 18};
  viewer::UpdateView(page);
  drawn.clear();
  viewer::PageViewBeginOp(page);
  viewer::PageViewBeginOp(page);
  viewer::InvalidateRect(page, &one);
  viewer::InvalidateRect(page, &two);
  viewer::UpdateView(page);
  viewer::PageViewEndOp(page);
  EXPECT_TRUE(drawn.empty());
  viewer::PageViewEndOp(page);
  viewer::DrawNow(viewer::DocWindow(view));
  ASSERT_EQ(drawn.size(), 1U) << "nothing was invalid any more";
  ExpectRect(drawn[0], 10, 5, 40, 20);
  EXPECT_EQ(RaisedBy([&] { viewer::PageViewEndOp(page); }), kErrorBadParameter);
}

TEST_F(InteractionTest, ATrackedRectangleFollowsTheMouseAndLeavesNoMark) {
  DeviceRect rect{};
  QueueMouse({30, 5, true});
  QueueMouse({4, 40, true});
  QueueMouse({5, 50, false});
  EXPECT_TRUE(viewer::TrackNewRect(page, 10, 20, &rect));
  ExpectRect(rect, 5, 20, 10, 50);
  EXPECT_EQ(painted.size() % 2, 0U);
  for (std::size_t i = 0; i + 1 < painted.size(); i += 2) {
    EXPECT_EQ(painted[i].rect.left, painted[i + 1].rect.left) << "each inversion is undone";
    EXPECT_EQ(painted[i].rect.bottom, painted[i + 1].rect.bottom);
  }
  const DeviceRect from = {10, 10, 50, 30};
  const auto track = [&](std::uint16_t corner) {
    QueueMouse({3, -2, false});
    viewer::TrackRect(page, 0, 0, &from, corner, 0, &rect);
    return rect;
  };
  ExpectRect(track(0), 13, 8, 53, 28);
  ExpectRect(track(1), 13, 8, 50, 30);
  ExpectRect(track(2), 10, 8, 53, 30);
  ExpectRect(track(3), 10, 10, 53, 28);
  ExpectRect(track(4), 13, 10, 50, 28);
  EXPECT_FALSE(viewer::TrackRect(page, 3, -2, &from, 1, 0, &rect)) << "released where it began";
  EXPECT_EQ(RaisedBy([&] { viewer::TrackRect(page, 0, 0, &from, 5, 0, &rect); }),
            kErrorBadParameter);
}

}  // namespace
}  // namespace quillon
