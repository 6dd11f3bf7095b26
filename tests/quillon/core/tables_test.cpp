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

TEST_F(Tables, EachReplacingRoutineReachesTheOneBeforeItAndAllAreGoneAtTheEnd) {
  const auto handle = reinterpret_cast<TableHandle>(&table);
  const auto inForce = [this] { return reinterpret_cast<Callback>(table.Free); };
  const Callback original = inForce();

  support::SetSlot(handle, 2, AsCallback(&RoutineA), 0);
  EXPECT_EQ(support::CallReplaced(handle, 2, AsCallback(&RoutineA)), original);
  support::SetSlot(handle, 2, AsCallback(&RoutineB), 0);
  support::SetSlot(handle, 2, AsCallback(&RoutineC), 0);
  EXPECT_EQ(inForce(), AsCallback(&RoutineC));
  EXPECT_EQ(support::CallReplaced(handle, 2, AsCallback(&RoutineC)), AsCallback(&RoutineB));
  EXPECT_EQ(support::CallReplaced(handle, 2, AsCallback(&RoutineB)), AsCallback(&RoutineA));

  // Putting an earlier one back must not make the chain circular.
  support::SetSlot(handle, 2, AsCallback(&RoutineA), 0);
  EXPECT_EQ(inForce(), AsCallback(&RoutineA));
  EXPECT_EQ(support::CallReplaced(handle, 2, AsCallback(&RoutineA)), original);
  EXPECT_EQ(support::CallReplaced(handle, 2, AsCallback(&RoutineC)), nullptr);
  StopHost();
  EXPECT_EQ(inForce(), original);
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
