#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <string>

#include "quillon/core/operations.h"
#include "quillon/core/report.h"
#include "quillon/support/operations.h"
#include "quillon/viewer/open_view.h"
#include "quillon/viewer/operations.h"
#include "tests/support/form_pdf.h"
#include "tests/support/test_host.h"

namespace quillon {
namespace {

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

}  // namespace
}  // namespace quillon
