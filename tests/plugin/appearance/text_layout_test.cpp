#include "plugin/appearance/text_layout.h"

#include <gtest/gtest.h>

#include "plugin/model/keys.h"
#include "tests/plugin/appearance/appearance_host.h"

namespace quillform {
namespace {

constexpr Fixed kOne = kFixedOne;

struct TextLayoutTest : AppearanceHost {
  ContentWriter writer = Box(200, 20);
  TextAppearance look = Sized(12);

  static ContentWriter Box(std::int32_t width, std::int32_t height) {
    return NewContentWriter({0, height * kOne, width * kOne, 0}, 0);
  }

  static TextAppearance Sized(std::int32_t size) {
    TextAppearance made = DefaultTextAppearance();
    made.fontSize = size * kOne;
    return made;
  }

  std::string Single(const std::string& text, Fixed margin = 2 * kOne) {
    writer.text.clear();
    WriteSingleLine(writer, margin, look, text.c_str());
    return writer.text.c_str();
  }

  std::string Multi(bool wrap, const std::string& text, Fixed margin = 2 * kOne) {
    WriteMultiLine(writer, wrap, margin, look, text.c_str());
    return writer.text.c_str();
  }

  // The lines that a text is wrapped into, each in brackets.
  std::string Wrapped(const std::string& text, Fixed width) {
    std::string lines;
    std::string line;
    std::size_t position = 0;
    for (int count = 0; count < 10 && position < text.size(); ++count) {
      const Fixed taken =
          WrapLine(FontMetricsOf(key::Helvetica, 12 * kOne), width, text.c_str(), &line, &position);
      EXPECT_EQ(taken, TextWidth(FontMetricsOf(key::Helvetica, 12 * kOne), line.c_str())) << line;
      lines += "[" + line + "]";
    }
    return lines;
  }

  Fixed WidthOf(const char* text) {
    return TextWidth(FontMetricsOf(key::Helvetica, 12 * kOne), text);
  }
};

std::size_t CountOf(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
    ++count;
  }
  return count;
}

TEST_F(TextLayoutTest, SingleLineIsCentredInHeightAndPlacedByItsQuadding) {
  EXPECT_EQ(Single("Hello"), "BT /Helv 12 Tf 0 g  1 0 0 1 2 5.548 Tm (Hello) Tj ET");
  look.quadding = 1;
  EXPECT_EQ(Single("Hello"), "BT /Helv 12 Tf 0 g  1 0 0 1 86.332 5.548 Tm (Hello) Tj ET");
  look.quadding = 2;
  EXPECT_EQ(Single("Hello"), "BT /Helv 12 Tf 0 g  1 0 0 1 170.664 5.548 Tm (Hello) Tj ET");
}

TEST_F(TextLayoutTest, LongTextsAreShownInPiecesOf64Bytes) {
  const std::string drawn = Single(std::string(150, 'x'));
  EXPECT_NE(drawn.find("(" + std::string(64, 'x') + ") Tj (" + std::string(64, 'x') + ") Tj (" +
                       std::string(22, 'x') + ") Tj ET"),
            std::string::npos)
      << drawn;
}

TEST_F(TextLayoutTest, AutomaticSizeFillsTheBoxBetween4And144Points) {
  EXPECT_EQ(AutoFontSize(Box(200, 5), key::Helvetica, kOne), 4 * kOne);
  EXPECT_EQ(AutoFontSize(Box(200, 300), key::Helvetica, kOne), 144 * kOne);
  look.fontSize = 0;
  EXPECT_EQ(Single("Hello", kOne), "BT /Helv 14.7922 Tf 0 g  1 0 0 1 1 4.5121 Tm (Hello) Tj ET");
}

TEST_F(TextLayoutTest, WrappingBreaksAtBlanksAndInsideLongWords) {
  const Fixed nine = WidthOf("Hello wor");
  EXPECT_EQ(Wrapped("Hello world", nine), "[Hello][world]");
  EXPECT_EQ(Wrapped("Helloworld", nine - WidthOf("r")), "[Hellowo][rld]");
  EXPECT_EQ(Wrapped("a\rb\nc\r\r", nine), "[a][b][c][]");
  // A blank at the very start is no place to break; one at the start of a later line is.
  EXPECT_EQ(Wrapped(" Hello", WidthOf(" He")), "[ He][llo]");
  EXPECT_EQ(Wrapped("a b", WidthOf("a")), "[a][][b]");
}

TEST_F(TextLayoutTest, AByteWiderThanTheLineMakesNoProgressAndTheLineCountEndsIt) {
  writer = Box(10, 50);
  EXPECT_EQ(CountOf(Multi(true, "WWWW", 4 * kOne), "() Tj"), 4U);
}

TEST_F(TextLayoutTest, MultiLineStopsAfterThePartlyVisibleLine) {
  writer = Box(200, 50);
  EXPECT_EQ(Multi(false, "a\rbo\rc\rd\re"),
            "0 g BT /Helv 12 Tf 0 g  1 0 0 1 0 50.484 Tm 2 -13.8721 Td (a) Tj "
            "0 -13.8721 Td (bo) Tj 0 -13.8721 Td (c) Tj 0 -13.8721 Td (d) Tj ET");
  writer.text.clear();
  look.quadding = 2;
  look.fontSize = 0;
  EXPECT_EQ(Multi(true, "ee\re"),
            "0 g BT /Helv 12 Tf 0 g  1 0 0 1 0 50.484 Tm 184.656 -13.8721 Td (ee) Tj "
            "6.672 -13.8721 Td (e) Tj ET");
}

TEST_F(TextLayoutTest, LinesTooLongForOneOperatorGoOnInTheNext) {
  writer = Box(30000, 50);
  const std::string drawn = Multi(true, std::string(300, '\x80'), kOne);
  EXPECT_EQ(CountOf(drawn, "\\200"), 300U);
  EXPECT_EQ(CountOf(drawn, ") Tj"), 2U) << "every string is closed";
}

}  // namespace
}  // namespace quillform
