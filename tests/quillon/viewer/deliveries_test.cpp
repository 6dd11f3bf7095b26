#include "quillon/viewer/deliveries.h"

#include <gtest/gtest.h>

#include <string>

#include "quillon/core/operations.h"
#include "quillon/core/report.h"
#include "quillon/viewer/open_view.h"
#include "quillon/viewer/operations.h"
#include "tests/support/form_pdf.h"
#include "tests/support/test_host.h"

namespace quillon {
namespace {

std::string taken;
DocView takenFor = nullptr;

Boolean Take(const void* data, std::uint32_t length, DocView view) {
  taken += std::string(static_cast<const char*>(data), length) + " ";
  takenFor = view;
  return 1;
}
Boolean TakeAndAskForMore(const void* data, std::uint32_t length, DocView view) {
  viewer::DeliverData(core::AtomFromName("Chain"), data, length, view);
  return Take(data, length, view);
}
Boolean TakeAndFail(const void*, std::uint32_t, DocView) {
  core::Raise(kErrorBadFile);
  return 1;
}

struct DeliveriesTest : testing::Test {
  DeliveriesTest() {
    taken.clear();
    Register("Data", &Take, &data);
    Register("Chain", &TakeAndAskForMore, &chain);
    Register("Bad", &TakeAndFail, &bad);
  }

  void Register(const char* type, Boolean (*open)(const void*, std::uint32_t, DocView),
                DataHandlerRecord* record) {
    *record = {sizeof *record, open};
    viewer::RegisterDataHandler(1, core::AtomFromName(type), record);
  }

  bool Deliver(const char* type, std::string bytes, DocView view = nullptr) {
    const auto length = static_cast<std::uint32_t>(bytes.size());
    return viewer::DeliverData(core::AtomFromName(type), bytes.data(), length, view) != 0;
  }

  test::TestHost host;
  DataHandlerRecord data{}, chain{}, bad{};
};

TEST_F(DeliveriesTest, WaitAsCopiesUntilTheViewerIsIdle) {
  const DocView view = OpenViewOfDocument(test::OpenTestDocument(test::FormPdf({})));
  EXPECT_TRUE(Deliver("Data", "one", view));
  EXPECT_TRUE(Deliver("Data", "two", view));
  EXPECT_FALSE(Deliver("Unknown", "three", view));
  EXPECT_EQ(taken, "");
  EXPECT_EQ(DeliverWaitingData().used, 2u);
  EXPECT_EQ(taken, "one two ");
  EXPECT_EQ(takenFor, view);
  Deliver("Data", "late", view);
  viewer::CloseView(view);
  EXPECT_EQ(DeliverWaitingData().used, 1u);
  EXPECT_EQ(takenFor, nullptr) << "the view is gone";
}

TEST_F(DeliveriesTest, AHandlerThatFailsIsReportedAndTheOthersGoOn) {
  std::string reported;
  const Reporter former = SetReporter([&](const std::string& text) { reported += text; });
  Deliver("Bad", "x");
  Deliver("Data", "y");
  const DeliveryCount count = DeliverWaitingData();
  SetReporter(former);
  EXPECT_EQ(count.used, 1u);
  EXPECT_EQ(count.refused, 1u);
  EXPECT_NE(reported, "");
}

TEST_F(DeliveriesTest, AnswersThatBringAnswersEndAllTheSame) {
  Deliver("Chain", "x");
  EXPECT_EQ(DeliverWaitingData().refused, 1u);
}

}  // namespace
}  // namespace quillon
