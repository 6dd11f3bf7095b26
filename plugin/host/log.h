// The log: a file QuillForm.log beside the module, when the user's settings ask for it.
#pragma once

#include <cstdio>
#include <string>

namespace quillform {

// Starts the log anew, and ends it. A log that cannot be written is done without.
void OpenLog();
void CloseLog();

// Writes at most 1,023 bytes of what the format makes.
#if defined(__GNUC__)
__attribute__((format(printf, 2, 3)))
#endif
void LogPrintf(std::FILE* file, const char* format, ...);

// The local time in a format of strftime, at most 132 characters; without a format in 24, such as
// "Tue Mar  4 09:05:00 2025".
std::string NowText(const char* format = nullptr);

}  // namespace quillform
