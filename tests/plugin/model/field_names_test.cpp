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

std::string Times(const char* text, int count) {
  std::string all;
  for (int i = 0; i < count; ++i) all += text;
  return all;
}

TEST_F(FieldNames, join_partial_names_from_the_top) {
  Open({"/T (a) /Kids [" + FieldRef(1) + "]",
        "/T 7 /Parent " + FieldRef(0) + " /Kids [" + FieldRef(2) + "]",
        "/Subtype /Widget /Parent " + FieldRef(1)});
  const ObjectHandle kid = KidOf(Field(0), 0);
  EXPECT_EQ(FullName(Field(0)), "a");
  EXPECT_EQ(FullName(kid), "a.7");
  EXPECT_EQ(FullName(KidOf(kid, 0)), "a.7");
}

TEST_F(FieldNames, need_a_text_or_a_number_at_the_top) {
  Open({"/FT /Tx", "/T /a", "/T -3"});
  EXPECT_EQ(FullName(Field(0)), "(none)");
  EXPECT_EQ(FullName(Field(1)), "(none)");
  EXPECT_EQ(FullName(Field(2)), "-3");
  EXPECT_EQ(FieldNodeOf(Field(0)), nullptr);
}

TEST_F(FieldNames, with_a_dot_below_the_top_are_refused) {
  Open({"/T (a) /Kids [" + FieldRef(1) + "]", WidgetField("Tx", "b.c", "/Parent " + FieldRef(0))});
  const ObjectHandle kid = KidOf(Field(0), 0);
  EXPECT_EQ(CodeOf([&] { FieldNodeOf(kid); }), quillon::kErrorBadStructure);
  EXPECT_EQ(Node("a.b.c"), nullptr);
}

TEST_F(FieldNames, have_at_most_254_bytes) {
  const std::string longest = Times("n", 254);
  Open({WidgetField("Tx", longest), WidgetField("Tx", longest + "n"),
        "/T (" + Times("n", 127) + ") /Kids [" + FieldRef(3) + " " + FieldRef(4) + "]",
        "/T (" + Times("m", 126) + ") /Parent " + FieldRef(2),
        "/T (" + Times("m", 127) + ") /Parent " + FieldRef(2)});
  EXPECT_STREQ(FieldNodeName(FieldNodeOf(Field(0))), longest.c_str());
  EXPECT_EQ(FieldNodeOf(Field(1)), nullptr);
  EXPECT_EQ(FullName(KidOf(Field(2), 0)).size(), 254U);
  EXPECT_EQ(FullName(KidOf(Field(2), 1)), "(none)");
}

TEST_F(FieldNames, of_numbered_kids_come_from_their_positions) {
  EXPECT_EQ(KidNumber("[10]", 0), "rows.10");
  EXPECT_EQ(KidNumber("[10]", 1), "rows.11");
  EXPECT_EQ(KidNumber("[10 5 90]", 1), "rows.14");
  EXPECT_EQ(KidNumber("[10 5 180]", 0), "rows.15");
  EXPECT_EQ(KidNumber("[10 5 270]", 1), "rows.11");
  EXPECT_EQ(KidNumber("[10 5]", 1), "rows.11");
  EXPECT_EQ(KidNumber("/none", 1), "rows");
}

TEST_F(FieldNames, of_numbered_kids_are_the_same_in_a_bulk_load) {
  EXPECT_EQ(KidNumber("[10 5 90]", 1), "rows.14");
  BulkLoad bulk(doc);
  EXPECT_EQ(FullName(KidOf(Field(0), 1)), "rows.14");
  EXPECT_EQ(FullName(KidOf(Field(0), 0)), "rows.15");
}

TEST_F(FieldNames, in_utf_16_are_single_bytes_without_nul) {
  Open({"/T <FEFF00610062> /Subtype /Widget", "/T <FEFF4E2D> /Subtype /Widget",
        "/T <610062> /Subtype /Widget", "/T (\377b) /Subtype /Widget"});
  EXPECT_EQ(FullName(Field(0)), "ab");
  EXPECT_EQ(FullName(Field(1)), "%u4E2D");
  EXPECT_EQ(FullName(Field(2)), "a");
  EXPECT_EQ(FullName(Field(3)), "\377b");
  LoadAllFields(doc);
  EXPECT_NE(Node("ab"), nullptr);
}

TEST_F(FieldNames, end_in_a_cycle_of_parents) {
  Open({"/T (a) /Parent " + FieldRef(1), "/T (b) /Parent " + FieldRef(0) + " /Subtype /Widget",
        "/Parent " + FieldRef(2) + " /Subtype /Widget"});
  EXPECT_EQ(FieldNodeOf(Document->AnnotDict(Widget(0))), nullptr);
  EXPECT_EQ(FieldNodeOf(Document->AnnotDict(Widget(1))), nullptr);
}

TEST(NameHash, counts_characters_as_signed_bytes) {
  // 'A' * 8 + 1; ('A' * 31 + 'B'); a byte above 127 is negative.
  EXPECT_EQ(HashOfName(""), 0U);
  EXPECT_EQ(HashOfName("A"), 521U);
  EXPECT_EQ(HashOfName("AB"), 2081U);
  EXPECT_EQ(HashOfName("\xE9"), 0xFFFFFF49U);
  EXPECT_EQ(HashOfName("a\xE9"), 97U * 31 - 23);
  EXPECT_EQ(HashOfName("Summe"), 80246019U);  // 83*31^4 + 117*31^3 + 109*31^2 + 109*31 + 101
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
        WidgetField("Tx", "one", "/Parent " + FieldRef(2))});
  LoadAllFields(doc);
  EXPECT_EQ(Check(0, key::Text, ""), 1);
  EXPECT_EQ(Check(0, key::Text, "..."), 1);
  EXPECT_EQ(Check(0, key::Text, "fresh.."), 0);
  EXPECT_EQ(checked, "fresh");
  EXPECT_EQ(Check(0, key::Text, "box"), 2);
  EXPECT_EQ(Check(0, key::CheckBox, "box"), 0);
  EXPECT_EQ(Check(0, key::CheckBox, "text"), 0) << "the widget's own name, alone on it";
  EXPECT_EQ(Check(0, key::Text, "group"), 3);
  EXPECT_EQ(Check(0, key::Text, "box.kid"), 4);
  EXPECT_EQ(Check(0, key::Text, "text.a.b"), 0) << "only the widget itself is above";
  EXPECT_EQ(Check(0, key::Text, "group.two"), 0);
  EXPECT_EQ(Check(0, key::Text, "group.one.two"), 4);
}

TEST_F(CheckName, keeps_a_widget_from_leaving_the_kind_of_its_siblings) {
  Open({"/T (pair) /FT /Tx /Kids [" + FieldRef(1) + " " + FieldRef(2) + "]",
        "/Subtype /Widget /Rect [0 0 9 9] /Parent " + FieldRef(0),
        "/Subtype /Widget /Rect [0 0 9 9] /Parent " + FieldRef(0)});
  LoadAllFields(doc);
  EXPECT_EQ(Check(0, key::Text, "pair"), 0);
  EXPECT_EQ(Check(0, key::CheckBox, "pair"), 2);
  EXPECT_EQ(Check(1, key::CheckBox, "pair"), 2);
  EXPECT_EQ(Check(0, key::Text, "pair.x"), 4);
}

}  // namespace
}  // namespace quillform
