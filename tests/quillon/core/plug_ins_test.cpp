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

Boolean Note(const char* step) {
  fake.calls.push_back(step);
  if (fake.raising == step) fake.core->Raise(kErrorNoMemory);
  return fake.failing == step ? 0 : 1;
}

Boolean Export() { return Note("export"); }
Boolean Import() { return Note("import"); }
Boolean Initialise() { return Note("initialise"); }
Boolean Unload() { return Note("unload"); }

Callback Make(LifecycleRoutine routine) {
  return fake.core->MakeCallback(fake.extension, reinterpret_cast<Callback>(routine));
}

Boolean Handshake(std::uint32_t version, HandshakeRecord* record) {
  if (version != kHandshakeVersion) return 0;
  record->extensionName = fake.core->AtomFromName("Fake");
  record->exportTables = Make(&Export);
  record->importTables = Make(&Import);
  record->initialise = Make(&Initialise);
  record->unload = Make(&Unload);
  return Note("handshake");
}

Boolean Setup(std::uint32_t version, SetupRecord* record) {
  if (version != kSetupVersion || record->version != kSetupVersion) return 0;
  fake.core = record->core;
  fake.extension = record->extension;
  record->handshake =
      fake.core->MakeCallback(fake.extension, reinterpret_cast<Callback>(&Handshake));
  return Note("setup");
}

Boolean Main(std::uint32_t offered, std::uint32_t* chosen, SetupRoutine* setup,
             const PlatformData* platform) {
  fake.platform = *platform;
  *chosen = fake.chosen != 0 ? fake.chosen : std::min(offered, kHandshakeVersion);
  *setup = &Setup;
  return 1;
}

// A second one, to see the order of several.
Boolean SetupSecond(std::uint32_t, SetupRecord* record) {
  record->handshake = reinterpret_cast<Callback>(+[](std::uint32_t, HandshakeRecord* second) {
    const auto step = [](LifecycleRoutine routine) { return reinterpret_cast<Callback>(routine); };
    second->extensionName = fake.core->AtomFromName("Second");
    second->importTables = step([] { return Note("import 2"); });
    second->initialise = step([] { return Note("initialise 2"); });
    second->unload = step([] { return Note("unload 2"); });
    return Boolean{1};
  });
  return 1;
}

Boolean MainSecond(std::uint32_t offered, std::uint32_t* chosen, SetupRoutine* setup,
                   const PlatformData*) {
  *chosen = offered;
  *setup = &SetupSecond;
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
  const PlugIn& plugIn = AttachPlugIn(&Main, &module);
  EXPECT_EQ(plugIn.extensionName, "Fake");
  EXPECT_EQ(fake.platform.moduleInstance, &module);
  EXPECT_EQ(LiveCallbackCount(plugIn.id), 5U);
  EXPECT_EQ(fake.calls, (Calls{"setup", "handshake", "export"}));
  AttachPlugIn(&MainSecond, nullptr);

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
  EXPECT_EQ(RaisedBy([] { AttachPlugIn(&Main, nullptr, 0x10000); }), kErrorGeneral);
  EXPECT_EQ(fake.calls, (Calls{"setup"}));
  EXPECT_TRUE(PlugIns().empty());
  fake = {};
  fake.chosen = 0x30000;  // which was not offered
  EXPECT_EQ(RaisedBy([] { AttachPlugIn(&Main, nullptr); }), kErrorGeneral);
  EXPECT_TRUE(fake.calls.empty());
}

TEST_F(PlugInTest, AFailedInitialisationIsReportedAndStillUnloaded) {
  for (const bool raises : {false, true}) {
    fake = FakePlugIn{};
    reports.clear();
    (raises ? fake.raising : fake.failing) = "initialise";
    AttachPlugIn(&Main, nullptr);
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
    EXPECT_EQ(RaisedBy([] { AttachPlugIn(&Main, nullptr); }), expected);
    InitialisePlugIns();
    StopHost();
    EXPECT_EQ(fake.calls, (Calls{"setup", "handshake", "export", "unload"}));
    fake = {};
  }
}

}  // namespace
}  // namespace quillon
