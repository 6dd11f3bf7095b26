#include "plugin/appearance/choice_field.h"

#include <gtest/gtest.h>

#include "plugin/host/win32.h"
#include "plugin/model/field_tree.h"
#include "plugin/model/field_values.h"
#include "plugin/model/keys.h"
#include "tests/plugin/appearance/appearance_host.h"

namespace quillform {
namespace {

constexpr const char* kLook = "/DA (/Helv 12 Tf 1 0 0 rg) ";
// With a border 1 wide three lines of 13.8721 points fit entirely, so that four are visible.
constexpr const char* kFourRows = "[100 700 200 750]";
constexpr const char* kTen = "/Opt [(o0) (o1) (o2) (o3) (o4) (o5) (o6) (o7) (o8) (o9)] ";

struct ChoiceFieldTest : AppearanceHost {
  AnnotHandle OpenList(const std::string& entries, const quillon::test::FormPdfParts& parts = {}) {
    const AnnotHandle annot = OpenWidget("Ch", kLook + entries, kFourRows, parts);
    EXPECT_EQ(CatchFailure([&] { BuildListAppearance(annot); }), 0);
    return annot;
  }

  // The texts shown, in order.
  static std::string ShownIn(AnnotHandle annot) {
    const std::string drawn = ContentOf(annot);
    std::string shown;
    for (std::size_t at = drawn.find('('); at != std::string::npos; at = drawn.find('(', at + 1)) {
      shown += drawn.substr(at + 1, drawn.find(')', at) - at - 1) + " ";
    }
    return shown;
  }

  // As the content writes it.
  static std::string ColourOperator(int index) {
    const DWORD colour = GetSysColor(index);
    ContentWriter writer = NewContentWriter({}, 0);
    const auto part = [&](int shift) {
      return Support->FixedDiv(static_cast<Fixed>(colour >> shift & 0xFF), 255);
    };
    SetColour(writer, {1, part(0), part(8), part(16), 0}, true);
    return {writer.text.begin(), writer.text.end()};
  }
};

TEST_F(ChoiceFieldTest, ComboShowsOneLineWhateverItsFlagsMeanElsewhere) {
  const AnnotHandle annot =
      OpenWidget("Ch", std::string(kLook) + "/Ff 143360 /MK << /BG [1] >> /Opt [[(x) (Shown)]]",
                 "[100 700 300 720]");
  BuildComboAppearance(annot, Text("x"));
  EXPECT_EQ(ContentOf(annot),
            "1 g 0 0 200 20 re f /Tx BMC q 1 1 198 18 re W n "
            "BT /Helv 12 Tf 1 0 0 rg  1 0 0 1 1 5.548 Tm (x) Tj ET Q EMC");
  SetFieldValue(FieldNodeOfWidget(annot), Text("x"));
  EXPECT_NE(ContentOf(annot).find("(Shown) Tj"), std::string::npos)
      << "a refresh gives what users see of the value: " << ContentOf(annot);
}

TEST_F(ChoiceFieldTest, ListHighlightsTheSelectedOption) {
  const AnnotHandle annot = OpenList("/MK << >> /V (b) /Opt [(a) [(b) (B\\(\\))] (c)]");
  EXPECT_EQ(ContentOf(annot), "/Tx BMC q 1 1 98 48 re W n " + ColourOperator(COLOR_HIGHLIGHT) +
                                  " 1 21.2559 98 13.8721 re f BT /Helv 12 Tf 1 0 0 rg  "
                                  "1 0 0 1 0 51.484 Tm 1 -13.8721 Td (a) Tj " +
                                  ColourOperator(COLOR_HIGHLIGHTTEXT) +
                                  " 0 -13.8721 Td (B\\(\\)) Tj 1 0 0 rg 0 -13.8721 Td (c) Tj ET Q "
                                  "EMC");
}

TEST_F(ChoiceFieldTest, TheTopIndexKeepsTheSelectionInSight) {
  const struct {
    const char* entries;
    const char* top;
    const char* shown;
    const char* highlighted;  // bottom of the band; null for none
  } cases[] = {
      {"/V (o7)", "6", "o6 o7 o8 o9 ", " 21.2559 98"},
      {"/V (o2) /TI 5", "2", "o2 o3 o4 o5 ", " 35.1279 98"},
      {"/V (o3)", "null", "o0 o1 o2 o3 ", " -6.4883 98"},
      {"/V (o4)", "4", "o4 o5 o6 o7 ", " 35.1279 98"},
      {"/V (nothing) /TI 8", "8", "o8 o9 ", nullptr},
      {"/TI 99", "99", "", nullptr},
      {"/TI 2147483647 /V (o1)", "1", "o1 o2 o3 o4 ", " 35.1279 98"},
      {"/TI -4", "-4", "o0 o1 o2 o3 ", nullptr},
  };
  for (const auto& one : cases) {
    const AnnotHandle annot = OpenList(std::string(kTen) + one.entries);
    EXPECT_EQ(Entry(annot, key::TI), one.top) << one.entries;
    EXPECT_EQ(ShownIn(annot), one.shown) << one.entries;
    const std::string drawn = ContentOf(annot);
    const std::size_t band = drawn.find(" 13.8721 re f");
    ASSERT_EQ(band != std::string::npos, one.highlighted != nullptr) << drawn;
    if (one.highlighted == nullptr) continue;
    EXPECT_NE(drawn.find(std::string(one.highlighted) + " 13.8721 re f"), std::string::npos)
        << one.entries << ": " << drawn;
  }
}

TEST_F(ChoiceFieldTest, AnAuthorsListKeepsAllButItsMarkedSection) {
  const std::string entries = "/AP << /N 11 0 R >> /Opt [(a)] /V (a) ";
  const quillon::test::FormPdfParts parts{
      .objects = {StreamObject("/BBox [0 0 100 50]", "q frame Q /Tx BMC (old) Tj EMC q rest Q")}};
  const std::string drawn = ContentOf(OpenList(entries, parts));
  EXPECT_EQ(drawn.rfind("q frame Q /Tx BMC " + ColourOperator(COLOR_HIGHLIGHT), 0), 0U) << drawn;
  EXPECT_EQ(drawn.find(" re W n"), std::string::npos) << "the author's clip applies: " << drawn;
  EXPECT_NE(drawn.find("(a) Tj 1 0 0 rg ET EMC\n q rest Q"), std::string::npos) << drawn;
}

}  // namespace
}  // namespace quillform
