#include "plugin/appearance/check_field.h"

#include <gtest/gtest.h>

#include "plugin/appearance/form_stream.h"
#include "plugin/appearance/widget_entries.h"
#include "plugin/model/field_tree.h"
#include "plugin/model/field_values.h"
#include "plugin/model/keys.h"
#include "tests/plugin/appearance/appearance_host.h"
#include "tests/plugin/appearance/show_object.h"

namespace quillform {
namespace {

constexpr const char* kSmall = "[100 700 112 712]";
constexpr const char* kLarge = "[100 700 120 720]";
constexpr const char* kRadio = "/Ff 32768 /DA (/Helv 0 Tf 0 g) ";

struct CheckFieldTest : AppearanceHost {
  AnnotHandle OpenBuilt(const std::string& entries, const std::string& rect = kSmall,
                        const quillon::test::FormPdfParts& parts = {}) {
    const AnnotHandle annot = OpenWidget("Btn", entries, rect, parts);
    Refresh(annot, kNoAtom);
    return annot;
  }

  static void Refresh(AnnotHandle annot, Atom state) {
    EXPECT_EQ(CatchFailure([&] { RefreshCheckWidget(annot, state, true); }), 0);
  }

  static std::string Drawn(AnnotHandle annot, Atom which, const char* state) {
    const ObjectHandle stream = AppearanceOf(annot, which, Core->AtomFromName(state));
    return IsKind(stream, ObjectKind::kStream) ? StreamText(stream) : "none";
  }

  static std::string Normal(AnnotHandle annot, const char* state = "On") {
    return Drawn(annot, key::N, state);
  }
  static std::string Down(AnnotHandle annot, const char* state = "On") {
    return Drawn(annot, key::AppearanceDown, state);
  }

