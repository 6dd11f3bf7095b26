// Inserting, deleting and extracting pages.
#include "quillon/document/page_edit.h"

#include <gtest/gtest.h>

#include "quillon/core/operations.h"
#include "quillon/document/notify.h"
#include "quillon/document/open_document.h"
#include "quillon/document/operations.h"
#include "quillon/objects/operations.h"
#include "quillon/objects/pdf_file.h"
#include "tests/support/pdf_builder.h"
#include "tests/support/test_host.h"

namespace quillon {
namespace {

using test::OpenTestDocument;
using test::Ref;

std::string lastNote;

void NoteInserted(DocHandle, std::int32_t after, std::uint32_t count, FailureCode error, void*) {
  lastNote = "inserted " + std::to_string(after) + " " + std::to_string(count) + " " +
             std::to_string(error);
}

// Pages with contents that tell them apart ("(A1) Tj"), in nodes of `perNode` pages that give the
// rotation. `extra` is written into the first page.
std::string PagesPdf(const std::string& letter, int pages, int perNode,
                     const std::string& nodeEntries = "", const std::string& extra = "") {
  test::PdfBuilder pdf;
  pdf.Add("<< /Type /Catalog /Pages 2 0 R >>");
  pdf.Reserve();
  std::string nodes;
  for (int done = 0; done < pages; done += perNode) {
    const int node = pdf.Reserve();
    std::string kids;
    const int count = std::min(perNode, pages - done);
    for (int i = 0; i < count; ++i) {
      const int content = pdf.AddStream("", "(" + letter + std::to_string(done + i + 1) + ") Tj");
      kids += Ref(pdf.Add("<< /Type /Page /Parent " + Ref(node) + " /Contents " + Ref(content) +
                          (done + i == 0 ? extra : "") + " >>")) +
              " ";
    }
    pdf.Set(node, "<< /Type /Pages /Parent 2 0 R /Kids [" + kids + "] /Count " +
                      std::to_string(count) + nodeEntries + " >>");
    nodes += Ref(node) + " ";
  }
  pdf.Set(2, "<< /Type /Pages /Kids [" + nodes + "] /Count " + std::to_string(pages) +
                 " /MediaBox [0 0 100 200] >>");
  return pdf.Finish(1);
}

Atom Name(const char* text) { return core::AtomFromName(text); }

struct PageEdit : testing::Test {
  PageEdit() {
    lastNote.clear();
    AddSubscriber({kNotePagesInserted, 0, reinterpret_cast<Callback>(&NoteInserted), nullptr});
  }

  // The contents of the pages, and a check of the page tree on the way.
  static std::string Shown(DocHandle doc) {
    std::string shown;
    const std::uint32_t count = document::PageCount(doc);
    for (std::uint32_t number = 0; number < count; ++number) {
      const PageHandle page = document::AcquirePage(doc, number);
      const ObjectHandle dict = document::PageDict(page);
      const std::string content = DecodedStream(objects::DictGet(dict, Name("Contents")));
      shown += (shown.empty() ? "" : " ") + content.substr(1, content.find(')') - 1);
      document::ReleasePage(page);
    }
    const ObjectHandle root =
        objects::DictGet(objects::DocRoot(document::ObjectDocOf(doc)), Name("Pages"));
    EXPECT_EQ(CheckNode(root), count);
    return shown;
  }

  // The pages below a node; each node must know its parent and count.
  static std::uint32_t CheckNode(ObjectHandle node) {
    const ObjectHandle kids = objects::DictGet(node, Name("Kids"));
    if (objects::TypeOf(kids) != ObjectKind::kArray) return 1;
    std::uint32_t pages = 0;
    for (std::uint32_t i = 0; i < objects::ArrayLength(kids); ++i) {
      const ObjectHandle kid = objects::ArrayGet(kids, i);
      EXPECT_TRUE(objects::Equal(objects::DictGet(kid, Name("Parent")), node));
      pages += CheckNode(kid);
    }
    EXPECT_EQ(objects::IntegerValue(objects::DictGet(node, Name("Count"))),
              static_cast<std::int32_t>(pages));
    EXPECT_LE(objects::ArrayLength(kids), 64U);
    return pages;
  }

