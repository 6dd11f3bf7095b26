#include "plugin/host/form_events.h"

#include <gtest/gtest.h>

#include <string>

#include "plugin/frame/plugin_main.h"
#include "tests/support/test_host.h"

namespace quillform {
namespace {

constexpr FailureCode kSubscriberError = 0x40001234;

// Subscribers note their letter here: small when notified, capital when told of a failure.
std::string calls;

struct Subscriber {
  char letter;
  std::uint32_t event;
  std::uint32_t identifier = 0;
  bool raises = false;
  bool unregistersItself = false;
  Subscriber* registers = nullptr;
};

void OnFailure(FailureCode error, FormEventRecord*, void* clientData) {
  const auto* subscriber = static_cast<const Subscriber*>(clientData);
  calls.push_back(static_cast<char>(subscriber->letter - 'a' + 'A'));
  EXPECT_EQ(error, kSubscriberError);
  Raise(quillon::kErrorGeneral);  // is dropped
}

void OnEvent(FormEventRecord*, void* clientData);

void Subscribe(Subscriber& subscriber) {
  subscriber.identifier = FormEventRegister(subscriber.event, &OnEvent, &OnFailure, &subscriber);
}

void OnEvent(FormEventRecord*, void* clientData) {
  auto* subscriber = static_cast<Subscriber*>(clientData);
  calls.push_back(subscriber->letter);
  if (subscriber->unregistersItself) FormEventUnregister(subscriber->event, subscriber->identifier);
  if (subscriber->registers != nullptr) Subscribe(*subscriber->registers);
  if (subscriber->raises) Raise(kSubscriberError);
}

struct FormEvents : testing::Test {
  FormEvents() : host({&PlugInMain}) { calls.clear(); }

  FailureCode Announce(std::uint32_t event) {
    FormEventRecord record{};
    return CatchFailure([&] { FormEventAnnounce(event, &record); });
  }

  quillon::test::TestHost host;
};

TEST_F(FormEvents, identifiers_and_numbers_that_are_unknown_do_no_harm) {
  FormEventRegister(4, nullptr, nullptr, nullptr);
  FormEventUnregister(4, 1);
  EXPECT_EQ(CatchFailure([] { FormEventUnregister(4, 1); }), quillon::kErrorBadParameter);
  EXPECT_EQ(FormEventRegister(4, nullptr, nullptr, nullptr), 2u) << "none is given twice";
  EXPECT_EQ(FormEventRegister(10, nullptr, nullptr, nullptr), 0u);
  EXPECT_EQ(CatchFailure([] { FormEventUnregister(10, 1); }), 0);
  EXPECT_EQ(Announce(0xFFFFFFFF), 0);
}

TEST_F(FormEvents, an_error_ends_the_announcement_and_is_told_to_those_already_called) {
  Subscriber a{'a', 1};
  Subscriber b{'b', 1};
  Subscriber c{'c', 1};
  b.raises = true;
  Subscribe(a);
  Subscribe(b);
  Subscribe(c);
  EXPECT_EQ(Announce(1), kSubscriberError);
  EXPECT_EQ(calls, "abAB");
}

TEST_F(FormEvents, one_that_is_added_meanwhile_waits_for_the_next_announcement) {
  Subscriber added{'z', 5};
  Subscriber a{'a', 5};
  a.registers = &added;
  Subscribe(a);
  EXPECT_EQ(Announce(5), 0);
  EXPECT_EQ(calls, "a");
  a.registers = nullptr;
  EXPECT_EQ(Announce(5), 0);
  EXPECT_EQ(calls, "aaz");
}

TEST_F(FormEvents, positions_count_when_one_takes_itself_off) {
  Subscriber a{'a', 6};
  Subscriber b{'b', 6};
  Subscriber c{'c', 6};
  a.unregistersItself = true;
  Subscribe(a);
  Subscribe(b);
  Subscribe(c);
  EXPECT_EQ(Announce(6), 0);
  EXPECT_EQ(calls, "ac") << "b has moved up to a position that was already called";
}

}  // namespace
}  // namespace quillform
