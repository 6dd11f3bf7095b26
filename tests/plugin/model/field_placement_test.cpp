// Placing widgets under names, merging them into fields, renaming and retyping.
#include "plugin/model/field_copy.h"
#include "tests/plugin/model/placement_host.h"

namespace quillform {
namespace {

using quillon::test::WidgetField;

struct Placement : PlacementHost {};

TEST_F(Placement, missing_levels_are_made_and_found_again) {
  Open({}, {.formKey = ""});
  const ObjectHandle first = NewWidget(key::Tx);
  FieldNode node = AddWidgetUnderName(first, "a.b.c");
  EXPECT_STREQ(FieldNodeName(node), "a.b.c");
  EXPECT_NE(AddWidgetUnderName(NewWidget(key::Tx), "a.d"), nullptr);
  EXPECT_NE(AddWidgetUnderName(NewWidget(key::Tx), "e"), nullptr);
  EXPECT_EQ(Tree(), "a[b[c] d] e");
  EXPECT_FALSE(FieldNodeIsTerminal(Node("a.b")));
  EXPECT_TRUE(Objects->Equal(Objects->DictGet(first, key::Parent), Node("a.b")->dict));
  ExpectNodesFit();
}

TEST_F(Placement, a_name_that_cannot_be_given_leaves_nothing_behind) {
  Load({WidgetField("Tx", "t"), "/T (a) /Kids [" + FieldRef(2) + "]",
        WidgetField("Tx", "b", "/Parent " + FieldRef(1))});
  const std::string before = Tree();
  const std::string tooLong = "new." + std::string(251, 'x');
  for (const char* name : {"t.under", "a.b.under", "t.x.under", tooLong.c_str()}) {
    const ObjectHandle widget = NewWidget(key::Tx);
    Objects->DictPut(widget, key::T, Text("old"));
    EXPECT_EQ(AddWidgetUnderName(widget, name), nullptr) << name;
    EXPECT_EQ(Entry(widget, "T"), "null");
    EXPECT_EQ(Entry(widget, "Parent"), "null");
    EXPECT_EQ(Tree(), before) << name;
  }
  EXPECT_EQ(CatchFailure([&] { AddWidgetUnderName(NewWidget(key::Tx), "a"); }),
            quillon::kErrorBadParameter)
      << "a field of fields takes no widget";
  EXPECT_EQ(Tree(), before);
  ExpectNodesFit();
}

TEST_F(Placement, a_second_widget_splits_a_field_and_shares_its_value) {
  Load({WidgetField("Tx", "t", "/V (x) /Ff 2 /DA (/Helv 9 Tf)")});
  const ObjectHandle old = Field(0);
  const ObjectHandle widget = NewWidget(key::Tx, 2);
  Objects->DictPut(widget, key::V, Text("own"));
  ASSERT_NE(AddWidgetUnderName(widget, "t"), nullptr);
  EXPECT_EQ(Tree(), "t[- -]");
  EXPECT_EQ(Entry(Field(0), "FT"), "/Tx");
  EXPECT_EQ(Entry(Field(0), "V"), "(x)");
  EXPECT_EQ(Entry(Field(0), "Ff"), "2");
  for (const ObjectHandle part : {old, widget}) {
    for (const char* entry : {"T", "FT", "V", "Ff", "DA"}) EXPECT_EQ(Entry(part, entry), "null");
    EXPECT_TRUE(Objects->Equal(Objects->DictGet(part, key::Parent), Field(0)));
    EXPECT_EQ(GetFieldFlags(FieldNodeOf(part), 1), 2u);
    EXPECT_EQ(ShowObject(GetFieldValue(FieldNodeOf(part))), "(x)");
  }
  ExpectNodesFit();
}

TEST_F(Placement, a_subscriber_can_keep_the_second_widget_out) {
  Open({WidgetField("Tx", "t", "/V (x)")});
  Subscribe(kEventFieldSplit, [](FormEventRecord* event, void*) { event->cancel = 7; });
  static ObjectHandle widget;
  widget = NewWidget(key::Tx);
  Subscribe(kEventFieldSplit,
            [](FormEventRecord*, void*) { EXPECT_NE(FieldNodeOf(widget), nullptr); });
  EXPECT_EQ(AddWidgetUnderName(widget, "t"), nullptr);
  EXPECT_EQ(Tree(), "t[-]") << "the split stays made";
  EXPECT_EQ(Entry(widget, "Parent"), "null");
  EXPECT_EQ(ExistingNodeOf(widget), nullptr) << "whoever met it meanwhile";
  EXPECT_EQ(ShowObject(GetFieldValue(Node("t"))), "(x)");
  ExpectNodesFit();
}

TEST_F(Placement, a_widget_that_does_not_fit_is_refused_untouched) {
  Open({WidgetField("Btn", "check"), WidgetField("Tx", "t", "/Ff 2")});
  const ObjectHandle text = NewWidget(key::Tx);
  EXPECT_EQ(AddWidgetUnderName(text, "check"), nullptr);
  EXPECT_EQ(Entry(text, "FT"), "/Tx");
  const ObjectHandle other = NewWidget(key::Tx, 4096);
  EXPECT_EQ(AddWidgetUnderName(other, "t"), nullptr);
  EXPECT_EQ(Entry(other, "Ff"), "4096");
  EXPECT_EQ(Tree(), "check t");
  ExpectNodesFit();
}

TEST_F(Placement, a_path_widget_moves_under_its_path) {
  Load({WidgetField("Tx", "a.b", "/V (x)"), WidgetField("Tx", "a.c"), WidgetField("Tx", "d")});
  EXPECT_EQ(Tree(), "d a[c b]");
  EXPECT_EQ(Entry(Form(), "$Wa"), "true");
  EXPECT_EQ(ShowObject(GetFieldValue(Node("a.b"))), "(x)");
  EXPECT_EQ(Document->AnnotFlags(Widget(0)), 4u);
  ExpectNodesFit();
}

// Forty widgets: paths that share levels, paths that lead into a widget, the same path for widgets
// of two types, names without a path, and a field with kids.
std::vector<std::string> ManyPaths(std::uint32_t seed) {
  std::vector<std::string> fields = {
      "/T (a) /Kids [" + FieldRef(1) + "]",
      "/FT /Tx /T (b1) /Subtype /Widget /Rect [0 0 9 9] /Parent " + FieldRef(0)};
  while (fields.size() < 40) {
    seed = seed * 1664525u + 1013904223u;
    const std::string number = std::to_string(seed >> 28);
    const std::string names[] = {
        "a.b" + number, "a.c.d" + number, "x" + number + ".y", "x" + number, "z.z", "z." + number};
    fields.push_back(
        WidgetField((seed >> 20) % 8 == 0 ? "Btn" : "Tx", names[(seed >> 24) % std::size(names)]));
  }
  return fields;
}

void LoadOneByOne(ObjectHandle array) {
  for (std::uint32_t i = Objects->ArrayLength(array); i-- > 0;) {
    if (i >= Objects->ArrayLength(array)) continue;
    const ObjectHandle element = Objects->ArrayGet(array, i);
    const ObjectHandle kids = Objects->DictGet(element, key::Kids);
    if (IsKind(kids, ObjectKind::kArray)) {
      LoadOneByOne(kids);
    } else {
      FieldNodeOf(element);
    }
  }
}

TEST_F(Placement, many_widgets_are_placed_in_bulk_as_one_by_one) {
  for (const char* entries : {"", "/NeedAppearances true"}) {
    for (std::uint32_t seed = 1; seed <= 20; ++seed) {
      Open(ManyPaths(seed), {.formEntries = entries});
      LoadOneByOne(FieldsArray());
      const std::string tree = Tree();
      const std::string names = WalkedNames(doc, false, false);
      Load(ManyPaths(seed), {.formEntries = entries});
      ASSERT_EQ(Tree(), tree) << entries << seed;
      ASSERT_EQ(WalkedNames(doc, false, false), names) << entries << seed;
      ExpectNodesFit();
    }
  }
}

TEST_F(Placement, inherited_entries_are_not_repeated) {
  Open({"/T (a) /FT /Tx /Ff 1 /DA (/Helv 9 Tf) /Q 1 /Kids [" + FieldRef(1) + "]",
        WidgetField("Tx", "b", "/Parent " + FieldRef(0))});
  const ObjectHandle widget = NewWidget(key::Tx, 1);
  Objects->DictPut(widget, key::DA, Text("/Helv 9 Tf"));
  Objects->DictPut(widget, key::Q, Objects->NewInteger(objects, false, 2));
  FieldNode node = AddWidgetUnderName(widget, "a.c");
  ASSERT_NE(node, nullptr);
  for (const char* entry : {"DA", "Ff", "FT"}) EXPECT_EQ(Entry(widget, entry), "null") << entry;
  EXPECT_EQ(Entry(widget, "Q"), "2");
  EXPECT_EQ(node->type, key::Tx);
  EXPECT_EQ(GetFieldFlags(node, 1), 1u);
}

TEST_F(Placement, retyping_needs_the_only_widget_and_joins_it_with_its_field) {
  Load(TwoWidgets("/V (x) /Ff 4098"));
  const ObjectHandle kept = KidOf(Field(0), 0);
  EXPECT_EQ(ChangeFieldType(FieldNodeOf(kept), key::Btn), 1u);
  EXPECT_EQ(FieldNodeOf(kept)->type, key::Tx);
  DeleteFieldNode(FieldNodeOf(KidOf(Field(0), 1)));
  EXPECT_EQ(ChangeFieldType(FieldNodeOf(kept), key::Btn), 0u);
  EXPECT_EQ(Tree(), "pair");
  EXPECT_TRUE(Objects->Equal(Field(0), kept));
  EXPECT_EQ(Entry(kept, "FT"), "/Btn");
  EXPECT_EQ(Entry(kept, "Ff"), "2") << "without the flag of the old type";
  EXPECT_EQ(Entry(kept, "V"), "(x)");
  EXPECT_EQ(Entry(kept, "Parent"), "null");
  ExpectNodesFit();
}

TEST_F(Placement, renaming_one_of_two_widgets_takes_along_what_it_inherited) {
  Load(TwoWidgets("/V (x) /DA (/Helv 9 Tf) /MaxLen 5"));
  const ObjectHandle widget = KidOf(Field(0), 1);
  FieldNode renamed = RenameWidgetField(FieldNodeOf(widget), "new.name");
  ASSERT_NE(renamed, nullptr);
  EXPECT_EQ(Tree(), "pair[-] new[name]");
  EXPECT_EQ(renamed->type, key::Tx);
  EXPECT_EQ(ShowObject(GetFieldValue(renamed)), "(x)");
  EXPECT_EQ(Entry(widget, "MaxLen"), "5");
  ASSERT_NE(RenameWidgetField(renamed, "pair"), nullptr);
  EXPECT_EQ(Tree(), "pair[- -]") << "and the level that it left empty is gone";
  EXPECT_EQ(Entry(widget, "V"), "null");
  ExpectNodesFit();
}

TEST_F(Placement, a_rename_that_is_refused_keeps_the_old_name) {
  Open({WidgetField("Tx", "t", "/V (x)"), WidgetField("Btn", "check"),
        "/T (a) /Kids [" + FieldRef(3) + "]", WidgetField("Tx", "b", "/Parent " + FieldRef(2))});
  FieldNode node = FieldNodeOf(Field(0));
  EXPECT_EQ(CatchFailure([&] { RenameWidgetField(node, "a"); }), quillon::kErrorBadParameter);
  EXPECT_EQ(RenameWidgetField(node, "check"), nullptr);
  EXPECT_EQ(Tree(), "check a[b] t");
  EXPECT_EQ(ShowObject(GetFieldValue(Node("t"))), "(x)");
  ExpectNodesFit();
}

TEST_F(Placement, a_dissolved_subtree_is_placed_under_its_paths) {
  Load({"/T (a) /FT /Tx /V (x) /Kids [" + FieldRef(1) + " " + FieldRef(2) + "]",
        WidgetField("Tx", "b", "/Parent " + FieldRef(0)),
        "/T (c) /Parent " + FieldRef(0) + " /Kids [" + FieldRef(3) + "]",
        "/Subtype /Widget /Rect [0 0 9 9] /Parent " + FieldRef(2)});
  const ObjectHandle top = Field(0);
  ReparentKids(top);
  EXPECT_EQ(Tree(), "");
  EXPECT_EQ(WalkedNames(doc, true, false), "");
  EXPECT_STREQ(FieldNodeName(FieldNodeOfWidget(Widget(0))), "a.b");
  EXPECT_EQ(FieldNodeOfWidget(Widget(1))->type, key::Tx) << "inherited from what is gone";
  EXPECT_EQ(Tree(), "a[b c]");
  ExpectNodesFit();
}

TEST_F(Placement, a_circle_of_kids_is_dissolved_once) {
  Open({"/T (a) /Kids [" + FieldRef(1) + "]",
        "/T (b) /Parent " + FieldRef(0) + " /Kids [" + FieldRef(0) + "]"});
  const ObjectHandle top = Field(0);
  const ObjectHandle kid = KidOf(top, 0);
  ReparentKids(top);
  EXPECT_EQ(Entry(top, "Kids"), "null");
  EXPECT_EQ(Entry(kid, "Kids"), "null");
}

TEST_F(Placement, a_copy_in_another_document_carries_what_it_inherited) {
  Load(TwoWidgets("/V (x) /DA (/Helv 9 Tf) /Ff 2"));
  FieldNode source = FieldNodeOf(KidOf(Field(0), 0));
  const DocHandle other = quillon::test::OpenTestDocument(quillon::test::FormPdf({}));
  const ObjectHandle dict = Objects->NewDict(Document->ObjectDocOf(other), true, 5);
  Objects->DictPut(dict, key::Subtype,
                   Objects->NewName(Document->ObjectDocOf(other), false, key::Widget));
  EXPECT_EQ(CopyWidgetField(dict, source, nullptr, false), 0u);
  FieldNode copy = FindFieldByName(other, "pair");
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(copy->type, key::Tx);
  EXPECT_EQ(GetFieldFlags(copy, 1), 2u);
  EXPECT_EQ(ShowObject(GetFieldValue(copy)), "(x)");
  EXPECT_EQ(Tree(), "pair[- -]") << "the source stays as it was";
}

}  // namespace
}  // namespace quillform
