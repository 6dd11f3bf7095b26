#include "plugin/exchange/reset.h"

#include <gtest/gtest.h>

#include "tests/plugin/exchange/data_host.h"

namespace quillform {
namespace {

using quillon::test::WidgetField;

struct Reset : DataHost {};

TEST_F(Reset, gives_the_fields_that_the_list_names_their_defaults) {
  // Values of "a locked g.b list box".
  const struct {
    const char* list;
    const char* values;
  } cases[] = {
      {"", "(0) null (0) (x) /Off "},
      {"/Fields [10 0 R]", "(0) (1) (1) (z) /Yes "},
      {"/Fields [10 0 R] /Flags 1", "(1) null (0) (x) /Off "},
      {"/Fields [12 0 R 8 0 R 7]", "(1) (1) (0) (z) /Yes "},  // a group stands for its fields
  };
  for (const auto& one : cases) {
    Show({WidgetField("Tx", "a", "/V (1) /DV (0)"), WidgetField("Tx", "locked", "/V (1) /Ff 7"),
          "/T (g) /Kids [13 0 R]", WidgetField("Tx", "b", "/V (1) /DV (0) /Parent 12 0 R"),
          WidgetField("Ch", "list", "/V (z) /Opt [(x) (z)]"), WidgetField("Btn", "box", "/V /Yes")},
         {.objects = {std::string("<< /S /ResetForm ") + one.list + " >>"}});
    PerformResetForm(Action(6), view);
    std::string values;
    for (const char* name : {"a", "locked", "g.b", "list", "box"}) values += ValueOf(name) + " ";
    EXPECT_EQ(values, one.values) << one.list;
  }
}

}  // namespace
}  // namespace quillform
