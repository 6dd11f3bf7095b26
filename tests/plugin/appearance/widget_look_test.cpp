#include "plugin/appearance/widget_look.h"

#include <gtest/gtest.h>

#include "plugin/model/field_kinds.h"
#include "plugin/model/field_tree.h"
#include "plugin/model/field_values.h"
#include "plugin/model/keys.h"
#include "tests/plugin/appearance/widget_host.h"

namespace quillform {
namespace {

constexpr Fixed kOne = kFixedOne;
constexpr const char* kOptions =
    "/Opt [(plain) [(1) (one)] [(2) (two)]] /DV (2) /MK << >> /Ff 131072 ";

struct WidgetLookTest : WidgetHost {
  // As the kind's own routines read it.
  std::unique_ptr<WidgetLook> Read(AnnotHandle annot) {
    std::unique_ptr<WidgetLook> look = ReadWidgetLook(annot);
    ReadKindPart(annot, look->kind, look.get());
    return look;
  }

  FailureCode Apply(AnnotHandle annot, WidgetLook& look) {
    return CodeOf([&] { ApplyWidgetLook(annot, look); });
  }

  FailureCode ApplyFromDialog(AnnotHandle annot, WidgetLook& look) {
    FieldNodeOfWidget(annot)->status |= kNodeEdited;
    return Apply(annot, look);
  }
};

TEST_F(WidgetLookTest, TextFieldIsReadWhole) {
  const AnnotHandle annot = OpenWidget(
      "Tx",
      "/V (value) /DV (default) /MaxLen 12 /Ff 4099 /Q 1 /DA (/TiRo 9 Tf 0 0 1 rg) /BS << /W 2 >> "
      "/MK << /BC [0.5] /R 90 >>");
  const std::unique_ptr<WidgetLook> look = Read(annot);
  EXPECT_EQ(look->kind, key::Text);
  EXPECT_EQ(look->name, "field");
  EXPECT_EQ(look->baseFont, key::TimesRoman);
  EXPECT_EQ(look->fontSize, 9 * kOne);
  EXPECT_TRUE(ColoursEqual(look->textColour, {1, 0, 0, kOne, 0}));
  EXPECT_TRUE(ColoursEqual(look->borderColour, {0, kOne / 2, 0, 0, 0}));
  EXPECT_TRUE(ColoursEqual(look->background, kNoColour));
  EXPECT_EQ(look->border.width, 2);
  EXPECT_EQ(look->rotation, 90);
  EXPECT_EQ(look->fieldFlags, 4099U);
  EXPECT_EQ(look->annotFlags, 4U);
  EXPECT_EQ(look->valueText, "value");
  const TextPart& part = std::get<TextPart>(look->kindPart);
  EXPECT_EQ(part.defaultText, "default");
  EXPECT_TRUE(part.multiLine);
  EXPECT_EQ(part.maxLen, 12);
  EXPECT_EQ(part.quadding, 1);
}

TEST_F(WidgetLookTest, SizeIsShownAtTheHeightOfTheRectangle) {
  const std::unique_ptr<WidgetLook> look =
      Read(OpenWidget("Tx", "/DA (/Helv 12 Tf 0 g) /OH 30", "[0 0 80 40]"));
  EXPECT_EQ(look->fontSize, 16 * kOne) << "a whole size stays one";
  EXPECT_EQ(look->rect.top - look->rect.bottom, 30 * kOne);
}

TEST_F(WidgetLookTest, EditorsStoreTheValueAndNothingOfTheDialog) {
  const AnnotHandle annot = OpenWidget("Tx", "/V (old) /MaxLen 8 /MK << >>");
  const std::unique_ptr<WidgetLook> look = Read(annot);
  look->valueText = "much too long";
  std::get<TextPart>(look->kindPart).defaultText = "unwritten";
  ASSERT_EQ(Apply(annot, *look), 0);
  EXPECT_EQ(Entry(annot, key::V), "(much too)");
  EXPECT_EQ(Entry(annot, key::DV), "null");
  EXPECT_NE(ContentOf(annot).find("(much too) Tj"), std::string::npos);
  look->valueText.clear();
  ASSERT_EQ(Apply(annot, *look), 0);
  EXPECT_EQ(Entry(annot, key::V), "null");
}

TEST_F(WidgetLookTest, TextThatWasShownAndNotChangedKeepsItsCharacters) {
  const AnnotHandle annot = OpenWidget("Tx", "/V <FEFF0416> /DV <FEFF0416> /MK << >>");
  const std::unique_ptr<WidgetLook> look = Read(annot);
  EXPECT_EQ(look->valueText, "?");
  ASSERT_EQ(ApplyFromDialog(annot, *look), 0);
  EXPECT_EQ(Entry(annot, key::V), "(\xFE\xFF\x04\x16)");
  EXPECT_EQ(Entry(annot, key::DV), "(\xFE\xFF\x04\x16)");
}

TEST_F(WidgetLookTest, DialogWritesLookLimitsAndDefault) {
  const AnnotHandle annot = OpenWidget("Tx", "/V (old) /OH 10 /Border [0 0 3] /MK << /BG [1] >>");
  const std::unique_ptr<WidgetLook> look = Read(annot);
  look->baseFont = key::Courier;
  look->fontSize = 8 * kOne;
  look->textColour = {1, kOne, 0, 0, 0};
  look->background = kNoColour;
  look->border = {kBorderBeveled, 2, 0, {}};
  look->fieldFlags |= kFieldRequired;
  look->annotFlags = 0;
  look->valueText = "value";
  TextPart& part = std::get<TextPart>(look->kindPart);
  part.quadding = 2;
  part.maxLen = 3;
  part.defaultText = "defaults";
  ASSERT_EQ(ApplyFromDialog(annot, *look), 0);
  EXPECT_EQ(Entry(annot, key::DA), "(/Cour 8 Tf 1 0 0 rg)");
  EXPECT_EQ(Entry(annot, key::Q), "2");
  EXPECT_EQ(Entry(annot, key::MK), "<< >>");
  EXPECT_EQ(Entry(annot, key::BS), "<< /S /B /W 2 >>");
  EXPECT_EQ(Entry(annot, key::Border), "null");
  EXPECT_EQ(Entry(annot, key::OH), "null");
  EXPECT_EQ(Entry(annot, key::Ff), std::to_string(kFieldRequired));
  EXPECT_EQ(Document->AnnotFlags(annot), 0U);
  EXPECT_EQ(Entry(annot, key::MaxLen), "3");
  EXPECT_EQ(Entry(annot, key::DV), "(def)");
  EXPECT_EQ(Entry(annot, key::V), "(def)") << "a new default becomes the value";
}

TEST_F(WidgetLookTest, InheritedLimitsAreHiddenByZeroAndNeverRepeated) {
  const auto open = [this](const std::string& own) {
    return OpenFields({"/FT /Tx /T (a) /MaxLen 5 /Kids [11 0 R]",
                       "/Subtype /Widget /Parent 10 0 R /T (b) /Rect [0 0 99 20] /F 4 " + own});
  };
  const struct {
    const char* own;
    std::int32_t limit;
    const char* written;
  } cases[] = {{"", 5, "null"}, {"", 0, "0"}, {"", 7, "7"}, {"/MaxLen 7", 0, "null"}};
  for (const auto& one : cases) {
    const AnnotHandle annot = open(one.own);
    const std::unique_ptr<WidgetLook> look = Read(annot);
    std::get<TextPart>(look->kindPart).maxLen = one.limit;
    ASSERT_EQ(ApplyFromDialog(annot, *look), 0);
    EXPECT_EQ(Entry(annot, key::MaxLen), one.written) << one.own << one.limit;
  }
}

TEST_F(WidgetLookTest, EditedChoicesSelectByDisplayTextAndResetWhenEmpty) {
  const AnnotHandle annot = OpenWidget("Ch", kOptions);
  const std::unique_ptr<WidgetLook> look = Read(annot);
  look->valueText = "one";
  ASSERT_EQ(Apply(annot, *look), 0);
  EXPECT_EQ(Entry(annot, key::V), "(1)");
  look->valueText.clear();
  ASSERT_EQ(Apply(annot, *look), 0);
  EXPECT_EQ(Entry(annot, key::V), "(2)") << "the default";
}

TEST_F(WidgetLookTest, DialogWritesOptionsAndTheDefaultAmongThem) {
  const AnnotHandle annot = OpenWidget("Ch", kOptions);
  const std::unique_ptr<WidgetLook> look = Read(annot);
  ComboPart& part = std::get<ComboPart>(look->kindPart);
  EXPECT_EQ(part.defaultIndex, 2);
  EXPECT_EQ(part.options.display, (std::vector<std::string>{"plain", "one", "two"}));
  EXPECT_EQ(part.options.exported, (std::vector<std::string>{"plain", "1", "2"}));
  part.options = {{"red", "green"}, {"r", ""}};
  part.defaultIndex = 1;
  part.editable = true;
  ASSERT_EQ(ApplyFromDialog(annot, *look), 0);
  EXPECT_EQ(Entry(annot, key::Opt), "[[(r) (red)] (green)]");
  EXPECT_EQ(Entry(annot, key::DV), "(green)");
  EXPECT_EQ(Entry(annot, key::V), "(green)");
  EXPECT_EQ(Entry(annot, key::Ff), std::to_string(kFieldCombo | kFieldEditable));
  part.defaultIndex = -1;
  ASSERT_EQ(ApplyFromDialog(annot, *look), 0);
  EXPECT_EQ(Entry(annot, key::DV), "null");
}

TEST_F(WidgetLookTest, OnStateIsTheMarkThenTheFirstStateThenOn) {
  const quillon::test::FormPdfParts states{
      .objects = {StreamObject("/BBox [0 0 9 9]", "q Q"), "<< /Off 11 0 R /Yes 11 0 R >>"}};
  const struct {
    const char* entries;
    const char* state;
  } cases[] = {{"/AP << /N 12 0 R >>", "Yes"},
               {"/AP << /N 12 0 R >> /$On /Mine", "Mine"},
               {"/AP << /N 11 0 R >>", "On"}};
  for (const auto& one : cases) {
    const AnnotHandle annot = OpenWidget("Btn", one.entries, "[0 0 9 9]", states);
    EXPECT_STREQ(Core->NameFromAtom(OnStateOf(annot)), one.state) << one.entries;
  }
}

}  // namespace
}  // namespace quillform
