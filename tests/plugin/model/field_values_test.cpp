#include "plugin/model/field_values.h"

#include "plugin/host/form_events.h"
#include "plugin/model/field_kinds.h"
#include "plugin/model/keys.h"
#include "quillon/document/open_document.h"
#include "tests/plugin/model/model_host.h"

namespace quillform {
namespace {

using quillon::test::WidgetField;

// What a builder was asked for, one line a call: kind state value stale.
std::string built;

template <Atom* kind>
const FieldTypeHandler* RecordingHandler() {
  static FieldTypeHandler handler = [] {
    FieldTypeHandler made{};
    made.size = sizeof made;
    made.GetKind = [] { return *kind; };
    made.GetKindLabel = [](const FieldTypeHandler*, char* buffer, std::uint32_t) { *buffer = 0; };
    made.RebuildAppearance = [](const FieldTypeHandler*, AnnotHandle, Atom state,
                                ObjectHandle value, bool stale) {
      built += std::string(state == kNoAtom ? "-" : Core->NameFromAtom(state)) + " " +
               ShowObject(value) + (stale ? " stale; " : "; ");
    };
    return made;
  }();
  return &handler;
}

std::string events;

struct Values : ModelHost {
  Values() {
    built.clear();
    events.clear();
    RegisterFieldTypeHandler(RecordingHandler<&key::Text>());
    RegisterFieldTypeHandler(RecordingHandler<&key::CheckBox>());
    RegisterFieldTypeHandler(RecordingHandler<&key::ComboBox>());
    RegisterFieldTypeHandler(RecordingHandler<&key::ListBox>());
    RegisterFieldTypeHandler(RecordingHandler<&key::Button>());
    for (std::uint32_t event : {kEventValueWillChange, kEventValueChanged}) {
      FormEventRegister(
          event,
          [](FormEventRecord* record, void* data) {
            events +=
                std::string(static_cast<const char*>(data)) + ShowObject(record->value) + "; ";
          },
          nullptr, const_cast<char*>(event == kEventValueChanged ? "changed " : "will "));
    }
  }

  FieldNode OpenOne(const std::string& type, const std::string& entries,
                    const std::string& formEntries = "") {
    Open({WidgetField(type, "f", entries)}, {.formEntries = formEntries});
    return FieldNodeOf(Field(0));
  }

