#include "plugin/exchange/action_handlers.h"

#include <gtest/gtest.h>

#include "plugin/exchange/form_actions.h"
#include "plugin/model/field_values.h"
#include "plugin/model/keys.h"
#include "quillon/document/open_document.h"
#include "quillon/objects/pdf_file.h"
#include "quillon/viewer/menus.h"
#include "quillon/viewer/open_view.h"
#include "quillon/viewer/registered.h"
#include "tests/plugin/model/model_host.h"

namespace quillform {
namespace {

using quillon::ActionHandlerRecord;

struct ActionHandlersTest : ModelHost {
  ~ActionHandlersTest() override {
    actionDialogs = {};
    Link = nullptr;
  }

  // Shows a form with the fields "a" and "b" and the action.
  ActionHandle ActionOf(const std::string& text) {
    using quillon::test::WidgetField;
    Show({WidgetField("Tx", "a", "/V (new) /DV (old)"), WidgetField("Tx", "b", "/V (new)")},
         {.objects = {text}});
    return Document->ActionFromObject(
        quillon::ObjectByNumber(objects, quillon::test::kFirstField + 2));
  }
  void Perform(const std::string& text) {
    const ActionHandle action = ActionOf(text);
    Viewer->PerformAction(action, view);
  }
  const ActionHandlerRecord* Handler(const char* type) {
    return Viewer->ActionHandlerOf(Core->AtomFromName(type));
  }

