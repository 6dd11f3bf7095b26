// Names that the user may have meant.
#pragma once

#include <string>
#include <vector>

namespace quillon::app {

// Up to three of `names` that are close to `wanted`, the closest first: the same but for upper and
// lower case, the last part of a longer name, or a few letters off.
std::vector<std::string> SuggestNames(const std::string& wanted,
                                      const std::vector<std::string>& names);

}  // namespace quillon::app
