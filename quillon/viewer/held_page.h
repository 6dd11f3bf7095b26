// A page that is acquired for as long as this stands.
#pragma once

#include "quillon/document/operations.h"

namespace quillon::viewer {

struct HeldPage {
  HeldPage(DocHandle doc, std::uint32_t number) : handle(document::AcquirePage(doc, number)) {}
  ~HeldPage() {
    try {
      document::ReleasePage(handle);
    } catch (const HostFailure&) {
      // The document was closed meanwhile, and its pages with it.
    }
  }
  HeldPage(const HeldPage&) = delete;
  HeldPage& operator=(const HeldPage&) = delete;

  PageHandle handle;
};

}  // namespace quillon::viewer
