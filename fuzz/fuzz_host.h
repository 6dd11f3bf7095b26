// What the fuzz targets share: the viewer with the plug-in, started once in a process, and pieces
// of work whose failures are outcomes like any other.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "quillon/core/guard.h"
#include "sdk/entry.h"
#include "sdk/forms_table.h"

// libFuzzer's entry: https://llvm.org/docs/LibFuzzer.html
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace quillon::fuzz {

// Starts the viewer and the plug-in, and `further` before it, on the first call.
void StartOnce(PlugInMainRoutine further = nullptr);

const quillform::FormsTable& Forms();

inline std::string_view TextOf(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

// Ends the process, which the fuzzer reports, unless `held`.
void Require(bool held, const char* what);

// A view of a document for its own lifetime.
struct ShownDocument {
  explicit ShownDocument(std::string bytes);
  ~ShownDocument();
  ShownDocument(const ShownDocument&) = delete;
  ShownDocument& operator=(const ShownDocument&) = delete;

  DocView view = nullptr;
  DocHandle doc = nullptr;
};

// Loads all fields and gives each text field a value; what a field refuses is passed over.
void FillTextFields(DocHandle doc, const char* value);

// The document as the program would save it.
std::string SavedBytes(DocView view);

// The pages of a saved document. What is saved can be opened again.
std::uint32_t PagesWhenReopened(std::string bytes);

// Runs `work`; host failures end it. Afterwards no guarded block of its own may be open.
template <typename Work>
void Attempt(Work&& work) {
  const std::size_t open = OpenFrameCount();
  try {
    CallGuarded(std::forward<Work>(work));
  } catch (const HostFailure&) {
  }
  Require(OpenFrameCount() == open, "a guarded block was left open");
}

}  // namespace quillon::fuzz
