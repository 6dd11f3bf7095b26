// Check boxes and list boxes, as a click or a selection changes them.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "bench/form_writer.h"
#include "quillon/app/forms_client.h"
#include "quillon/app/session.h"
#include "quillon/core/operations.h"
#include "quillon/document/operations.h"
#include "quillon/objects/operations.h"
#include "quillon/viewer/draw_page.h"

namespace quillform::bench {
namespace {

using quillon::ObjectHandle;
using quillon::app::CallForms;
using quillon::app::FieldNode;
using quillon::app::FormsTable;
using quillon::app::OpenedView;
using quillon::app::Session;

// A form in a file for as long as it takes to open it.
struct CheckAndListFile {
  explicit CheckAndListFile(std::uint32_t options)
      : path(std::filesystem::temp_directory_path() / "quillform-bench-kinds.pdf") {
    std::ofstream(path, std::ios::binary) << WriteCheckAndList(options);
  }
  ~CheckAndListFile() {
    std::error_code ignored;
    std::filesystem::remove(path, ignored);
  }
  CheckAndListFile(const CheckAndListFile&) = delete;
  CheckAndListFile& operator=(const CheckAndListFile&) = delete;

  std::filesystem::path path;
};

FieldNode FieldNamed(quillon::DocHandle doc, const char* name) {
  CallForms(&FormsTable::LoadAllFields, doc);
  const FieldNode node = CallForms(&FormsTable::FindFieldByName, doc, name);
  if (node == nullptr) quillon::Fail(quillon::kErrorGeneral, "the field is missing");
  return node;
}

void ToggleCheckBox(benchmark::State& state) {
  const CheckAndListFile file(1);
  const Session session({});
  const OpenedView opened(file.path.string());
  const FieldNode node = FieldNamed(opened.doc, kCheckName);
  const ObjectHandle on = quillon::objects::NewName(quillon::document::ObjectDocOf(opened.doc), 0,
                                                    quillon::core::AtomFromName("On"));
  bool checked = false;
  for (auto _ : state) {
    checked = !checked;
    CallForms(&FormsTable::SetFieldValue, node, checked ? on : quillon::kNullObject);
    benchmark::DoNotOptimize(quillon::DrawPageAnnots(opened.view, 0));
  }
  quillon::objects::Destroy(on);
}
BENCHMARK(ToggleCheckBox)->Unit(benchmark::kMicrosecond);

// Selects the first and the last option in turn, so that the list scrolls from end to end.
void RebuildListBox(benchmark::State& state) {
  const auto options = static_cast<std::uint32_t>(state.range(0));
  const CheckAndListFile file(options);
  const Session session({});
  const OpenedView opened(file.path.string());
  const FieldNode node = FieldNamed(opened.doc, kListName);
  bool last = false;
  for (auto _ : state) {
    last = !last;
    const std::string text = OptionName(last ? options - 1 : 0);
    const ObjectHandle value =
        quillon::objects::NewString(quillon::document::ObjectDocOf(opened.doc), 0, text.data(),
                                    static_cast<std::uint32_t>(text.size()));
    CallForms(&FormsTable::SetFieldValue, node, value);
    quillon::objects::Destroy(value);
  }
  state.SetComplexityN(state.range(0));
}
BENCHMARK(RebuildListBox)
    ->RangeMultiplier(10)
    ->Range(100, 10000)
    ->Unit(benchmark::kMicrosecond)
    ->Complexity(benchmark::oAuto);

}  // namespace
}  // namespace quillform::bench
