#include <gtest/gtest.h>

#include "winlet/winlet.h"

namespace {

TEST(GdiFonts, live_until_they_are_deleted) {
  const std::size_t before = winlet::LiveGdiObjects();
  const HFONT font =
      CreateFontA(-11, 0, 0, 0, FW_BOLD, FALSE, FALSE, FALSE, ANSI_CHARSET, OUT_DEFAULT_PRECIS,
                  CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, VARIABLE_PITCH | FF_SWISS,
                  "A face name that is longer than the record holds");
  EXPECT_EQ(winlet::LiveGdiObjects(), before + 1);
  LOGFONTA record{};
  EXPECT_EQ(GetObjectA(font, sizeof record, &record), static_cast<int>(sizeof record));
  EXPECT_EQ(record.lfHeight, -11);
  EXPECT_EQ(record.lfWeight, 700);
  EXPECT_STREQ(record.lfFaceName, "A face name that is longer than");
  EXPECT_TRUE(DeleteObject(font));
  EXPECT_FALSE(DeleteObject(font)) << "deleted twice";
  EXPECT_EQ(GetObjectA(font, sizeof record, &record), 0);
  EXPECT_EQ(winlet::LiveGdiObjects(), before);
}

TEST(GdiFonts, the_screen_has_96_units_an_inch_while_its_context_lives) {
  const HDC screen = GetDC(nullptr);
  EXPECT_EQ(GetDeviceCaps(screen, LOGPIXELSY), 96);
  EXPECT_EQ(winlet::LiveDeviceContexts(), 1u);
  EXPECT_EQ(ReleaseDC(nullptr, screen), 1);
  EXPECT_EQ(ReleaseDC(nullptr, screen), 0);
  EXPECT_EQ(GetDeviceCaps(screen, LOGPIXELSY), 0);
  EXPECT_EQ(winlet::LiveDeviceContexts(), 0u);
}

TEST(MulDiv, rounds_halves_away_from_zero_and_refuses_what_does_not_fit) {
  EXPECT_EQ(MulDiv(8, 96, 72), 11);
  EXPECT_EQ(MulDiv(1, 1, 2), 1);
  EXPECT_EQ(MulDiv(-1, 1, 2), -1);
  EXPECT_EQ(MulDiv(1, -5, -2), 3);
  EXPECT_EQ(MulDiv(2147483647, 2147483647, 2147483647), 2147483647);
  EXPECT_EQ(MulDiv(2147483647, 2, 1), -1);
  EXPECT_EQ(MulDiv(5, 5, 0), -1);
}

}  // namespace
