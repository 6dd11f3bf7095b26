// What becomes of fields when annotations and pages come and go.
#include "quillon/document/page_edit.h"
#include "tests/plugin/model/placement_host.h"

namespace quillform {
namespace {

using quillon::test::WidgetField;

constexpr FixedRect kRect = {0, 9 * kFixedOne, 9 * kFixedOne, 0};

struct FieldPages : PlacementHost {
  struct Page {
    Page(DocHandle doc, std::uint32_t number) : handle(Document->AcquirePage(doc, number)) {}
    ~Page() { Document->ReleasePage(handle); }
    PageHandle handle;
  };

  void InsertFrom(const std::vector<std::string>& fields,
                  const quillon::test::FormPdfParts& parts = {}) {
    const DocHandle other = quillon::test::OpenTestDocument(quillon::test::FormPdf(fields, parts));
    quillon::InsertPages(doc, 0, other, 0, 0);
  }
};

TEST_F(FieldPages, a_new_widget_prints_and_turns_with_its_page) {
  Open({}, {.pageEntries = "/Rotate 90", .formKey = ""});
  const AnnotHandle annot = Document->NewAnnot(Page(doc, 0).handle, key::Widget, &kRect);
  EXPECT_EQ(Document->AnnotFlags(annot), 4u);
  EXPECT_EQ(Entry(Document->AnnotDict(annot), "MK"), "<< /R 90 >>");
  EXPECT_TRUE(DocumentHasForm(doc));
  const AnnotHandle note = Document->NewAnnot(Page(doc, 0).handle, key::Text, &kRect);
  EXPECT_EQ(Document->AnnotFlags(note), 0u);
}

TEST_F(FieldPages, no_widget_stays_where_the_form_cannot_be_used) {
  Open({}, {.formEntries = "/QuillForm 0.5"});
  Document->NewAnnot(Page(doc, 0).handle, key::Widget, &kRect);
  EXPECT_EQ(WidgetCount(), 0u);
}

TEST_F(FieldPages, a_removed_widget_leaves_the_tree_bare) {
  Open({WidgetField("Tx", "t", "/V (x)"),
        "/FT /Ch /T (c) /Kids [" + FieldRef(2) + " " + FieldRef(3) + "]",
        "/Subtype /Widget /Rect [0 0 9 9] /Opt [(o)] /Parent " + FieldRef(1),
        "/Subtype /Widget /Rect [0 0 9 9] /Parent " + FieldRef(1)});
  const ObjectHandle alone = Document->AnnotDict(Widget(0));
  const ObjectHandle kid = Document->AnnotDict(Widget(1));
  const Page page(doc, 0);
  Document->RemoveAnnot(page.handle, 1);
  EXPECT_EQ(Tree(), "t c[-]");
  EXPECT_EQ(Entry(kid, "Parent"), "null");
  EXPECT_EQ(Entry(kid, "Opt"), "null");
  Document->RemoveAnnot(page.handle, 0);
  EXPECT_EQ(Tree(), "c[-]");
  for (const char* entry : {"T", "V"}) EXPECT_EQ(Entry(alone, entry), "null");
  ExpectNodesFit();
}

TEST_F(FieldPages, inserted_widgets_join_the_fields_of_their_names) {
  Open({WidgetField("Tx", "t", "/V (x)")});
  InsertFrom({WidgetField("Tx", "t", "/V (other)"),
              "/FT /Tx /T (t) /Kids [" + FieldRef(2) + " " + FieldRef(3) + "]",
              "/Subtype /Widget /Rect [0 0 9 9] /Parent " + FieldRef(1),
              "/Subtype /Widget /Rect [0 0 9 9] /Parent " + FieldRef(1)});
  LoadAllFields(doc);
  EXPECT_EQ(WalkedNames(doc, true, false), "t t t t");
  EXPECT_EQ(ShowObject(GetFieldValue(Node("t"))), "(x)");
  ExpectNodesFit();
}

TEST_F(FieldPages, pages_bring_a_form_to_a_document_without_one) {
  Open({}, {.formKey = ""});
  InsertFrom({WidgetField("Tx", "t", "/V (x)")});
  EXPECT_EQ(Tree(), "t");
}

TEST_F(FieldPages, inserted_widgets_without_a_place_go_unless_they_are_buttons) {
  Open({WidgetField("Btn", "check")});
  InsertFrom({"/Subtype /Widget /FT /Tx /Rect [0 0 9 9]",
              "/Subtype /Widget /FT /Btn /Rect [0 0 9 9]", WidgetField("Tx", "check")});
  const Page page(doc, 1);
  ASSERT_EQ(Document->AnnotCount(page.handle), 1u);
  EXPECT_EQ(Entry(Document->AnnotDict(Document->AnnotAt(page.handle, 0)), "FT"), "/Btn");
  EXPECT_EQ(Tree(), "check");
}

TEST_F(FieldPages, inserted_fields_keep_the_fonts_of_their_form) {
  const auto form = [](const std::string& font) {
    return "/DR << /Font << /F1 << /Type /Font /BaseFont /" + font + " >> /" + font +
           " << /Type /Font /BaseFont /" + font + " >> >> >>";
  };
  Open({WidgetField("Tx", "here")}, {.formEntries = form("Courier")});
  InsertFrom({WidgetField("Tx", "t", "/DA (/F1 9 Tf)")}, {.formEntries = form("Symbol")});
  LoadAllFields(doc);
  const auto fontOf = [](ObjectHandle resources, const char* name) {
    const ObjectHandle fonts = Objects->DictGet(resources, key::Font);
    return Entry(Objects->DictGet(fonts, Core->AtomFromName(name)), "BaseFont");
  };
  EXPECT_EQ(fontOf(GetFieldEntry(Node("t"), kBitDR), "F1"), "/Symbol");
  EXPECT_EQ(fontOf(GetFieldEntry(Node("here"), kBitDR), "F1"), "/Courier");
  for (const char* name : {"Courier", "Symbol"}) {
    EXPECT_EQ(fontOf(Objects->DictGet(Form(), key::DR), name), "/" + std::string(name));
  }
}

}  // namespace
}  // namespace quillform
