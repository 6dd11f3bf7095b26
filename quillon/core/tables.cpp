#include "quillon/core/tables.h"

#include <list>
#include <unordered_map>

#include "quillon/core/atoms.h"
#include "quillon/core/guard.h"
#include "quillon/core/operations.h"

namespace quillon {
namespace {

struct Provider {
  Atom name;
  TableProviderProc make;
  void* clientData;
};

std::unordered_map<Atom, TableOffer>& HostTables() {
  static std::unordered_map<Atom, TableOffer> tables;
  return tables;
}

// A list: a provider's address is the server that it is called with.
std::list<Provider>& Providers() {
  static std::list<Provider> providers;
  return providers;
}

Provider* ProviderOf(Atom name) {
  for (Provider& provider : Providers()) {
    if (provider.name == name) return &provider;
  }
  return nullptr;
}

}  // namespace

void OfferTable(const TableOffer& offer) {
  HostTables().insert_or_assign(InternName(offer.name), offer);
}

bool OfferProvider(Atom name, TableProviderProc provider, void* clientData) {
  if (HostTables().contains(name) || ProviderOf(name) != nullptr) return false;
  Providers().push_back({name, provider, clientData});
  return true;
}

bool IsTableServer(TableServer server) {
  for (const Provider& provider : Providers()) {
    if (reinterpret_cast<const Provider*>(server) == &provider) return true;
  }
  return false;
}

bool IsHostTable(const void* table) {
  for (const auto& [name, offer] : HostTables()) {
    if (offer.table == table) return true;
  }
  return false;
}

void ForgetTables() {
  HostTables().clear();
  Providers().clear();
}

namespace core {

void* GetTable(Atom name, std::uint32_t version) {
  const auto offered = HostTables().find(name);
  if (offered != HostTables().end()) {
    const TableOffer& offer = offered->second;
    const bool known = version >= kOldestTableVersion && version <= offer.highestVersion;
    return known ? offer.table : nullptr;
  }
  Provider* provider = ProviderOf(name);
  if (provider == nullptr) return nullptr;
  return CallGuarded([provider, version] {
    return provider->make(reinterpret_cast<TableServer>(provider), version, provider->clientData);
  });
}

#define QUILLON_FILL_CORE(slot, Return, Name, Params) \
  QUILLON_FILL_SLOT(::quillon::core, *table, Name);

void FillTable(CoreTable* table) {
  table->slotCount = kCoreTableSlots;
  QUILLON_CORE_TABLE(QUILLON_FILL_CORE)
  // Nothing of the host may catch what a restore routine throws, so a raise goes in unwrapped.
  table->Raise = &Raise;
}

#undef QUILLON_FILL_CORE

}  // namespace core
}  // namespace quillon
