#include "plugin/frame/setup.h"

#include <gtest/gtest.h>

#include "plugin/frame/plugin_main.h"
#include "quillon/core/host.h"
#include "quillon/core/operations.h"
#include "tests/support/test_host.h"

namespace quillform {
namespace {

using quillon::test::TestHost;

TEST(PlugInMain, chooses_the_lower_version_and_keeps_the_platforms_words) {
  int window = 0;
  int module = 0;
  quillon::PlatformData platform{&window, &module};
  std::uint32_t chosen = 0;
  quillon::SetupRoutine setup = nullptr;
  EXPECT_EQ(PlugInMain(0x10000, &chosen, &setup, &platform), 1);
  EXPECT_EQ(chosen, 0x10000u);
  EXPECT_EQ(HostWindow, &window);
  EXPECT_EQ(ModuleInstance, &module);
  platform = {};
  EXPECT_EQ(PlugInMain(0x30000, &chosen, &setup, &platform), 1);
  EXPECT_EQ(chosen, 0x20000u);
}

// Offers one of the host's tables up to an older version; 0 takes it away.
void OfferOlder(const char* name, std::uint32_t highestVersion) {
  void* table =
      quillon::core::GetTable(quillon::core::AtomFromName(name), quillon::kOldestTableVersion);
  ASSERT_NE(table, nullptr) << name;
  quillon::OfferTable({name, highestVersion, table});
}

TEST(PlugInSetup, goes_down_to_the_version_that_the_host_has) {
  const TestHost host;
  OfferOlder(quillon::kViewerTableName, 0x20001);
  OfferOlder(quillon::kPlatformTableName, 0x20000);
  quillon::AttachPlugIn(&PlugInMain, nullptr);
  EXPECT_EQ(tableVersions.viewer, 0x20001u);
  EXPECT_EQ(tableVersions.platform, 0x20000u);
  EXPECT_EQ(tableVersions.document, quillon::kDocumentVersion);
}

TEST(PlugInSetup, refuses_a_host_without_a_document_table) {
  const TestHost host;
  OfferOlder(quillon::kDocumentTableName, 0);
  EXPECT_THROW(quillon::AttachPlugIn(&PlugInMain, nullptr), quillon::HostFailure);
}

TEST(PlugInSetup, refuses_records_of_other_versions_untouched) {
  quillon::SetupRecord record{0x10000, 5, nullptr, nullptr};
  EXPECT_EQ(PlugInSetup(quillon::kSetupVersion, &record), 0);
  record.version = quillon::kSetupVersion;
  EXPECT_EQ(PlugInSetup(0x20001, &record), 0);
  EXPECT_EQ(record.handshake, nullptr);
  quillon::HandshakeRecord handshake{};
  EXPECT_EQ(PlugInHandshake(0x10000, &handshake), 0);
  EXPECT_EQ(handshake.initialise, nullptr);
}

}  // namespace
}  // namespace quillform
