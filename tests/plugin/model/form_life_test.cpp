// What happens to a form when its document opens, changes and closes.
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

TEST_F(FormLife, opening_builds_appearances_only_when_the_document_asks) {
  for (const bool asked : {true, false}) {
    Show({WidgetField("Tx", "a", "/V (text)")},
         {.formEntries = asked ? "/NeedAppearances true" : "/NeedAppearances false"});
    EXPECT_EQ(Entry(Form(), "NeedAppearances"), "null");
    EXPECT_EQ(EntryOfWidget(0, "AP") != "null", asked);
    EXPECT_EQ(Node("a") != nullptr, asked);
  }
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
  Load({WidgetField("Tx", "p", "/Ff 8192"), WidgetField("Tx", "q", "/Ff 8192")});
  SetFieldValue(Node("p"), Text("secret"));
  SetFieldValue(Node("q"), Text("secret"));
  Subscribe(kEventValueWillChange, [](FormEventRecord* event, void*) {
    if (FieldNodeName(event->node)[0] == 'q') Raise(quillon::kErrorGeneral);
  });
  EXPECT_EQ(CatchFailure([&] { CloseForm(doc); }), quillon::kErrorGeneral);
  EXPECT_EQ(Entry(Field(0), "V"), "null");
  EXPECT_EQ(Entry(Form(), "$Vo"), "null");
}

TEST_F(FormLife, closing_after_a_merge_sweeps_what_found_no_place) {
  Load({WidgetField("Tx", "shown"), WidgetField("Tx", "un.placed"),
        "/Subtype /Widget /Rect [0 0 9 9] /F 1",
        "/T (pair) /FT /Tx /Kids [" + FieldRef(4) + " " + FieldRef(5) + "]",
        "/Subtype /Widget /Rect [0 0 9 9] /Parent " + FieldRef(3),
        "/Subtype /Widget /Rect [0 0 9 9] /Parent " + FieldRef(3)});
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
  EXPECT_EQ(Objects->ArrayLength(Objects->DictGet(FieldNodeDict(Node("pair")), key::Kids)), 1U);
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
