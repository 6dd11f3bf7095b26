// Form data of large forms, out and in again.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "bench/form_writer.h"
#include "quillon/app/data_format.h"
#include "quillon/app/forms_client.h"
#include "quillon/app/session.h"
#include "quillon/document/open_document.h"
#include "quillon/objects/pdf_file.h"

namespace quillform::bench {
namespace {

using quillon::app::CallForms;
using quillon::app::FormsTable;
using quillon::app::OpenedView;
using quillon::app::Session;

constexpr std::uint32_t kFieldsAPage = 50;

std::string FormOf(std::uint32_t fields) {
  return WriteForm({fields, (fields - 1) / kFieldsAPage + 1});
}

// Data for every field of such a form.
std::string DataOf(std::uint32_t fields, const std::string& value) {
  std::string data = "%FDF-1.2\n1 0 obj\n<< /FDF << /Fields [\n";
  for (std::uint32_t i = 0; i < fields; ++i) {
    data += "<< /T (" + FieldName(i) + ") /V (" + value + ") >>\n";
  }
  return data + "] >> >>\nendobj\ntrailer\n<< /Root 1 0 R >>\n";
}

void Import(const OpenedView& opened, const std::string& data) {
  const quillon::ObjectDoc fdf =
      quillon::OpenPdfBytes(data, {quillon::app::kFdfHeader, {}}, nullptr);
  CallForms(&FormsTable::ImportFDF, opened.doc, fdf);
  quillon::ClosePdf(fdf);
}

void CountFields(benchmark::State& state, std::uint32_t fields) {
  const auto done = static_cast<double>(state.iterations()) * fields;
  state.counters["per_field"] =
      benchmark::Counter(done, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void ImportFdf(benchmark::State& state) {
  const auto fields = static_cast<std::uint32_t>(state.range(0));
  const Session session({});
  const OpenedView opened(quillon::OpenDocumentBytes(FormOf(fields)));
  const std::string data[] = {DataOf(fields, "One value"), DataOf(fields, "Another value")};
  // What a field has already would cost nothing.
  std::size_t next = 0;
  for (auto _ : state) Import(opened, data[next++ % 2]);
  CountFields(state, fields);
}
BENCHMARK(ImportFdf)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void ExportFdf(benchmark::State& state) {
  const auto fields = static_cast<std::uint32_t>(state.range(0));
  const Session session({});
  const OpenedView opened(quillon::OpenDocumentBytes(FormOf(fields)));
  Import(opened, DataOf(fields, "One value"));
  for (auto _ : state) benchmark::DoNotOptimize(quillon::app::ValuesAsFdf(opened.doc, ""));
  CountFields(state, fields);
}
BENCHMARK(ExportFdf)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quillform::bench
