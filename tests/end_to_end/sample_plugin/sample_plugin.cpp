// A plug-in that only looks: it listens to a notification and writes a line to the file named by
// QUILLON_SAMPLE_LOG for everything that happens to it. It asks the question in
// QUILLON_SAMPLE_QUESTION when it starts.
#include <cstdio>
#include <cstdlib>
#include <string>

#include "sdk/entry.h"
#include "sdk/errors.h"
#include "sdk/notifications.h"
#include "sdk/objects_table.h"
#include "sdk/viewer_table.h"

namespace {

using quillon::Boolean;
using quillon::Callback;

quillon::ExtensionId extension = 0;
quillon::CoreTable* core = nullptr;
quillon::ObjectsTable* objects = nullptr;
quillon::ViewerTable* viewer = nullptr;

void Log(const std::string& line) {
  const char* file = std::getenv("QUILLON_SAMPLE_LOG");
  if (file == nullptr) return;
  if (std::FILE* log = std::fopen(file, "a")) {
    std::fprintf(log, "%s\n", line.c_str());
    std::fclose(log);
  }
}

template <typename Routine>
Callback ToHost(Routine* routine) {
  return core->MakeCallback(extension, reinterpret_cast<Callback>(routine));
}

template <typename Table>
Table* AskFor(const char* name, std::uint32_t version) {
  return static_cast<Table*>(core->GetTable(core->AtomFromName(name), version));
}

// A raise, caught in a guarded block of this plug-in's own.
struct SampleError {
  quillon::FailureCode code;
};
[[noreturn]] void Restore(quillon::GuardFrame* frame) { throw SampleError{frame->code}; }

void ProvokeRaise() {
  quillon::GuardFrame frame{};
  core->PushFrame(&frame, Restore);
  try {
    objects->IntegerValue(quillon::kNullObject);
    core->PopFrame();
    Log("no raise");
  } catch (const SampleError& error) {
    core->PopFrame();
    Log(error.code == quillon::kErrorBadObject ? "raise caught" : "other raise caught");
  }
}

void AskQuestion() {
  const char* question = std::getenv("QUILLON_SAMPLE_QUESTION");
  if (question == nullptr) return;
  const std::uint32_t answer =
      viewer->AnswerMessage("Sample", question, quillon::kMessageYesNo | 0x2000);
  Log("answer " + std::to_string(answer));
}

void DocOpened(quillon::DocView, quillon::FailureCode error, void*) {
  Log("opened " + std::to_string(error));
}

Boolean Initialise() {
  ProvokeRaise();
  AskQuestion();
  viewer->RegisterNotification(quillon::kNoteDocOpened, extension, ToHost(DocOpened), nullptr);
  return 1;
}

Boolean Unload() {
  Log("unloaded");
  return 1;
}

Boolean Handshake(std::uint32_t version, quillon::HandshakeRecord* record) {
  if (version != quillon::kHandshakeVersion) return 0;
  record->extensionName = core->AtomFromName("Sample");
  record->initialise = ToHost(Initialise);
  record->unload = ToHost(Unload);
  return 1;
}

Boolean Setup(std::uint32_t version, quillon::SetupRecord* record) {
  if (version != quillon::kSetupVersion) return 0;
  extension = record->extension;
  core = record->core;
  objects = AskFor<quillon::ObjectsTable>(quillon::kObjectsTableName, quillon::kObjectsVersion);
  viewer = AskFor<quillon::ViewerTable>(quillon::kViewerTableName, quillon::kViewerVersion);
  if (objects == nullptr || viewer == nullptr) return 0;
  record->handshake = ToHost(Handshake);
  return 1;
}

}  // namespace

QUILLON_PLUGIN_EXPORT Boolean PlugInMain(std::uint32_t, std::uint32_t* chosenVersion,
                                         quillon::SetupRoutine* setup,
                                         const quillon::PlatformData*) {
  *chosenVersion = quillon::kHandshakeVersion;
  *setup = Setup;
  return 1;
}
