#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <string>

#include "quillon/core/operations.h"
#include "quillon/core/report.h"
#include "quillon/document/operations.h"
#include "quillon/support/operations.h"
#include "quillon/viewer/open_view.h"
#include "quillon/viewer/operations.h"
#include "tests/support/form_pdf.h"
#include "tests/support/test_host.h"

namespace quillon {
namespace {

using test::RaisedBy;

std::string heard;
std::function<void(DocView)> whenLost;

Atom TestType() { return core::AtomFromName("TestSelection"); }

void Gained(DocView, void* data) { heard += std::string("+") + static_cast<char*>(data); }
void Lost(DocView view, void* data, Boolean highlighted) {
  heard += std::string(highlighted ? "-" : "_") + static_cast<char*>(data);
  if (whenLost) whenLost(view);
}
void Destroy(DocView, void* data) {
  heard += std::string("~") + static_cast<char*>(data);
  support::Free(data);
}

SelectionServerRecord Server() {
  SelectionServerRecord server{};
  server.size = sizeof(server);
  server.getType = TestType;
  server.gained = Gained;
  server.lost = Lost;
  server.destroy = Destroy;
  return server;
}

char* Data(const char* text) {
  const auto size = static_cast<std::uint32_t>(std::strlen(text) + 1);
  return static_cast<char*>(std::memcpy(support::Alloc(size), text, size));
}

struct SelectionTest : testing::Test {
  SelectionTest() {
    heard.clear();
    whenLost = nullptr;
    viewer::RegisterSelectionServer(3, &server);
    view =
        OpenViewOfDocument(test::OpenTestDocument(test::FormPdf({test::WidgetField("Tx", "a")})));
  }
  void Select(const char* text) { viewer::SetSelection(view, TestType(), Data(text), 1); }

  SelectionServerRecord server = Server();  // outlives the host, which tells it at the end
  test::TestHost host;
  DocView view = nullptr;
};

TEST_F(SelectionTest, IsHandedFromOneOwnerToTheNext) {
  Select("a");
  EXPECT_EQ(viewer::SelectionType(view), TestType());
  EXPECT_STREQ(static_cast<char*>(viewer::SelectionData(view)), "a");
  Select("b");
  viewer::ClearSelection(view, 0);
  viewer::ClearSelection(view, 0);
  EXPECT_EQ(heard, "+a-a~a+b_b~b");
  EXPECT_EQ(viewer::SelectionType(view), kNoAtom);
  EXPECT_EQ(viewer::SelectionData(view), nullptr);
}

TEST_F(SelectionTest, AnOwnerMayClearOrSelectWhileItLoses) {
  Select("a");
  whenLost = [](DocView each) { viewer::ClearSelection(each, 1); };
  viewer::ClearSelection(view, 1);
  EXPECT_EQ(heard, "+a-a~a");
  whenLost = [this](DocView) {
    whenLost = nullptr;
    Select("c");
  };
  heard.clear();
  Select("b");
  viewer::ClearSelection(view, 1);
  EXPECT_EQ(heard, "+b-b+c~b");
  EXPECT_STREQ(static_cast<char*>(viewer::SelectionData(view)), "c");
  whenLost = [this](DocView) {
    whenLost = nullptr;
    Select("d");
  };
  heard.clear();
  Select("e");
  EXPECT_EQ(heard, "-c+d~c-d~d+e") << "what was selected meanwhile is told and freed too";
}

TEST_F(SelectionTest, DataIsDestroyedEvenWhenItsOwnerFails) {
  Select("a");
  whenLost = [](DocView) { core::Raise(kErrorBadObject); };
  EXPECT_EQ(RaisedBy([&] { viewer::ClearSelection(view, 1); }), kErrorBadObject);
  EXPECT_EQ(heard, "+a-a~a");
}

TEST_F(SelectionTest, AFailingOwnerDoesNotKeepItsViewOpen) {
  std::string told;
  const Reporter former = SetReporter([&](const std::string& text) { told += text; });
  Select("a");
  whenLost = [](DocView) { core::Raise(kErrorBadObject); };
  viewer::CloseView(view);
  SetReporter(former);
  EXPECT_EQ(viewer::ActiveDocView(), nullptr);
  EXPECT_NE(told.find("clearing the selection"), std::string::npos) << told;
}

void AnnotSelected(const AnnotHandlerRecord*, AnnotHandle, PageView) { heard += "[selected]"; }
void AnnotDeselected(const AnnotHandlerRecord*, AnnotHandle, PageView) { heard += "[deselected]"; }
Atom WidgetType(const AnnotHandlerRecord*) { return core::AtomFromName("Widget"); }

TEST_F(SelectionTest, SelectedAnnotationsTellTheirHandler) {
  static AnnotHandlerRecord handler{};
  handler.size = sizeof(handler);
  handler.getType = reinterpret_cast<Callback>(&WidgetType);
  handler.selected = reinterpret_cast<Callback>(&AnnotSelected);
  handler.deselected = reinterpret_cast<Callback>(&AnnotDeselected);
  viewer::RegisterAnnotHandler(3, &handler);
  const PageHandle page = document::AcquirePage(viewer::DocOf(view), 0);
  const AnnotHandle annot = document::AnnotAt(page, 0);
  document::ReleasePage(page);
  void* data = std::memcpy(support::Alloc(sizeof(annot)), &annot, sizeof(annot));
  viewer::SetSelection(view, core::AtomFromName("Annotation"), data, 1);
  viewer::ClearSelection(view, 1);
  EXPECT_EQ(heard, "[selected][deselected]");
}

}  // namespace
}  // namespace quillon
