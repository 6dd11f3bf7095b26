#include "plugin/appearance/widget_look.h"

#include <gtest/gtest.h>

#include "plugin/model/field_tree.h"
#include "plugin/model/field_values.h"
#include "plugin/model/keys.h"
#include "tests/plugin/appearance/appearance_host.h"

namespace quillform {
namespace {

constexpr Fixed kOne = kFixedOne;

struct WidgetLookTest : AppearanceHost {
  // As the kind's own routines read it.
  std::unique_ptr<WidgetLook> Read(AnnotHandle annot) {
    std::unique_ptr<WidgetLook> look = ReadWidgetLook(annot);
    ReadKindPart(annot, look->kind, look.get());
    return look;
  }

  FailureCode ApplyFromDialog(AnnotHandle annot, WidgetLook& look) {
    FieldNodeOfWidget(annot)->status |= kNodeEdited;
    return CatchFailure([&] { ApplyWidgetLook(annot, look); });
  }
};

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
