#include "quillon/viewer/open_view.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "quillon/core/operations.h"
#include "quillon/core/report.h"
#include "quillon/document/open_document.h"
#include "quillon/document/operations.h"
#include "quillon/objects/pdf_file.h"
#include "quillon/support/operations.h"
#include "quillon/support/paths.h"
#include "quillon/viewer/modal.h"
#include "quillon/viewer/notify.h"
#include "quillon/viewer/operations.h"
#include "quillon/viewer/start.h"
#include "quillon/viewer/view_control.h"
#include "tests/support/pdf_builder.h"
#include "tests/support/temporary_folder.h"
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
void Changed(DocHandle, std::uint32_t flags, void*) {
  heard += "changed" + std::to_string(flags) + " ";
}
void Permitted(DocHandle, void*) { heard += "permitted "; }
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
    Listen(kNoteDocChanged, Changed);
    Listen(kNotePermissionsChanged, Permitted);
    Listen(kNotePageChanged, PageChanged);
  }

  test::TestHost host;
};

TEST_F(ViewTest, OpeningAndClosingAreToldInOrder) {
  const DocView view = OpenViewOfDocument(test::OpenTestDocument(TwoPages()));
  viewer::CloseView(view);
  EXPECT_EQ(heard, "opened closing closed ");
  EXPECT_EQ(viewer::ActiveDocView(), nullptr);
  EXPECT_EQ(RaisedBy([&] { viewer::CloseView(view); }), kErrorBadParameter);
}

TEST_F(ViewTest, ADocumentClosesWithItsLastView) {
  const DocHandle doc = test::OpenTestDocument(TwoPages());
  const DocView first = OpenViewOfDocument(doc);
  const DocView second = OpenViewOfDocument(doc);
  heard.clear();
  viewer::CloseView(second);
  EXPECT_EQ(heard, "closing ");
  EXPECT_EQ(viewer::ActiveDocView(), first);
  viewer::CloseView(first);
  EXPECT_EQ(heard, "closing closing closed ");
}

TEST_F(ViewTest, SavingIsPreparedAndTheFormBroughtBack) {
  const DocView view = OpenViewOfDocument(test::OpenTestDocument(TwoPages()));
  heard.clear();
  PrepareSave(view);
  ResumeAfterSave(view);
  EXPECT_EQ(heard, "changed0 permitted ");
}

TEST_F(ViewTest, ReplacedPermissionsAreTold) {
  const DocHandle doc = test::OpenTestDocument(TwoPages());
  SetPermissions(doc, kPermitForms);
  EXPECT_EQ(document::GetPermissions(doc), kPermitForms);
  EXPECT_EQ(heard, "permitted ");
}

TEST_F(ViewTest, OpeningAPathAnswersNoViewWhenItCannot) {
  const test::TemporaryFolder folder;
  const std::string file = folder.File("a.pdf");
  std::ofstream(file, std::ios::binary) << TwoPages();
  const PathHandle path = PathOf(file);
  const DocView view = OfferedTables().viewer.OpenDocument(path, nullptr, nullptr, 0);
  ASSERT_NE(view, nullptr);
  EXPECT_FALSE(viewer::DocIsExternal(view));
  viewer::CloseView(view);
  std::filesystem::remove(file);
  const Reporter former = SetReporter([](const std::string&) {});
  heard.clear();
  EXPECT_EQ(viewer::OpenDocument(path, nullptr, nullptr, 0), nullptr);
  SetReporter(former);
  support::ReleasePath(path);
  EXPECT_EQ(heard, "");
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

std::vector<DeviceRect> redrawn;
void Redraw(DocView, const DeviceRect& invalid) { redrawn.push_back(invalid); }

TEST_F(ViewTest, WhatIsInvalidIsDrawnOnce) {
  const PageView page = viewer::DocPageView(OpenViewOfDocument(test::OpenTestDocument(TwoPages())));
  redrawn.clear();
  SetRedrawRoutine(Redraw);
  const DeviceRect one = {10, 10, 20, 20};
  const DeviceRect two = {15, 5, 40, 18};
  viewer::InvalidateRect(page, &one);
  viewer::InvalidateRect(page, &two);
  viewer::UpdateView(page);
  viewer::UpdateView(page);
  SetRedrawRoutine(nullptr);
  ASSERT_EQ(redrawn.size(), 1U);
  EXPECT_EQ(redrawn[0].left, 10);
  EXPECT_EQ(redrawn[0].top, 5);
  EXPECT_EQ(redrawn[0].right, 40);
  EXPECT_EQ(redrawn[0].bottom, 20);
}

TEST_F(ViewTest, ModalWindowsNest) {
  EXPECT_EQ(viewer::BeginModal(nullptr), 1U);
  EXPECT_EQ(viewer::BeginModal(nullptr), 2U);
  viewer::EndModal();
  viewer::EndModal();
  EXPECT_EQ(ModalDepth(), 0U);
  EXPECT_EQ(RaisedBy([] { viewer::EndModal(); }), kErrorBadParameter);
}

ActionHandle performed = nullptr;
void Perform(ActionHandle action, DocView) { performed = action; }
void PerformAndFail(ActionHandle, DocView) { core::Raise(kErrorGeneral); }

TEST_F(ViewTest, TheLatestHandlerOfATypePerformsIt) {
  test::PdfBuilder pdf;
  pdf.Add("<< /Pages 2 0 R >>");
  pdf.Add("<< /S /Hide >>");
  const DocHandle doc = test::OpenTestDocument(pdf.Finish(1));
  const ActionHandle action =
      document::ActionFromObject(ObjectByNumber(document::ObjectDocOf(doc), 2));
  const Atom type = core::AtomFromName("Hide");
  EXPECT_EQ(RaisedBy([&] { viewer::PerformAction(action, nullptr); }), kErrorNotOffered);
  ActionHandlerRecord first{};
  first.size = sizeof(first);
  ActionHandlerRecord second = first;
  first.perform = PerformAndFail;
  second.perform = Perform;
  viewer::RegisterActionHandler(1, type, &first, "first");
  EXPECT_EQ(RaisedBy([&] { viewer::PerformAction(action, nullptr); }), kErrorGeneral);
  viewer::RegisterActionHandler(1, type, &second, "second");
  viewer::PerformAction(action, nullptr);
  EXPECT_EQ(performed, action);
  EXPECT_EQ(viewer::ActionHandlerOf(type), &second);
}

}  // namespace
}  // namespace quillon
