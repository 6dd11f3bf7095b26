#include "plugin/appearance/widget_look.h"

#include <gtest/gtest.h>

#include "plugin/model/field_kinds.h"
#include "plugin/model/field_tree.h"
#include "plugin/model/field_values.h"
#include "plugin/model/keys.h"
#include "tests/plugin/appearance/show_object.h"
#include "tests/plugin/appearance/widget_host.h"

namespace quillform {
namespace {

constexpr Fixed kOne = kFixedOne;
constexpr const char* kOptions =
    "/Opt [(plain) [(1) (one)] [(2) (two)]] /DV (2) /MK << >> /Ff 131072 ";

void DrawNothing(const FieldTypeHandler*, AnnotHandle, Atom, ObjectHandle, bool) {}

// The kinds whose appearances are not the subject here are drawn as nothing.
void DrawNothingFor(Atom kind) {
  static std::vector<std::unique_ptr<FieldTypeHandler>> quiet;
  quiet.push_back(std::make_unique<FieldTypeHandler>(*FindFieldTypeHandler(kind)));
  quiet.back()->RebuildAppearance = &DrawNothing;
  RegisterFieldTypeHandler(quiet.back().get());
}

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
  EXPECT_EQ(look->textColour.c3, kOne);
  EXPECT_EQ(look->borderColour.c1, kOne / 2);
  EXPECT_EQ(look->background.space, kNoColour.space);
  EXPECT_EQ(look->border.width, 2);
  EXPECT_EQ(look->rotation, 90);
  EXPECT_EQ(look->fieldFlags, 4099U);
  EXPECT_EQ(look->annotFlags, 4U);
  EXPECT_EQ(look->rect.right - look->rect.left, 200 * kOne);
  EXPECT_EQ(look->valueText, "value");
  const TextPart& part = std::get<TextPart>(look->kindPart);
  EXPECT_EQ(part.defaultText, "default");
  EXPECT_TRUE(part.multiLine);
  EXPECT_FALSE(part.password);
  EXPECT_EQ(part.maxLen, 12);
  EXPECT_EQ(part.quadding, 1);
}

TEST_F(WidgetLookTest, SizeIsShownAtTheHeightOfTheRectangle) {
  const AnnotHandle annot = OpenWidget("Tx", "/DA (/Helv 10 Tf 0 g) /OH 20", "[0 0 80 40]");
  const std::unique_ptr<WidgetLook> look = Read(annot);
  EXPECT_EQ(look->fontSize, 20 * kOne);
  EXPECT_EQ(look->rect.top - look->rect.bottom, 20 * kOne);
  EXPECT_EQ(Read(OpenWidget("Tx", "/DA (/Helv 12 Tf 0 g) /OH 30", "[0 0 80 40]"))->fontSize,
            16 * kOne)
      << "a whole size stays one";
}

TEST_F(WidgetLookTest, AWidgetWithoutFieldHasTheFormsDefaults) {
  const AnnotHandle annot =
      OpenFields({"/Subtype /Widget /Parent 11 0 R /Rect [0 0 9 9] /F 6"},
                 {.defaultAppearance = "/DA (/TiRo 9 Tf 0 0 1 rg)", .objects = {"<< /T [] >>"}});
  const std::unique_ptr<WidgetLook> look = Read(annot);
  EXPECT_EQ(look->kind, key::Text);
  EXPECT_EQ(look->baseFont, key::TimesRoman);
  EXPECT_EQ(look->fontSize, 9 * kOne);
  EXPECT_EQ(look->textColour.c3, kOne);
  EXPECT_EQ(look->annotFlags, 6U);
  EXPECT_TRUE(BordersEqual(look->border, kDefaultBorder));
  EXPECT_TRUE(std::holds_alternative<TextPart>(look->kindPart));
}

TEST_F(WidgetLookTest, ALookWithoutANameChangesNothing) {
  const AnnotHandle annot = OpenWidget("Tx", "/V (old) /MK << /BC [0] >>");
  const std::unique_ptr<WidgetLook> look = Read(annot);
  look->name.clear();
  look->borderColour = kNoColour;
  look->valueText = "new";
  EXPECT_EQ(Apply(annot, *look), quillon::kErrorBadParameter);
  EXPECT_EQ(Entry(annot, key::MK), "<< /BC [0] >>");
  EXPECT_EQ(Entry(annot, key::V), "(old)");
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
  part.multiLine = true;
  ASSERT_EQ(ApplyFromDialog(annot, *look), 0);
  EXPECT_EQ(Entry(annot, key::DA), "(/Cour 8 Tf 1 0 0 rg)");
  EXPECT_EQ(Entry(annot, key::Q), "2");
  EXPECT_EQ(Entry(annot, key::MK), "<< >>");
  EXPECT_EQ(Entry(annot, key::BS), "<< /S /B /W 2 >>");
  EXPECT_EQ(Entry(annot, key::Border), "null");
  EXPECT_EQ(Entry(annot, key::OH), "null");
  EXPECT_EQ(Entry(annot, key::Ff), std::to_string(kFieldRequired | kFieldMultiLine));
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

TEST_F(WidgetLookTest, ChoicesAreReadWithTheirDefault) {
  const std::unique_ptr<WidgetLook> look = Read(OpenWidget("Ch", std::string(kOptions) + "/V (1)"));
  EXPECT_EQ(look->kind, key::ComboBox);
  EXPECT_EQ(look->valueText, "1");
  const ComboPart& part = std::get<ComboPart>(look->kindPart);
  EXPECT_EQ(part.defaultIndex, 2);
  EXPECT_EQ(part.options.display, (std::vector<std::string>{"plain", "one", "two"}));
  EXPECT_EQ(part.options.exported, (std::vector<std::string>{"plain", "1", "2"}));
}

TEST_F(WidgetLookTest, EditedChoicesSelectByDisplayTextAndResetWhenEmpty) {
  DrawNothingFor(key::ComboBox);
  const AnnotHandle annot = OpenWidget("Ch", kOptions);
  const std::unique_ptr<WidgetLook> look = Read(annot);
  look->valueText = "one";
  ASSERT_EQ(Apply(annot, *look), 0);
  EXPECT_EQ(Entry(annot, key::V), "(1)");
  look->valueText = "typed";
  ASSERT_EQ(Apply(annot, *look), 0);
  EXPECT_EQ(Entry(annot, key::V), "(typed)");
  look->valueText.clear();
  ASSERT_EQ(Apply(annot, *look), 0);
  EXPECT_EQ(Entry(annot, key::V), "(2)") << "the default";
}

TEST_F(WidgetLookTest, DialogWritesOptionsAndTheDefaultAmongThem) {
  DrawNothingFor(key::ComboBox);
  const AnnotHandle annot = OpenWidget("Ch", kOptions);
  const std::unique_ptr<WidgetLook> look = Read(annot);
  ComboPart& part = std::get<ComboPart>(look->kindPart);
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

TEST_F(WidgetLookTest, ListKeepsItsTopIndex) {
  DrawNothingFor(key::ListBox);
  const AnnotHandle annot = OpenWidget("Ch", "/Opt [(a) (b)] /V (b) /MK << >>");
  const std::unique_ptr<WidgetLook> look = Read(annot);
  std::get<ListPart>(look->kindPart).topIndex = 1;
  ASSERT_EQ(Apply(annot, *look), 0);
  EXPECT_EQ(Entry(annot, key::TI), "1");
  std::get<ListPart>(look->kindPart).topIndex = -1;
  ASSERT_EQ(Apply(annot, *look), 0);
  EXPECT_EQ(Entry(annot, key::TI), "1");
}

TEST_F(WidgetLookTest, OnStateIsTheMarkThenTheFirstStateThenOn) {
  const quillon::test::FormPdfParts states{
      .objects = {StreamObject("/BBox [0 0 9 9]", "q Q"), "<< /Off 11 0 R /Yes 11 0 R >>"}};
  const struct {
    const char* entries;
    const char* state;
  } cases[] = {{"/AP << /N 12 0 R >>", "Yes"},
               {"/AP << /N 12 0 R >> /$On /Mine", "Mine"},
               {"/AP << /N 11 0 R >>", "On"},
               {"", "On"}};
  for (const auto& one : cases) {
    const AnnotHandle annot = OpenWidget("Btn", one.entries, "[0 0 9 9]", states);
    EXPECT_STREQ(Core->NameFromAtom(OnStateOf(annot)), one.state) << one.entries;
  }
}

TEST_F(WidgetLookTest, CheckBoxWritesItsStateAndDefault) {
  DrawNothingFor(key::CheckBox);
  const AnnotHandle annot = OpenWidget("Btn", "/MK << /CA (4) >>");
  const std::unique_ptr<WidgetLook> look = Read(annot);
  CheckPart& part = std::get<CheckPart>(look->kindPart);
  EXPECT_EQ(part.caption, "4");
  EXPECT_FALSE(part.onByDefault);
  part.caption = "8";
  part.onState = Core->AtomFromName("Yes");
  part.onByDefault = true;
  ASSERT_EQ(Apply(annot, *look), 0);
  EXPECT_EQ(Entry(annot, key::MK), "<< /CA (8) >>");
  EXPECT_EQ(Entry(annot, key::DefaultOn), "/Yes");
  EXPECT_EQ(Entry(annot, key::DV), "/Yes");
  EXPECT_EQ(Entry(annot, key::V), "/Yes");
  EXPECT_EQ(Entry(annot, key::T), "(field)") << "it is its own field";
  part.onByDefault = false;
  ASSERT_EQ(Apply(annot, *look), 0);
  EXPECT_EQ(Entry(annot, key::DV), "null");
  EXPECT_EQ(Entry(annot, key::V), "null");
}

TEST_F(WidgetLookTest, ButtonWritesItsCaptionsLayoutAndHighlight) {
  DrawNothingFor(key::Button);
  const AnnotHandle annot = OpenWidget("Btn", "/Ff 65536 /MK << /CA (Go) /TP 2 >> /H /P");
  const std::unique_ptr<WidgetLook> look = Read(annot);
  ButtonPart& part = std::get<ButtonPart>(look->kindPart);
  EXPECT_EQ(part.caption, "Go");
  EXPECT_EQ(part.layout, 2);
  EXPECT_STREQ(Core->NameFromAtom(part.highlight), "P");
  part.caption.clear();
  part.downCaption = "Went";
  part.layout = 0;
  part.highlight = key::HighlightOutline;
  EXPECT_EQ(Apply(annot, *look), 0);
  EXPECT_NE(ContentOf(annot), "none") << "the look is drawn at once";
  EXPECT_EQ(Entry(annot, key::MK), "<< /AC (Went) >>");
  EXPECT_EQ(Entry(annot, key::H), "/O");
}

TEST_F(WidgetLookTest, ValuesAreMadeOfTheTypeAsked) {
  const AnnotHandle annot = OpenWidget("Tx", "/MK << >>");
  const struct {
    ValueType type;
    const char* text;
    const char* value;
  } cases[] = {{ValueType::kInteger, "-12 apples", "-12"},
               {ValueType::kInteger, "99999999999", "2147483647"},
               {ValueType::kFixed, "1.25", "1.25"},
               {ValueType::kBoolean, "Yesterday", "true"},
               {ValueType::kBoolean, "maybe", "false"},
               {ValueType::kName, "Blue", "/Blue"},
               {ValueType::kString, "two\nlines", "(two\nlines)"},
               {ValueType::kString, "", "null"}};
  for (const auto& one : cases) {
    ASSERT_EQ(CodeOf([&] { SetValueFromText(annot, one.type, one.text); }), 0);
    EXPECT_EQ(Entry(annot, key::V), one.value) << one.text;
  }
}

TEST_F(WidgetLookTest, EveryKindHasARecordWithItsLabel) {
  const struct {
    Atom kind;
    const char* label;
    std::uint16_t pressed;
  } cases[] = {{key::Text, "Text", 0},          {key::ComboBox, "Combo Box", 0},
               {key::ListBox, "List Box", 0},   {key::Button, "Button", 1},
               {key::CheckBox, "Check Box", 1}, {key::RadioButton, "Radio Button", 1}};
  for (const auto& one : cases) {
    const FieldTypeHandler* handler = FindFieldTypeHandler(one.kind);
    ASSERT_NE(handler, nullptr) << one.label;
    char label[133];
    handler->GetKindLabel(handler, label, sizeof label);
    EXPECT_STREQ(label, one.label);
    EXPECT_EQ(handler->tracksPress, one.pressed) << one.label;
    EXPECT_EQ(handler->keepsFocus, one.pressed) << one.label;
  }
}

}  // namespace
}  // namespace quillform