  // A check box field with two widgets whose on-states are Yes and No.
  FieldNode OpenToggles() {
    const auto widget = [](const char* state) {
      return "/Subtype /Widget /Rect [0 0 9 9] /Parent " + FieldRef(0) + " /AP << /N << /" + state +
             " 9 0 R /Off 9 0 R >> >>";
    };
    Open({"/T (f) /FT /Btn /Kids [" + FieldRef(1) + " " + FieldRef(2) + "]", widget("Yes"),
          widget("No")});
    LoadAllFields(doc);
    return Node("f");
  }
};

TEST_F(Values, announce_write_and_rebuild) {
  FieldNode node = OpenOne("Tx", "/V (old)");
  SetFieldValue(node, Text("new"));
  EXPECT_EQ(Entry(Field(0), "V"), "(new)");
  EXPECT_EQ(events, "will (new); changed (new); ");
  EXPECT_EQ(built, "- (new); ");
  SetFieldValue(node, kNullObject);
  EXPECT_EQ(Entry(Field(0), "V"), "null");
  EXPECT_EQ(node->ownEntries & kBitV, 0U);
}

TEST_F(Values, that_equal_the_old_one_change_nothing_unless_the_look_is_stale) {
  FieldNode node = OpenOne("Tx", "/V [(a) [1 /n]]");
  const ObjectHandle same = Objects->CopyObject(Objects->DictGet(Field(0), key::V), objects);
  SetFieldValue(node, same);
  EXPECT_EQ(events, "will [(a) [1 /n]]; ");
  EXPECT_EQ(built, "");
  MarkAppearanceStale(node);
  SetFieldValue(node, same);
  EXPECT_EQ(built, "- [(a) [1 /n]] stale; ");
  EXPECT_FALSE(node->status & kNodeStale);
  Objects->Destroy(same);
}

TEST_F(Values, can_be_refused_or_replaced_by_a_subscriber) {
  FieldNode node = OpenOne("Tx", "/V (old)");
  static ObjectHandle replacement;
  replacement = Text("replaced");
  const std::uint32_t replace = FormEventRegister(
      kEventValueWillChange, [](FormEventRecord* event, void*) { event->value = replacement; },
      nullptr, nullptr);
  SetFieldValue(node, Text("new"));
  EXPECT_EQ(Entry(Field(0), "V"), "(replaced)");
  FormEventUnregister(kEventValueWillChange, replace);
  FormEventRegister(
      kEventValueWillChange, [](FormEventRecord* event, void*) { event->cancel = 1; }, nullptr,
      nullptr);
  built.clear();
  SetFieldValue(node, Text("new"));
  EXPECT_EQ(Entry(Field(0), "V"), "(replaced)");
  EXPECT_EQ(built, "");
}

TEST_F(Values, can_be_set_again_after_a_subscriber_failed) {
  FieldNode node = OpenOne("Tx", "");
  const std::uint32_t failing = FormEventRegister(
      kEventValueChanged, [](FormEventRecord*, void*) { Raise(quillon::kErrorGeneral); }, nullptr,
      nullptr);
  EXPECT_EQ(CodeOf([&] { SetFieldValue(node, Text("a")); }), quillon::kErrorGeneral);
  FormEventUnregister(kEventValueChanged, failing);
  SetFieldValue(node, Text("b"));
  EXPECT_EQ(Entry(Field(0), "V"), "(b)");
}

TEST_F(Values, are_not_set_from_inside_their_own_setting) {
  FieldNode node = OpenOne("Tx", "");
  FormEventRegister(
      kEventValueChanged,
      [](FormEventRecord* event, void*) { SetFieldValue(event->node, kNullObject); }, nullptr,
      nullptr);
  SetFieldValue(node, Text("a"));
  EXPECT_EQ(Entry(Field(0), "V"), "(a)");
}

TEST_F(Values, survive_a_subscriber_that_deletes_the_field) {
  FieldNode node = OpenOne("Tx", "");
  FormEventRegister(
      kEventValueChanged, [](FormEventRecord* event, void*) { DeleteFieldNode(event->node); },
      nullptr, nullptr);
  SetFieldValue(node, Text("a"));
  EXPECT_EQ(Node("f"), nullptr);
  EXPECT_EQ(built, "");
}

TEST_F(Values, land_on_the_highest_dictionary_of_the_name) {
  Open({"/T (f) /FT /Tx /Kids [" + FieldRef(1) + " " + FieldRef(2) + "]",
        "/Subtype /Widget /Rect [0 0 9 9] /V (stray) /Parent " + FieldRef(0),
        "/Subtype /Widget /Rect [0 0 9 9] /Parent " + FieldRef(0)});
  SetFieldValue(FieldNodeOfWidget(Widget(1)), Text("v"));
  EXPECT_EQ(Entry(Field(0), "V"), "(v)");
  EXPECT_EQ(Entry(KidOf(Field(0), 0), "V"), "null");
  EXPECT_EQ(ShowObject(GetFieldValue(FieldNodeOfWidget(Widget(0)))), "(v)");
  EXPECT_EQ(built, "- (v); - (v); ");
}

TEST_F(Values, reach_the_widgets_of_a_field_that_was_found_by_itself) {
  Open({"/T (f) /FT /Tx /Kids [" + FieldRef(1) + " " + FieldRef(2) + "]",
        "/Subtype /Widget /Rect [0 0 9 9] /V (stray) /Parent " + FieldRef(0),
        "/Subtype /Widget /Rect [0 0 9 9] /Parent " + FieldRef(0),
        "/T (g) /FT /Tx /Kids [" + FieldRef(4) + "]",
        WidgetField("Tx", "x", "/Parent " + FieldRef(3))});
  SetFieldValue(FieldNodeOf(Field(0)), Text("v"));
  EXPECT_EQ(built, "- (v); - (v); ");
  EXPECT_EQ(Entry(KidOf(Field(0), 0), "V"), "null");
  SetFieldValue(FieldNodeOf(Field(1)), Text("v"));
  EXPECT_EQ(Entry(Field(1), "V"), "null") << "a group, though its field had not been met";
}

TEST_F(Values, of_fields_that_only_share_a_name_stand_in_the_first) {
  Open({WidgetField("Tx", "f"), WidgetField("Tx", "f", "/V (old)")});
  FieldNode first = FieldNodeOf(Field(0));
  FieldNode second = FieldNodeOf(Field(1));
  EXPECT_EQ(ShowObject(GetFieldValue(first)), "(old)");
  SetFieldValue(second, Text("new"));
  EXPECT_EQ(Entry(Field(0), "V"), "(new)");
  EXPECT_EQ(Entry(Field(1), "V"), "null");
  EXPECT_EQ(ShowObject(GetFieldValue(second)), "(new)");
  EXPECT_EQ(built, "- (new); - (new); ");
}

TEST_F(Values, do_not_go_to_groups_or_push_buttons) {
  Open({"/T (g) /FT /Tx /Kids [" + FieldRef(1) + "]",
        WidgetField("Tx", "x", "/Parent " + FieldRef(0)), WidgetField("Btn", "push", "/Ff 65536")});
  LoadAllFields(doc);
  SetFieldValue(Node("g"), Text("a"));
  SetFieldValue(Node("push"), Text("a"));
  EXPECT_EQ(Entry(Field(0), "V"), "null");
  EXPECT_EQ(Entry(Field(1), "V"), "null");
  EXPECT_EQ(events + built, "");
  MarkAppearanceStale(Node("push"));
  SetFieldValue(Node("push"), Text("a"));
  EXPECT_EQ(built, "- null stale; ");
}

TEST_F(Values, of_check_boxes_switch_the_state_of_every_widget) {
  FieldNode node = OpenToggles();
  SetFieldValue(node, Name("Off"));
  EXPECT_EQ(Entry(Field(0), "V"), "null");
  EXPECT_EQ(events, "will null; ");
  EXPECT_EQ(ShowObject(GetFieldValue(node)), "/Off");

  SetFieldValue(node, Name("Yes"));
  EXPECT_EQ(Entry(Field(0), "V"), "/Yes");
  EXPECT_EQ(Entry(KidOf(Field(0), 0), "AS"), "/Yes");
  EXPECT_EQ(built, "Yes /Yes; ") << "the other widget has no such state and is built anew";
  built.clear();
  SetFieldValue(node, Name("Off"));
  EXPECT_EQ(Entry(Field(0), "V"), "null");
  EXPECT_EQ(Entry(KidOf(Field(0), 0), "AS"), "/Off");
  EXPECT_EQ(Entry(KidOf(Field(0), 1), "AS"), "/Off");
  EXPECT_EQ(built, "");
}

TEST_F(Values, of_password_fields_are_listed_once_to_be_cleared) {
  Open({WidgetField("Tx", "p", "/Ff 8192"), WidgetField("Tx", "q", "/Ff 8192"),
        WidgetField("Tx", "plain")});
  LoadAllFields(doc);
  const auto listed = [&] { return Objects->DictGet(Form(), key::VolatileFields); };
  for (const char* name : {"p", "q", "p", "p"}) {
    SetFieldValue(Node(name), Text(std::string(name) + std::to_string(events.size())));
  }
  SetFieldValue(Node("plain"), Text("x"));
  ASSERT_EQ(Objects->ArrayLength(listed()), 2U);
  EXPECT_TRUE(Objects->Equal(Objects->ArrayGet(listed(), 0), Field(1)));
  EXPECT_TRUE(Objects->Equal(Objects->ArrayGet(listed(), 1), Field(0)));

  // Another hand may shorten the list.
  Objects->ArrayRemove(listed(), 1);
  SetFieldValue(Node("p"), Text("again"));
  EXPECT_EQ(Objects->ArrayLength(listed()), 2U);
}

TEST_F(Values, are_reset_to_the_default_or_the_first_option) {
  OpenOne("Tx", "/DV (d) /V (v)");
  ResetFieldValue(FieldNodeOf(Field(0)));
  EXPECT_EQ(Entry(Field(0), "V"), "(d)");
  ResetFieldValue(OpenOne("Ch", "/Ff 131072 /Opt [[(e1) (One)] (Two)] /V (Two)"));
  EXPECT_EQ(Entry(Field(0), "V"), "(e1)");
  ResetFieldValue(OpenOne("Tx", "/V (v)"));
  EXPECT_EQ(Entry(Field(0), "V"), "null");
}

TEST_F(Values, are_inherited_only_within_one_name) {
  Open({"/T (g) /FT /Tx /V (group) /DA (ga) /Kids [" + FieldRef(1) + " " + FieldRef(2) + "]",
        WidgetField("Tx", "x", "/Parent " + FieldRef(0)),
        WidgetField("Tx", "y", "/Q 2 /Parent " + FieldRef(0))},
       {.formEntries = "/Q 1", .defaultAppearance = ""});
  LoadAllFields(doc);
  EXPECT_EQ(ShowObject(GetFieldValue(Node("g.x"))), "null");
  EXPECT_EQ(ShowObject(GetFieldEntry(Node("g.x"), kBitDA)), "(ga)");
  EXPECT_EQ(ShowObject(GetFieldEntry(Node("g.x"), kBitQ)), "1");
  EXPECT_EQ(ShowObject(GetFieldEntry(Node("g.y"), kBitQ)), "2");
  EXPECT_EQ(ShowObject(GetFieldEntry(Node("g.y"), kBitOH)), "null");
  EXPECT_EQ(ShowObject(GetInherited(Node("g.y"), key::V)), "(group)");
  EXPECT_EQ(ShowObject(GetFieldEntry(nullptr, kBitV)), "null");
}

TEST_F(Values, compare_by_content_within_bounds) {
  Open({"/T (a) /V [1 (x) /n true 1.5]", "/T (b) /V [1 (x) /n true 1.5]", "/T (c) /V [1.0 (x)]",
        "/T (d) /V " + FieldRef(4), "[" + FieldRef(4) + "]", "/T (e) /V " + FieldRef(6),
        "[" + FieldRef(6) + "]"});
  const auto value = [&](std::uint32_t i) { return Objects->DictGet(Field(i), key::V); };
  EXPECT_TRUE(ValuesEqual(value(0), value(1)));
  EXPECT_FALSE(ValuesEqual(value(0), value(2)));
  EXPECT_TRUE(ValuesEqual(value(3), value(3)));
  EXPECT_FALSE(
      ValuesEqual(Objects->ArrayGet(FieldsArray(), 4), Objects->ArrayGet(FieldsArray(), 6)))
      << "arrays that hold themselves are equal only when they are the same";
  EXPECT_FALSE(ValuesEqual(Field(0), Field(1)));
}

// Flags.

TEST_F(Values, flags_are_written_where_the_field_begins) {
  Open({"/T (f) /FT /Tx /Kids [" + FieldRef(1) + " " + FieldRef(2) + "]",
        "/Subtype /Widget /Rect [0 0 9 9] /Ff 1 /Parent " + FieldRef(0),
        "/Subtype /Widget /Rect [0 0 9 9] /Parent " + FieldRef(0)});
  LoadAllFields(doc);
  FieldNode widget = FieldNodeOfWidget(Widget(1));
  SetFieldFlags(widget, 1, 6);
  EXPECT_EQ(Entry(Field(0), "Ff"), "6");
  EXPECT_EQ(Entry(KidOf(Field(0), 0), "Ff"), "null");
  EXPECT_EQ(GetFieldFlags(FieldNodeOfWidget(Widget(0)), 1), 6U);
  SetFieldFlags(widget, 1, 0);
  EXPECT_EQ(Entry(Field(0), "Ff"), "null");
  EXPECT_EQ(GetFieldFlags(widget, 1), 0U);
}

TEST_F(Values, flags_that_the_parent_gives_are_not_repeated) {
  Open({"/T (g) /Ff 2 /Kids [" + FieldRef(1) + "]",
        WidgetField("Tx", "x", "/Ff 1 /Parent " + FieldRef(0))});
  LoadAllFields(doc);
  SetFieldFlags(Node("g.x"), 1, 2);
  EXPECT_EQ(Entry(KidOf(Field(0), 0), "Ff"), "null");
  EXPECT_EQ(GetFieldFlags(Node("g.x"), 1), 2U);
  SetFieldFlags(Node("g"), 1, 4);
  EXPECT_EQ(GetFieldFlags(Node("g.x"), 1), 4U);
  SetFieldFlags(Node("g.x"), 0, 2);
  EXPECT_EQ(Document->AnnotFlags(Widget(0)), 2U);
  EXPECT_EQ(GetFieldFlags(Node("g.x"), 2), 0U);
}

TEST_F(Values, flags_are_read_with_the_wish_for_a_new_look) {
  FieldNode node = OpenOne("Tx", "/V (v) /NeedAppearances true");
  EXPECT_TRUE(node->status & kNodeStale);
  EXPECT_EQ(Entry(Field(0), "NeedAppearances"), "null");
  SetFieldValue(node, GetFieldValue(node));
  EXPECT_EQ(built, "- (v) stale; ");
}

TEST_F(Values, kinds_follow_type_and_flags) {
  const struct {
    const char* type;
    const char* flags;
    Atom kind;
  } rows[] = {{"Btn", "/Ff 98304", key::Button},
              {"Btn", "/Ff 32768", key::RadioButton},
              {"Btn", "", key::CheckBox},
              {"Ch", "/Ff 131072", key::ComboBox},
              {"Ch", "/Ff 65536", key::ListBox},
              {"Tx", "/Ff 65536", key::Text},
              {"Sig", "", kNoAtom}};
  for (const auto& row : rows) {
    OpenOne(row.type, row.flags);
    EXPECT_EQ(FieldKindOf(Widget(0)), row.kind) << row.type << row.flags;
  }
  OpenOne("Btn", "/Ff 65536");
  quillon::SetPermissions(doc, 0);
  EXPECT_EQ(FieldKindOf(Widget(0)), key::Button) << "push buttons work in a form that is not live";
  OpenOne("Tx", "");
  quillon::SetPermissions(doc, 0);
  EXPECT_EQ(FieldKindOf(Widget(0)), kNoAtom);
}

// Options.

TEST_F(Values, options_are_selected_by_export_form_and_shown_by_display_form) {
  FieldNode node = OpenOne("Ch", "/Ff 131072 /Opt [[(e) (Shown)] (plain) [null (only)]]");
  SelectOption(node, 0);
  EXPECT_EQ(Entry(Field(0), "V"), "(e)");
  EXPECT_EQ(built, "- (Shown); ");
  SelectOption(node, 2);
  EXPECT_EQ(Entry(Field(0), "V"), "(only)");
  SelectOption(node, -1);
  EXPECT_EQ(Entry(Field(0), "V"), "(only)");
  SelectOption(node, 3);
  EXPECT_EQ(Entry(Field(0), "V"), "(e)");
  built.clear();
  SelectOption(OpenOne("Ch", "/Ff 131072 /V (x)"), 0);
  EXPECT_EQ(built, "- null; ");
  EXPECT_EQ(Entry(Field(0), "V"), "(x)");
}

TEST_F(Values, options_are_stored_as_a_copy_and_removed_by_anything_else) {
  FieldNode node = OpenOne("Ch", "");
  const ObjectHandle options = Objects->NewArray(objects, false, 1);
  Objects->ArrayInsert(options, 0, Text("one"));
  EXPECT_EQ(SetFieldOptions(node, options), 0U);
  Objects->ArrayInsert(options, 1, Text("two"));
  EXPECT_EQ(Entry(Field(0), "Opt"), "[(one)]");
  Objects->Destroy(options);
  EXPECT_EQ(SetFieldOptions(node, kNullObject), 0U);
  EXPECT_EQ(Entry(Field(0), "Opt"), "null");
  EXPECT_EQ(SetFieldOptions(nullptr, kNullObject), 1U);
}

TEST_F(Values, defaults_must_be_options) {
  FieldNode node = OpenOne("Ch", "/Opt [[(e) (Shown)] (plain)] /V (plain)");
  EXPECT_EQ(SetDefaultValue(node, Text("Shown")), 1U);
  EXPECT_EQ(Entry(Field(0), "DV"), "null");
  EXPECT_EQ(SetDefaultValue(node, Text("e")), 0U);
  EXPECT_EQ(Entry(Field(0), "DV"), "(e)");
  EXPECT_EQ(Entry(Field(0), "V"), "(e)");
  events.clear();
  EXPECT_EQ(SetDefaultValue(node, Text("e")), 0U);
  EXPECT_EQ(events, "") << "nothing to write";
  node = OpenOne("Btn", "/Ff 65536");
  EXPECT_EQ(SetDefaultValue(node, Text("e")), 1U);
  node = OpenOne("Tx", "");
  EXPECT_EQ(SetDefaultValue(node, Text("free")), 0U);
  EXPECT_EQ(Entry(Field(0), "V"), "(free)");
  node = OpenOne("Btn", "");
  EXPECT_EQ(SetDefaultValue(node, Name("Off")), 0U);
  EXPECT_EQ(Entry(Field(0), "DV"), "null");
}

TEST_F(Values, several_defaults_must_each_be_an_option) {
  FieldNode node = OpenOne("Ch", "/Opt [(a) (b) (c)]");
  const auto selection = [&](const std::vector<const char*>& texts) {
    const ObjectHandle array = Objects->NewArray(objects, false, 4);
    for (const char* text : texts) {
      Objects->ArrayInsert(array, Objects->ArrayLength(array), Text(text));
    }
    return array;
  };
  EXPECT_EQ(SetDefaultValue(node, selection({"a", "x"})), 1U);
  EXPECT_EQ(SetDefaultValue(node, selection({"a", "b", "c", "a"})), 1U);
  EXPECT_EQ(SetDefaultValue(node, selection({"a", "c"})), 0U);
  EXPECT_EQ(Entry(Field(0), "DV"), "[(a) (c)]");
  EXPECT_EQ(Entry(Field(0), "V"), "[(a) (c)]");
}

TEST_F(Values, several_defaults_stand_for_options_that_are_objects_of_their_own) {
  const std::string shared = FieldRef(1);
  Open({WidgetField("Ch", "f", "/Opt [(a) [" + shared + " (Shown)]]")}, {.objects = {"(b)"}});
  const ObjectHandle array = Objects->NewArray(objects, false, 1);
  Objects->ArrayInsert(array, 0, Text("b"));
  EXPECT_EQ(SetDefaultValue(FieldNodeOf(Field(0)), array), 0U);
  const ObjectHandle stored = Objects->ArrayGet(Objects->DictGet(Field(0), key::DV), 0);
  EXPECT_TRUE(Objects->IsIndirect(stored));
  EXPECT_FALSE(Objects->IsIndirect(Objects->ArrayGet(array, 0))) << "the caller's array";
  Objects->Destroy(array);
}

// Handlers of kinds.

TEST_F(Values, a_later_handler_replaces_one_of_its_kind) {
  static FieldTypeHandler second;
  second = *RecordingHandler<&key::Text>();
  RegisterFieldTypeHandler(&second);
  EXPECT_EQ(FindFieldTypeHandler(key::Text), &second);
  second.GetKindLabel = nullptr;
  RegisterFieldTypeHandler(nullptr);
  EXPECT_EQ(FindFieldTypeHandler(key::Widget), nullptr);
  std::vector<Atom> kinds;
  ForEachFieldTypeHandler(
      [](const FieldTypeHandler* handler, void* data) {
        static_cast<std::vector<Atom>*>(data)->push_back(handler->GetKind());
      },
      &kinds);
  EXPECT_EQ(kinds.front(), key::Text) << "newest first";
  EXPECT_EQ(std::count(kinds.begin(), kinds.end(), key::Text), 1);
}

}  // namespace
}  // namespace quillform
