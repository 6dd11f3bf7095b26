// A plug-in that only looks: it takes the host's tables and "Forms", listens to a notification and
// a form event, and writes a line to the file named by QUILLON_SAMPLE_LOG for everything it
// receives. It asks the question in QUILLON_SAMPLE_QUESTION when it starts.
#include <cstdio>
#include <cstdlib>
#include <string>

#include "sdk/document_table.h"
#include "sdk/entry.h"
#include "sdk/errors.h"
#include "sdk/forms_table.h"
#include "sdk/notifications.h"
#include "sdk/objects_table.h"
#include "sdk/platform_table.h"
#include "sdk/support_table.h"
#include "sdk/viewer_table.h"

namespace {

using quillform::FormsTable;
using quillon::Boolean;
using quillon::Callback;

quillon::ExtensionId extension = 0;
quillon::CoreTable* core = nullptr;
quillon::ObjectsTable* objects = nullptr;
quillon::ViewerTable* viewer = nullptr;
FormsTable* forms = nullptr;
std::uint32_t registration = 0;

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
  auto* table = static_cast<Table*>(core->GetTable(core->AtomFromName(name), version));
  const std::string slots = table == nullptr ? "none" : std::to_string(table->slotCount) + " slots";
  Log(std::string("table ") + name + " " + slots);
  return table;
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

Boolean LogNode(quillform::FieldNode node, void*) {
  Log(std::string("field ") + forms->FieldNodeName(node));
  return 1;
}

void DocOpened(quillon::DocView view, quillon::FailureCode error, void*) {
  Log("opened " + std::to_string(error));
  const quillon::DocHandle doc = viewer->DocOf(view);
  forms->LoadAllFields(doc);
  forms->ForEachFieldNode(doc, 1, 1, LogNode, nullptr);
}

void ValueChanged(quillform::FormEventRecord* record, void*) {
  std::uint32_t length = 0;
  const char* bytes = objects->StringValue(record->value, &length);
  Log(std::string("changed ") + forms->FieldNodeName(record->node) + " to " +
      std::string(bytes, length));
}

void EventFailed(quillon::FailureCode, quillform::FormEventRecord*, void*) { Log("event failed"); }

Boolean ExportTables() { return 1; }

Boolean ImportTables() {
  forms = AskFor<FormsTable>(quillform::kFormsTableName, quillform::kFormsVersion);
  return 1;
}

Boolean Initialise() {
  if (forms == nullptr) return 0;
  ProvokeRaise();
  AskQuestion();
  viewer->RegisterNotification(quillon::kNoteDocOpened, extension, ToHost(DocOpened), nullptr);
  registration =
      forms->FormEventRegister(quillform::kEventValueChanged, ValueChanged, EventFailed, nullptr);
  return 1;
}

Boolean Unload() {
  if (registration != 0) forms->FormEventUnregister(quillform::kEventValueChanged, registration);
  Log("unloaded");
  return 1;
}

Boolean Handshake(std::uint32_t version, quillon::HandshakeRecord* record) {
  if (version != quillon::kHandshakeVersion) return 0;
  record->extensionName = core->AtomFromName("Sample");
  record->exportTables = ToHost(ExportTables);
  record->importTables = ToHost(ImportTables);
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
  AskFor<quillon::DocumentTable>(quillon::kDocumentTableName, quillon::kDocumentVersion);
  AskFor<quillon::SupportTable>(quillon::kSupportTableName, quillon::kSupportVersion);
  AskFor<quillon::PlatformTable>(quillon::kPlatformTableName, quillon::kPlatformVersion);
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
