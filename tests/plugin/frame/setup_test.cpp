#include "plugin/frame/setup.h"

#include <gtest/gtest.h>

#include "plugin/frame/plugin_main.h"
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
  std::uint32_t chosen = 0;
  quillon::SetupRoutine setup = nullptr;
  EXPECT_EQ(PlugInMain(0x10000, &chosen, &setup, &platform), 1);
  EXPECT_EQ(chosen, 0x10000u);
  EXPECT_EQ(PlugInMain(0x30000, &chosen, &setup, &platform), 1);
  EXPECT_EQ(chosen, 0x20000u);
  EXPECT_EQ(HostWindow, &window);
  EXPECT_EQ(ModuleInstance, &module);
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

TEST(PlugInSetup, without_a_document_table_asks_for_nothing_more) {
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

TEST(PlugInHandshake, refuses_other_versions_untouched) {
  PlugInLife life;
  ASSERT_TRUE(life.SetUp());
  EXPECT_FALSE(life.ShakeHands(0x10000));
  EXPECT_EQ(life.handshake.extensionName, 0);
  EXPECT_EQ(life.handshake.initialise, nullptr);
}

}  // namespace
}  // namespace quillform
