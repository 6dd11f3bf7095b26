#include "plugin/model/form_record.h"
#include "plugin/model/keys.h"
#include "tests/plugin/model/model_host.h"

namespace quillform {
namespace {

using quillon::test::WidgetField;

struct FieldNames : ModelHost {
  std::string KidNumber(const std::string& numbering, std::uint32_t index) {
    Open(TwoWidgets("/AI " + numbering));
    return FullName(KidOf(Field(0), index));
  }
};

TEST_F(FieldNames, join_texts_and_numbers_from_the_top_as_bytes_without_nul) {
  Open({"/T (a) /Kids [" + FieldRef(1) + "]",
        "/T 7 /Parent " + FieldRef(0) + " /Kids [" + FieldRef(2) + "]",
        "/Subtype /Widget /Parent " + FieldRef(1), "/T /a", "/T <FEFF00610062>", "/T <FEFF4E2D>",
        "/T <610062>"});
  EXPECT_EQ(FullName(KidOf(KidOf(Field(0), 0), 0)), "a.7");
  EXPECT_EQ(FullName(Field(1)), "(none)");
  EXPECT_EQ(FullName(Field(2)), "ab");
  EXPECT_EQ(FullName(Field(3)), "%u4E2D");
  EXPECT_EQ(FullName(Field(4)), "a");
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
  EXPECT_EQ(KidNumber("[10]", 1), "pair.11");
  EXPECT_EQ(KidNumber("[10 5 90]", 1), "pair.14");
  EXPECT_EQ(KidNumber("[10 5 270]", 1), "pair.11");
}

TEST_F(FieldNames, are_checked_for_what_stands_in_their_way) {
  std::vector<std::string> fields = TwoWidgets();
  fields.insert(fields.end(), {WidgetField("Tx", "text"), WidgetField("Btn", "box"),
                               "/T (group) /Kids [" + FieldRef(6) + "]",
                               WidgetField("Tx", "one", "/Parent " + FieldRef(5))});
  Load(fields);
  const auto check = [this](std::uint32_t widget, Atom kind, std::string name) {
    return CheckFieldName(doc, Widget(widget), kind, name.data());
  };
  EXPECT_EQ(check(2, key::Text, "."), 1);
  EXPECT_EQ(check(2, key::Text, "fresh.."), 0);
  EXPECT_EQ(check(2, key::Text, "box"), 2);
  EXPECT_EQ(check(2, key::CheckBox, "text"), 0) << "the widget's own name, alone on it";
  EXPECT_EQ(check(2, key::Text, "group"), 3);
  EXPECT_EQ(check(2, key::Text, "box.kid"), 4);
  EXPECT_EQ(check(2, key::Text, "text.a.b"), 0) << "only the widget itself is above";
  EXPECT_EQ(check(0, key::CheckBox, "pair"), 2) << "the other widget stays a text field";
}

}  // namespace
}  // namespace quillform
