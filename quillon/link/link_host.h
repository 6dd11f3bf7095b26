// The host as this plug-in uses it: its tables, and its failures as exceptions. The plug-in is
// built from sdk/ alone and reaches the host through tables only, like any other.
#pragma once

#include <exception>
#include <new>
#include <string>
#include <utility>

#include "sdk/core_table.h"
#include "sdk/entry.h"
#include "sdk/errors.h"
#include "sdk/link_table.h"
#include "sdk/support_table.h"
#include "sdk/viewer_table.h"

namespace quillon::link {

// Set at setup, before anything else runs.
struct Host {
  ExtensionId extension;
  CoreTable* core;
  SupportTable* support;
  ViewerTable* viewer;
};
extern Host host;

struct Raised {
  FailureCode code;
};

// A guarded block for its own lifetime: what the host raises inside arrives as Raised.
struct Guard {
  Guard();
  ~Guard();
  Guard(const Guard&) = delete;
  Guard& operator=(const Guard&) = delete;

  GuardFrame frame;
};

// Runs `work` in a block and answers what it answers, or the code that ended it. Every routine that
// the host gets runs its work in here: nothing but raises of the host's own may pass between them.
template <typename Work>
FailureCode CodeOf(Work&& work) {
  Guard guard;
  try {
    return std::forward<Work>(work)();
  } catch (const Raised& raised) {
    return raised.code;
  } catch (const std::bad_alloc&) {
    return kErrorNoMemory;
  } catch (const std::exception&) {
    return kErrorGeneral;
  }
}

// The code of a sentence for people; 0 for an empty one.
FailureCode CodeOfText(const std::string& sentence);

}  // namespace quillon::link
