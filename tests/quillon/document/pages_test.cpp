#include <gtest/gtest.h>

#include "quillon/document/operations.h"
#include "tests/support/pdf_builder.h"
#include "tests/support/test_host.h"

namespace quillon {
namespace {

using test::Ref;

struct PagesTest : testing::Test {
  PageHandle Acquire(DocHandle doc, std::uint32_t number) {
    held.push_back(document::AcquirePage(doc, number));
    return held.back();
  }
  void TearDown() override {
    for (const PageHandle page : held) document::ReleasePage(page);
  }
  FixedRect Box(DocHandle doc, std::uint32_t number) {
    FixedRect box{};
    document::PageBox(Acquire(doc, number), &box);
    return box;
  }

  test::TestHost host;
  std::vector<PageHandle> held;
};

void ExpectBox(const FixedRect& box, int left, int top, int right, int bottom) {
  EXPECT_EQ(box.left, left * kFixedOne);
  EXPECT_EQ(box.top, top * kFixedOne);
  EXPECT_EQ(box.right, right * kFixedOne);
  EXPECT_EQ(box.bottom, bottom * kFixedOne);
}

// A tree of two levels: the inner node overrides the rotation, its second page the box.
std::string TreePdf() {
  test::PdfBuilder pdf;
  pdf.Add("<< /Type /Catalog /Pages 2 0 R >>");
  pdf.Add("<< /Type /Pages /Kids [3 0 R 4 0 R] /Count 3 /MediaBox [0 0 400 500] /Rotate -90 >>");
  pdf.Add("<< /Type /Page /Parent 2 0 R >>");
  pdf.Add("<< /Type /Pages /Parent 2 0 R /Kids [5 0 R null 6 0 R] /Count 2 /Rotate 450 >>");
  pdf.Add("<< /Type /Page /Parent 4 0 R /Rotate 45 >>");
  pdf.Add("<< /Type /Page /Parent 4 0 R /CropBox [390 20 10 900] >>");
  return pdf.Finish(1);
}

TEST_F(PagesTest, EntriesAreInheritedFromTheNearestNode) {
  const DocHandle doc = test::OpenTestDocument(TreePdf());
  EXPECT_EQ(document::PageCount(doc), 3U);
  EXPECT_EQ(document::PageRotation(Acquire(doc, 0)), 270);
  EXPECT_EQ(document::PageRotation(Acquire(doc, 1)), 0) << "45 is no rotation";
  EXPECT_EQ(document::PageRotation(Acquire(doc, 2)), 90);
  ExpectBox(Box(doc, 0), 0, 500, 400, 0);
  ExpectBox(Box(doc, 2), 10, 500, 390, 20);
}

TEST_F(PagesTest, VeryDeepTreesAreBounded) {
  test::PdfBuilder pdf;
  pdf.Add("<< /Pages 2 0 R >>");
  for (int number = 2; number < 2000; ++number) {
    pdf.Add("<< /Kids [" + Ref(number + 1) + " << /Type /Page >>] >>");
  }
  pdf.Add("<< /Type /Page >>");
  EXPECT_EQ(document::PageCount(test::OpenTestDocument(pdf.Finish(1))), 256U);
}

// Pages without a usable box are shown as Letter.
TEST_F(PagesTest, BoxesThatAreNoneAreReplaced) {
  test::PdfBuilder pdf;
  pdf.Add("<< /Pages 2 0 R >>");
  pdf.Add("<< /Kids [3 0 R 4 0 R] >>");
  pdf.Add("<< /Type /Page /MediaBox [0 0 0 0] /CropBox [1 2 3] >>");
  pdf.Add("<< /Type /Page /MediaBox [0 0 100 100] /CropBox [200 200 300 300] >>");
  const DocHandle doc = test::OpenTestDocument(pdf.Finish(1));
  ExpectBox(Box(doc, 0), 0, 792, 612, 0);
  ExpectBox(Box(doc, 1), 0, 100, 100, 0);
}

}  // namespace
}  // namespace quillon
