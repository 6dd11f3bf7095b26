#include "plugin/host/form_event_list.h"

#include <algorithm>

namespace quillform {

namespace {

// Makes room first, so that taking the entry in cannot fail.
void ReserveOneMore(FormEventList& list) {
  auto& registrations = list.registrations;
  if (registrations.size() < registrations.capacity()) return;
  try {
    registrations.reserve(registrations.size() * 2 + 4);
  } catch (const std::bad_alloc&) {
    Raise(quillon::kErrorNoMemory);
  }
}

// A copy, because a subscriber may take itself off the list while it runs.
FormEventRegistration RegistrationAt(const FormEventList& list, std::size_t position) {
  if (position >= list.registrations.size()) return {nullptr, nullptr, 0, nullptr};
  return *list.registrations[position];
}

void TellOfFailure(const FormEventRegistration& subscriber, FailureCode code,
                   FormEventRecord* record) {
  if (subscriber.failure == nullptr) return;
  DropFailures([&] { subscriber.failure(code, record, subscriber.clientData); });
}

}  // namespace

std::uint32_t AddRegistration(FormEventList& list, FormEventNotify notify, FormEventFailure failure,
                              void* clientData) {
  const bool full = list.registrations.size() >= list.capacity;
  if (full && !list.replaceOldest) Raise(quillon::kErrorBadParameter);

  FormEventList::Entry entry(
      static_cast<FormEventRegistration*>(AllocOrRaise(sizeof(FormEventRegistration))));
  ReserveOneMore(list);
  if (full) list.registrations.erase(list.registrations.begin());

  *entry = {notify, failure, ++list.identifiersUsed, clientData};
  list.registrations.push_back(std::move(entry));
  return list.identifiersUsed;
}

void RemoveRegistration(FormEventList& list, std::uint32_t identifier) {
  const auto found = std::find_if(
      list.registrations.begin(), list.registrations.end(),
      [identifier](const FormEventList::Entry& entry) { return entry->identifier == identifier; });
  if (found == list.registrations.end()) Raise(quillon::kErrorBadParameter);
  list.registrations.erase(found);
}

void AnnounceTo(FormEventList& list, FormEventRecord* record) {
  const std::size_t count = list.registrations.size();
  std::size_t current = 0;
  const FailureCode code = CatchFailure([&] {
    for (; current < count; ++current) {
      const FormEventRegistration subscriber = RegistrationAt(list, current);
      if (subscriber.notify != nullptr) subscriber.notify(record, subscriber.clientData);
    }
  });
  if (current == count) return;
  for (std::size_t position = 0; position <= current; ++position) {
    TellOfFailure(RegistrationAt(list, position), code, record);
  }
  Raise(code);
}

}  // namespace quillform
