// The notification registry. sdk/notifications.h lists the notifications; the viewer registers
// routines, the document and viewer rooms send.
#pragma once

#include <functional>
#include <vector>

#include "sdk/errors.h"
#include "sdk/notifications.h"

namespace quillon {

struct Subscriber {
  std::uint32_t number;
  ExtensionId extension;
  Callback routine;
  void* clientData;
};

void AddSubscriber(const Subscriber& subscriber);

// Removes the first equal subscriber; nothing happens when there is none.
void RemoveSubscriber(const Subscriber& subscriber);

void RemoveAllSubscribers();
std::vector<Subscriber> Subscribers();

// Calls `call` with each subscriber of the number in the order of registration, in a guarded block
// of its own; what one raises is reported (plugin_failure.h) and dropped. Subscribers may subscribe
// and unsubscribe meanwhile: one that left is not called any more, one that came waits for the next
// sending.
void ForEachSubscriber(std::uint32_t number,
                       const std::function<void(const Subscriber& subscriber)>& call);

// Sends to routines of type Routine, whose last argument is the client data.
template <typename Routine, typename... Args>
void SendNote(Notification number, Args... args) {
  ForEachSubscriber(number, [&](const Subscriber& subscriber) {
    reinterpret_cast<Routine>(subscriber.routine)(args..., subscriber.clientData);
  });
}

void SendAnnotNote(Notification number, AnnotHandle annot, std::int32_t page, Atom key = kNoAtom,
                   FailureCode error = kErrorNone);
void SendDocChanged(DocHandle doc, std::uint32_t flags);
void SendPermissionsChanged(DocHandle doc);

}  // namespace quillon
