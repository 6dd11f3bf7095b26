#include "quillon/viewer/open_view.h"

#include <gtest/gtest.h>

#include <string>

#include "quillon/document/operations.h"
#include "quillon/viewer/operations.h"
#include "quillon/viewer/view_control.h"
#include "tests/support/pdf_builder.h"
#include "tests/support/test_host.h"

namespace quillon {
namespace {

using test::RaisedBy;

std::string heard;

void Opened(DocView view, FailureCode, void*) {
  heard += viewer::ActiveDocView() == view ? "opened " : "opened-inactive ";
}
void Closing(DocView view, void*) {
  heard += document::PageCount(viewer::DocOf(view)) == 2 ? "closing " : "closing-too-late ";
}
void Closed(DocHandle doc, void*) {
  const bool gone = RaisedBy([&] { document::GetFlags(doc); }) == kErrorBadParameter;
  heard += gone ? "closed " : "closed-too-early ";
}
void PageChanged(PageView view, std::uint32_t changes, void*) {
  heard += "page" + std::to_string(viewer::PageViewPageNumber(view)) + "/" +
           std::to_string(changes) + " ";
}

template <typename Routine>
void Listen(std::uint32_t number, Routine* routine) {
  viewer::RegisterNotification(number, 1, reinterpret_cast<Callback>(routine), nullptr);
}

std::string TwoPages() {
  test::PdfBuilder pdf;
  pdf.Add("<< /Pages 2 0 R >>");
  pdf.Add("<< /Kids [3 0 R 4 0 R] /MediaBox [0 0 600 800] >>");
  pdf.Add("<< /Type /Page >>");
  pdf.Add("<< /Type /Page /Rotate 90 >>");
  return pdf.Finish(1);
}

struct ViewTest : testing::Test {
  ViewTest() {
    heard.clear();
    Listen(kNoteDocOpened, Opened);
    Listen(kNoteViewClosing, Closing);
    Listen(kNoteDocClosed, Closed);
    Listen(kNotePageChanged, PageChanged);
  }

  test::TestHost host;
};

TEST_F(ViewTest, OpeningAndClosingAreToldInOrderAndADocumentClosesWithItsLastView) {
  const DocHandle doc = test::OpenTestDocument(TwoPages());
  const DocView first = OpenViewOfDocument(doc);
  EXPECT_EQ(heard, "opened ");
  const DocView second = OpenViewOfDocument(doc);
  heard.clear();
  viewer::CloseView(second);
  EXPECT_EQ(heard, "closing ");
  EXPECT_EQ(viewer::ActiveDocView(), first);
  viewer::CloseView(first);
  EXPECT_EQ(heard, "closing closing closed ");
  EXPECT_EQ(viewer::ActiveDocView(), nullptr);
  EXPECT_EQ(RaisedBy([&] { viewer::CloseView(first); }), kErrorBadParameter);
}

TEST_F(ViewTest, PagesAreShownOneAtATime) {
  const DocView view = OpenViewOfDocument(test::OpenTestDocument(TwoPages()));
  const PageView page = viewer::DocPageView(view);
  heard.clear();
  viewer::SetPageViewPage(page, 1);
  viewer::SetPageViewPage(page, 1);
  EXPECT_EQ(heard, "page1/10 ");
  EXPECT_TRUE(viewer::IsPageVisible(view, 1));
  EXPECT_FALSE(viewer::IsPageVisible(view, 0));
  DeviceRect area{};
  viewer::PageViewAperture(page, &area);
  EXPECT_EQ(area.right, 800) << "the second page lies on its side";
  SetViewZoom(view, 2 * kFixedOne);
  SetViewSize(view, 320, 200);
  viewer::PageViewAperture(page, &area);
  EXPECT_EQ(area.right, 320);
  EXPECT_EQ(area.bottom, 200);
  EXPECT_EQ(RaisedBy([&] { viewer::SetPageViewPage(page, 2); }), kErrorBadParameter);
  EXPECT_EQ(RaisedBy([&] { SetViewZoom(view, 0); }), kErrorBadParameter);
}

}  // namespace
}  // namespace quillon
