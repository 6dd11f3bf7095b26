// What happens to a form when its document opens, changes and closes.
#include "plugin/host/form_events.h"
#include "plugin/model/field_values.h"
#include "plugin/model/form_dict.h"
#include "plugin/model/form_record.h"
#include "plugin/model/keys.h"
#include "quillon/document/notify.h"
#include "quillon/document/open_document.h"
#include "quillon/viewer/open_view.h"
#include "tests/plugin/model/model_host.h"

namespace quillform {
namespace {

using quillon::test::WidgetField;

struct FormLife : ModelHost {
  std::string EntryOfWidget(std::uint32_t index, const char* name) {
    return Entry(Document->AnnotDict(Widget(index)), name);
  }
};

TEST_F(FormLife, opening_builds_what_the_document_asks_for) {
  Show({WidgetField("Tx", "a", "/V (text)"), WidgetField("Tx", "b")},
       {.formEntries = "/NeedAppearances true"});
  EXPECT_EQ(Entry(Form(), "NeedAppearances"), "null");
  EXPECT_NE(EntryOfWidget(0, "AP"), "null");
  EXPECT_NE(Node("b"), nullptr);
}

TEST_F(FormLife, opening_leaves_appearances_alone_unless_asked) {
  Show({WidgetField("Tx", "a", "/V (text)")}, {.formEntries = "/NeedAppearances false"});
  EXPECT_EQ(Entry(Form(), "NeedAppearances"), "null");
  EXPECT_EQ(EntryOfWidget(0, "AP"), "null");
  EXPECT_EQ(Node("a"), nullptr);
}

TEST_F(FormLife, a_form_that_is_not_valid_is_not_live_once_shown) {
  Show({WidgetField("Tx", "a")}, {.formEntries = "/QuillForm 0.5"});
  EXPECT_FALSE(FormIsUsable(doc));
  EXPECT_EQ(FieldNodeOf(Field(0)), nullptr);
}

TEST_F(FormLife, exchange_is_told_of_opening_and_closing_while_everything_is_there) {
  static std::string told;
  static DocHandle shown;
  told.clear();
  exchangeHooks.RunPendingImports = [](DocView) { told += "opened "; };
  exchangeHooks.KeepValuesOfClosing = [](DocView) {
    told += FindFieldByName(shown, "a") != nullptr ? "closing" : "too late";
  };
  Show({WidgetField("Tx", "a")});
  shown = doc;
  LoadAllFields(doc);
  Viewer->CloseView(view);
  EXPECT_EQ(told, "opened closing");
}

TEST_F(FormLife, closing_frees_the_nodes) {
  Show({WidgetField("Tx", "a"), WidgetField("Tx", "a longer name")});
  LoadAllFields(doc);
  NodePin pin(Node("a longer name"));
  ASSERT_NE(pin.node, nullptr);
  Viewer->CloseView(view);
  EXPECT_EQ(pin.node, nullptr);
}

TEST_F(FormLife, saving_clears_passwords_and_makes_the_form_live_again_afterwards) {
  Show({WidgetField("Tx", "p", "/Ff 8192"), WidgetField("Tx", "plain")},
       {.formEntries = "/MaxLen 5"});
  LoadAllFields(doc);
  SetFieldValue(Node("p"), Text("secret"));
  SetFieldValue(Node("plain"), Text("kept"));
  quillon::PrepareSave(view);
  EXPECT_FALSE(FormIsUsable(doc));
  EXPECT_EQ(Entry(Field(0), "V"), "null");
  EXPECT_EQ(Entry(Field(1), "V"), "(kept)");
  EXPECT_EQ(Entry(Form(), "$Vo"), "null");
  EXPECT_EQ(Entry(Form(), "MaxLen"), "null");
  quillon::ResumeAfterSave(view);
  EXPECT_STREQ(FieldNodeName(Node("p")), "p");
}

TEST_F(FormLife, replaced_objects_leave_no_nodes_behind) {
  Show({WidgetField("Tx", "a")});
  LoadAllFields(doc);
  NodePin pin(Node("a"));
  quillon::SendDocChanged(doc, 0);
  EXPECT_TRUE(FieldNodeIsValid(pin.node));
  EXPECT_EQ(Node("a"), nullptr);
  quillon::SendDocChanged(doc, quillon::kDocChangeObjects);
  EXPECT_EQ(pin.node, nullptr);
  quillon::SetPermissions(doc, quillon::kPermitForms);
  LoadAllFields(doc);
  EXPECT_NE(Node("a"), nullptr) << "the fields are loaded anew";
}

TEST_F(FormLife, clearing_goes_on_past_a_field_that_fails) {
  Open({WidgetField("Tx", "p", "/Ff 8192"), WidgetField("Tx", "q", "/Ff 8192")});
  LoadAllFields(doc);
  SetFieldValue(Node("p"), Text("secret"));
  SetFieldValue(Node("q"), Text("secret"));
  FormEventRegister(
      kEventValueWillChange,
      [](FormEventRecord* event, void*) {
        if (FieldNodeName(event->node)[0] == 'q') Raise(quillon::kErrorGeneral);
      },
      nullptr, nullptr);
  EXPECT_EQ(CodeOf([&] { CloseForm(doc); }), quillon::kErrorGeneral);
  EXPECT_EQ(Entry(Field(0), "V"), "null");
  EXPECT_EQ(Entry(Form(), "$Vo"), "null");
}

TEST_F(FormLife, closing_after_a_merge_sweeps_what_found_no_place) {
  Open({WidgetField("Tx", "shown"), WidgetField("Tx", "un.placed"),
        "/Subtype /Widget /Rect [0 0 9 9] /F 1",
        "/T (pair) /FT /Tx /Kids [" + FieldRef(4) + " " + FieldRef(5) + "]",
        "/Subtype /Widget /Rect [0 0 9 9] /Parent " + FieldRef(3),
        "/Subtype /Widget /Rect [0 0 9 9] /Parent " + FieldRef(3)});
  LoadAllFields(doc);
  ASSERT_EQ(Entry(Form(), "$Wa"), "true");
  ASSERT_EQ(WidgetCount(), 5U);
  // Another tool takes a widget off the page without telling the form.
  const PageHandle page = Document->AcquirePage(doc, 0);
  const ObjectHandle annots =
      Objects->DictGet(Document->PageDict(page), Core->AtomFromName("Annots"));
  Objects->ArrayRemove(annots, 4);
  Document->ReleasePage(page);

  CloseForm(doc);
  EXPECT_EQ(Entry(Form(), "$Wa"), "null");
  EXPECT_EQ(WidgetCount(), 3U) << "only the hidden widget that has no field goes";
  EXPECT_NE(Node("shown"), nullptr);
  FieldNode pair = Node("pair");
  ASSERT_NE(pair, nullptr);
  EXPECT_EQ(Objects->ArrayLength(Objects->DictGet(pair->dict, key::Kids)), 1U);
  EXPECT_FALSE(pair->firstKid->status & kNodeSweepMark);
}

TEST_F(FormLife, closing_without_a_merge_or_a_live_form_sweeps_nothing) {
  Open({"/Subtype /Widget /Rect [0 0 9 9] /F 3"});
  CloseForm(doc);
  EXPECT_EQ(WidgetCount(), 1U);
  Open({"/Subtype /Widget /Rect [0 0 9 9] /F 3"}, {.formEntries = "/$Wa true"});
  quillon::SetPermissions(doc, 0);
  CloseForm(doc);
  EXPECT_EQ(WidgetCount(), 1U);
}

TEST_F(FormLife, changed_defaults_reach_the_fields_that_use_them) {
  Open({WidgetField("Tx", "follows", "/V (x)"), WidgetField("Tx", "own", "/Q 1 /V (x)")});
  FormEventRecord event{};
  event.document = doc;
  event.mask = kBitQ;
  FormEventAnnounce(kEventDefaultsChanged, &event);
  EXPECT_NE(EntryOfWidget(0, "AP"), "null");
  EXPECT_EQ(EntryOfWidget(1, "AP"), "null");
  event.mask = kBitDA;
  FormEventAnnounce(kEventDefaultsChanged, &event);
  EXPECT_NE(EntryOfWidget(1, "AP"), "null");
}

}  // namespace
}  // namespace quillform
