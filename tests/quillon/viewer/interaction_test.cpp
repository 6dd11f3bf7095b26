#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "quillon/core/operations.h"
#include "quillon/viewer/open_view.h"
#include "quillon/viewer/operations.h"
#include "quillon/viewer/painting.h"
#include "quillon/viewer/pointer.h"
#include "quillon/viewer/tools.h"
#include "quillon/viewer/view_control.h"
#include "tests/support/form_pdf.h"
#include "tests/support/test_host.h"

namespace quillon {
namespace {

using test::RaisedBy;

std::string heard;
std::vector<PaintedRect> painted;

Atom ToolType(const ToolRecord*) { return core::AtomFromName("TestTool"); }
void Activate(const ToolRecord*, Boolean persistent) { heard += persistent ? "on! " : "on "; }
void Deactivate(const ToolRecord*) { heard += "off "; }
Boolean Never(void* data) { return *static_cast<Boolean*>(data); }

DeviceRect WidgetRect(PageView page) {
  DeviceRect all{};
  viewer::PageViewAperture(page, &all);
  AnnotHandle annot{};
  for (std::int16_t y = 0; y < all.bottom; ++y) {
    for (std::int16_t x = 0; x < all.right; ++x) {
      if (viewer::AnnotAtPoint(page, x, y, &annot) == 0) continue;
      DeviceRect rect{};
      viewer::AnnotDeviceRect(page, annot, &rect);
      return rect;
    }
  }
  return {};
}

struct InteractionTest : testing::Test {
  InteractionTest() {
    heard.clear();
    painted.clear();
    view =
        OpenViewOfDocument(test::OpenTestDocument(test::FormPdf({test::WidgetField("Tx", "a")})));
    page = viewer::DocPageView(view);
    SetPaintRoutine([](DocView, const PaintedRect& rect) { painted.push_back(rect); });
    SetRedrawRoutine([](DocView, const DeviceRect&) { heard += "drawn "; });
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

TEST_F(InteractionTest, AChangeOfSeveralStepsIsDrawnOnce) {
  viewer::UpdateView(page);
  heard.clear();
  viewer::PageViewBeginOp(page);
  viewer::PageViewBeginOp(page);
  viewer::InvalidateRect(page, nullptr);
  viewer::UpdateView(page);
  viewer::PageViewEndOp(page);
  EXPECT_EQ(heard, "");
  viewer::PageViewEndOp(page);
  EXPECT_EQ(heard, "drawn ");
  viewer::DrawNow(viewer::DocWindow(view));
  EXPECT_EQ(heard, "drawn ") << "nothing was invalid any more";
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

TEST_F(InteractionTest, TheButtonIsReleasedWhenNothingMoreHappens) {
  QueueMouse({1, 2, true});
  EXPECT_TRUE(viewer::MouseIsDown());
  std::int16_t x = 0;
  std::int16_t y = 0;
  viewer::GetMousePosition(page, &x, &y);
  EXPECT_EQ(x, 1);
  EXPECT_EQ(y, 2);
  EXPECT_FALSE(viewer::MouseIsDown());
}

TEST_F(InteractionTest, PaintHasThePageViewsColour) {
  const ColourRec red = {1, kFixedOne, 0, 0, 0};
  const DeviceRect rect = {1, 2, 3, 4};
  viewer::PageViewSetColor(page, &red);
  viewer::DrawRect(page, &rect);
  viewer::DrawRectOutline(page, &rect, 2);
  ASSERT_EQ(painted.size(), 2U);
  EXPECT_EQ(painted[0].color.c1, kFixedOne);
  EXPECT_EQ(painted[1].kind, PaintKind::kOutline);
  EXPECT_EQ(painted[1].width, 2);
}

TEST_F(InteractionTest, ToolsTakeTurns) {
  Boolean enabled = 0;
  ToolRecord tool{};
  tool.size = sizeof tool;
  tool.getType = reinterpret_cast<Callback>(ToolType);
  tool.activate = reinterpret_cast<Callback>(Activate);
  tool.deactivate = reinterpret_cast<Callback>(Deactivate);
  tool.computeEnabled = Never;
  tool.computeEnabledData = &enabled;
  viewer::RegisterTool(3, &tool);
  const Atom type = ToolType(nullptr);
  EXPECT_FALSE(viewer::ToolIsEnabled(type));
  enabled = 1;
  EXPECT_TRUE(viewer::ToolIsEnabled(type));
  viewer::SetActiveTool(type, 1);
  EXPECT_EQ(viewer::ActiveTool(), type);
  EXPECT_EQ(viewer::LastTool(), viewer::DefaultTool());
  viewer::SetActiveTool(viewer::DefaultTool(), 1);
  EXPECT_EQ(viewer::LastTool(), type);
  EXPECT_EQ(heard, "on! off ");
  EXPECT_FALSE(viewer::ToolIsEnabled(core::AtomFromName("NoTool")));
  EXPECT_EQ(RaisedBy([] { viewer::SetActiveTool(core::AtomFromName("NoTool"), 0); }),
            kErrorBadParameter);
}

TEST_F(InteractionTest, ModalWindowsAndSettingsAreKept) {
  const ModalWindowHandle window = viewer::RegisterModalWindow(3, 0, 0, 1, &heard);
  EXPECT_EQ(ModalWindowCount(), 1U);
  viewer::UnregisterModalWindow(window);
  EXPECT_EQ(ModalWindowCount(), 0U);
  EXPECT_EQ(RaisedBy([&] { viewer::UnregisterModalWindow(window); }), kErrorBadParameter);
  viewer::SetAppFlag(62, 1);
  EXPECT_EQ(AppFlag(62), 1U);
  viewer::SetCursor(viewer::GetCursor(205));
  EXPECT_EQ(viewer::CurrentCursor(), viewer::GetCursor(205));
  ActionHandle action = nullptr;
  EXPECT_FALSE(viewer::EditAction(&action, view, "Add an Action")) << "there is no editor";
}

}  // namespace
}  // namespace quillon
