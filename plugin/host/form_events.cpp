#include "plugin/host/form_events.h"

#include <array>

#include "plugin/host/form_event_list.h"

namespace quillform {

namespace {

constexpr std::uint32_t kRegistrationCapacity = 0x7FFFFFFF;

// The list lies in the host's memory and is ended before that memory goes back.
struct FormEventListFree {
  void operator()(FormEventList* list) const {
    list->~FormEventList();
    Support->Free(list);
  }
};
using FormEventListPtr = std::unique_ptr<FormEventList, FormEventListFree>;
using FormEventLists = std::array<FormEventListPtr, kFormEventCount>;

// Owned from CreateFormEventLists to DestroyFormEventLists. A plain pointer, so that nothing
// touches the host's memory when the process ends without an unload.
FormEventLists* eventLists = nullptr;

FormEventListPtr NewFormEventList() {
  void* block = Support->Alloc(sizeof(FormEventList));
  if (block == nullptr) return nullptr;
  return FormEventListPtr(new (block) FormEventList{{}, kRegistrationCapacity, 0, false});
}

FormEventList* ListOf(std::uint32_t event) {
  if (eventLists == nullptr || event >= kFormEventCount) return nullptr;
  return (*eventLists)[event].get();
}

}  // namespace

bool CreateFormEventLists() {
  void* block = Support->Alloc(sizeof(FormEventLists));
  if (block == nullptr) return false;
  eventLists = new (block) FormEventLists;
  for (std::uint32_t event = kFormEventCount; event-- > 0;) {
    (*eventLists)[event] = NewFormEventList();
    if ((*eventLists)[event] == nullptr) {
      DestroyFormEventLists();
      return false;
    }
  }
  return true;
}

void DestroyFormEventLists() {
  if (eventLists == nullptr) return;
  for (std::uint32_t event = kFormEventCount; event-- > 0;) (*eventLists)[event].reset();
  eventLists->~FormEventLists();
  Support->Free(eventLists);
  eventLists = nullptr;
}

void ForgetFormEventLists() { eventLists = nullptr; }

std::uint32_t FormEventRegister(std::uint32_t event, FormEventNotify notify,
                                FormEventFailure failure, void* clientData) {
  FormEventList* list = ListOf(event);
  return list == nullptr ? 0 : AddRegistration(*list, notify, failure, clientData);
}

void FormEventUnregister(std::uint32_t event, std::uint32_t identifier) {
  FormEventList* list = ListOf(event);
  if (list != nullptr) RemoveRegistration(*list, identifier);
}

void FormEventAnnounce(std::uint32_t event, FormEventRecord* record) {
  FormEventList* list = ListOf(event);
  if (list != nullptr) AnnounceTo(*list, record);
}

}  // namespace quillform
