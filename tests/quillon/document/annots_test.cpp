#include "quillon/document/annots.h"

#include <gtest/gtest.h>

#include <functional>

#include "quillon/core/operations.h"
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

struct Heard {
  std::uint32_t number;
  std::int32_t page;
  Atom key;
};
std::vector<Heard> heard;
std::function<void()> whenHeard;

template <std::uint32_t number>
void Hear(AnnotHandle, std::int32_t page, Atom key, FailureCode, void*) {
  heard.push_back({number, page, key});
  if (whenHeard) whenHeard();
}

template <std::uint32_t number>
void Listen() {
  AddSubscriber({number, 1, reinterpret_cast<Callback>(&Hear<number>), nullptr});
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
    heard.clear();
    whenHeard = nullptr;
    doc = test::OpenTestDocument(AnnotsPdf());
    for (std::uint32_t number = 0; number < 3; ++number) {
      pages.push_back(document::AcquirePage(doc, number));
    }
    Listen<kNoteAnnotWillChange>();
    Listen<kNoteAnnotChanged>();
    Listen<kNoteAnnotAdded>();
    Listen<kNoteAnnotWillRemove>();
  }
  void TearDown() override {
    for (const PageHandle page : pages) document::ReleasePage(page);
    whenHeard = nullptr;
  }
  AnnotHandle Annot(std::uint32_t number) {
    return document::AnnotFromDict(ObjectByNumber(document::ObjectDocOf(doc), number));
  }
  std::vector<std::uint32_t> HeardNumbers() {
    std::vector<std::uint32_t> numbers;
    for (const Heard& each : heard) numbers.push_back(each.number);
    return numbers;
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

TEST_F(AnnotsTest, ChangesAreAnnouncedOnBothSides) {
  const FixedRect rect = {0, 5 * kFixedOne, 5 * kFixedOne, 0};
  document::AnnotSetRect(Annot(9), &rect);
  document::SetAnnotFlags(Annot(12), 2);
  ASSERT_EQ(heard.size(), 4U);
  EXPECT_EQ(HeardNumbers(), (std::vector<std::uint32_t>{kNoteAnnotWillChange, kNoteAnnotChanged,
                                                        kNoteAnnotWillChange, kNoteAnnotChanged}));
  EXPECT_EQ(heard[1].page, 1);
  EXPECT_EQ(heard[1].key, document::Names().Rect);
  EXPECT_EQ(heard[2].page, -1);
  EXPECT_EQ(heard[3].key, document::Names().F);
  EXPECT_EQ(document::AnnotFlags(Annot(12)), 2U);
}

TEST_F(AnnotsTest, NewOnesStandAtTheEndOfTheirPage) {
  const FixedRect rect = {0, 5 * kFixedOne, 5 * kFixedOne, 0};
  const Atom subtype = core::AtomFromName("Widget");
  const AnnotHandle first = document::NewAnnot(pages[2], subtype, &rect);
  const AnnotHandle second = document::NewAnnot(pages[2], subtype, &rect);
  document::InsertAnnot(pages[2], 1, Annot(12));
  EXPECT_EQ(document::AnnotIndex(pages[2], first), 0);
  EXPECT_EQ(document::AnnotIndex(pages[2], Annot(12)), 1);
  EXPECT_EQ(document::AnnotIndex(pages[2], second), 2);
  EXPECT_EQ(document::PageOfAnnot(second), 2);
  EXPECT_EQ(document::AnnotSubtype(first), subtype);
  EXPECT_EQ(HeardNumbers(), (std::vector<std::uint32_t>(3, kNoteAnnotAdded)));
  const DocHandle other = test::OpenTestDocument(AnnotsPdf());
  const PageHandle page = document::AcquirePage(other, 0);
  EXPECT_EQ(RaisedBy([&] { document::InsertAnnot(page, 0, first); }), kErrorBadParameter);
  document::ReleasePage(page);
}

TEST_F(AnnotsTest, RemovingTakesTheAnnotationEvenWhenItMovedMeanwhile) {
  whenHeard = [&] {
    whenHeard = nullptr;
    document::InsertAnnot(pages[0], 0, Annot(12));
  };
  document::RemoveAnnot(pages[0], 0);
  EXPECT_EQ(document::PageOfAnnot(Annot(7)), -1);
  EXPECT_EQ(document::AnnotIndex(pages[0], Annot(12)), 0);
  EXPECT_EQ(document::AnnotCount(pages[0]), 3U);
  whenHeard = [&] {
    whenHeard = nullptr;
    document::RemoveAnnot(pages[0], 0);
  };
  document::RemoveAnnot(pages[0], 0);
  EXPECT_EQ(document::AnnotCount(pages[0]), 2U) << "what is gone already is not removed twice";
}

}  // namespace
}  // namespace quillon
