#include "quillon/document/notify.h"

#include <gtest/gtest.h>

#include <string>

#include "quillon/core/operations.h"
#include "quillon/core/report.h"
#include "tests/support/test_host.h"

namespace quillon {
namespace {

std::string heard;  // the letters of the subscribers called, in order
const char kLetters[] = "abcdef";

void* Letter(int index) { return const_cast<char*>(kLetters + index); }

void Hear(DocHandle, void* clientData) { heard += *static_cast<char*>(clientData); }

void HearAndFail(DocHandle doc, void* clientData) {
  Hear(doc, clientData);
  core::Raise(kErrorBadObject);
}

Subscriber HearAs(int letter, ClosedNote routine = Hear) {
  return {kNoteDocClosed, 7, reinterpret_cast<Callback>(routine), Letter(letter)};
}

void HearAndLeave(DocHandle doc, void* clientData) {
  Hear(doc, clientData);
  RemoveSubscriber(HearAs(0, HearAndLeave));
  RemoveSubscriber(HearAs(1));
  AddSubscriber(HearAs(4));
}

struct NotifyTest : testing::Test {
  void SetUp() override { heard.clear(); }
  static void Send() { SendNote<ClosedNote>(kNoteDocClosed, DocHandle{nullptr}); }

  test::TestHost host;
};

TEST_F(NotifyTest, AFailingSubscriberIsReportedAndTheOthersAreCalled) {
  std::string told;
  const Reporter former = SetReporter([&](const std::string& text) { told += text; });
  AddSubscriber(HearAs(0, HearAndFail));
  AddSubscriber(HearAs(1));
  Send();
  SetReporter(former);
  EXPECT_EQ(heard, "ab");
  EXPECT_NE(told.find("extension 7 failed in notification 0x8"), std::string::npos) << told;
  EXPECT_NE(told.find("0x20020003"), std::string::npos) << told;
}

TEST_F(NotifyTest, SubscribersMayComeAndGoWhileBeingCalled) {
  AddSubscriber(HearAs(0, HearAndLeave));
  AddSubscriber(HearAs(1));
  AddSubscriber(HearAs(2));
  Send();
  EXPECT_EQ(heard, "ac") << "b was removed before its turn, e came too late";
  Send();
  EXPECT_EQ(heard, "acce");
}

}  // namespace
}  // namespace quillon
