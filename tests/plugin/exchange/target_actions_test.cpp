// Hide and SetState, and the line that tells of Hide.
#include <gtest/gtest.h>

#include "plugin/exchange/hide_action.h"
#include "plugin/exchange/set_state_action.h"
#include "plugin/model/field_values.h"
#include "tests/plugin/model/model_host.h"

namespace quillform {
namespace {

constexpr int kAction = 6;  // behind as many fields

struct TargetActionsTest : ModelHost {
  // Fields: a, the group g with two widgets of the name g.w, a button and a check box. The action
  // stands after them.
  void ShowWith(const std::string& action) {
    using quillon::test::WidgetField;
    const std::string kid = "/Subtype /Widget /Rect [0 0 9 9] /Parent " + FieldRef(1);
    Show({WidgetField("Tx", "a"), "/T (g) /FT /Tx /Kids [" + FieldRef(2) + " " + FieldRef(3) + "]",
          kid, kid, WidgetField("Btn", "push", "/Ff 65536 /AS /One"),
          WidgetField("Btn", "check", "/AS /Off")},
         {.objects = {action}});
    Document->ClearFlags(doc, quillon::kDocModified);
  }
  // Which of a, both widgets of g, the button and the check box are hidden by the action.
  std::string Hidden(const std::string& action) {
    ShowWith(action);
    PerformHide(Action(kAction), view);
    std::string text;
    for (std::uint32_t i = 0; i < WidgetCount(); ++i) {
      text += (Document->AnnotFlags(Widget(i)) & quillon::kAnnotHidden) != 0 ? 'h' : '-';
    }
    return text;
  }
  bool IsModified() { return (Document->GetFlags(doc) & quillon::kDocModified) != 0; }
};

TEST_F(TargetActionsTest, hiding_reaches_every_widget_that_the_targets_name) {
  EXPECT_EQ(Hidden("<< /S /Hide /T (g) >>"), "-hh--");
  EXPECT_EQ(Hidden("<< /S /Hide /T 11 0 R >>"), "-----") << "a field that is no widget";
  EXPECT_EQ(Hidden("<< /S /Hide /T 12 0 R >>"), "-h---");
  EXPECT_EQ(Hidden("<< /S /Hide /T [(a) 13 0 R (check) (G) 7 << >> [(push)]] >>"), "h-h-h");
  EXPECT_FALSE(IsModified());
}

TEST_F(TargetActionsTest, h_false_shows_and_absent_hides) {
  ShowWith("<< /S /Hide /T (check) /H false >>");
  constexpr std::uint32_t kOtherFlags = quillon::kAnnotPrint | 0x40;
  Document->SetAnnotFlags(Widget(4), kOtherFlags | quillon::kAnnotHidden);
  Document->ClearFlags(doc, quillon::kDocModified);
  PerformHide(Action(kAction), nullptr);  // without a view the action's own document is meant
  EXPECT_EQ(Document->AnnotFlags(Widget(4)), kOtherFlags) << "and nothing else";
  EXPECT_FALSE(IsModified());
  EXPECT_EQ(Hidden("<< /S /Hide /T (check) /H (text) >>"), "----h");
}

TEST_F(TargetActionsTest, only_push_buttons_get_another_state) {
  ShowWith("<< /S /SetState /T [(push) (check) (a)] /AS /Two >>");
  PerformSetState(Action(kAction), view);
  EXPECT_EQ(Entry(Field(2), "AS"), "/Two");
  EXPECT_EQ(Entry(Field(3), "AS"), "/Off");
  EXPECT_EQ(Entry(Field(0), "AS"), "null");
  EXPECT_FALSE(IsModified());
  ShowWith("<< /S /SetState /T (push) >>");
  PerformSetState(Action(kAction), view);
  EXPECT_EQ(Entry(Field(2), "AS"), "null") << "a state that is none";
}

TEST_F(TargetActionsTest, a_line_names_the_target_within_the_callers_room) {
  const auto lineOf = [this](const char* hide, std::uint32_t size) {
    ShowWith(hide);
    char text[300] = "untouched";
    const auto* handler = Viewer->ActionHandlerOf(Core->AtomFromName("Hide"));
    const std::uint32_t length = handler->firstLine(Action(kAction), text, size);
    EXPECT_EQ(length, std::string(text).size());
    return std::string(text);
  };
  EXPECT_EQ(lineOf("<< /S /Hide /T (caf\xe9) >>", 300), "Hide the \"caf\xe9\" field.");
  EXPECT_EQ(lineOf("<< /S /Hide /T 10 0 R /H false >>", 300), "Show the \"a\" field.");
  EXPECT_EQ(lineOf("<< /S /Hide /T [(a)] >>", 300), "Not Editable");
  EXPECT_EQ(lineOf("<< /S /Hide /T (a) >>", 6), "Hide ");
}

}  // namespace
}  // namespace quillform
