// Putting a file in the place of another without a moment at which neither is whole.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace quillon::objects {

// What tells a file from the one that another program put in its place.
struct FileStamp {
  std::uintmax_t size;
  std::filesystem::file_time_type changed;
  bool operator==(const FileStamp&) const = default;
};
std::optional<FileStamp> StampOf(const std::string& file);  // none: it cannot be looked at

// Calls `write` with a routine that takes the new file's bytes, then puts the new file in the place
// of `file` (UTF-8). Until then, and when anything fails, the old file is as it was and nothing is
// left beside it. Links are followed; permissions of the old file are kept, and one that may not be
// written is not replaced. What is no plain file (a device, a pipe) is never replaced: the bytes
// are written to it. Throws HostFailure (kErrorWriteFile).
using TakeBytes = std::function<void(std::string_view)>;

// Whether the new file is on the disk when the call returns, so that it is there, or the old one,
// after a loss of power too. Left to the system, that is so some time later: for many files that
// can be made anew, whose flushing would take most of the time.
enum class Flushing { kNow, kLeftToSystem };

// With a stamp, the old file is replaced only when it still has it: what another program wrote
// meanwhile is not lost.
void ReplaceFile(const std::string& file, const std::function<void(const TakeBytes&)>& write,
                 Flushing flushing = Flushing::kNow,
                 const std::optional<FileStamp>& expected = std::nullopt);

}  // namespace quillon::objects
