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

// Who is told what is asked of servers. Both routines may be null and must not raise. Texts are
// valid during the call.
struct LinkWatcher {
  std::uint32_t size;  // of this record
  void* clientData;
  // Before each request is sent, those that follow a redirection included. `method` is GET or POST.
  void (*willRequest)(void* clientData, const char* method, const char* url);
  // A file or OpenURL is done with its address: 0, or the code of what went wrong.
  void (*finished)(void* clientData, const char* method, const char* url, FailureCode error);
};
#if UINTPTR_MAX == 0xFFFFFFFFu
static_assert(sizeof(LinkWatcher) == 16);
#endif

// OpenURL: fetches an address and opens the answer: a PDF in a view of its own (DocIsExternal is
//   then true for it), anything else is handed to the data handler registered for its type with
//   `view`. 0, or the code of what went wrong; does not raise. The last word is 0.
// Watch: the watcher from here on, null for none; a copy is kept.
// SetTimeLimit: how long one request may take in all; 0 stands for what is usual.
#define QUILLON_LINK_TABLE(X)                                                         \
  X(1, FailureCode, OpenURL, (DocView view, const char* url, std::uint32_t reserved)) \
  X(2, void, Watch, (const LinkWatcher* watcher))                                     \
  X(3, void, SetTimeLimit, (std::uint32_t seconds))

QUILLON_DECLARE_TABLE(LinkTable, QUILLON_LINK_TABLE)

}  // namespace quillon
