// Page ranges as the command line has them.
#pragma once

#include <cstdint>
#include <string>

namespace quillon::app {

// Counted from 0, both included.
struct PageRange {
  std::uint32_t first;
  std::uint32_t last;
};

// "3", "2-5", "4-" (to the end) or "-2", counted from 1; empty for all pages. Throws HostFailure
// when it is none of these or reaches beyond the document's pages.
PageRange ParsePageRange(const std::string& text, std::uint32_t pageCount);

}  // namespace quillon::app
