// Measures the work that people wait for, in the finished pieces: the plug-in module that lies
// beside this program, loaded into a host as the program `quillon` loads it.
#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "bench/form_writer.h"
#include "quillon/app/field_listing.h"
#include "quillon/app/session.h"
#include "quillon/document/operations.h"
#include "quillon/objects/operations.h"
#include "quillon/viewer/open_view.h"

namespace quillform::bench {
namespace {

using quillon::ObjectHandle;
using quillon::app::CallForms;
using quillon::app::FieldNode;
using quillon::app::FormsTable;
using quillon::app::OpenedView;
using quillon::app::Session;

constexpr std::uint32_t kFieldsAPage = 50;

// Input and output of a benchmark, gone with it.
struct FormFile {
  explicit FormFile(std::uint32_t fields)
      : input(std::filesystem::temp_directory_path() / "quillform-bench.pdf"),
        output(std::filesystem::temp_directory_path() / "quillform-bench-out.pdf") {
    std::ofstream(input, std::ios::binary) << WriteForm({fields, (fields - 1) / kFieldsAPage + 1});
  }
  ~FormFile() {
    std::error_code ignored;
    std::filesystem::remove(input, ignored);
    std::filesystem::remove(output, ignored);
  }
  FormFile(const FormFile&) = delete;
  FormFile& operator=(const FormFile&) = delete;

  std::filesystem::path input;
  std::filesystem::path output;
};

FieldNode FindField(quillon::DocHandle doc, const std::string& name) {
  const FieldNode node = CallForms(&FormsTable::FindFieldByName, doc, name.c_str());
  // Setting the value of no field does nothing, very fast.
  if (node == nullptr) quillon::Fail(quillon::kErrorGeneral, "there is no field " + name);
  return node;
}

void SetText(quillon::DocHandle doc, FieldNode node, const std::string& text) {
  const ObjectHandle value = quillon::objects::NewString(
      quillon::document::ObjectDocOf(doc), 0, text.data(), static_cast<std::uint32_t>(text.size()));
  CallForms(&FormsTable::SetFieldValue, node, value);
  quillon::objects::Destroy(value);
}

void FillAll(const FormFile& file, std::uint32_t fields) {
  const OpenedView opened(file.input.string());
  CallForms(&FormsTable::LoadAllFields, opened.doc);
  for (std::uint32_t i = 0; i < fields; ++i) {
    const std::string name = FieldName(i);
    SetText(opened.doc, FindField(opened.doc, name), "Value of " + name);
  }
  quillon::PrepareSave(opened.view);
  quillon::SaveDocumentFile(opened.doc, file.output.string());
}

// The rate is fields a second; time a field is what must not grow with the size of the form.
void CountFields(benchmark::State& state, std::uint32_t fields) {
  const auto done = static_cast<double>(state.iterations()) * fields;
  state.counters["per_field"] =
      benchmark::Counter(done, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void OpenFillSave(benchmark::State& state) {
  const auto fields = static_cast<std::uint32_t>(state.range(0));
  const FormFile file(fields);
  const Session session({});
  for (auto _ : state) FillAll(file, fields);
  CountFields(state, fields);
}
BENCHMARK(OpenFillSave)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void ListFields(benchmark::State& state) {
  const auto fields = static_cast<std::uint32_t>(state.range(0));
  const FormFile file(fields);
  const Session session({});
  for (auto _ : state) {
    const OpenedView opened(file.input.string());
    std::vector<std::string> warnings;
    for (const auto& entry : quillon::app::ListFields(opened.doc, &warnings)) {
      benchmark::DoNotOptimize(quillon::app::ReadFieldDetails(entry));
    }
  }
  CountFields(state, fields);
}
BENCHMARK(ListFields)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);

// Opening up to the first field: nothing that grows with the file may be done before it.
void OpenToFirstField(benchmark::State& state) {
  const FormFile file(static_cast<std::uint32_t>(state.range(0)));
  const Session session({});
  for (auto _ : state) {
    const OpenedView opened(file.input.string());
    benchmark::DoNotOptimize(CallForms(&FormsTable::DocumentHasForm, opened.doc));
  }
}
BENCHMARK(OpenToFirstField)->Arg(1000)->Arg(100000)->Unit(benchmark::kMicrosecond);

// A new value in one open field: the value stored, the appearance built and installed.
void SetOneValue(benchmark::State& state) {
  const FormFile file(kFieldsAPage);
  const Session session({});
  const OpenedView opened(file.input.string());
  CallForms(&FormsTable::LoadAllFields, opened.doc);
  const FieldNode node = FindField(opened.doc, FieldName(7));
  bool other = false;
  for (auto _ : state) {
    SetText(opened.doc, node, other ? "One value of a field" : "Another value of it");
    other = !other;
  }
}
BENCHMARK(SetOneValue)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace quillform::bench

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  benchmark::RunSpecifiedBenchmarks();
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  std::printf("peak memory: %ld MB\n", usage.ru_maxrss / 1024);
  return 0;
}
