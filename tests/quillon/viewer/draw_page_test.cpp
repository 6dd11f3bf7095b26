#include "quillon/viewer/draw_page.h"

#include <gtest/gtest.h>

#include "quillon/document/annots.h"
#include "quillon/objects/pdf_file.h"
#include "quillon/viewer/open_view.h"
#include "quillon/viewer/operations.h"
#include "tests/support/pdf_builder.h"
#include "tests/support/test_host.h"

namespace quillon {
namespace {

using test::Ref;

// Pages of one annotation each, or of several.
struct DrawTest : testing::Test {
  int AddForm(const std::string& entries) {
    return pdf.AddStream("/Type /XObject /Subtype /Form " + entries, "0 0 1 1 re f");
  }
  std::string WithForm(int form) { return "/AP << /N " + Ref(form) + " >> "; }

  void Open(const std::vector<std::string>& annots, const std::string& pageEntries = "") {
    std::string references;
    for (const std::string& annot : annots) {
      references += Ref(pdf.Add("<< /Subtype /Widget " + annot + " >>")) + " ";
    }
    const int page = pdf.Add("<< /Type /Page /MediaBox [0 0 600 800] " + pageEntries +
                             " /Annots [" + references + "] >>");
    const int pages = pdf.Add("<< /Kids [" + Ref(page) + "] >>");
    const int root = pdf.Add("<< /Pages " + Ref(pages) + " >>");
    view = OpenViewOfDocument(test::OpenTestDocument(pdf.Finish(root)));
  }

  test::PdfBuilder pdf;
  test::TestHost host;
  DocView view = nullptr;
};

void ExpectMatrix(const FixedMatrix& m, double a, double b, double c, double d, double e,
                  double f) {
  const Fixed fixed[] = {m.a, m.b, m.c, m.d, m.e, m.f};
  const double expected[] = {a, b, c, d, e, f};
  for (int i = 0; i < 6; ++i) EXPECT_NEAR(fixed[i] / 65536.0, expected[i], 0.0001) << "entry " << i;
}

// The stream's Matrix turns its content by 90 degrees; the turned box, not the original one, fills
// the rectangle, and what stands before Do leaves the Matrix to the stream.
TEST_F(DrawTest, TurnedAppearancesFillTheirRectangleToo) {
  Open({WithForm(AddForm("/BBox [0 0 40 20] /Matrix [0 1 -1 0 20 0]")) + "/Rect [100 200 120 240]",
        WithForm(AddForm("/BBox [0 0 40 20] /Matrix [0 -1 1 0 0 40]")) + "/Rect [0 0 40 80]",
        WithForm(AddForm("/BBox [0 0 40 20] /Matrix [-1 0 0 -1 0 0]")) + "/Rect [0 0 40 20]"});
  const auto drawn = DrawPageAnnots(view, 0);
  ASSERT_EQ(drawn.size(), 3U);
  ExpectMatrix(drawn[0].matrix, 0, 1, -1, 0, 120, 200);
  ExpectMatrix(drawn[0].placement, 1, 0, 0, 1, 100, 200);
  ExpectMatrix(drawn[1].matrix, 0, -2, 2, 0, 0, 80);
  ExpectMatrix(drawn[2].matrix, -1, 0, 0, -1, 40, 20);
}

TEST_F(DrawTest, UprightAnnotationsAreTurnedAboutTheirUpperLeftCorner) {
  Open({WithForm(AddForm("/BBox [0 0 10 10]")) + "/Rect [100 200 110 210] /F 16"}, "/Rotate 90");
  const auto drawn = DrawPageAnnots(view, 0);
  ASSERT_EQ(drawn.size(), 1U);
  // The corner (100, 210) stays; the appearance's right edge points up in user space, to the right
  // on the turned page.
  ExpectMatrix(drawn[0].matrix, 0, 1, -1, 0, 110, 210);
}

TEST_F(DrawTest, BoxesWithoutExtentDoNotDivideByNothing) {
  Open({WithForm(AddForm("/BBox [5 5 5 5]")) + "/Rect [100 200 150 240]",
        WithForm(AddForm("")) + "/Rect [100 200 150 240]"});
  const auto drawn = DrawPageAnnots(view, 0);
  ASSERT_EQ(drawn.size(), 2U);
  ExpectMatrix(drawn[0].matrix, 1, 0, 0, 1, 95, 195);
  ExpectMatrix(drawn[1].matrix, 1, 0, 0, 1, 100, 200);
}

TEST_F(DrawTest, OnlyWhatIsForTheScreenIsDrawn) {
  const int on = AddForm("/BBox [0 0 1 1]");
  const std::string form = WithForm(on) + "/Rect [0 0 1 1] ";
  const std::string states = "/AP << /N << /Yes " + Ref(on) + " >> >> /Rect [0 0 1 1] ";
  Open({form + "/F 2", form + "/F 32", form + "/F 1", form + "/F 1 /Subtype /Invented",
        states + "/AS /Yes", states + "/AS /Off", states, "/Rect [0 0 1 1]"});
  EXPECT_EQ(DrawPageAnnots(view, 0).size(), 2U) << "the invisible Widget and the state Yes";
}

}  // namespace
}  // namespace quillon
