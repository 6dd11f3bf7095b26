// Having the user choose a file.
#pragma once

#include <cstdint>

#include "plugin/host/host.h"

namespace quillform {

// What is chosen. The first two numbers are those of strings: the chooser's title, and its filters.
struct FileChoice {
  std::uint32_t title;
  std::uint32_t filter;
  const char* extension;  // given to a name without one
  bool forSaving;
};

inline constexpr FileChoice kChooseForm{94, 141, "pdf", false};
inline constexpr FileChoice kChooseFdf{95, 142, "fdf", false};
inline constexpr FileChoice kSaveFdf{96, 142, "fdf", true};

// The path, for the caller to release; null when the user cancels.
PathHandle AskForFile(const FileChoice& choice);

}  // namespace quillform
