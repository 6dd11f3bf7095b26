#include "quillon/app/session.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <system_error>

#include "quillon/app/console.h"
#include "quillon/app/forms_client.h"
#include "quillon/app/open_save_options.h"
#include "quillon/core/guard.h"
#include "quillon/core/host.h"
#include "quillon/core/module.h"
#include "quillon/core/report.h"
#include "quillon/document/operations.h"
#include "quillon/objects/replace_file.h"
#include "quillon/support/operations.h"
#include "quillon/support/paths.h"
#include "quillon/viewer/messages.h"
#include "quillon/viewer/open_view.h"
#include "quillon/viewer/operations.h"
#include "quillon/viewer/start.h"

namespace quillon::app {
namespace {

constexpr const char* kFormsPlugIn = "QuillForm.so";
constexpr const char* kLinkPlugIn = "Hopline.so";

std::vector<std::string> collected;

std::uint32_t AnswerOnConsole(const Message& message, Answers answers) {
  const std::uint32_t cautious = CautiousAnswer(message.flags);
  const std::uint32_t agreeing = AgreeingAnswer(message.flags);
  const bool agrees = answers == Answers::kAgreeing;
  std::string text = message.text;
  if (cautious != agreeing) text += agrees ? " - Yes" : " - No (--yes answers Yes)";
  PrintError("", Printable(text));
  return agrees ? agreeing : cautious;
}

void StartWithPlugIns(const std::vector<std::string>& plugIns, Answers answers) {
  StartViewer();
  SetMessageRoutine(
      [answers](const Message& message) { return AnswerOnConsole(message, answers); });
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
  const OpenOptions options = OptionsForOpening();
  if (file == kStandardStream) return OpenDocumentBytes(ReadStandardInput(), options);
  return OpenDocumentFile(file, options);
}

bool IsFormData(const std::string& file) {
  constexpr std::string_view kHeader = "%FDF-";
  if (file == kStandardStream) return false;
  char start[kHeader.size()]{};
  std::ifstream(file, std::ios::binary).read(start, sizeof start);
  return std::string_view(start, sizeof start) == kHeader;
}

// The way a person opens a file, which plug-ins have put themselves into.
DocView OpenThroughPlugIns(const std::string& file) {
  const PathHandle path = PathOf(file);
  DocView view = nullptr;
  CallGuarded([&] { view = OfferedTables().viewer.OpenDocument(path, nullptr, nullptr, 0); });
  support::ReleasePath(path);
  if (view == nullptr) {
    Fail(kErrorOpenDocument, "the form that the data belongs to was not opened");
  }
  return view;
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

Session::Session(const std::vector<std::string>& plugIns, Answers answers) {
  try {
    StartWithPlugIns(plugIns, answers);
  } catch (...) {
    StopEverything();
    throw;
  }
}

Session::~Session() { StopEverything(); }

std::string LinkPlugInFile() {
  std::string file = FileBesideProgram(kLinkPlugIn);
  std::error_code ignored;
  if (!std::filesystem::exists(file, ignored)) {
    Fail(kErrorNotOffered, std::string("the plug-in that reaches the web, ") + kLinkPlugIn +
                               ", does not lie beside the program");
  }
  return file;
}

std::vector<std::string> FileWarnings(DocHandle doc) {
  std::vector<std::string> warnings;
  for (const FileWarning& warning : DocumentWarnings(doc)) {
    warnings.push_back(DescribePlace(warning.text, warning.objectNumber, warning.offset));
  }
  return warnings;
}

std::vector<std::string> PlugInWarnings() { return collected; }

ExitStatus FailDocument(const std::string& file, DocHandle doc,
                        const std::vector<std::string>& problems, std::string_view outcome) {
  FinishWith(file, FileWarnings(doc));
  return FailWith(file, problems, outcome);
}

ExitStatus FinishDocument(const std::string& file, DocHandle doc,
                          const std::vector<std::string>& own) {
  std::vector<std::string> warnings = FileWarnings(doc);
  warnings.insert(warnings.end(), own.begin(), own.end());
  warnings.insert(warnings.end(), collected.begin(), collected.end());
  return FinishWith(file, warnings);
}

OpenedView::OpenedView(const std::string& file)
    : view(nullptr), doc(nullptr), throughData(IsFormData(file)) {
  if (throughData) {
    view = OpenThroughPlugIns(file);
    doc = viewer::DocOf(view);
  } else {
    doc = OpenInput(file);
    view = OpenViewOfDocument(doc);
  }
}

OpenedView::OpenedView(DocHandle document)
    : view(OpenViewOfDocument(document)), doc(document), throughData(false) {}

OpenedView::~OpenedView() {
  try {
    viewer::CloseView(view);
  } catch (const HostFailure& failure) {
    PrintWarning("", "closing the document failed: " + Describe(failure));
  }
}

void PermitReading(DocHandle doc) {
  const std::uint32_t permitted = document::GetPermissions(doc);
  if ((permitted & (kPermitForms | kPermitEdit)) == 0)
    SetPermissions(doc, permitted | kPermitForms);
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
  // A folder can be opened on some systems, and reads as empty.
  std::error_code ignored;
  const bool folder = std::filesystem::is_directory(file, ignored);
  if (!stream.is_open() || stream.bad() || folder) Fail(kErrorOpenFile, "the file cannot be read");
  return bytes.str();
}

void WriteFileWhole(const std::string& file, const std::string& bytes) {
  objects::ReplaceFile(file, [&bytes](const objects::TakeBytes& take) { take(bytes); });
}

void WriteStandardOutput(const std::string& bytes) {
  const std::size_t written = std::fwrite(bytes.data(), 1, bytes.size(), stdout);
  if (written != bytes.size() || std::fflush(stdout) != 0) {
    Fail(kErrorWriteFile,
         "the standard output cannot be written: " + std::generic_category().message(errno));
  }
}

}  // namespace quillon::app
