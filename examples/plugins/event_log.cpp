// event_log: writes down every form event, and shows what a subscriber can do about a change.
//
//   EVENT_LOG=FILE            where the lines go; the standard error stream without it
//   EVENT_LOG_CANCEL=FIELD    changes of this field are cancelled
//   EVENT_LOG_REPLACE=A=B     a new value A becomes B on its way into any field
#include <cstdio>
#include <cstdlib>

#include "plug_in.h"

using host::Forms;
using host::Objects;
using quillform::FormEventRecord;

const char* const kExtensionName = "EventLog";

namespace {

struct Settings {
  std::string cancelled;
  std::string replaced;
  std::string replacement;
};
Settings settings;

// One a form event; 0 while it is not registered.
std::uint32_t registrations[quillform::kFormEventCount];

// The value that stands in for another one, until the change is over.
quillon::ObjectHandle standIn = quillon::kNullObject;

std::string Variable(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

void WriteLine(const std::string& line) {
  const std::string name = Variable("EVENT_LOG");
  std::FILE* file = name.empty() ? stderr : std::fopen(name.c_str(), "a");
  if (file == nullptr) return;
  std::fprintf(file, "%s\n", line.c_str());
  if (file != stderr) std::fclose(file);
}

std::string Quoted(const std::string& text) { return "\"" + text + "\""; }

std::string KeyText(const FormEventRecord& record) {
  return "key " + std::to_string(record.keyCode) + " modifiers " + std::to_string(record.modifiers);
}

void DropStandIn() {
  if (standIn.first == 0 && standIn.second == 0) return;
  const quillon::ObjectHandle object = std::exchange(standIn, quillon::kNullObject);
  host::Try([object] { Objects->Destroy(object); });
}

// A subscriber of an event that comes before its operation can cancel the operation, or, for
// values, put another one in its place. The host keeps a copy of that one; it stays ours.
void ValueWillChange(FormEventRecord* record, void*) {
  const std::string name = host::NameOf(record->node);
  const std::string value = host::TextOf(record->value);
  DropStandIn();
  if (name == settings.cancelled) {
    record->cancel = 1;
    WriteLine("cancelled " + name + " " + Quoted(value));
  } else if (!settings.replaced.empty() && value == settings.replaced) {
    standIn = host::NewText(record->document, settings.replacement);
    record->value = standIn;
    WriteLine("replaced " + name + " " + Quoted(value) + " by " + Quoted(settings.replacement));
  } else {
    WriteLine("will change " + name + " " + Quoted(value));
  }
}

void ValueChanged(FormEventRecord* record, void*) {
  WriteLine("changed " + host::NameOf(record->node) + " " + Quoted(host::TextOf(record->value)));
  DropStandIn();
}

void FormMade(FormEventRecord*, void*) { WriteLine("form made"); }

void DefaultsChanged(FormEventRecord* record, void*) {
  WriteLine("defaults changed, mask " + std::to_string(record->mask));
}

void FieldSplit(FormEventRecord* record, void*) {
  WriteLine("split " + host::NameOf(record->node));
}

void NameUnshared(FormEventRecord* record, void*) {
  WriteLine("name no longer shared " + host::NameOf(record->node));
}

void Keystroke(FormEventRecord* record, void*) {
  WriteLine("keystroke in " + host::NameOf(record->node) + ", " + KeyText(*record));
}

void FocusWillMove(FormEventRecord* record, void*) {
  WriteLine("focus will move from " + host::NameOf(record->node) + " to " +
            host::NameOf(record->secondNode) + ", " + KeyText(*record));
}

void FocusMoved(FormEventRecord* record, void*) {
  WriteLine("focus moved to " + host::NameOf(record->secondNode));
}

// Told to every subscriber up to the one whose routine raised.
void Failed(quillon::FailureCode error, FormEventRecord*, void*) {
  WriteLine("an event failed with " + std::to_string(error));
}

struct Subscription {
  std::uint32_t event;
  quillform::FormEventNotify notify;
};

constexpr Subscription kSubscriptions[] = {
    {quillform::kEventValueWillChange, &ValueWillChange},
    {quillform::kEventValueChanged, &ValueChanged},
    {quillform::kEventFormMade, &FormMade},
    {quillform::kEventDefaultsChanged, &DefaultsChanged},
    {quillform::kEventFieldSplit, &FieldSplit},
    {quillform::kEventNameUnshared, &NameUnshared},
    {quillform::kEventKeystroke, &Keystroke},
    {quillform::kEventFocusWillMove, &FocusWillMove},
    {quillform::kEventFocusMoved, &FocusMoved},
};

void ReadSettings() {
  settings.cancelled = Variable("EVENT_LOG_CANCEL");
  const std::string pair = Variable("EVENT_LOG_REPLACE");
  const std::size_t equals = pair.find('=');
  if (equals == std::string::npos) return;
  settings.replaced = pair.substr(0, equals);
  settings.replacement = pair.substr(equals + 1);
}

}  // namespace

bool Start() {
  ReadSettings();
  for (const auto& [event, notify] : kSubscriptions) {
    registrations[event] =
        Forms->FormEventRegister(event, host::ToHost(notify), host::ToHost(&Failed), nullptr);
  }
  return true;
}

void Stop() {
  DropStandIn();
  if (Forms == nullptr) return;
  for (std::uint32_t event = 0; event < quillform::kFormEventCount; ++event) {
    const std::uint32_t registration = std::exchange(registrations[event], 0);
    if (registration == 0) continue;
    // The forms plug-in forgets its subscribers when it goes first.
    host::Try([=] { Forms->FormEventUnregister(event, registration); });
  }
}
