#include "plugin/appearance/text_field.h"

#include <gtest/gtest.h>

#include "plugin/appearance/form_stream.h"
#include "plugin/model/field_tree.h"
#include "plugin/model/keys.h"
#include "tests/plugin/appearance/appearance_host.h"
#include "tests/plugin/appearance/show_object.h"

namespace quillform {
namespace {

constexpr const char* kLook = "/DA (/Helv 12 Tf 0 g) ";
constexpr const char* kFramed = "/DA (/Helv 12 Tf 0 g) /MK << /BG [1] /BC [0] >> ";
constexpr const char* kFrame = "1 g 0 0 200 20 re f 0 G 1 w 0.5 0.5 199 19 re s";
constexpr const char* kHello = "BT /Helv 12 Tf 0 g  1 0 0 1 1 5.548 Tm (Hello) Tj ET";

struct TextFieldTest : AppearanceHost {
  std::string Built(AnnotHandle annot, ObjectHandle value) {
    EXPECT_EQ(CatchFailure([&] { BuildTextAppearance(annot, value); }), 0);
    return ContentOf(annot);
  }

  // A widget without MK whose normal appearance draws `content`.
  AnnotHandle OpenDrawn(const std::string& content, const std::string& entries = kLook) {
    return OpenWidget("Tx", entries + "/AP << /N 11 0 R >>", "[100 700 300 720]",
                      {.objects = {StreamObject("/BBox [0 0 200 20]", content)}});
  }

