#include "quillon/support/plug_in_tables.h"

#include <algorithm>
#include <deque>
#include <map>
#include <utility>
#include <vector>

#include "quillon/core/host.h"
#include "quillon/core/operations.h"
#include "quillon/core/tables.h"
#include "quillon/support/operations.h"

namespace quillon {
namespace {

using Words = std::vector<std::uintptr_t>;
using SlotKey = std::pair<std::uintptr_t*, std::uint32_t>;

// Tables stay valid for the life of the process: plug-ins keep pointers to them.
std::deque<Words>& PlugInTables() {
  static std::deque<Words> tables;
  return tables;
}

// The routines that a slot has had, oldest first; the last one is in force.
std::map<SlotKey, std::vector<Callback>>& Chains() {
  static std::map<SlotKey, std::vector<Callback>> chains;
  return chains;
}

bool IsTable(const std::uintptr_t* words) {
  if (IsHostTable(words)) return true;
  return std::any_of(PlugInTables().begin(), PlugInTables().end(),
                     [words](const Words& table) { return table.data() == words; });
}

// The words of a table that has the slot.
std::uintptr_t* WordsOf(TableHandle table, std::uint32_t slot) {
  auto* words = reinterpret_cast<std::uintptr_t*>(table);
  if (words == nullptr || !IsTable(words)) Fail(kErrorBadParameter, "there is no such table");
  if (slot == 0 || slot > words[0]) {
    Fail(kErrorBadParameter, "the table has no slot " + std::to_string(slot));
  }
  return words;
}

}  // namespace

void RestoreSlots() {
  for (const auto& [key, chain] : Chains()) {
    if (chain.empty()) continue;  // memory ran out when it was begun
    key.first[key.second] = reinterpret_cast<std::uintptr_t>(chain.front());
  }
  Chains().clear();
}

namespace support {

Boolean RegisterTableProvider(const char* name, TableProviderProc provider, void* clientData,
                              std::uint32_t /*reserved*/) {
  if (name == nullptr || provider == nullptr) return 0;
  return OfferProvider(core::AtomFromName(name), provider, clientData) ? 1 : 0;
}

TableHandle NewTable(TableServer server, std::uint32_t slotCount) {
  constexpr std::uint32_t kMostSlots = 65536;
  if (!IsTableServer(server)) Fail(kErrorBadParameter, "there is no such table server");
  if (slotCount > kMostSlots) Fail(kErrorBadParameter, "a table cannot have that many slots");
  Words& words = PlugInTables().emplace_back(std::size_t{slotCount} + 1, 0);
  words[0] = slotCount;
  return reinterpret_cast<TableHandle>(words.data());
}

void SetSlot(TableHandle table, std::uint32_t slot, Callback routine, std::uint32_t /*flag*/) {
  std::uintptr_t* words = WordsOf(table, slot);
  std::vector<Callback>& chain = Chains()[{words, slot}];
  chain.reserve(chain.size() + 2);
  const auto inForce = reinterpret_cast<Callback>(words[slot]);
  if (chain.empty() && inForce != nullptr) chain.push_back(inForce);
  // A routine that is in the chain already is put back in force, and what replaced it is gone;
  // listing it twice would make each of two routines call the other for ever.
  chain.erase(std::find(chain.begin(), chain.end(), routine), chain.end());
  chain.push_back(routine);
  words[slot] = reinterpret_cast<std::uintptr_t>(routine);
}

Callback CallReplaced(TableHandle table, std::uint32_t slot, Callback current) {
  const auto chain = Chains().find({WordsOf(table, slot), slot});
  if (chain == Chains().end()) return nullptr;
  const std::vector<Callback>& routines = chain->second;
  const auto place = std::find(routines.begin(), routines.end(), current);
  if (place == routines.end() || place == routines.begin()) return nullptr;
  return *(place - 1);
}

}  // namespace support
}  // namespace quillon
