// "Hopline", version 1: what the link plug-in offers. Its file system "URL" takes addresses as
// paths: opened for writing it collects a small header block (lines "Name: value" ended by line
// feeds, then an empty line) and a body, and sends the request when the file is closed.
#pragma once

#include "table_macros.h"
#include "types.h"

namespace quillon {

inline constexpr const char* kLinkTableName = "Hopline";
inline constexpr std::uint32_t kLinkVersion = 1;
inline constexpr const char* kUrlFileSystemName = "URL";

// OpenURL: fetches an address and opens the answer: a PDF in a view of its own (DocIsExternal is
//   then true for it), anything else is handed to the data handler registered for its type with
//   `view`. 0, or the code of what went wrong; does not raise. The last word is 0.
#define QUILLON_LINK_TABLE(X) \
  X(1, FailureCode, OpenURL, (DocView view, const char* url, std::uint32_t reserved))

QUILLON_DECLARE_TABLE(LinkTable, QUILLON_LINK_TABLE)

}  // namespace quillon