  static std::string EntryOfStream(AnnotHandle annot, Atom key) {
    return ShowObject(Objects->DictGet(AppearanceOf(annot, key::N, kNoAtom), key));
  }
};

TEST_F(TextFieldTest, FramedWidgetIsDrawnFromScratch) {
  const AnnotHandle annot = OpenWidget("Tx", kFramed);
  EXPECT_EQ(Built(annot, Text("Hello")),
            std::string(kFrame) + " /Tx BMC q 1 1 198 18 re W n " + kHello + " Q EMC");
  EXPECT_EQ(EntryOfStream(annot, key::BBox), "[0 0 200 20]");
  EXPECT_EQ(Built(annot, quillon::kNullObject), kFrame) << "an empty value leaves the frame";
}

TEST_F(TextFieldTest, AnAppearanceThatStaysKeepsItsResources) {
  const AnnotHandle annot =
      OpenWidget("Tx", std::string(kLook) + "/AP << /N 11 0 R >>", "[100 700 300 720]",
                 {.objects = {StreamObject("/BBox [0 0 200 20] /Resources << /ProcSet [/PDF] >>",
                                           "1 g 0 0 200 20 re f /Tx BMC (old) Tj EMC")}});
  const ObjectHandle old = AppearanceOf(annot, key::N, kNoAtom);
  {
    const FailingSlot failing(&Document->AnnotWillChange);
    EXPECT_NE(CatchFailure([&] { BuildTextAppearance(annot, Text("new")); }), 0U);
  }
  EXPECT_TRUE(Objects->Equal(AppearanceOf(annot, key::N, kNoAtom), old));
  EXPECT_NE(EntryOfStream(annot, key::Resources).find("/ProcSet"), std::string::npos);
}

TEST_F(TextFieldTest, ValuesOfEveryKindAreShownAsText) {
  const AnnotHandle annot = OpenWidget("Tx", kLook);
  const struct {
    ObjectHandle value;
    const char* shown;
  } cases[] = {{Objects->NewName(objects, false, key::Helv), "(Helv)"},
               {Objects->NewInteger(objects, false, -12), "(-12)"},
               {Objects->NewFixed(objects, false, kFixedOne / 8), "(0.125)"},
               {Objects->NewBoolean(objects, false, true), "(Yes)"},
               {Text(std::string("\xFE\xFF\0H\0i", 6)), "(Hi)"}};
  for (const auto& one : cases) {
    EXPECT_NE(Built(annot, one.value).find(std::string(one.shown) + " Tj"), std::string::npos)
        << one.shown;
  }
  EXPECT_EQ(Built(annot, Objects->NewArray(objects, false, 0)).rfind("/Tx BMC EMC", 0), 0U)
      << "the section of the build before is emptied";
}

TEST_F(TextFieldTest, PasswordsAreShownAsAsterisks) {
  const AnnotHandle annot = OpenWidget("Tx", std::string(kLook) + "/Ff 8192");
  const std::string drawn = Built(annot, Text("se\xE9ret"));
  EXPECT_NE(drawn.find("(******) Tj"), std::string::npos) << drawn;
}

TEST_F(TextFieldTest, MultiLineValuesBreakAtCarriageReturnsOnly) {
  const AnnotHandle annot =
      OpenWidget("Tx", std::string(kLook) + "/Ff 4096 /BS << /S /I /W 1 >>", "[100 700 300 750]");
  FieldNodeOfWidget(annot)->status |= kNodeMultiLineCommit;
  EXPECT_EQ(Built(annot, Text("a\r\nb\nc")),
            "/Tx BMC q 2 2 196 46 re W n 0 g BT /Helv 12 Tf 0 g  1 0 0 1 0 50.484 Tm "
            "2 -13.8721 Td (a) Tj 0 -13.8721 Td (bc) Tj ET Q EMC");
  EXPECT_EQ(FieldNodeOfWidget(annot)->status & kNodeMultiLineCommit, 0U);
}

TEST_F(TextFieldTest, TurnedWidgetsAreDrawnInTheirOwnFrame) {
  const AnnotHandle annot = OpenWidget("Tx", std::string(kLook) + "/MK << /R 90 >>");
  const std::string drawn = Built(annot, Text("Hello"));
  EXPECT_NE(drawn.find("q 1 1 18 198 re W n"), std::string::npos) << drawn;
  EXPECT_NE(drawn.find("1 95.548 Tm"), std::string::npos) << drawn;
  EXPECT_EQ(EntryOfStream(annot, key::BBox), "[0 0 20 200]");
}

TEST_F(TextFieldTest, AnAuthorsAppearanceKeepsAllButItsMarkedSection) {
  const char* drawn = "q 0 0 5 5 re W n /Tx BMC (old) Tj EMC Q";
  AnnotHandle annot = OpenDrawn(drawn);
  EXPECT_EQ(Built(annot, Text("Hello")),
            std::string("q 0 0 5 5 re W n /Tx BMC ") + kHello + " EMC\n Q");
  annot = OpenDrawn(drawn);
  EXPECT_EQ(Built(annot, quillon::kNullObject), "q 0 0 5 5 re W n /Tx BMC EMC\n Q");
}

TEST_F(TextFieldTest, AnAppearanceWithoutAMarkedSectionIsReplaced) {
  const AnnotHandle annot = OpenDrawn("q 1 0 0 rg 0 0 5 5 re f Q");
  EXPECT_EQ(Built(annot, Text("Hello")),
            std::string("/Tx BMC q 1 1 198 18 re W n ") + kHello + " Q EMC");
}

TEST_F(TextFieldTest, AnEmptyValueWithoutFrameAndAppearanceLeavesNone) {
  const AnnotHandle annot = OpenWidget("Tx", kLook);
  EXPECT_EQ(Built(annot, Text("")), "none");
  EXPECT_EQ(Entry(annot, key::AP), "null");
}

TEST_F(TextFieldTest, AFailedBuildLeavesTheOldAppearance) {
  const AnnotHandle annot = OpenDrawn("q old Q", "/DA (/Helv 12 Tf 0 0 g) ");
  EXPECT_EQ(CatchFailure([&] { BuildTextAppearance(annot, Text("Hello")); }),
            quillon::kErrorBadObject);
  EXPECT_EQ(ContentOf(annot), "q old Q");
}

TEST_F(TextFieldTest, AChangedFontIsNoticedAtTheNextBuild) {
  const AnnotHandle annot = OpenWidget("Tx", kLook);
  Built(annot, Text("Hello"));
  const ObjectHandle fonts = Objects->DictGet(Objects->DictGet(Form(), key::DR), key::Font);
  Objects->DictPut(fonts, key::Helv, Objects->DictGet(fonts, key::Cour));
  TextAppearance look;
  FieldTextAppearance(FieldNodeOfWidget(annot), &look);
  EXPECT_EQ(look.baseFont, key::Courier);
}

}  // namespace
}  // namespace quillform
