#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "quillon/core/callbacks.h"
#include "quillon/core/host.h"
#include "quillon/core/report.h"
#include "tests/support/test_host.h"

namespace quillon {
namespace {

using test::RaisedBy;
using Calls = std::vector<std::string>;

// A small plug-in that notes what it is called for. `failing` names the step that answers 0,
// `raising` the one that raises.
struct FakePlugIn {
  Calls calls;
  std::string failing;
  std::string raising;
  std::uint32_t chosen = 0;  // 0: the usual rule
  CoreTable* core = nullptr;
  ExtensionId extension = 0;
  PlatformData platform{};
};
FakePlugIn fake;

// The routines of the first such plug-in or of a second, whose steps are noted with its number.
template <int number>
Boolean Note(const char* step) {
  fake.calls.push_back(step + std::string(number == 1 ? "" : " 2"));
  if (fake.raising == step) fake.core->Raise(kErrorNoMemory);
  return fake.failing == step ? 0 : 1;
}

Callback Make(LifecycleRoutine routine) {
  return fake.core->MakeCallback(fake.extension, reinterpret_cast<Callback>(routine));
}

template <int number>
Boolean Handshake(std::uint32_t version, HandshakeRecord* record) {
  if (version != kHandshakeVersion) return 0;
  record->extensionName = fake.core->AtomFromName(number == 1 ? "Fake" : "Second");
  record->exportTables = Make([] { return Note<number>("export"); });
  record->importTables = Make([] { return Note<number>("import"); });
  record->initialise = Make([] { return Note<number>("initialise"); });
  record->unload = Make([] { return Note<number>("unload"); });
  return Note<number>("handshake");
}

template <int number>
Boolean Setup(std::uint32_t version, SetupRecord* record) {
  if (version != kSetupVersion || record->version != kSetupVersion) return 0;
  fake.core = record->core;
  fake.extension = record->extension;
  record->handshake =
      fake.core->MakeCallback(fake.extension, reinterpret_cast<Callback>(&Handshake<number>));
  return Note<number>("setup");
}

template <int number>
Boolean Main(std::uint32_t offered, std::uint32_t* chosen, SetupRoutine* setup,
             const PlatformData* platform) {
  fake.platform = *platform;
  *chosen = fake.chosen != 0 ? fake.chosen : std::min(offered, kHandshakeVersion);
  *setup = &Setup<number>;
  return 1;
}

struct PlugInTest : ::testing::Test {
  PlugInTest() {
    fake = FakePlugIn{};
    SetReporter([this](const std::string& text) { reports.push_back(text); });
    StartHost();
  }
  ~PlugInTest() override {
    StopHost();
    SetReporter({});
  }
  PlugInTest(const PlugInTest&) = delete;
  PlugInTest& operator=(const PlugInTest&) = delete;

  std::vector<std::string> reports;
};

TEST_F(PlugInTest, EveryStepIsTakenInOrderAndAllImportsComeBeforeTheFirstInitialisation) {
  int module = 0;
  const PlugIn& plugIn = AttachPlugIn(&Main<1>, &module);
  EXPECT_EQ(plugIn.extensionName, "Fake");
  EXPECT_EQ(fake.platform.moduleInstance, &module);
  EXPECT_EQ(LiveCallbackCount(plugIn.id), 5U);
  EXPECT_EQ(fake.calls, (Calls{"setup", "handshake", "export"}));
  AttachPlugIn(&Main<2>, nullptr);

  fake.calls.clear();
  InitialisePlugIns();
  InitialisePlugIns();
  EXPECT_EQ(fake.calls, (Calls{"import", "import 2", "initialise", "initialise 2"}));
  EXPECT_TRUE(PlugIns()[0].initialised);

  fake.calls.clear();
  StopHost();
  EXPECT_EQ(fake.calls, (Calls{"unload 2", "unload"}));
  EXPECT_TRUE(PlugIns().empty());
  EXPECT_EQ(LiveCallbackCount(), 0U);
  EXPECT_TRUE(reports.empty());
}

TEST_F(PlugInTest, AnOlderHostIsAnsweredWithItsOwnVersionAndTheHandshakeThenRefused) {
  EXPECT_EQ(RaisedBy([] { AttachPlugIn(&Main<1>, nullptr, 0x10000); }), kErrorGeneral);
  EXPECT_EQ(fake.calls, (Calls{"setup"}));
  EXPECT_TRUE(PlugIns().empty());
  fake = {};
  fake.chosen = 0x30000;  // which was not offered
  EXPECT_EQ(RaisedBy([] { AttachPlugIn(&Main<1>, nullptr); }), kErrorGeneral);
  EXPECT_TRUE(fake.calls.empty());
}

TEST_F(PlugInTest, AFailedInitialisationIsReportedAndStillUnloaded) {
  for (const bool raises : {false, true}) {
    fake = FakePlugIn{};
    reports.clear();
    (raises ? fake.raising : fake.failing) = "initialise";
    AttachPlugIn(&Main<1>, nullptr);
    InitialisePlugIns();
    EXPECT_FALSE(PlugIns()[0].initialised);
    ASSERT_EQ(reports.size(), 1U);
    EXPECT_NE(reports[0].find("Fake"), std::string::npos);
    StopHost();
    EXPECT_EQ(fake.calls.back(), "unload");
    EXPECT_EQ(OpenFrameCount(), 0U);
  }
}

TEST_F(PlugInTest, AFailedExportKeepsThePlugInFromStartingButNotFromUnloading) {
  for (const bool raises : {false, true}) {
    (raises ? fake.raising : fake.failing) = "export";
    const FailureCode expected = raises ? kErrorNoMemory : kErrorGeneral;
    EXPECT_EQ(RaisedBy([] { AttachPlugIn(&Main<1>, nullptr); }), expected);
    InitialisePlugIns();
    StopHost();
    EXPECT_EQ(fake.calls, (Calls{"setup", "handshake", "export", "unload"}));
    fake = {};
  }
}

}  // namespace
}  // namespace quillon
