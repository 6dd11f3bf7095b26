// The seam to the rendering library: a module of its own, loaded when a page is first drawn, so
// that a program that draws nothing neither waits for the library nor needs it.
#pragma once

#include <cstddef>
#include <cstdint>

namespace quillon {

struct RasterRequest {
  const char* bytes;  // a whole PDF document
  std::size_t length;
  std::uint32_t page;  // counted from 0
  double dpi;          // pixels an inch
};

enum class RasterPart : std::uint32_t {
  kPicture = 0,  // the page as the bytes of a PNG file; once, last
  kWarning = 1,  // something the library met while it drew
  kFailure = 2,  // why there is no picture; once, last
};

// Takes one part of the answer; the bytes are the module's and only valid during the call.
using RasterSink = void (*)(void* client, RasterPart part, const char* bytes, std::size_t length);

// What the module exports under kRasterEntryName. It throws nothing.
using RasterRoutine = void (*)(const RasterRequest* request, RasterSink sink, void* client);

inline constexpr const char* kRasterEntryName = "QuillonDrawPage";
inline constexpr const char* kRasterModuleName = "QuillonRaster.so";

}  // namespace quillon
