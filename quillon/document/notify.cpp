#include "quillon/document/notify.h"

#include <algorithm>
#include <cstdio>

#include "quillon/core/guard.h"
#include "quillon/document/plugin_failure.h"

namespace quillon {
namespace {

struct Entry {
  std::uint64_t serial;  // rises with every registration
  Subscriber subscriber;
};

struct Registry {
  std::vector<Entry> entries;
  std::uint64_t nextSerial = 1;
};

Registry& TheRegistry() {
  static Registry registry;
  return registry;
}

bool Same(const Subscriber& a, const Subscriber& b) {
  return a.number == b.number && a.extension == b.extension && a.routine == b.routine &&
         a.clientData == b.clientData;
}

std::string DescribeNote(std::uint32_t number) {
  char text[32];
  std::snprintf(text, sizeof(text), "notification 0x%X", static_cast<unsigned>(number));
  return text;
}

}  // namespace

void AddSubscriber(const Subscriber& subscriber) {
  if (subscriber.routine == nullptr) Fail(kErrorBadParameter, "a notification needs a routine");
  Registry& registry = TheRegistry();
  registry.entries.push_back({registry.nextSerial++, subscriber});
}

void RemoveSubscriber(const Subscriber& subscriber) {
  std::vector<Entry>& entries = TheRegistry().entries;
  const auto place = std::find_if(entries.begin(), entries.end(), [&](const Entry& entry) {
    return Same(entry.subscriber, subscriber);
  });
  if (place != entries.end()) entries.erase(place);
}

void RemoveAllSubscribers() { TheRegistry().entries.clear(); }

std::vector<Subscriber> Subscribers() {
  std::vector<Subscriber> subscribers;
  for (const Entry& entry : TheRegistry().entries) subscribers.push_back(entry.subscriber);
  return subscribers;
}

void ForEachSubscriber(std::uint32_t number,
                       const std::function<void(const Subscriber& subscriber)>& call) {
  Registry& registry = TheRegistry();
  const std::uint64_t end = registry.nextSerial;
  // Serials rise along the list, so the place is found again whatever came and went meanwhile.
  for (std::uint64_t last = 0;;) {
    const auto next =
        std::find_if(registry.entries.begin(), registry.entries.end(), [&](const Entry& entry) {
          return entry.serial > last && entry.subscriber.number == number;
        });
    if (next == registry.entries.end() || next->serial >= end) return;
    last = next->serial;
    const Subscriber subscriber = next->subscriber;
    try {
      CallGuarded([&] { call(subscriber); });
    } catch (const HostFailure& failure) {
      ReportPlugInFailure(
          {DescribeNote(number), subscriber.extension, failure.code, failure.what()});
    }
  }
}

void SendAnnotNote(Notification number, AnnotHandle annot, std::int32_t page, Atom key,
                   FailureCode error) {
  SendNote<AnnotNote>(number, annot, page, key, error);
}

void SendDocChanged(DocHandle doc, std::uint32_t flags) {
  SendNote<DocChangedNote>(kNoteDocChanged, doc, flags);
}

void SendPermissionsChanged(DocHandle doc) { SendNote<ClosedNote>(kNotePermissionsChanged, doc); }

}  // namespace quillon
