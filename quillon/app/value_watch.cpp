#include "quillon/app/value_watch.h"

#include <cstring>

namespace quillon::app {
namespace {

void NoteChange(quillform::FormEventRecord* record, void* data) {
  auto* watch = static_cast<ValueWatch*>(data);
  const char* name = Forms().FieldNodeName(record->node);
  if (name == nullptr) return;
  std::strncpy(watch->name, name, sizeof watch->name - 1);
  watch->refused = record->cancel != 0;
}

}  // namespace

ValueWatch::ValueWatch()
    : registration(CallForms(&FormsTable::FormEventRegister,
                             std::uint32_t{quillform::kEventValueWillChange}, &NoteChange, nullptr,
                             this)) {}

ValueWatch::~ValueWatch() {
  try {
    CallForms(&FormsTable::FormEventUnregister, std::uint32_t{quillform::kEventValueWillChange},
              registration);
  } catch (const HostFailure&) {  // the plug-in has ended
  }
}

bool WasRefused(const ValueWatch& watch, FieldNode node) {
  const char* name = CallForms(&FormsTable::FieldNodeName, node);
  return watch.refused && name != nullptr && std::strcmp(watch.name, name) == 0;
}

}  // namespace quillon::app