  test::TestHost host;
};

TEST_F(PageEdit, PagesComeWhereTheyAreToldTo) {
  const DocHandle doc = OpenTestDocument(PagesPdf("A", 3, 2));
  const DocHandle other = OpenTestDocument(PagesPdf("B", 3, 3));
  InsertPages(doc, 0, other, 1, 2);
  EXPECT_EQ(lastNote, "inserted 0 2 0");
  EXPECT_EQ(Shown(doc), "A1 B2 B3 A2 A3");
  InsertPages(doc, -1, other, 0, 0);
  InsertPages(doc, 5, other, 0, 0);
  EXPECT_EQ(Shown(doc), "B1 A1 B2 B3 A2 A3 B1");
  EXPECT_EQ(Shown(other), "B1 B2 B3");
  EXPECT_FALSE(document::GetFlags(other) & kDocModified);
  const DocHandle again = OpenTestDocument(DocumentToBytes(doc));
  EXPECT_EQ(Shown(again), "B1 A1 B2 B3 A2 A3 B1");
}

TEST_F(PageEdit, CopiesKeepWhatTheyInheritedAndTakeNothingNew) {
  const DocHandle doc = OpenTestDocument(PagesPdf("A", 1, 1, " /Rotate 90 /CropBox [10 10 20 20]"));
  const DocHandle other = OpenTestDocument(PagesPdf("B", 2, 2));
  InsertPages(doc, 0, other, 0, 0);
  InsertPages(other, 1, doc, 0, 0);
  for (const auto& [of, number, rotation, right] :
       {std::tuple{doc, 1U, 0, 100}, std::tuple{other, 2U, 90, 20}}) {
    const PageHandle page = document::AcquirePage(of, number);
    FixedRect box{};
    document::PageBox(page, &box);
    EXPECT_EQ(document::PageRotation(page), rotation);
    EXPECT_EQ(box.right, right * kFixedOne);
    document::ReleasePage(page);
  }
}

// Two pages; a field "f" with a widget on each, below a field "top"; a link from the first page to
// the second, which shows a widget of its own.
std::string FieldsPdf() {
  test::PdfBuilder pdf;
  pdf.Add("<< /Type /Catalog /Pages 2 0 R /Form << /Fields [5 0 R 9 0 R] /DA (/F 7 Tf) >> >>");
  pdf.Add("<< /Type /Pages /Kids [3 0 R 4 0 R] /Count 2 >>");
  pdf.Add("<< /Type /Page /Parent 2 0 R /Annots [7 0 R 10 0 R] /StructParents 3 >>");
  pdf.Add("<< /Type /Page /Parent 2 0 R /Annots [8 0 R 9 0 R] >>");
  pdf.Add("<< /T (top) /Kids [6 0 R] >>");
  pdf.Add("<< /T (f) /FT /Tx /Parent 5 0 R /Kids [7 0 R 8 0 R] >>");
  pdf.Add("<< /Subtype /Widget /Rect [0 0 9 9] /Parent 6 0 R /P 3 0 R /StructParent 4 >>");
  pdf.Add("<< /Subtype /Widget /Rect [0 0 9 9] /Parent 6 0 R /P 4 0 R >>");
  pdf.Add("<< /Subtype /Widget /Rect [0 0 9 9] /T (own) /FT /Tx /P 4 0 R >>");
  pdf.Add("<< /Subtype /Link /Rect [0 0 9 9] /Dest [4 0 R /Fit] >>");
  return pdf.Finish(1);
}

TEST_F(PageEdit, WidgetsBringTheFieldsAboveThemAndNothingElse) {
  const DocHandle other = OpenTestDocument(FieldsPdf());
  const DocHandle doc = ExtractPages(other, 0, 0);
  ASSERT_EQ(document::PageCount(doc), 1U);
  const PageHandle page = document::AcquirePage(doc, 0);
  const ObjectHandle dict = document::PageDict(page);
  const ObjectHandle widget = document::AnnotDict(document::AnnotAt(page, 0));
  const ObjectHandle link = document::AnnotDict(document::AnnotAt(page, 1));
  document::ReleasePage(page);
  EXPECT_TRUE(objects::Equal(objects::DictGet(widget, Name("P")), dict));
  const ObjectHandle field = objects::DictGet(widget, Name("Parent"));
  const ObjectHandle kids = objects::DictGet(field, Name("Kids"));
  ASSERT_EQ(objects::ArrayLength(kids), 1U);
  EXPECT_TRUE(objects::Equal(objects::ArrayGet(kids, 0), widget));
  const ObjectHandle top = objects::DictGet(field, Name("Parent"));
  EXPECT_TRUE(objects::DictKnown(top, Name("T")));
  EXPECT_TRUE(objects::DictKnown(top, Name("DA"))) << "what the form gave its fields";
  EXPECT_EQ(objects::DictGet(widget, Name("StructParent")).first, 0U);
  EXPECT_EQ(objects::DictGet(dict, Name("StructParents")).first, 0U);
  const ObjectHandle destination = objects::DictGet(link, Name("Dest"));
  EXPECT_EQ(objects::TypeOf(objects::ArrayGet(destination, 0)), ObjectKind::kNull);
  const std::string bytes = DocumentToBytes(doc);
  EXPECT_EQ(bytes.find("(own)"), std::string::npos);
}

TEST_F(PageEdit, AnExtractedFormKeepsTheKeyOfItsFile) {
  const DocHandle doc = ExtractPages(OpenTestDocument(FieldsPdf()), 0, 0);
  const ObjectDoc objectDoc = document::ObjectDocOf(doc);
  const ObjectHandle form = objects::NewDict(objectDoc, 1, 1);
  objects::DictPut(form, Name("Fields"), objects::NewArray(objectDoc, 0, 0));
  objects::DictPut(objects::DocRoot(objectDoc), Name("QuillForm"), form);
  EXPECT_NE(DocumentToBytes(doc).find("/Form "), std::string::npos);
}

}  // namespace
}  // namespace quillon
