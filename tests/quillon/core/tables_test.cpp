#include "quillon/core/tables.h"

#include <gtest/gtest.h>

#include "quillon/core/atoms.h"
#include "quillon/core/operations.h"
#include "quillon/support/operations.h"
#include "tests/support/test_host.h"

namespace quillon {
namespace {

using test::RaisedBy;

struct Tables : ::testing::Test {
  Tables() {
    StartHost();
    support::FillTable(&table);
    OfferTable({kSupportTableName, 0x20001, &table});
  }
  ~Tables() override { StopHost(); }
  Tables(const Tables&) = delete;
  Tables& operator=(const Tables&) = delete;

  void* Get(const char* name, std::uint32_t version) {
    return core::GetTable(InternName(name), version);
  }

  SupportTable table;
};

struct ProviderState {
  int calls = 0;
  TableHandle made = nullptr;
};

// Makes its table at the first request for version 1, fails for version 13.
TableHandle Provide(TableServer server, std::uint32_t version, void* clientData) {
  auto* state = static_cast<ProviderState*>(clientData);
  ++state->calls;
  if (version == 13) core::Raise(kErrorGeneral);
  if (version != 1) return nullptr;
  if (state->made == nullptr) state->made = support::NewTable(server, 3);
  return state->made;
}

Boolean RoutineA() { return 1; }
Boolean RoutineB() { return 2; }
Boolean RoutineC() { return 3; }

Callback AsCallback(Boolean (*routine)()) { return reinterpret_cast<Callback>(routine); }

TEST_F(Tables, AHostTableIsGivenAtEveryVersionFromTheOldestToTheOneOffered) {
  EXPECT_EQ(Get(kSupportTableName, 0x20000), &table);
  EXPECT_EQ(Get(kSupportTableName, 0x20001), &table);
  EXPECT_EQ(Get(kSupportTableName, 0x20002), nullptr);
  EXPECT_EQ(Get(kSupportTableName, 0x1FFFF), nullptr);
  EXPECT_EQ(Get("NoSuchTable", 0x20000), nullptr);
  EXPECT_EQ(core::GetTable(kNoAtom, 0x20000), nullptr);
}

TEST_F(Tables, AProviderIsAskedEveryTimeAndItsAnswerPassedOn) {
  ProviderState state;
  ASSERT_TRUE(support::RegisterTableProvider("Mine", &Provide, &state, 0));
  EXPECT_EQ(Get("Mine", 2), nullptr);
  void* first = Get("Mine", 1);
  EXPECT_NE(first, nullptr);
  EXPECT_EQ(Get("Mine", 1), first);
  EXPECT_EQ(RaisedBy([&] { Get("Mine", 13); }), kErrorGeneral);
  EXPECT_EQ(state.calls, 4);
  EXPECT_FALSE(support::RegisterTableProvider("Mine", &Provide, &state, 0)) << "it is taken";
  EXPECT_FALSE(support::RegisterTableProvider(kSupportTableName, &Provide, &state, 0));
}

TEST_F(Tables, EachReplacingRoutineReachesTheOneBeforeIt) {
  ProviderState state;
  support::RegisterTableProvider("Mine", &Provide, &state, 0);
  auto* words = static_cast<std::uintptr_t*>(Get("Mine", 1));
  const auto handle = reinterpret_cast<TableHandle>(words);
  const auto inForce = [words] { return reinterpret_cast<Callback>(words[2]); };

  support::SetSlot(handle, 2, AsCallback(&RoutineA), 0);
  EXPECT_EQ(support::CallReplaced(handle, 2, AsCallback(&RoutineA)), nullptr);
  support::SetSlot(handle, 2, AsCallback(&RoutineB), 0);
  support::SetSlot(handle, 2, AsCallback(&RoutineC), 0);
  EXPECT_EQ(inForce(), AsCallback(&RoutineC));
  EXPECT_EQ(support::CallReplaced(handle, 2, AsCallback(&RoutineC)), AsCallback(&RoutineB));
  EXPECT_EQ(support::CallReplaced(handle, 2, AsCallback(&RoutineB)), AsCallback(&RoutineA));

  // Putting an earlier one back must not make the chain circular.
  support::SetSlot(handle, 2, AsCallback(&RoutineA), 0);
  EXPECT_EQ(inForce(), AsCallback(&RoutineA));
  EXPECT_EQ(support::CallReplaced(handle, 2, AsCallback(&RoutineA)), nullptr);
  EXPECT_EQ(support::CallReplaced(handle, 2, AsCallback(&RoutineC)), nullptr);
}

TEST_F(Tables, AReplacedSlotOfAHostTableIsPutBackAtTheEnd) {
  const auto handle = reinterpret_cast<TableHandle>(&table);
  const auto original = table.Free;
  support::SetSlot(handle, 2, AsCallback(&RoutineA), 0);
  EXPECT_EQ(reinterpret_cast<Callback>(table.Free), AsCallback(&RoutineA));
  EXPECT_EQ(support::CallReplaced(handle, 2, AsCallback(&RoutineA)),
            reinterpret_cast<Callback>(original));
  StopHost();
  EXPECT_EQ(table.Free, original);
}

TEST_F(Tables, SlotsAndServersThatDoNotExistAreRefused) {
  const auto handle = reinterpret_cast<TableHandle>(&table);
  std::uintptr_t stranger[3] = {2, 0, 0};
  const auto set = [](TableHandle target, std::uint32_t slot) {
    return RaisedBy([=] { support::SetSlot(target, slot, AsCallback(&RoutineA), 0); });
  };
  EXPECT_EQ(set(handle, 0), kErrorBadParameter);
  EXPECT_EQ(set(handle, kSupportTableSlots + 1), kErrorBadParameter);
  EXPECT_EQ(set(reinterpret_cast<TableHandle>(stranger), 1), kErrorBadParameter);
  EXPECT_EQ(RaisedBy([] { support::NewTable(nullptr, 3); }), kErrorBadParameter);
}

}  // namespace
}  // namespace quillon
