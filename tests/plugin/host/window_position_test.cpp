#include "plugin/host/window_position.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/plugin/frame/plug_in_life.h"
#include "tests/plugin/host/settings_sandbox.h"

namespace quillform {
namespace {

TEST(EdgeOnScreen, of_a_window_larger_than_the_screen_ends_with_it) {
  EXPECT_EQ(EdgeOnScreen(800, 100, 800), 800) << "not beyond the screen yet";
  EXPECT_EQ(EdgeOnScreen(900, 1000, 800), -200);
}

constexpr int kWidth = 300;
constexpr int kHeight = 200;

struct WindowPosition : testing::Test {
  WindowPosition() {
    ClearSettings();
    EXPECT_TRUE(life.SetUp());
    window = CreateWindowExA(0, "STATIC", "", WS_POPUP, 40, 50, kWidth, kHeight, nullptr, nullptr,
                             nullptr, nullptr);
  }
  // The real platform makes windows only where there is a desktop.
  void SetUp() override {
    if (window == nullptr) GTEST_SKIP() << "no desktop to put windows on";
  }
  ~WindowPosition() override {
    if (window != nullptr) DestroyWindow(window);
  }

  RECT Place() const {
    RECT place{};
    EXPECT_TRUE(GetWindowRect(window, &place));
    EXPECT_EQ(place.right - place.left, kWidth);
    EXPECT_EQ(place.bottom - place.top, kHeight);
    return place;
  }

  PlugInLife life;
  HWND window;
};

TEST_F(WindowPosition, comes_back_under_its_own_name) {
  SaveWindowPosition(window, "Properties");
  EXPECT_EQ(StoredSettingText("Positions", "Properties"), "40 50");
  SetWindowPos(window, nullptr, 1, 2, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  SaveWindowPosition(window, "Actions");
  RestoreWindowPosition(window, "Properties");
  EXPECT_EQ(Place().left, 40);
  EXPECT_EQ(Place().top, 50);
}

TEST_F(WindowPosition, that_is_off_the_screen_is_brought_back) {
  StoreSettingText("Positions", "Properties", "-30 20");
  RestoreWindowPosition(window, "Properties");
  EXPECT_EQ(Place().left, 0);
  EXPECT_EQ(Place().top, 20);

  RECT desktop{};
  GetWindowRect(GetDesktopWindow(), &desktop);
  StoreSettingText("Positions", "Properties", "32000 32000");
  RestoreWindowPosition(window, "Properties");
  EXPECT_EQ(Place().right, desktop.right);
  EXPECT_EQ(Place().bottom, desktop.bottom);
}

TEST_F(WindowPosition, that_was_never_saved_is_the_middle) {
  RECT desktop{};
  GetWindowRect(GetDesktopWindow(), &desktop);
  RestoreWindowPosition(window, "Never");
  EXPECT_EQ(Place().left, (desktop.right - kWidth) / 2);
  EXPECT_EQ(Place().top, (desktop.bottom - kHeight) / 2);
  EXPECT_EQ(StoredSettingText("Positions", "Never"), "") << "restoring saves nothing";
}

}  // namespace
}  // namespace quillform
