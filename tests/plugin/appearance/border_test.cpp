#include "plugin/appearance/border.h"

#include <gtest/gtest.h>

#include "plugin/appearance/fixed_math.h"
#include "tests/plugin/appearance/appearance_host.h"

namespace quillform {
namespace {

constexpr Fixed kOne = kFixedOne;
constexpr ColourRec kWhite{1, kOne, kOne, kOne, 0};
constexpr ColourRec kRed{1, kOne, 0, 0, 0};

struct BorderTest : AppearanceHost {
  ContentWriter writer = NewContentWriter({0, 20 * kOne, 100 * kOne, 0}, 0);

  std::string Drawn(std::int32_t style, const ColourRec& border, const ColourRec& background,
                    bool down = false, Fixed width = kOne) {
    writer.text.clear();
    DrawBorder(writer, nullptr, style, width, border, background, down);
    return writer.text.c_str();
  }

  std::string DrawnRound(std::int32_t style, const ColourRec& border, const ColourRec& background) {
    writer.text.clear();
    const FixedRect square{0, 20 * kOne, 20 * kOne, 0};
    DrawRoundBorder(writer, &square, style, kOne, border, background, false);
    return writer.text.c_str();
  }
};

TEST_F(BorderTest, StylesAreReadFromBSThenBorderThenTheDefault) {
  const struct {
    const char* entries;
    BorderStyle style;
    bool shown;
  } cases[] = {
      {"", {kBorderSolid, 1, 0, {}}, true},
      {"/BS << /S /D /W 2 /D [5 1] >>", {kBorderDashed, 2, 1, {3 * kOne}}, true},
      {"/BS << /S /B /W 3 >> /Border [0 0 9]", {kBorderBeveled, 3, 0, {}}, true},
      {"/BS << /S /U /W 2.9 >>", {kBorderUnderlined, 2, 0, {}}, true},
      {"/BS << /S /X /W 0 >>", {kBorderSolid, 0, 0, {}}, false},
      {"/Border [0 0 1 [3]]", {kBorderDashed, 1, 1, {3 * kOne}}, true},
      {"/Border [0 0]", {kBorderSolid, 1, 0, {}}, true},          // no width: unreadable
      {"/BS << /S /B /W /x >>", {kBorderSolid, 1, 0, {}}, true},  // the same
  };
  for (const auto& one : cases) {
    BorderStyle read;
    EXPECT_EQ(ReadBorderStyle(OpenWidget("Tx", one.entries), &read), one.shown) << one.entries;
    EXPECT_TRUE(BordersEqual(read, one.style)) << one.entries;
  }
}

TEST_F(BorderTest, PlainBordersFillThenStrokeAlongTheirMiddle) {
  EXPECT_EQ(Drawn(kBorderSolid, kBlack, kRed),
            "1 0 0 rg 0 0 100 20 re f 0 G 1 w 0.5 0.5 99 19 re s");
  EXPECT_EQ(Drawn(kBorderDashed, kRed, kNoColour, false, 2 * kOne),
            "1 0 0 RG 2 w [3] 0 d 1 1 98 18 re s");
  EXPECT_EQ(Drawn(kBorderUnderlined, kBlack, kWhite, true, 2 * kOne),
            "1 g 0 0 100 20 re f 0 G 2 w 0 1 m 100 1 l s");
  EXPECT_EQ(Drawn(kBorderSolid, kNoColour, {1, 6554, kOne / 2, kOne, 0}, true),
            "-0.151 0.249 0.749 rg 0 0 100 20 re f")
      << "pressed, each component is a quarter darker";
}

TEST_F(BorderTest, BeveledBordersHaveAWhiteAndAShadedBand) {
  const std::string plain = "1 g 0 0 100 20 re f 0 G 1 w 0.5 0.5 99 19 re s ";
  const std::string upper = "1 1 m 1 19 l 99 19 l 98 18 l 2 18 l 2 2 l f";
  const std::string lower = "99 19 m 99 1 l 1 1 l 2 2 l 98 2 l 98 18 l f";
  EXPECT_EQ(Drawn(kBorderBeveled, kBlack, kWhite), plain + "1 g " + upper + " 0.749 g " + lower);
  EXPECT_EQ(Drawn(kBorderBeveled, kBlack, kWhite, true),
            plain + "0.749 g " + upper + " 1 g " + lower);
  EXPECT_EQ(Drawn(kBorderInset, kBlack, kWhite), plain + "0.502 g " + upper + " 0.7529 g " + lower);
  EXPECT_EQ(Drawn(kBorderBeveled, kNoColour, kNoColour), "1 g " + upper + " 0.7529 g " + lower);
}

TEST_F(BorderTest, RoundBordersAreCirclesInTheMiddle) {
  const std::string drawn = DrawnRound(kBorderUnderlined, kBlack, kWhite);
  EXPECT_EQ(drawn.rfind("1 g q 1 0 0 1 10 10 cm 10 0 m 10 5.5231 5.5231 10 0 10 c", 0), 0U)
      << drawn;
  EXPECT_NE(drawn.find("f Q 0 G 1 w q 1 0 0 1 10 10 cm 9.5 0 m"), std::string::npos) << drawn;

  const std::string bevel = DrawnRound(kBorderBeveled, kNoColour, kNoColour);
  EXPECT_EQ(bevel.rfind("1 w 1 G q 0.7071 0.7071 -0.7071 0.7071 10 10 cm 8.5 0 m", 0), 0U) << bevel;
  EXPECT_NE(bevel.find("Q -0.251 G q"), std::string::npos) << "the shade of no colour: " << bevel;
}

TEST_F(BorderTest, DamagedSizesStayInRange) {
  writer = NewContentWriter({INT32_MIN, INT32_MAX, INT32_MAX, INT32_MIN}, 0);
  for (const std::int32_t style : {0, 1, 2, 3, 4}) {
    EXPECT_FALSE(Drawn(style, kBlack, kWhite, true, FixedOfWhole(INT32_MAX)).empty());
  }
  EXPECT_GT(ContentInset({kBorderInset, INT32_MAX, 0, {}}), 0);
}

}  // namespace
}  // namespace quillform
