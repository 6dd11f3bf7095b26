// Where problems go that nobody is left to act on: a plug-in that could not start, a subscriber
// that failed.
#pragma once

#include <functional>
#include <string>

namespace quillon {

using Reporter = std::function<void(const std::string& text)>;

// One line, without its end. Goes to the standard error stream unless a reporter is set.
void Report(const std::string& text);

// Answers the reporter that it replaces; an empty one brings the standard error stream back.
Reporter SetReporter(Reporter reporter);

}  // namespace quillon
