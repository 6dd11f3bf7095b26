#include "plugin/appearance/content_writer.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "plugin/model/keys.h"
#include "tests/plugin/appearance/appearance_host.h"

namespace quillform {
namespace {

constexpr Fixed kOne = kFixedOne;
constexpr Fixed kHalf = kFixedOne / 2;
constexpr std::uint16_t kRotations[] = {0, 90, 180, 270};

struct ContentWriterTest : AppearanceHost {
  ContentWriter writer = NewContentWriter({0, 20 * kOne, 100 * kOne, 0}, 0);

  std::string TakeText() {
    std::string text(writer.text.c_str());
    writer.text.clear();
    return text;
  }
};

TEST_F(ContentWriterTest, BoxIsExchangedForTurnedWidgetsAndPositiveForMirroredRectangles) {
  const FixedRect rect{150 * kOne, 10 * kOne, 50 * kOne, 30 * kOne};  // corners the wrong way round
  for (const std::uint16_t rotation : kRotations) {
    const ContentWriter made = NewContentWriter(rect, rotation);
    const bool turned = rotation % 180 != 0;
    EXPECT_EQ(BoxWidth(made), (turned ? 20 : 100) * kOne) << rotation;
    EXPECT_EQ(BoxHeight(made), (turned ? 100 : 20) * kOne) << rotation;
    EXPECT_EQ(made.box.left, 0);
    EXPECT_EQ(made.box.bottom, 0);
  }
  const ContentWriter widest = NewContentWriter({INT32_MIN, 0, INT32_MAX, 0}, 0);
  EXPECT_EQ(BoxWidth(widest), INT32_MAX);
}

TEST_F(ContentWriterTest, EachConversionTakesItsArgumentAndOthersNone) {
  WriteOp(writer, "%f %f %f", kHalf, -kOne / 4, 12 * kOne);
  EXPECT_EQ(TakeText(), "0.5 -0.25 12");
  WriteOp(writer, "%d %d", -32768, 2147483647);
  EXPECT_EQ(TakeText(), "-32768 2147483647");
  WriteOp(writer, "%s Tj", "a(b");
  EXPECT_EQ(TakeText(), "(a\\(b) Tj");
  WriteOp(writer, "BT %c%%%x", "/F (1) Tf");
  EXPECT_EQ(TakeText(), "BT /F (1) Tf%x");
  WriteOp(writer, "%n Do", key::FRM);
  EXPECT_EQ(TakeText(), "/FRM Do");
  WriteOp(writer, "%b %b %d", 1, 0x10000, 7);
  EXPECT_EQ(TakeText(), "true false 7");
}

TEST_F(ContentWriterTest, LinesAreSeparatedBySingleBlanks) {
  WriteOp(writer, "q");
  WriteOp(writer, "%f w", 2 * kOne);
  WriteRestore(writer);
  EXPECT_EQ(TakeText(), "q 2 w Q");
}

TEST_F(ContentWriterTest, LineIsCutAtItsLimit) {
  const std::string longText(2000, 'x');
  WriteOp(writer, "ab%c", longText.c_str());
  EXPECT_EQ(TakeText(), "ab" + longText.substr(0, 1022));
  WriteOp(writer, "%s Tj", longText.c_str());
  EXPECT_EQ(TakeText(), "(" + longText.substr(0, 1023));
}

TEST_F(ContentWriterTest, EscapesDelimitersAndBytesOutsideAscii) {
  const struct {
    const char* text;
    const char* escaped;
  } cases[] = {{"(a)", "\\(a\\)"},
               {"[b]\\", "\\[b\\]\\\\"},
               {"\xE9", "\\351"},
               {"\t\n", "\\011\\012"},
               {"\x7F\x80\xFF", "\\177\\200\\377"},
               {" ~", " ~"},
               {"", ""}};
  char output[64];
  for (const auto& one : cases) {
    EXPECT_EQ(EscapeLiteralString(one.text, output, sizeof output),
              std::string(one.escaped).size());
    EXPECT_STREQ(output, one.escaped);
  }
  EXPECT_EQ(EscapeLiteralString(nullptr, output, sizeof output), 0u);
}

TEST_F(ContentWriterTest, EscapedFormThatDoesNotFitEndsTheText) {
  char output[8];
  EXPECT_EQ(EscapeLiteralString("abcd\xE9z", output, sizeof output), 4u);
  EXPECT_STREQ(output, "abcd");
  EXPECT_EQ(EscapeLiteralString("abc\xE9z", output, sizeof output), 7u);
  EXPECT_STREQ(output, "abc\\351");
  EXPECT_EQ(EscapeLiteralString("abcdef(", output, sizeof output), 6u);
  EXPECT_EQ(EscapeLiteralString("abcdefgh", output, sizeof output), 7u);
}

TEST_F(ContentWriterTest, ExhaustedMemoryLosesTheTextAndTheWriterStartsAgain) {
  WriteOp(writer, "q");
  const std::string line(1000, 'x');
  {
    const MemoryLimit none(0);
    WriteOp(writer, "%c", line.c_str());
    EXPECT_TRUE(writer.text.empty());
    WriteOp(writer, "%c", line.c_str());
    EXPECT_TRUE(writer.text.empty());
  }
  WriteOp(writer, "n");
  EXPECT_EQ(TakeText(), "n");
}

TEST_F(ContentWriterTest, AppendedWriterBringsItsTextFlagsFontAndIcon) {
  ContentWriter source = NewContentWriter({0, kOne, kOne, 0}, 0);
  WriteOp(source, "ET");
  source.flags = kWriterUsesFont | kWriterUsesIcon;
  source.icon = ObjectHandle{3, 4};
  LoadFontMetrics(key::Courier, 10 * kOne, &source.font);
  AppendWriter(writer, source);
  EXPECT_EQ(writer.text, "ET");
  AppendWriter(writer, source);
  EXPECT_EQ(writer.text, "ET ET");
  EXPECT_EQ(writer.flags, source.flags);
  EXPECT_EQ(writer.font.baseFont, key::Courier);
  EXPECT_EQ(writer.font.widths['x'], source.font.widths['x']);
  EXPECT_EQ(writer.icon.second, 4u);

  ContentWriter plain = NewContentWriter({0, kOne, kOne, 0}, 0);
  plain.font.baseFont = key::Symbol;
  WriteOp(plain, "%c", std::string(1000, 'x').c_str());
  AppendWriter(source, plain);
  EXPECT_EQ(source.font.baseFont, key::Courier) << "a font that is not used is not taken over";
  {
    const MemoryLimit none(0);
    AppendWriter(writer, plain);
  }
  EXPECT_EQ(writer.text, "ET ET");
}

TEST_F(ContentWriterTest, ColourOperatorsFollowTheSpaceAndThePurpose) {
  const struct {
    ColourRec colour;
    const char* filling;
    const char* stroking;
  } cases[] = {{{0, kHalf, 0, 0, 0}, "0.5 g", "0.5 G"},
               {{1, kOne, 0, kHalf, 0}, "1 0 0.5 rg", "1 0 0.5 RG"},
               {{1, kHalf, kHalf, kHalf, 0}, "0.5 g", "0.5 G"},
               {{2, 0, 0, 0, kOne}, "0 0 0 1 k", "0 0 0 1 K"},
               {kNoColour, "", ""}};
  for (const auto& one : cases) {
    SetColour(writer, one.colour, true);
    EXPECT_EQ(TakeText(), one.filling);
    SetColour(writer, one.colour, false);
    EXPECT_EQ(TakeText(), one.stroking);
  }
}

TEST_F(ContentWriterTest, CirclesAreFourCurvesAroundTheirCentre) {
  WriteCircle(writer, 5 * kOne, 6 * kOne, 10 * kOne, 'f');
  EXPECT_EQ(TakeText(),
            "q 1 0 0 1 5 6 cm 10 0 m 10 5.5231 5.5231 10 0 10 c -5.5231 10 -10 5.5231 -10 0 c "
            "-10 -5.5231 -5.5231 -10 0 -10 c 5.5231 -10 10 -5.5231 10 0 c f Q");
  WriteHalfCircle(writer, 5 * kOne, 6 * kOne, 10 * kOne, true);
  EXPECT_EQ(TakeText(),
            "q 0.7071 0.7071 -0.7071 0.7071 5 6 cm 10 0 m 10 5.5231 5.5231 10 0 10 c "
            "-5.5231 10 -10 5.5231 -10 0 c S Q");
  WriteHalfCircle(writer, 5 * kOne, 6 * kOne, 10 * kOne, false);
  EXPECT_EQ(TakeText(),
            "q 0.7071 0.7071 -0.7071 0.7071 5 6 cm -10 0 m -10 -5.5231 -5.5231 -10 0 -10 c "
            "5.5231 -10 10 -5.5231 10 0 c S Q");
}

TEST_F(ContentWriterTest, BevelBandsRunAlongTwoSides) {
  const FixedRect rect{kOne, 19 * kOne, 99 * kOne, kOne};
  WriteBevelPolygon(writer, rect, 2 * kOne, true);
  EXPECT_EQ(TakeText(), "1 1 m 1 19 l 99 19 l 97 17 l 3 17 l 3 3 l f");
  WriteBevelPolygon(writer, rect, 2 * kOne, false);
  EXPECT_EQ(TakeText(), "99 19 m 99 1 l 1 1 l 3 3 l 97 3 l 97 17 l f");
}

TEST_F(ContentWriterTest, ClipRectangleIsTransposedForTurnedWidgets) {
  const FixedRect inner{kOne, 18 * kOne, 97 * kOne, 2 * kOne};
  const char* const upright = "q 1 2 96 16 re W n";
  const char* const turned = "q 2 1 16 96 re W n";
  for (const std::uint16_t rotation : kRotations) {
    writer.rotation = rotation;
    WriteClip(writer, inner);
    EXPECT_EQ(TakeText(), rotation % 180 == 0 ? upright : turned) << rotation;
  }
}

TEST_F(ContentWriterTest, MarkedContentOpensWithTheTagAndCloses) {
  BeginMarkedContent(writer, key::Tx);
  EndMarkedContent(writer);
  EXPECT_EQ(TakeText(), "/Tx BMC EMC");
}

TEST_F(ContentWriterTest, ArrayBecomesAColourByItsLength) {
  const struct {
    std::vector<Fixed> elements;
    std::int16_t space;
  } cases[] = {{{}, 255},
               {{kHalf}, 0},
               {{kHalf, kHalf}, 255},
               {{kHalf, 0, kOne}, 1},
               {{kHalf, 0, kOne, kHalf}, 2},
               {{0, 0, 0, 0, 0}, 255}};
  for (const auto& one : cases) {
    const ObjectHandle array = Objects->NewArray(objects, false, 5);
    for (std::size_t i = 0; i < one.elements.size(); ++i) {
      Objects->ArrayPut(array, static_cast<std::uint32_t>(i),
                        Objects->NewFixed(objects, false, one.elements[i]));
    }
    const ColourRec colour = ColourOfArray(array);
    EXPECT_EQ(colour.space, one.space);
    EXPECT_EQ(colour.c1, colour.space == 255 ? 0 : kHalf);
    Objects->Destroy(array);
  }
  EXPECT_EQ(ColourOfArray(kNullObject).space, 255);
  const ObjectHandle mixed = Parse("[1 (x) 0.5]");
  const ColourRec colour = ColourOfArray(mixed);
  EXPECT_EQ(colour.c1, kOne);
  EXPECT_EQ(colour.c2, 0);
  EXPECT_EQ(colour.c3, kHalf);
}

}  // namespace
}  // namespace quillform
