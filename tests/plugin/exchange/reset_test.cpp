#include "plugin/exchange/reset.h"

#include <gtest/gtest.h>

#include "quillon/objects/pdf_file.h"
#include "tests/plugin/exchange/data_host.h"

namespace quillform {
namespace {

using quillon::test::WidgetField;

struct Reset : DataHost {
  Reset() {
    Show({WidgetField("Tx", "a", "/V (1) /DV (0)"), WidgetField("Tx", "locked", "/V (1) /Ff 7"),
          "/T (g) /Kids [13 0 R]", WidgetField("Tx", "b", "/V (1) /DV (0) /Parent 12 0 R"),
          WidgetField("Ch", "list", "/V (z) /Opt [(x) (z)]"), WidgetField("Btn", "box", "/V /Yes")},
         {.objects = {"<< /S /ResetForm >>", "<< /S /ResetForm /Fields [10 0 R] >>",
                      "<< /S /ResetForm /Fields [10 0 R] /Flags 1 >>",
                      "<< /S /ResetForm /Fields [12 0 R 8 0 R 7] >>"}});
  }

  // What the values are after the action, "a locked g.b list box".
  std::string ValuesAfter(std::uint32_t action) {
    const std::uint32_t number = quillon::test::kFirstField + 6 + action;
    PerformResetForm(Document->ActionFromObject(quillon::ObjectByNumber(objects, number)), view);
    std::string values;
    for (const char* name : {"a", "locked", "g.b", "list", "box"}) values += ValueOf(name) + " ";
    return values;
  }
};

TEST_F(Reset, without_a_list_every_field_has_its_default) {
  EXPECT_EQ(ValuesAfter(0), "(0) null (0) (x) /Off ");
}

TEST_F(Reset, a_list_names_the_fields) { EXPECT_EQ(ValuesAfter(1), "(0) (1) (1) (z) /Yes "); }

TEST_F(Reset, an_exclusion_list_names_the_others) {
  EXPECT_EQ(ValuesAfter(2), "(1) null (0) (x) /Off ");
}

TEST_F(Reset, a_group_stands_for_its_fields_and_other_objects_for_nothing) {
  EXPECT_EQ(ValuesAfter(3), "(1) (1) (0) (z) /Yes ");
}

}  // namespace
}  // namespace quillform
