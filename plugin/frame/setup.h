// The first two meetings with the host: setup takes its tables, the handshake tells it who this is
// and what to call.
#pragma once

#include "plugin/host/host.h"

namespace quillform {

// The versions at which the host's tables were obtained; 0 for one that was not.
struct TableVersions {
  std::uint32_t core;
  std::uint32_t support;
  std::uint32_t objects;
  std::uint32_t document;
  std::uint32_t viewer;
  std::uint32_t platform;
};
extern TableVersions tableVersions;

// Answers 0 for any other version than kSetupVersion and when a table is missing; the record's
// handshake is then not set. Lets no failure of the host out.
Boolean PlugInSetup(std::uint32_t version, quillon::SetupRecord* record);

// Answers 0 and writes nothing for any other version than kHandshakeVersion.
Boolean PlugInHandshake(std::uint32_t version, quillon::HandshakeRecord* record);

}  // namespace quillform
