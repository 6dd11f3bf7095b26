// The bytes that a document was read from: a mapped file, or bytes in memory.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace quillon::objects {

struct SourceBytes {
  std::string_view bytes;
  std::shared_ptr<const void> owner;  // keeps `bytes` valid
};

// `file` is UTF-8. Throws HostFailure (kErrorOpenFile).
SourceBytes ReadSource(const std::string& file);

SourceBytes SourceFromString(std::string bytes);

}  // namespace quillon::objects
