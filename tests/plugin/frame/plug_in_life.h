// The plug-in led through its life by hand, over copies of the host's tables, so that a test can
// look at every call that reaches the host and decide what the host answers.
#pragma once

#include <string>
#include <vector>

#include "sdk/document_table.h"
#include "sdk/entry.h"
#include "sdk/objects_table.h"
#include "sdk/platform_table.h"
#include "sdk/support_table.h"
#include "sdk/viewer_table.h"
#include "tests/support/test_host.h"

namespace quillform {

// One of the host's tables as the plug-in sees it. A test may raise or lower what is offered.
struct OfferedTable {
  const char* name;
  std::uint32_t lowest;
  std::uint32_t highest;  // 0: not offered at all
  void* table;
};

// Starts a host; the destructor stops it. One life at a time.
struct PlugInLife {
  PlugInLife();
  ~PlugInLife();
  PlugInLife(const PlugInLife&) = delete;
  PlugInLife& operator=(const PlugInLife&) = delete;

  OfferedTable& Offer(const std::string& name);

  // The steps of a life. SetUp runs entry and setup, ShakeHands the handshake and the export.
  bool SetUp(std::uint32_t version = quillon::kSetupVersion);
  bool ShakeHands(std::uint32_t version = quillon::kHandshakeVersion);
  bool Initialise();  // what the plug-in raises is thrown as a HostFailure
  void Unload();

  quillon::test::TestHost host;
  quillon::CoreTable core;
  quillon::SupportTable support;
  quillon::ViewerTable viewer;
  std::vector<OfferedTable> offers;
  quillon::SetupRecord setup;
  quillon::HandshakeRecord handshake;
};

// The plug-in's requests for tables, one line each: "table Plat 20002".
std::vector<std::string>& CallLog();

}  // namespace quillform
