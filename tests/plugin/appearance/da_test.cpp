#include <gtest/gtest.h>

#include "plugin/appearance/border.h"
#include "plugin/appearance/da_parser.h"
#include "plugin/appearance/text_appearance.h"
#include "plugin/host/form_events.h"
#include "plugin/model/field_tree.h"
#include "plugin/model/keys.h"
#include "tests/plugin/appearance/appearance_host.h"
#include "tests/plugin/appearance/show_object.h"

namespace quillform {
namespace {

constexpr Fixed kOne = kFixedOne;
constexpr Fixed kHalf = kFixedOne / 2;

struct DATest : AppearanceHost {
  TextAppearance Parsed(const std::string& text) {
    TextAppearance look;
    EXPECT_EQ(ParseDAText(text, &look), DAResult::kParsed) << text;
    return look;
  }

  std::string Written(TextAppearance look) {
    GrowingText text{{}, kStreamDACapacity};
    return WriteDA(look, text) == 0 ? text.bytes : "refused";
  }
};

TEST_F(DATest, ReadsFontStateAndColoursInAnyOrder) {
  EXPECT_TRUE(TextAppearancesEqual(Parsed("0.5 g /Helv 10 Tf"), Parsed("/Helv 10 Tf .5 g")));
  const TextAppearance full =
      Parsed("BT\t/F#1\n10.5  Tf 0.25 Tc -1 Tw 90 Tz 14 TL -2 Ts 2 Tr 0 0.5 1 RG 0 0 0 1 k\rET");
  EXPECT_STREQ(Core->NameFromAtom(full.fontResource), "F#1");
  EXPECT_EQ(full.fontSize, 10 * kOne + kHalf);
  EXPECT_EQ(full.charSpacing, kOne / 4);
  EXPECT_EQ(full.wordSpacing, -kOne);
  EXPECT_EQ(full.horizScaling, 90 * kOne);
  EXPECT_EQ(full.leading, 14 * kOne);
  EXPECT_EQ(full.rise, -2 * kOne);
  EXPECT_EQ(full.renderMode, 2);
  EXPECT_TRUE(ColoursEqual(full.strokeColour, {1, 0, kHalf, kOne, 0}));
  EXPECT_TRUE(ColoursEqual(full.fillColour, {2, 0, 0, 0, kOne}));
}

TEST_F(DATest, MalformedTextsGiveTheEmptyRecord) {
  for (const char* text : {"/Helv 10 Tf 0 0 g", "/Helv 10 Tf g", "/Helv 10 Tf 0 0 0 0 0",
                           "/Helv 10 Tf 0 re", "/Helv 10 Tf R", "/Helv 10 Tf 0 0 0 Rg"}) {
    TextAppearance look;
    EXPECT_EQ(CatchFailure([&] { ParseDA(Text(text), &look); }), quillon::kErrorBadObject) << text;
    EXPECT_TRUE(TextAppearancesEqual(look, NoTextAppearance())) << text;
  }
}

TEST_F(DATest, FontSizeMustBeThereAmongTheFirstThirtyTokens) {
  TextAppearance look;
  EXPECT_EQ(ParseDAText("0.5 g", &look), DAResult::kNoFont);
  EXPECT_EQ(look.fillColour.c1, kHalf);  // what was read stays
  std::string states;
  for (int i = 0; i < 13; ++i) states += "0 Tc ";
  EXPECT_EQ(ParseDAText(states + "/Helv 9 Tf 0.5 g", &look), DAResult::kParsed);
  EXPECT_EQ(look.fillColour.c1, 0) << "the operator is the 31st token";
  EXPECT_EQ(ParseDAText(states + "0 Tc /Helv 9 Tf", &look), DAResult::kNoFont);
}

TEST_F(DATest, ParsedTextsAreRememberedByTheirBytes) {
  const ObjectHandle red = Text("/TiRo 12 Tf 1 0 0 rg");
  const ObjectHandle blue = Text("/TiRo 12 Tf 0 0 1 rg");
  for (int times = 0; times < 2; ++times) {
    TextAppearance look;
    ParseDA(red, &look);
    EXPECT_EQ(look.fillColour.c1, kOne);
    EXPECT_STREQ(Core->NameFromAtom(look.fontResource), "TiRo");
    EXPECT_EQ(look.baseFont, key::Helvetica);
    ParseDA(blue, &look);
    EXPECT_EQ(look.fillColour.c3, kOne);
  }
}

TEST_F(DATest, WritesOnlyWhatDiffersFromTheUsual) {
  TextAppearance look = DefaultTextAppearance();
  EXPECT_EQ(Written(look), "/Helv 0 Tf 0 g ");
  look.fontSize = 10 * kOne + kHalf;
  look.charSpacing = kHalf;
  look.wordSpacing = -kOne;
  look.horizScaling = 90 * kOne;
  look.leading = 14 * kOne;
  look.rise = 2 * kOne;
  look.fillColour = {2, kHalf, 0, 0, kOne};
  EXPECT_EQ(Written(look), "/Helv 10.5 Tf 0.5 Tc -1 Tw 90 Tz 14 TL 2 Ts 0.5 0 0 1 k ");
  look = DefaultTextAppearance();
  look.fontResource = Core->AtomFromName("F1");
  look.strokeColour = {1, kOne, 0, kHalf, 0};
  look.fillColour = {1, 0, 0, 0, 0};  // black in any space is grey
  look.renderMode = 2;
  EXPECT_EQ(Written(look), "/F1 0 Tf 2 Tr 1 0 0.5 RG 0 g ");
}

TEST_F(DATest, EndlessTextsAreRefused) {
  TextAppearance look = DefaultTextAppearance();
  look.fontResource = Core->AtomFromName(std::string(65500, 'F').c_str());
  GrowingText text{{}, kFormDACapacity};
  EXPECT_EQ(WriteDA(look, text), 0U);
  EXPECT_LE(text.capacity, 65535);
  EXPECT_EQ(WriteDA(look, text), 1U);
}

TEST_F(DATest, FieldInheritsItsLookAndNeedsFontResources) {
  TextAppearance look;
  // The parent is no member of Fields here; what counts is the inheritance.
  AnnotHandle annot = OpenWidget("Tx", "/Parent 11 0 R /DA (/TiRo 9 Tf 0 0 1 rg)", "[0 0 100 20]",
                                 {.objects = {"<< /T (above) /Kids [10 0 R] /Q 1 >>"}});
  ASSERT_EQ(CatchFailure([&] { FieldTextAppearance(FieldNodeOfWidget(annot), &look); }), 0);
  EXPECT_EQ(look.baseFont, key::TimesRoman);
  EXPECT_EQ(look.quadding, 1);
  annot = OpenWidget("Tx", "", "[0 0 100 20]", {.defaultResources = "/DR << >>"});
  EXPECT_EQ(CatchFailure([&] { FieldTextAppearance(FieldNodeOfWidget(annot), &look); }),
            quillon::kErrorBadStructure);
}

std::vector<std::uint32_t> announced;

void NoteDefaults(FormEventRecord* record, void*) { announced.push_back(record->mask); }

TEST_F(DATest, FormDefaultsAnnounceWhatChanged) {
  announced.clear();
  OpenForm("");
  FormEventRegister(kEventDefaultsChanged, &NoteDefaults, nullptr, nullptr);
  SetDefaultFormAppearance(Form());
  EXPECT_EQ(ShowObject(Objects->DictGet(Form(), key::DA)), "(/Helv 0 Tf 0 g )");
  SetDefaultFormAppearance(Form());
  EXPECT_EQ(announced, (std::vector<std::uint32_t>{kBitDA | kBitDR}));
}

}  // namespace
}  // namespace quillform
