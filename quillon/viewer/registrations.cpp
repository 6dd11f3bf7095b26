#include "quillon/viewer/registrations.h"

#include "quillon/core/guard.h"
#include "quillon/document/notify.h"
#include "quillon/document/operations.h"
#include "quillon/viewer/operations.h"

namespace quillon::viewer {
namespace {

template <typename List, typename Wanted>
auto Newest(const List& list, Wanted&& wanted) -> const typename List::value_type* {
  for (auto entry = list.rbegin(); entry != list.rend(); ++entry) {
    if (wanted(*entry)) return &*entry;
  }
  return nullptr;
}

// The size is the one that the record has on 32-bit Windows or here; what counts is that it is set.
template <typename Record>
void CheckRecord(const Record* record, const char* what) {
  if (record != nullptr && record->size != 0) return;
  Fail(kErrorBadParameter, std::string("the record of ") + what + " is missing or has no size");
}

// The type that a handler or tool names itself; the routine takes the record.
template <typename Record>
Atom AskType(const Record* record) {
  if (record->getType == nullptr) return kNoAtom;
  const auto getType = reinterpret_cast<Atom (*)(const Record*)>(record->getType);
  return CallGuarded([&] { return getType(record); });
}

}  // namespace

Registrations& TheRegistrations() {
  static Registrations registrations;
  return registrations;
}

const RegisteredAnnotHandler* AnnotHandlerOf(Atom subtype) {
  return Newest(TheRegistrations().annotHandlers,
                [&](const auto& entry) { return entry.subtype == subtype; });
}

const RegisteredSelectionServer* SelectionServerOf(Atom type) {
  return Newest(TheRegistrations().selectionServers,
                [&](const auto& entry) { return entry.type == type; });
}

const RegisteredDataHandler* DataHandlerOf(Atom type) {
  return Newest(TheRegistrations().dataHandlers,
                [&](const auto& entry) { return entry.type == type; });
}

void RegisterAnnotHandler(ExtensionId extension, const AnnotHandlerRecord* record) {
  CheckRecord(record, "an annotation handler");
  TheRegistrations().annotHandlers.push_back({extension, AskType(record), record});
}

void RegisterTool(ExtensionId extension, const ToolRecord* record) {
  CheckRecord(record, "a tool");
  TheRegistrations().tools.push_back({extension, AskType(record), record});
}

void RegisterActionHandler(ExtensionId extension, Atom type, const ActionHandlerRecord* record,
                           const char* name) {
  CheckRecord(record, "an action handler");
  TheRegistrations().actionHandlers.push_back(
      {extension, type, record, name != nullptr ? name : ""});
}

const ActionHandlerRecord* ActionHandlerOf(Atom type) {
  const RegisteredActionHandler* handler = Newest(
      TheRegistrations().actionHandlers, [&](const auto& entry) { return entry.type == type; });
  return handler == nullptr ? nullptr : handler->record;
}

void RegisterNotification(std::uint32_t number, ExtensionId extension, Callback routine,
                          void* clientData) {
  AddSubscriber({number, extension, routine, clientData});
}

void UnregisterNotification(std::uint32_t number, ExtensionId extension, Callback routine,
                            void* clientData) {
  RemoveSubscriber({number, extension, routine, clientData});
}

void RegisterSelectionServer(ExtensionId extension, const SelectionServerRecord* record) {
  CheckRecord(record, "a selection server");
  if (record->getType == nullptr) Fail(kErrorBadParameter, "a selection server names no type");
  const Atom type = CallGuarded([&] { return record->getType(); });
  TheRegistrations().selectionServers.push_back({extension, type, record});
}

void RegisterDataHandler(ExtensionId extension, Atom type, const DataHandlerRecord* record) {
  CheckRecord(record, "a data handler");
  TheRegistrations().dataHandlers.push_back({extension, type, record});
}

}  // namespace quillon::viewer