  using TextSlot = std::uint32_t (*ActionHandlerRecord::*)(ActionHandle, char*, std::uint32_t);
  std::string TextOf(const char* type, TextSlot slot, ActionHandle action) {
    const auto routine = Handler(type)->*slot;
    if (routine == nullptr) return "(none)";
    char text[300] = "untouched";
    const std::uint32_t length = routine(action, text, sizeof text);
    EXPECT_EQ(length, std::string(text).size());
    EXPECT_EQ(routine(action, nullptr, 0), length);
    return text;
  }
  // Description, button, first and second line.
  std::vector<std::string> Texts(const char* type, ActionHandle action) {
    return {TextOf(type, &ActionHandlerRecord::typeDescription, action),
            TextOf(type, &ActionHandlerRecord::buttonLabel, action),
            TextOf(type, &ActionHandlerRecord::firstLine, action),
            TextOf(type, &ActionHandlerRecord::secondLine, action)};
  }
};

using Strings = std::vector<std::string>;

TEST_F(ActionHandlersTest, submitting_is_offered_only_with_a_link_plug_in) {
  EXPECT_EQ(Handler("SubmitForm"), nullptr);
  quillon::LinkTable table{};
  Link = &table;
  RegisterDataActionHandlers();
  EXPECT_NE(Handler("SubmitForm"), nullptr);
}

TEST_F(ActionHandlersTest, a_hosts_own_handlers_are_taken_over_for_hide_and_left_for_set_state) {
  struct LargeRecord {
    ActionHandlerRecord known;
    std::uintptr_t more[3];
  };
  LargeRecord hostHide{};
  hostHide.known.size = sizeof hostHide;
  hostHide.known.unused9 = reinterpret_cast<Callback>(&RegisterFormActionHandlers);
  hostHide.more[2] = 77;
  Viewer->RegisterActionHandler(0, key::Hide, &hostHide.known, "host");
  ActionHandlerRecord hostState{};
  hostState.size = sizeof hostState;
  Viewer->RegisterActionHandler(0, key::SetState, &hostState, "host");

  RegisterFormActionHandlers();
  const ActionHandlerRecord* own = Handler("Hide");
  ASSERT_NE(own, &hostHide.known);
  EXPECT_EQ(own->size, sizeof hostHide);
  EXPECT_NE(own->perform, nullptr);
  EXPECT_EQ(own->unused9, hostHide.known.unused9);
  EXPECT_EQ(reinterpret_cast<const LargeRecord*>(own)->more[2], 77u);
  EXPECT_EQ(Handler("SetState"), &hostState);
}

TEST_F(ActionHandlersTest, texts_name_the_target_of_the_action) {
  const Strings hide{"Show or hide a particular form field.", "Edit...",
                     "Hide the \"caf\xe9\" field.",
                     "Use this button to show or hide the form field."};
  EXPECT_EQ(Texts("Hide", ActionOf("<< /S /Hide /T (caf\xe9) >>")), hide);
  EXPECT_EQ(TextOf("Hide", &ActionHandlerRecord::firstLine,
                   ActionOf("<< /S /Hide /T 10 0 R /H false >>")),
            "Show the \"a\" field.");
  const Strings several{hide[0], "", "Not Editable", hide[3]};
  EXPECT_EQ(Texts("Hide", ActionOf("<< /S /Hide /T [(a)] >>")), several);
  const Strings state{"(none)", "(none)", "Two", "(none)"};
  EXPECT_EQ(Texts("SetState", ActionOf("<< /S /SetState /T (a) /AS /Two >>")), state);
  const Strings import{"Import form data from a specified file.", "Select &file...",
                       "Use this button to select the file to import data from.", "data/x.fdf"};
  EXPECT_EQ(Texts("ImportData", ActionOf("<< /S /ImportData /F (data/x.fdf) >>")), import);
}

TEST_F(ActionHandlersTest, texts_are_cut_to_the_callers_room) {
  const ActionHandle action = ActionOf("<< /S /Hide /T (a) >>");
  char room[8] = "1234567";
  EXPECT_EQ(Handler("Hide")->firstLine(action, room, 6), 5u);
  EXPECT_STREQ(room, "Hide ");
  EXPECT_EQ(room[6], '7');
  EXPECT_EQ(Handler("Hide")->firstLine(action, room, 0), 0u);
  const std::string longName(400, 'n');
  const ActionHandle longAction = ActionOf("<< /S /ImportData /F (" + longName + ") >>");
  EXPECT_EQ(TextOf("ImportData", &ActionHandlerRecord::secondLine, longAction).size(), 256u);
}

TEST_F(ActionHandlersTest, submit_settings_are_read_and_written_back_without_needless_entries) {
  const ActionHandle action =
      ActionOf("<< /S /SubmitForm /F << /FS /URL /F (http://x/) /Extra 1 >> /Flags 7 >>");
  SubmitSettings settings = ReadSubmitSettings(action);
  EXPECT_EQ(settings.url, "http://x/");
  EXPECT_TRUE(settings.exclusion && settings.includeEmpty && settings.urlEncoded);
  WriteSubmitSettings(action, settings);
  const ObjectHandle dict = Document->ActionDict(action);
  EXPECT_EQ(ShowObject(dict), "<< /F << /F (http://x/) /FS /URL >> /Flags 6 /S /SubmitForm >>")
      << "nothing is excluded without a list";
  settings.fields = Objects->NewArray(objects, false, 1);
  Objects->ArrayPut(settings.fields, 0, Text("a"));
  settings.includeEmpty = settings.urlEncoded = false;
  settings.url.clear();
  WriteSubmitSettings(action, settings);
  EXPECT_EQ(ShowObject(dict), "<< /Fields [(a)] /Flags 1 /S /SubmitForm >>");
  WriteSubmitSettings(action, {"", kNullObject, true, false, false});
  EXPECT_EQ(ShowObject(dict), "<< /S /SubmitForm >>");
}

TEST_F(ActionHandlersTest, page_actions_need_a_document_that_may_be_changed) {
  const quillon::MenuItemHandle item = Viewer->MenuItemByName("QuillForm:Actions");
  EXPECT_FALSE(quillon::IsMenuItemEnabled(item));
  Show({});
  EXPECT_TRUE(quillon::IsMenuItemEnabled(item));
  static std::uint32_t edited;
  edited = 99;
  actionDialogs.EditPageActions = [](DocView, std::uint32_t page) { edited = page; };
  quillon::ExecuteMenuItem(item);
  EXPECT_EQ(edited, 0u);
  quillon::SetPermissions(doc, quillon::kPermitForms);
  EXPECT_FALSE(quillon::IsMenuItemEnabled(item));
}

}  // namespace
}  // namespace quillform
