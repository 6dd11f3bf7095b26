#include "plugin/appearance/push_button.h"

#include <gtest/gtest.h>

#include "plugin/appearance/form_stream.h"
#include "plugin/model/keys.h"
#include "tests/plugin/appearance/appearance_host.h"
#include "tests/plugin/appearance/show_object.h"

namespace quillform {
namespace {

// 100 by 30; the border is 1 wide.
constexpr const char* kButton = "[100 700 200 730]";
constexpr const char* kClip = "q 1 1 98 28 re W n ";

struct PushButtonTest : AppearanceHost {
  // Objects 11 and 12 are icons, 50 by 50 at (0, 0) and 20 by 10 at (5, 2).
  AnnotHandle OpenBuilt(const std::string& mk, const std::string& entries = "") {
    const AnnotHandle annot =
        OpenWidget("Btn", "/Ff 65536 /DA (/Helv 0 Tf 0 g) /MK << " + mk + " >> " + entries, kButton,
                   {.objects = {StreamObject("/BBox [0 0 50 50]", "0 0 50 50 re f"),
                                StreamObject("/BBox [5 2 25 12]", "5 2 20 10 re f"),
                                StreamObject("/BBox [0 0 0 9]", "no width")}});
    EXPECT_EQ(CatchFailure([&] { RefreshButtonWidget(annot, true); }), 0);
    return annot;
  }

  static std::string DownOf(AnnotHandle annot) {
    const ObjectHandle stream = AppearanceOf(annot, key::AppearanceDown, kNoAtom);
    return IsKind(stream, ObjectKind::kStream) ? StreamText(stream) : "none";
  }

  static std::string ResourcesOf(AnnotHandle annot) {
    return ShowObject(Objects->DictGet(AppearanceOf(annot, key::N, kNoAtom), key::Resources));
  }
};

TEST_F(PushButtonTest, EachLayoutPlacesIconAndCaption) {
  // "Go" at 12 points is 16.008 wide, its line 13.872 high; in fractions of sixteen bits the icon's
  // scale of 0.52 makes it a little wider than 26.
  const std::string text = "BT /Helv 12 Tf 0 g  1 0 0 1 ";
  const struct {
    int layout;
    std::string icon;
    std::string caption;
  } cases[] = {
      {0, "", "BT /Helv 22.5776 Tf 0 g  1 0 0 1 34.9408 6.6237 Tm (Go) Tj ET"},
      {1, "q 0.52 0 0 0.52 36.9999 1.9999 cm /FRM Do Q", ""},
      {2, "q 0.2226 0 0 0.2226 44.4359 16.8719 cm /FRM Do Q", text + "41.996 4.4839 Tm (Go) Tj ET"},
      {3, "q 0.2226 0 0 0.2226 44.4359 1.9998 cm /FRM Do Q", text + "41.996 16.6121 Tm (Go) Tj ET"},
      {4, "q 0.52 0 0 0.52 28.4959 1.9999 cm /FRM Do Q", text + "55.4961 10.548 Tm (Go) Tj ET"},
      {5, "q 0.52 0 0 0.52 45.5039 1.9999 cm /FRM Do Q", text + "28.4959 10.548 Tm (Go) Tj ET"},
      {6, "q 0.52 0 0 0.52 36.9999 1.9999 cm /FRM Do Q",
       "BT /Helv 22.5776 Tf 0 g  1 0 0 1 34.9408 6.6237 Tm (Go) Tj ET"},
  };
  for (const auto& one : cases) {
    const AnnotHandle annot = OpenBuilt("/CA (Go) /I 11 0 R /TP " + std::to_string(one.layout));
    const std::string blank = one.icon.empty() || one.caption.empty() ? "" : " ";
    EXPECT_EQ(ContentOf(annot), kClip + one.icon + blank + one.caption + " Q") << one.layout;
    EXPECT_EQ(ResourcesOf(annot).find("/FRM") != std::string::npos, !one.icon.empty());
    EXPECT_EQ(ResourcesOf(annot).find("/Font") != std::string::npos, !one.caption.empty());
  }
}

TEST_F(PushButtonTest, WhatIsMissingLeavesItsPlaceOut) {
  const std::string empty = std::string(kClip) + " Q";
  for (const char* mk : {"/TP 0 /I 11 0 R", "/TP 1 /CA (Go)", "/TP 2", "/TP 6", "/TP 1 /I 13 0 R",
                         "/TP 1 /I (no stream)"}) {
    EXPECT_EQ(ContentOf(OpenBuilt(mk)), empty) << mk;
  }
}

TEST_F(PushButtonTest, OnlyAPushedButtonHasADownAppearance) {
  EXPECT_EQ(DownOf(OpenBuilt("/CA (Go)", "/H /O")), "none");
  const AnnotHandle annot = OpenBuilt("/CA (Go) /AC (Go) /BG [0.5]", "/H /P /BS << /S /B /W 2 >>");
  const std::string normal = ContentOf(annot);
  const std::string clip = "q 4 4 92 22 re W n ";
  const std::string content = normal.substr(normal.find(clip) + clip.size());
  const std::string down = DownOf(annot);
  EXPECT_NE(down.find(clip + "1 0 0 1 2 -2 cm " + content), std::string::npos) << down;
  const auto upperLeft = [](const std::string& drawn) {
    return drawn.substr(drawn.find(" f ") + 3, 5);
  };
  EXPECT_EQ(upperLeft(normal), "1 g 2") << normal;
  EXPECT_EQ(upperLeft(down), "0.249") << "the bevel is turned round: " << down;
}

TEST_F(PushButtonTest, DownCaptionAndIconReplaceTheNormalOnes) {
  AnnotHandle annot = OpenBuilt("/CA (Go) /AC (Went) /I 11 0 R /TP 6", "/H /P");
  EXPECT_NE(DownOf(annot).find("(Went) Tj"), std::string::npos) << DownOf(annot);
  EXPECT_NE(DownOf(annot).find("/FRM Do"), std::string::npos) << "the icon stays";
  annot = OpenBuilt("/CA (Go) /I 11 0 R /IX 12 0 R /TP 6", "/H /P");
  EXPECT_NE(DownOf(annot).find("(Go) Tj"), std::string::npos) << DownOf(annot);
  const ObjectHandle down = AppearanceOf(annot, key::AppearanceDown, kNoAtom);
  EXPECT_NE(ShowObject(down).find("/FRM << /BBox [5 2 25 12] >>stream"), std::string::npos)
      << ShowObject(down);
}

TEST_F(PushButtonTest, ALongCaptionIsCutBetweenBytes) {
  const std::string drawn = ContentOf(OpenBuilt("/CA (" + std::string(256, '\xE9') + "cut)"));
  EXPECT_EQ(drawn.find("cut"), std::string::npos);
  EXPECT_EQ(drawn.substr(drawn.size() - 17), "\\351\\351) Tj ET Q");
}

TEST_F(PushButtonTest, AWidgetWithoutMKKeepsItsAuthorsAppearance) {
  const AnnotHandle annot = OpenWidget("Btn", "/Ff 65536 /AP << /N 11 0 R >>", kButton,
                                       {.objects = {StreamObject("", "mine")}});
  RefreshButtonWidget(annot, true);
  EXPECT_EQ(ContentOf(annot), "mine");
}

}  // namespace
}  // namespace quillform
