#include "plugin/frame/setup.h"

#include <gtest/gtest.h>

#include "plugin/frame/plugin_main.h"
#include "quillon/core/operations.h"
#include "tests/plugin/frame/plug_in_life.h"

namespace quillform {
namespace {

using Lines = std::vector<std::string>;

Lines LinesBeginning(const std::string& start) {
  Lines found;
  for (const std::string& line : CallLog()) {
    if (line.starts_with(start)) found.push_back(line);
  }
  return found;
}

TEST(PlugInMain, chooses_the_lower_version_and_keeps_the_platforms_words) {
  int window = 0;
  int module = 0;
  const quillon::PlatformData platform{&window, &module};
  struct Offer {
    std::uint32_t offered;
    std::uint32_t chosen;
  };
  for (const Offer offer : {Offer{0x10000, 0x10000}, {0x20000, 0x20000}, {0x30000, 0x20000}}) {
    std::uint32_t chosen = 0;
    quillon::SetupRoutine setup = nullptr;
    EXPECT_EQ(PlugInMain(offer.offered, &chosen, &setup, &platform), 1);
    EXPECT_EQ(chosen, offer.chosen);
    EXPECT_EQ(setup, &PlugInSetup);
  }
  EXPECT_EQ(HostWindow, &window);
  EXPECT_EQ(ModuleInstance, &module);
}

TEST(PlugInSetup, asks_for_each_table_once_when_the_host_is_new_enough) {
  PlugInLife life;
  ASSERT_TRUE(life.SetUp());
  EXPECT_EQ(CallLog(), (Lines{"table QuillSupport 20002", "table Cel 20002", "table DocModel 20003",
                              "table QuillView 20003", "table Plat 20002", "callback"}));
  EXPECT_EQ(tableVersions.core, 0x20000u);
  EXPECT_EQ(tableVersions.platform, 0x20002u);
}

TEST(PlugInSetup, goes_down_to_the_version_that_the_host_has) {
  PlugInLife life;
  life.Offer("QuillView").highest = 0x20001;
  life.Offer("Plat").highest = 0x20000;
  ASSERT_TRUE(life.SetUp());
  EXPECT_EQ(LinesBeginning("table QuillView"),
            (Lines{"table QuillView 20003", "table QuillView 20002", "table QuillView 20001"}));
  EXPECT_EQ(tableVersions.viewer, 0x20001u);
  EXPECT_EQ(tableVersions.platform, 0x20000u);
  EXPECT_EQ(Viewer, &life.viewer);
}

TEST(PlugInSetup, without_a_document_table_asks_for_nothing_more_and_makes_no_callback) {
  PlugInLife life;
  life.Offer("DocModel").highest = 0;
  EXPECT_FALSE(life.SetUp());
  EXPECT_EQ(LinesBeginning("table DocModel").size(), 4u);
  EXPECT_EQ(CallLog().back(), "table DocModel 20000");
  EXPECT_EQ(life.setup.handshake, nullptr);
}

TEST(PlugInSetup, refuses_other_versions_untouched) {
  PlugInLife life;
  EXPECT_FALSE(life.SetUp(0x20001));
  quillon::SetupRecord record{0x10000, 5, &life.core, nullptr};
  EXPECT_EQ(PlugInSetup(quillon::kSetupVersion, &record), 0);
  EXPECT_TRUE(CallLog().empty());
  EXPECT_EQ(record.handshake, nullptr);
}

TEST(PlugInHandshake, names_the_plug_in_and_its_callbacks) {
  PlugInLife life;
  ASSERT_TRUE(life.SetUp());
  life.handshake.hostWords[0] = 1;
  life.handshake.hostWords[1] = 2;
  life.handshake.hostWords[2] = 3;
  ASSERT_TRUE(life.ShakeHands());
  const quillon::HandshakeRecord& record = life.handshake;
  EXPECT_STREQ(quillon::core::NameFromAtom(record.extensionName), "Forms");
  EXPECT_EQ(record.hostWords[0] * 100 + record.hostWords[1] * 10 + record.hostWords[2], 123);
  const std::vector<Callback> callbacks{record.exportTables, record.importTables, record.initialise,
                                        record.unload};
  for (std::size_t i = 0; i < callbacks.size(); ++i) {
    EXPECT_NE(callbacks[i], nullptr);
    for (std::size_t j = 0; j < i; ++j) EXPECT_NE(callbacks[i], callbacks[j]);
  }
}

TEST(PlugInHandshake, refuses_other_versions_untouched) {
  PlugInLife life;
  ASSERT_TRUE(life.SetUp());
  EXPECT_FALSE(life.ShakeHands(0x10000));
  EXPECT_EQ(life.handshake.extensionName, 0);
  EXPECT_EQ(life.handshake.initialise, nullptr);
}

}  // namespace
}  // namespace quillform
