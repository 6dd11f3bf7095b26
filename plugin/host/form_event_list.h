// The subscribers of one form event, in the order they came.
#pragma once

#include <cstdint>
#include <vector>

#include "plugin/host/host.h"
#include "sdk/forms_table.h"

namespace quillform {

struct FormEventRegistration {
  FormEventNotify notify;    // null: not called
  FormEventFailure failure;  // null: not called
  std::uint32_t identifier;  // 1 for the list's first
  void* clientData;
};

struct FormEventList {
  using Entry = HostPtr<FormEventRegistration>;

  std::vector<Entry, HostAllocator<Entry>> registrations;
  std::uint32_t capacity;         // most registrations held at a time
  std::uint32_t identifiersUsed;  // never goes down
  bool replaceOldest;             // a full list lets its oldest registration go
};

// The new registration's identifier. Raises kErrorBadParameter for a full list, kErrorNoMemory when
// there is no memory; the list is then as it was.
std::uint32_t AddRegistration(FormEventList& list, FormEventNotify notify, FormEventFailure failure,
                              void* clientData);

// Raises kErrorBadParameter when no registration has the identifier.
void RemoveRegistration(FormEventList& list, std::uint32_t identifier);

// Calls the registrations that are there now, by position: one that is added meanwhile is not
// called, and after a removal those that moved up stand at earlier positions. When one raises, the
// failure routines of those called so far run, the raising one's included, and the error is raised
// again.
void AnnounceTo(FormEventList& list, FormEventRecord* record);

}  // namespace quillform
