// Settings of the tests' own, in place of the user's: on Windows a key of the real registry that
// stands in for the current user's, elsewhere a folder. Every test program that holds the plug-in's
// code starts and ends with it.
#pragma once

#include <string>

namespace quillform {

// No settings at all. Tests that depend on settings begin with it.
void ClearSettings();

// A setting as it is stored, past the code under test.
void StoreSettingText(const std::string& section, const std::string& name, const std::string& text);

}  // namespace quillform
