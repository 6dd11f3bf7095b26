// Hide and SetState.
#include <gtest/gtest.h>

#include "plugin/exchange/action_dialogs.h"
#include "plugin/exchange/hide_action.h"
#include "plugin/exchange/set_state_action.h"
#include "plugin/model/field_values.h"
#include "plugin/model/keys.h"
#include "quillon/objects/pdf_file.h"
#include "tests/plugin/model/model_host.h"

namespace quillform {
namespace {

constexpr int kFields = 6;

struct TargetActionsTest : ModelHost {
  ~TargetActionsTest() override { actionDialogs = {}; }

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
  ActionHandle Action() {
    return Document->ActionFromObject(
        quillon::ObjectByNumber(objects, quillon::test::kFirstField + kFields));
  }
  // Which of a, both widgets of g, the button and the check box are hidden.
  std::string HiddenWidgets() {
    std::string text;
    for (std::uint32_t i = 0; i < WidgetCount(); ++i) {
      text += (Document->AnnotFlags(Widget(i)) & quillon::kAnnotHidden) != 0 ? 'h' : '-';
    }
    return text;
  }
  std::string Hidden(const std::string& action) {
    ShowWith(action);
    PerformHide(Action(), view);
    return HiddenWidgets();
  }
  bool IsModified() { return (Document->GetFlags(doc) & quillon::kDocModified) != 0; }
};

TEST_F(TargetActionsTest, hiding_reaches_every_widget_that_the_targets_name) {
  EXPECT_EQ(Hidden("<< /S /Hide /T (g) >>"), "-hh--");
  EXPECT_EQ(Hidden("<< /S /Hide /T 11 0 R >>"), "-----") << "a field that is no widget";
  EXPECT_EQ(Hidden("<< /S /Hide /T 12 0 R >>"), "-h---");
  EXPECT_EQ(Hidden("<< /S /Hide /T [(a) 13 0 R (check) (G) 7] >>"), "h-h-h");
  EXPECT_FALSE(IsModified());
}

TEST_F(TargetActionsTest, h_false_shows_and_absent_hides) {
  ShowWith("<< /S /Hide /T (check) /H false >>");
  constexpr std::uint32_t kOtherFlags = quillon::kAnnotPrint | 0x40;
  Document->SetAnnotFlags(Widget(4), kOtherFlags | quillon::kAnnotHidden);
  Document->ClearFlags(doc, quillon::kDocModified);
  PerformHide(Action(), nullptr);  // without a view the action's own document is meant
  EXPECT_EQ(Document->AnnotFlags(Widget(4)), kOtherFlags) << "and nothing else";
  EXPECT_FALSE(IsModified());
  EXPECT_EQ(Hidden("<< /S /Hide /T (check) /H (text) >>"), "----h");
}

TEST_F(TargetActionsTest, targets_that_name_no_widget_change_nothing) {
  for (const char* target : {"", "/T (nothing)", "/T << >>", "/T [[(a)]]"}) {
    EXPECT_EQ(Hidden(std::string("<< /S /Hide ") + target + " >>"), "-----") << target;
  }
}

TEST_F(TargetActionsTest, only_push_buttons_get_another_state) {
  ShowWith("<< /S /SetState /T [(push) (check) (a)] /AS /Two >>");
  PerformSetState(Action(), view);
  EXPECT_EQ(Entry(Field(2), "AS"), "/Two");
  EXPECT_EQ(Entry(Field(3), "AS"), "/Off");
  EXPECT_EQ(Entry(Field(0), "AS"), "null");
  EXPECT_FALSE(IsModified());
  ShowWith("<< /S /SetState /T (push) >>");
  PerformSetState(Action(), view);
  EXPECT_EQ(Entry(Field(2), "AS"), "null") << "a state that is none";
}

TEST_F(TargetActionsTest, editing_writes_only_what_was_confirmed_and_is_different) {
  ShowWith("<< /S /Hide /T 12 0 R >>");
  const ObjectHandle dict = Document->ActionDict(Action());
  actionDialogs.EditHide = [](DocView, HideSettings* settings) {
    EXPECT_EQ(settings->name, "g");
    EXPECT_TRUE(settings->hide);
    return true;
  };
  EditHide(Action(), view);
  EXPECT_TRUE(IsKind(Objects->DictGet(dict, key::ActionTarget), ObjectKind::kDict));
  actionDialogs.EditHide = [](DocView, HideSettings* settings) {
    *settings = {"a", false};
    return false;
  };
  EditHide(Action(), view);
  EXPECT_TRUE(IsKind(Objects->DictGet(dict, key::ActionTarget), ObjectKind::kDict));
  actionDialogs.EditHide = [](DocView, HideSettings* settings) {
    *settings = {"a", !settings->hide};
    return true;
  };
  EditHide(Action(), view);
  EXPECT_EQ(ShowObject(dict), "<< /H false /S /Hide /T (a) >>");
  EditHide(Action(), view);
  EXPECT_EQ(ShowObject(dict), "<< /S /Hide /T (a) >>");
}

}  // namespace
}  // namespace quillform