  static std::string Shown(AnnotHandle annot) { return Entry(annot, key::AppearanceState); }
};

TEST_F(CheckFieldTest, TheFourAppearancesOfACheck) {
  const AnnotHandle annot = OpenBuilt("/MK << /CA (4) /BC [1 0 0] >> /DA (/ZaDb 10 Tf 0 0 1 rg)");
  // The character is 719 high and 846 wide; the box is 12 by 12.
  const std::string mark =
      "q 1 1 10 10 re W n BT /ZaDb 10 Tf 0 0 1 rg  1 0 0 1 1.77 2.405 Tm (4) Tj ET Q";
  const std::string border = "1 0 0 RG 1 w 0.5 0.5 11 11 re s";
  EXPECT_EQ(Normal(annot), border + " " + mark);
  EXPECT_EQ(Normal(annot, "Off"), border);
  const std::string pressed = "0.749 g 0 0 12 12 re f " + border;
  EXPECT_EQ(Down(annot), pressed + " " + mark);
  EXPECT_EQ(Down(annot, "Off"), pressed) << "without a background it is a darker white";
  EXPECT_EQ(ShowObject(Objects->DictGet(AppearanceOf(annot, key::N, key::On), key::Resources)),
            "<< /Font << /ZaDb << /BaseFont /ZapfDingbats /Subtype /Type1 /Type /Font >> >> "
            "/ProcSet [/PDF /Text] >>");
}

TEST_F(CheckFieldTest, AutomaticSizeAndHeightFollowTheMark) {
  // 0.9 x 11 x 10 / 9.63 is 10.2804; times 9/7 it is 13.2176. Heights: 719, 718 and 692
  // thousandths.
  const struct {
    const char* mark;
    const char* position;
  } cases[] = {
      {"4", "0.409 1.2483 Tm (4)"}, {"n", "0.9707 1.4267 Tm (n)"}, {"x", "5.088 1.2483 Tm (x)"}};
  for (const auto& one : cases) {
    const AnnotHandle annot = OpenBuilt(std::string("/MK << /CA (") + one.mark + ") >>");
    EXPECT_NE(Normal(annot).find(one.position), std::string::npos) << Normal(annot);
    EXPECT_NE(Normal(annot).find("BT /ZaDb 13.2176 Tf 0 g"), std::string::npos) << Normal(annot);
  }
}

TEST_F(CheckFieldTest, OnlyACheckBoxsMarkMovesWithAPressedBevel) {
  const char* entries = "/MK << /CA (8) >> /BS << /S /B /W 2 >> ";
  const char* moved = "q 4 4 4 4 re W n 1 0 0 1 2 -2 cm BT";
  AnnotHandle annot = OpenBuilt(entries);
  EXPECT_NE(Down(annot).find(moved), std::string::npos) << Down(annot);
  EXPECT_EQ(Normal(annot).find(" cm"), std::string::npos) << Normal(annot);
  annot = OpenBuilt(std::string(kRadio) + entries);
  EXPECT_NE(Down(annot).find("q 4 4 4 4 re W n BT"), std::string::npos) << Down(annot);
}

TEST_F(CheckFieldTest, RadioButtonsWithACircleAreRound) {
  const std::string circle = std::string(kRadio) + "/MK << /CA (l) /BC [0] >>";
  AnnotHandle annot = OpenBuilt(circle, kLarge);
  const std::string on = Normal(annot);
  const std::string off = Normal(annot, "Off");
  const std::string dot =
      "0 g q 1 0 0 1 10 10 cm 4.5 0 m 4.5 2.4854 2.4854 4.5 0 4.5 c "
      "-2.4854 4.5 -4.5 2.4854 -4.5 0 c -4.5 -2.4854 -2.4854 -4.5 0 -4.5 c "
      "2.4854 -4.5 4.5 -2.4854 4.5 0 c f Q";
  EXPECT_EQ(off.rfind("0 G 1 w q 1 0 0 1 10 10 cm 9.5 0 m", 0), 0U) << off;
  EXPECT_EQ(on, off + " " + dot) << "neither clip nor character";
  EXPECT_EQ(Down(annot), Down(annot, "Off") + " " + dot);

  annot = OpenBuilt("/MK << /CA (l) >>", kLarge);
  EXPECT_NE(Normal(annot).find("(l) Tj"), std::string::npos) << "a check box keeps the character";
}

TEST_F(CheckFieldTest, AStateThatTheWidgetLacksIsShownAsOff) {
  const AnnotHandle annot = OpenBuilt("/MK << /CA (4) >>");
  RefreshCheckWidget(annot, key::On, false);
  EXPECT_EQ(Shown(annot), "/On");
  Refresh(annot, Core->AtomFromName("Maybe"));
  EXPECT_EQ(Shown(annot), "/Off");
}

TEST_F(CheckFieldTest, WidgetsThatSharedOldAppearancesGetAnMKEach) {
  const auto field = [](const char* name) {
    return quillon::test::WidgetField("Btn", name, "/AP << /N << /Old 12 0 R >> >>", kSmall);
  };
  OpenFields({field("one"), field("two")},
             {.objects = {StreamObject("/BBox [0 0 9 9] /MK 13 0 R", "q old Q"), "<< /CA (8) >>"}});
  Refresh(Widget(0), kNoAtom);
  Refresh(Widget(1), kNoAtom);
  PutMKText(Widget(0), key::CA, "u");
  EXPECT_EQ(Entry(Widget(0), key::MK), "<< /CA (u) >>");
  EXPECT_EQ(Entry(Widget(1), key::MK), "<< /CA (8) >>");
}

TEST_F(CheckFieldTest, AnAuthorsAppearancesAreSwitchedNotDrawn) {
  const AnnotHandle annot = OpenBuilt("/AP << /N << /Yes 11 0 R >> >> /V /Yes", kSmall,
                                      {.objects = {StreamObject("", "mine")}});
  EXPECT_EQ(Normal(annot, "Yes"), "mine");
  EXPECT_EQ(Shown(annot), "/Off") << "refreshed for no state";
  MarkAppearanceStale(FieldNodeOfWidget(annot));
  RefreshAllWidgets(FieldNodeOfWidget(annot));
  EXPECT_EQ(Shown(annot), "/Yes");
}

}  // namespace
}  // namespace quillform
