#include "quillon/app/session.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <system_error>

#include "quillon/app/console.h"
#include "quillon/app/forms_client.h"
#include "quillon/core/host.h"
#include "quillon/core/report.h"
#include "quillon/viewer/open_view.h"
#include "quillon/viewer/operations.h"
#include "quillon/viewer/start.h"

namespace quillon::app {
namespace {

constexpr const char* kFormsPlugIn = "QuillForm.so";

std::vector<std::string> collected;

std::string FileBesideProgram(const char* name) {
  std::error_code error;
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
  if (error) Fail(kErrorOpenFile, "the program cannot find its own folder: " + error.message());
  return (program.parent_path() / name).string();
}

void StartWithPlugIns(const std::vector<std::string>& plugIns) {
  StartViewer();
  SetReporter([](const std::string& text) { collected.push_back(text); });
  LoadPlugIn(FileBesideProgram(kFormsPlugIn));
  for (const std::string& file : plugIns) LoadPlugIn(file);
  InitialisePlugIns();
}

void StopEverything() {
  ForgetForms();
  StopViewer();
  SetReporter({});
  collected.clear();
}

DocHandle OpenInput(const std::string& file) {
  if (file == kStandardStream) return OpenDocumentBytes(ReadStandardInput());
  return OpenDocumentFile(file);
}

std::string ReadAll(std::FILE* file) {
  std::string bytes;
  char buffer[1 << 16];
  while (const std::size_t got = std::fread(buffer, 1, sizeof buffer, file)) {
    bytes.append(buffer, got);
  }
  return bytes;
}

}  // namespace

Session::Session(const std::vector<std::string>& plugIns) {
  try {
    StartWithPlugIns(plugIns);
  } catch (...) {
    StopEverything();
    throw;
  }
}

Session::~Session() { StopEverything(); }

std::vector<std::string> FileWarnings(DocHandle doc) {
  std::vector<std::string> warnings;
  for (const FileWarning& warning : DocumentWarnings(doc)) {
    warnings.push_back(DescribePlace(warning.text, warning.objectNumber, warning.offset));
  }
  return warnings;
}

std::vector<std::string> PlugInWarnings() { return collected; }

OpenedView::OpenedView(const std::string& file) : view(nullptr), doc(OpenInput(file)) {
  view = OpenViewOfDocument(doc);
}

OpenedView::~OpenedView() {
  try {
    viewer::CloseView(view);
  } catch (const HostFailure& failure) {
    PrintWarning("", "closing the document failed: " + Describe(failure));
  }
}

std::string ReadStandardInput() {
  std::string bytes = ReadAll(stdin);
  if (std::ferror(stdin) != 0) Fail(kErrorReadFile, "the standard input cannot be read");
  return bytes;
}

std::string ReadWhole(const std::string& file) {
  if (file == kStandardStream) return ReadStandardInput();
  std::ifstream stream(file, std::ios::binary);
  std::ostringstream bytes;
  bytes << stream.rdbuf();
  if (!stream.is_open() || stream.bad()) Fail(kErrorOpenFile, "the file cannot be read");
  return bytes.str();
}

void WriteFileWhole(const std::string& file, const std::string& bytes) {
  const std::string unfinished = file + ".unfinished";
  std::error_code error;
  {
    std::ofstream stream(unfinished, std::ios::binary | std::ios::trunc);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    stream.close();
    if (!stream) error = std::make_error_code(std::errc::io_error);
  }
  if (!error) std::filesystem::rename(unfinished, file, error);
  if (error) {
    std::error_code ignored;
    std::filesystem::remove(unfinished, ignored);
    Fail(kErrorWriteFile, file + " cannot be written: " + error.message());
  }
}

void WriteStandardOutput(const std::string& bytes) {
  const std::size_t written = std::fwrite(bytes.data(), 1, bytes.size(), stdout);
  if (written != bytes.size() || std::fflush(stdout) != 0) {
    Fail(kErrorWriteFile, "the standard output cannot be written");
  }
}

}  // namespace quillon::app
