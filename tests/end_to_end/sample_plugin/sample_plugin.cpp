// A plug-in that only looks: it listens to a notification and writes a line to the file named by
// QUILLON_SAMPLE_LOG for everything that happens to it. It asks the question in
// QUILLON_SAMPLE_QUESTION when it starts.
#include <cstdio>
#include <cstdlib>

#include "examples/plugins/plug_in.h"

const char* const kExtensionName = "Sample";

namespace {

void Log(const std::string& line) {
  const char* file = std::getenv("QUILLON_SAMPLE_LOG");
  std::FILE* log = file != nullptr ? std::fopen(file, "a") : nullptr;
  if (log == nullptr) return;
  std::fprintf(log, "%s\n", line.c_str());
  std::fclose(log);
}

void DocOpened(quillon::DocView, quillon::FailureCode error, void*) {
  Log("opened " + std::to_string(error));
}

}  // namespace

bool Start() {
  const auto raise = [] { host::Objects->IntegerValue(quillon::kNullObject); };
  if (host::Try(raise) == quillon::kErrorBadObject) Log("raise caught");
  if (const char* question = std::getenv("QUILLON_SAMPLE_QUESTION")) {
    const std::uint32_t answer =
        host::Viewer->AnswerMessage("Sample", question, quillon::kMessageYesNo | 0x2000);
    Log("answer " + std::to_string(answer));
  }
  host::Viewer->RegisterNotification(quillon::kNoteDocOpened, host::Extension,
                                     host::ToCallback(&DocOpened), nullptr);
  return true;
}

void Stop() { Log("unloaded"); }
