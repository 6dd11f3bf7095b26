#include "plugin/model/field_values.h"

#include "plugin/model/field_kinds.h"
#include "plugin/model/keys.h"
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

  FieldNode OpenOne(const std::string& type, const std::string& entries) {
    Open({WidgetField(type, "f", entries)});
    return FieldNodeOf(Field(0));
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

TEST_F(Values, can_be_set_again_after_a_subscriber_failed) {
  FieldNode node = OpenOne("Tx", "");
  Subscribe(kEventValueChanged, [](FormEventRecord* event, void*) {
    if (ShowObject(event->value) == "(a)") Raise(quillon::kErrorGeneral);
  });
  EXPECT_EQ(CatchFailure([&] { SetFieldValue(node, Text("a")); }), quillon::kErrorGeneral);
  SetFieldValue(node, Text("b"));
  EXPECT_EQ(Entry(Field(0), "V"), "(b)");
}

TEST_F(Values, survive_subscribers_that_set_them_again_and_delete_the_field) {
  FieldNode node = OpenOne("Tx", "");
  Subscribe(kEventValueChanged,
            [](FormEventRecord* event, void*) { SetFieldValue(event->node, kNullObject); });
  SetFieldValue(node, Text("a"));
  EXPECT_EQ(Entry(Field(0), "V"), "(a)") << "not set from inside its own setting";
  built.clear();
  Subscribe(kEventValueChanged,
            [](FormEventRecord* event, void*) { DeleteFieldNode(event->node); });
  SetFieldValue(node, Text("b"));
  EXPECT_EQ(Node("f"), nullptr);
  EXPECT_EQ(built, "");
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

TEST_F(Values, do_not_go_to_push_buttons) {
  FieldNode push = OpenOne("Btn", "/Ff 65536");
  SetFieldValue(push, Text("a"));
  EXPECT_EQ(Entry(Field(0), "V"), "null");
  EXPECT_EQ(events + built, "");
  MarkAppearanceStale(push);
  SetFieldValue(push, Text("a"));
  EXPECT_EQ(built, "- null stale; ");
}

TEST_F(Values, of_check_boxes_switch_the_state_of_every_widget) {
  const auto widget = [](const char* state) {
    return "/Subtype /Widget /Rect [0 0 9 9] /Parent " + FieldRef(0) + " /AP << /N << /" + state +
           " 9 0 R /Off 9 0 R >> >>";
  };
  Load({"/T (f) /FT /Btn /Kids [" + FieldRef(1) + " " + FieldRef(2) + "]", widget("Yes"),
        widget("No")});
  FieldNode node = Node("f");
  SetFieldValue(node, Name("Off"));
  EXPECT_EQ(events, "will null; ") << "they are off already";
  SetFieldValue(node, Name("Yes"));
  EXPECT_EQ(Entry(Field(0), "V"), "/Yes");
  EXPECT_EQ(Entry(KidOf(Field(0), 0), "AS"), "/Yes");
  EXPECT_EQ(built, "Yes /Yes; ") << "the other widget has no such state and is built anew";
  built.clear();
  SetFieldValue(node, Name("Off"));
  EXPECT_EQ(Entry(Field(0), "V"), "null");
  for (std::uint32_t i = 0; i < 2; ++i) EXPECT_EQ(Entry(KidOf(Field(0), i), "AS"), "/Off");
  EXPECT_EQ(built, "");
}

TEST_F(Values, are_inherited_only_within_one_name) {
  Load({"/T (g) /FT /Tx /V (group) /DA (ga) /Kids [" + FieldRef(1) + " " + FieldRef(2) + "]",
        WidgetField("Tx", "x", "/Parent " + FieldRef(0)),
        WidgetField("Tx", "y", "/Q 2 /Parent " + FieldRef(0))},
       {.formEntries = "/Q 1", .defaultAppearance = ""});
  EXPECT_EQ(ShowObject(GetFieldValue(Node("g.x"))), "null");
  EXPECT_EQ(ShowObject(GetFieldEntry(Node("g.x"), kBitDA)), "(ga)");
  EXPECT_EQ(ShowObject(GetFieldEntry(Node("g.x"), kBitQ)), "1");
  EXPECT_EQ(ShowObject(GetFieldEntry(Node("g.y"), kBitQ)), "2");
  EXPECT_EQ(ShowObject(GetInherited(Node("g.y"), key::V)), "(group)");
}

TEST_F(Values, are_compared_within_bounds) {
  Open({"[" + FieldRef(0) + "]", "[" + FieldRef(1) + "]"});
  EXPECT_TRUE(ValuesEqual(Field(0), Field(0)));
  EXPECT_FALSE(ValuesEqual(Field(0), Field(1)))
      << "arrays that hold themselves are equal only when they are the same";
}

// Flags.

TEST_F(Values, flags_are_written_where_the_field_begins) {
  Open(TwoWidgets());
  Objects->DictPut(KidOf(Field(0), 0), key::Ff, Objects->NewInteger(objects, false, 1));
  LoadAllFields(doc);
  SetFieldFlags(FieldNodeOfWidget(Widget(1)), 1, 6);
  EXPECT_EQ(Entry(Field(0), "Ff"), "6");
  EXPECT_EQ(Entry(KidOf(Field(0), 0), "Ff"), "null");
  EXPECT_EQ(GetFieldFlags(FieldNodeOfWidget(Widget(0)), 1), 6U);
}

TEST_F(Values, flags_that_the_parent_gives_are_not_repeated) {
  Load({"/T (g) /Ff 2 /Kids [" + FieldRef(1) + "]",
        WidgetField("Tx", "x", "/Ff 1 /Parent " + FieldRef(0))});
  SetFieldFlags(Node("g.x"), 1, 2);
  EXPECT_EQ(Entry(KidOf(Field(0), 0), "Ff"), "null");
  SetFieldFlags(Node("g"), 1, 4);
  EXPECT_EQ(GetFieldFlags(Node("g.x"), 1), 4U);
}

// Options.

TEST_F(Values, options_are_selected_by_export_form_and_shown_by_display_form) {
  FieldNode node = OpenOne("Ch", "/Ff 131072 /Opt [[(e) (Shown)] (plain) [null (only)]]");
  SelectOption(node, 0);
  EXPECT_EQ(Entry(Field(0), "V"), "(e)");
  EXPECT_EQ(built, "- (Shown); ");
  SelectOption(node, 2);
  EXPECT_EQ(Entry(Field(0), "V"), "(only)");
}

}  // namespace
}  // namespace quillform
