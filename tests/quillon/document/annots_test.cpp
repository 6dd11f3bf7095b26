#include "quillon/document/annots.h"

#include <gtest/gtest.h>

#include <functional>

#include "quillon/document/names.h"
#include "quillon/document/notify.h"
#include "quillon/document/open_document.h"
#include "quillon/objects/operations.h"
#include "quillon/objects/pdf_file.h"
#include "tests/support/pdf_builder.h"
#include "tests/support/test_host.h"

namespace quillon {
namespace {

using test::RaisedBy;

std::function<void()> whenRemoved;

void WillRemove(AnnotHandle, std::int32_t, Atom, FailureCode, void*) {
  if (whenRemoved) whenRemoved();
}

// Page 1 has a direct Annots array with three annotations among other things, page 2 an indirect
// one, page 3 none. Annotation 8 has no P, 9 one that is wrong; 12 stands nowhere.
constexpr int kDirect = 1;
std::string AnnotsPdf() {
  test::PdfBuilder pdf;
  pdf.Add("<< /Pages 2 0 R >>");
  pdf.Add("<< /Kids [3 0 R 4 0 R 5 0 R] /MediaBox [0 0 600 800] >>");
  pdf.Add("<< /Type /Page /Annots [null 7 0 R << /Subtype /Text >> 5 99 0 R 8 0 R] >>");
  pdf.Add("<< /Type /Page /Annots 6 0 R >>");
  pdf.Add("<< /Type /Page >>");
  pdf.Add("[9 0 R 10 0 R]");
  pdf.Add("<< /Subtype /Widget /P 3 0 R /Rect [30 40 10 20] >>");
  pdf.Add("<< /Subtype /Widget >>");
  pdf.Add("<< /Subtype /Widget /P 3 0 R /Rect [1 2 3 4] >>");
  pdf.Add("<< /Rect [0 0 1 1] >>");
  pdf.Add("<< /Neither 1 >>");
  pdf.Add("<< /Subtype /Widget >>");
  return pdf.Finish(1);
}

struct AnnotsTest : testing::Test {
  void SetUp() override {
    whenRemoved = nullptr;
    doc = test::OpenTestDocument(AnnotsPdf());
    for (std::uint32_t number = 0; number < 3; ++number) {
      pages.push_back(document::AcquirePage(doc, number));
    }
    AddSubscriber({kNoteAnnotWillRemove, 1, reinterpret_cast<Callback>(&WillRemove), nullptr});
  }
  void TearDown() override {
    for (const PageHandle page : pages) document::ReleasePage(page);
    whenRemoved = nullptr;
  }
  AnnotHandle Annot(std::uint32_t number) {
    return document::AnnotFromDict(ObjectByNumber(document::ObjectDocOf(doc), number));
  }

  test::TestHost host;
  DocHandle doc = nullptr;
  std::vector<PageHandle> pages;
};

TEST_F(AnnotsTest, OnlyDictionariesCount) {
  EXPECT_EQ(document::AnnotCount(pages[0]), 3U);
  EXPECT_EQ(document::AnnotCount(pages[1]), 2U);
  EXPECT_EQ(document::AnnotCount(pages[2]), 0U);
  EXPECT_TRUE(document::AnnotEqual(document::AnnotAt(pages[0], 0), Annot(7)));
  EXPECT_TRUE(document::AnnotEqual(document::AnnotAt(pages[0], 2), Annot(8)));
  EXPECT_EQ(document::AnnotIndex(pages[0], Annot(8)), 2);
  EXPECT_EQ(document::AnnotIndex(pages[0], document::AnnotAt(pages[0], kDirect)), kDirect);
  EXPECT_EQ(document::AnnotIndex(pages[1], Annot(8)), -1);
  EXPECT_EQ(RaisedBy([&] { document::AnnotAt(pages[0], 3); }), kErrorBadParameter);
}

TEST_F(AnnotsTest, ThePageIsFoundWhateverPSays) {
  EXPECT_EQ(document::PageOfAnnot(Annot(7)), 0);
  EXPECT_EQ(document::PageOfAnnot(Annot(8)), 0);
  EXPECT_EQ(document::PageOfAnnot(Annot(9)), 1);
  EXPECT_EQ(document::PageOfAnnot(Annot(12)), -1);
  EXPECT_EQ(document::PageOfAnnot(document::AnnotAt(pages[0], kDirect)), 0);
}

// The arrays may be changed by anybody through the object layer.
TEST_F(AnnotsTest, PlacesFollowChangesOfTheArrays) {
  EXPECT_EQ(document::PageOfAnnot(Annot(12)), -1);
  const ObjectHandle array =
      objects::DictGet(document::PageDict(pages[0]), document::Names().Annots);
  objects::ArrayInsert(array, 0, ObjectByNumber(document::ObjectDocOf(doc), 12));
  EXPECT_EQ(document::PageOfAnnot(Annot(12)), 0);
  EXPECT_EQ(document::AnnotIndex(pages[0], Annot(8)), 3);
  EXPECT_TRUE(document::AnnotEqual(document::AnnotAt(pages[0], 1), Annot(7)));
  objects::ArrayRemove(array, 0);
  EXPECT_EQ(document::PageOfAnnot(Annot(12)), -1);
  EXPECT_EQ(document::AnnotCount(pages[0]), 3U);
}

TEST_F(AnnotsTest, RemovingTakesTheAnnotationEvenWhenItMovedMeanwhile) {
  whenRemoved = [&] {
    whenRemoved = nullptr;
    document::InsertAnnot(pages[0], 0, Annot(12));
  };
  document::RemoveAnnot(pages[0], 0);
  EXPECT_EQ(document::PageOfAnnot(Annot(7)), -1);
  EXPECT_EQ(document::AnnotIndex(pages[0], Annot(12)), 0);
  EXPECT_EQ(document::AnnotCount(pages[0]), 3U);
  whenRemoved = [&] {
    whenRemoved = nullptr;
    document::RemoveAnnot(pages[0], 0);
  };
  document::RemoveAnnot(pages[0], 0);
  EXPECT_EQ(document::AnnotCount(pages[0]), 2U) << "what is gone already is not removed twice";
}

}  // namespace
}  // namespace quillon
