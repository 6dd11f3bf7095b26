// Opaque handles and the records behind them.
#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <utility>

#include "quillon/core/failure.h"

namespace quillon {

// The open handles of one kind. A handle that is not open is never followed, so using one after its
// end is an error of the caller's and not of the host's.
template <typename Handle, typename Record>
struct HandleTable {
  std::unordered_map<Handle, std::unique_ptr<Record>> records;
};

template <typename Handle, typename Record>
Handle GiveHandle(HandleTable<Handle, Record>& table, std::unique_ptr<Record> record) {
  const auto handle = reinterpret_cast<Handle>(record.get());
  table.records.emplace(handle, std::move(record));
  return handle;
}

// Null when it is not open.
template <typename Handle, typename Record>
Record* FindHandle(const HandleTable<Handle, Record>& table, Handle handle) {
  const auto place = table.records.find(handle);
  return place == table.records.end() ? nullptr : place->second.get();
}

// `kind` names the thing in the failure: "path", "file".
template <typename Handle, typename Record>
Record& FollowHandle(const HandleTable<Handle, Record>& table, Handle handle, const char* kind) {
  Record* record = FindHandle(table, handle);
  if (record == nullptr) Fail(kErrorBadParameter, std::string("the ") + kind + " is not open");
  return *record;
}

// Closes the handle; null when it was not open.
template <typename Handle, typename Record>
std::unique_ptr<Record> TakeHandle(HandleTable<Handle, Record>& table, Handle handle) {
  const auto place = table.records.find(handle);
  if (place == table.records.end()) return nullptr;
  std::unique_ptr<Record> record = std::move(place->second);
  table.records.erase(place);
  return record;
}

}  // namespace quillon
