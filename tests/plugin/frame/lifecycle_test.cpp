#include <gtest/gtest.h>

#include "plugin/frame/shared_ui.h"
#include "plugin/host/form_events.h"
#include "quillon/support/memory.h"
#include "tests/plugin/frame/plug_in_life.h"

namespace quillform {
namespace {

std::size_t LiveFonts() {
#if defined(_WIN32)
  return 0;
#else
  return winlet::LiveGdiObjects() + winlet::LiveDeviceContexts();
#endif
}

void Start(PlugInLife& life) {
  ASSERT_TRUE(life.SetUp());
  ASSERT_TRUE(life.ShakeHands());
}

TEST(PlugInLifecycle, dialog_fonts_are_eight_point_plain_and_bold) {
  PlugInLife life;
  Start(life);
  ASSERT_TRUE(life.Initialise());
  ASSERT_NE(sharedUi, nullptr);
  LOGFONTA plain{};
  LOGFONTA bold{};
  ASSERT_NE(GetObjectA(sharedUi->dialogFont, sizeof plain, &plain), 0);
  ASSERT_NE(GetObjectA(sharedUi->dialogFontBold, sizeof bold, &bold), 0);
  const HDC screen = GetDC(nullptr);
  EXPECT_EQ(plain.lfHeight, -MulDiv(8, GetDeviceCaps(screen, LOGPIXELSY), 72));
  ReleaseDC(nullptr, screen);
  EXPECT_STREQ(plain.lfFaceName, "Arial");
  EXPECT_EQ(plain.lfWeight, 0);
  EXPECT_EQ(bold.lfWeight, 700);
  EXPECT_EQ(bold.lfHeight, plain.lfHeight);
  life.Unload();
}

TEST(PlugInLifecycle, unloading_gives_everything_back) {
  const std::size_t fonts = LiveFonts();
  PlugInLife life;
  const std::size_t blocks = quillon::CountMemory().blocks;
  Start(life);
  ASSERT_TRUE(life.Initialise());
  FormEventRegister(kEventKeystroke, nullptr, nullptr, nullptr);
  life.Unload();
  EXPECT_EQ(quillon::CountMemory().blocks, blocks);
  EXPECT_EQ(LiveFonts(), fonts);
  EXPECT_EQ(FormEventRegister(kEventKeystroke, nullptr, nullptr, nullptr), 0u);
}

}  // namespace
}  // namespace quillform
