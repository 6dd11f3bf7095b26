#include "quillon/viewer/deliveries.h"

#include <deque>
#include <string>
#include <utility>

#include "quillon/core/guard.h"
#include "quillon/document/plugin_failure.h"
#include "quillon/viewer/operations.h"
#include "quillon/viewer/registrations.h"
#include "quillon/viewer/view_record.h"

namespace quillon {
namespace {

struct Delivery {
  Atom type;
  std::string bytes;
  DocView view;
};

std::deque<Delivery>& Waiting() {
  static std::deque<Delivery> waiting;
  return waiting;
}

// An answer can have the form opened that it belongs to, which can bring another answer, and so on
// for as long as a server likes.
constexpr std::size_t kMostDeliveries = 16;

bool HandOver(const Delivery& delivery) {
  const viewer::RegisteredDataHandler* handler = viewer::DataHandlerOf(delivery.type);
  if (handler == nullptr || handler->record->open == nullptr) return false;
  const DocView view = viewer::IsOpen(delivery.view) ? delivery.view : nullptr;
  try {
    return CallGuarded([&] {
             return handler->record->open(delivery.bytes.data(),
                                          static_cast<std::uint32_t>(delivery.bytes.size()), view);
           }) != 0;
  } catch (const HostFailure& failure) {
    ReportPlugInFailure(
        {"taking data from outside", handler->extension, failure.code, failure.what()});
    return false;
  }
}

}  // namespace

DeliveryCount DeliverWaitingData() {
  DeliveryCount count{0, 0};
  while (!Waiting().empty()) {
    const Delivery delivery = std::move(Waiting().front());
    Waiting().pop_front();
    const bool tooMany = count.used + count.refused >= kMostDeliveries;
    const bool used = !tooMany && HandOver(delivery);
    ++(used ? count.used : count.refused);
  }
  return count;
}

void ForgetDeliveries() { Waiting().clear(); }

namespace viewer {

Boolean DeliverData(Atom type, const void* bytes, std::uint32_t length, DocView view) {
  if (bytes == nullptr && length > 0) Fail(kErrorBadParameter, "the data is missing");
  if (DataHandlerOf(type) == nullptr) return 0;
  Waiting().push_back({type, std::string(static_cast<const char*>(bytes), length), view});
  return 1;
}

}  // namespace viewer
}  // namespace quillon
