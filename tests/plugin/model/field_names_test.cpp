#include "plugin/model/form_record.h"
#include "plugin/model/keys.h"
#include "tests/plugin/model/model_host.h"

namespace quillform {
namespace {

using quillon::test::WidgetField;

struct FieldNames : ModelHost {
  std::string KidNumber(const std::string& numbering, std::uint32_t index) {
    Open({"/T (rows) /FT /Tx /AI " + numbering + " /Kids [" + FieldRef(1) + " " + FieldRef(2) + "]",
          "/Parent " + FieldRef(0) + " /Subtype /Widget",
          "/Parent " + FieldRef(0) + " /Subtype /Widget"});
    return FullName(KidOf(Field(0), index));
  }
};

TEST_F(FieldNames, join_the_texts_and_numbers_from_the_top) {
  Open({"/T (a) /Kids [" + FieldRef(1) + "]",
        "/T 7 /Parent " + FieldRef(0) + " /Kids [" + FieldRef(2) + "]",
        "/Subtype /Widget /Parent " + FieldRef(1), "/T /a"});
  const ObjectHandle kid = KidOf(Field(0), 0);
  EXPECT_EQ(FullName(Field(0)), "a");
  EXPECT_EQ(FullName(kid), "a.7");
  EXPECT_EQ(FullName(KidOf(kid, 0)), "a.7");
  EXPECT_EQ(FullName(Field(1)), "(none)");
}

TEST_F(FieldNames, have_at_most_254_bytes) {
  const std::string longest(254, 'n');
  Open({WidgetField("Tx", longest), WidgetField("Tx", longest + "n"),
        "/T (" + std::string(127, 'n') + ") /Kids [" + FieldRef(3) + " " + FieldRef(4) + "]",
        "/T (" + std::string(126, 'm') + ") /Parent " + FieldRef(2),
        "/T (" + std::string(127, 'm') + ") /Parent " + FieldRef(2)});
  EXPECT_STREQ(FieldNodeName(FieldNodeOf(Field(0))), longest.c_str());
  EXPECT_EQ(FieldNodeOf(Field(1)), nullptr);
  EXPECT_EQ(FullName(KidOf(Field(2), 0)).size(), 254U);
  EXPECT_EQ(FullName(KidOf(Field(2), 1)), "(none)");
}

TEST_F(FieldNames, of_numbered_kids_come_from_their_positions) {
  EXPECT_EQ(KidNumber("[10]", 1), "rows.11");
  EXPECT_EQ(KidNumber("[10 5 90]", 1), "rows.14");
  EXPECT_EQ(KidNumber("[10 5 180]", 0), "rows.15");
  EXPECT_EQ(KidNumber("[10 5 270]", 1), "rows.11");
  EXPECT_EQ(KidNumber("/none", 1), "rows");
}

TEST_F(FieldNames, in_utf_16_are_single_bytes_without_nul) {
  Open({"/T <FEFF00610062> /Subtype /Widget", "/T <FEFF4E2D> /Subtype /Widget",
        "/T <610062> /Subtype /Widget", "/T (\377b) /Subtype /Widget"});
  EXPECT_EQ(FullName(Field(0)), "ab");
  EXPECT_EQ(FullName(Field(1)), "%u4E2D");
  EXPECT_EQ(FullName(Field(2)), "a");
  EXPECT_EQ(FullName(Field(3)), "\377b");
}

TEST_F(FieldNames, end_in_a_cycle_of_parents) {
  Open({"/T (a) /Parent " + FieldRef(1), "/T (b) /Parent " + FieldRef(0) + " /Subtype /Widget",
        "/Parent " + FieldRef(2) + " /Subtype /Widget"});
  EXPECT_EQ(FieldNodeOf(Document->AnnotDict(Widget(0))), nullptr);
  EXPECT_EQ(FieldNodeOf(Document->AnnotDict(Widget(1))), nullptr);
}

struct CheckName : ModelHost {
  std::uint16_t Check(std::uint32_t widget, Atom kind, std::string name) {
    const std::uint16_t answer = CheckFieldName(doc, Widget(widget), kind, name.data());
    checked = name.c_str();
    return answer;
  }
  std::string checked;
};

TEST_F(CheckName, says_what_stands_in_the_way) {
  Open({WidgetField("Tx", "text"), WidgetField("Btn", "box"),
        "/T (group) /Kids [" + FieldRef(3) + "]",
        WidgetField("Tx", "one", "/Parent " + FieldRef(2)),
        "/T (pair) /FT /Tx /Kids [" + FieldRef(5) + " " + FieldRef(6) + "]",
        "/Subtype /Widget /Rect [0 0 9 9] /Parent " + FieldRef(4),
        "/Subtype /Widget /Rect [0 0 9 9] /Parent " + FieldRef(4)});
  LoadAllFields(doc);
  EXPECT_EQ(Check(0, key::Text, ""), 1);
  EXPECT_EQ(Check(0, key::Text, "fresh.."), 0);
  EXPECT_EQ(checked, "fresh");
  EXPECT_EQ(Check(0, key::Text, "box"), 2);
  EXPECT_EQ(Check(0, key::CheckBox, "box"), 0);
  EXPECT_EQ(Check(0, key::CheckBox, "text"), 0) << "the widget's own name, alone on it";
  EXPECT_EQ(Check(0, key::Text, "group"), 3);
  EXPECT_EQ(Check(0, key::Text, "box.kid"), 4);
  EXPECT_EQ(Check(0, key::Text, "text.a.b"), 0) << "only the widget itself is above";
  EXPECT_EQ(Check(3, key::Text, "pair"), 0);
  EXPECT_EQ(Check(3, key::CheckBox, "pair"), 2) << "the other widget stays a text field";
}

}  // namespace
}  // namespace quillform
