#include "quillon/core/atoms.h"

#include <algorithm>
#include <string>

#include "quillon/core/operations.h"

namespace quillon {
namespace {

constexpr std::size_t kBlockSize = 16384;
constexpr std::size_t kFirstSlotCount = 1024;

AtomTable& ProcessTable() {
  static AtomTable table;
  return table;
}

// FNV-1a: names are short, so the setup of a stronger hash would cost more than it saves.
std::uint32_t HashName(std::string_view name) {
  std::uint32_t hash = 2166136261U;
  for (const char c : name) hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
  return hash ^ (hash >> 15);
}

std::size_t FirstSlot(const AtomTable& table, std::uint32_t hash) {
  return hash & (table.slots.size() - 1);
}

std::size_t NextSlot(const AtomTable& table, std::size_t slot) {
  return (slot + 1) & (table.slots.size() - 1);
}

void PlaceAtom(AtomTable& table, Atom atom) {
  std::size_t slot = FirstSlot(table, table.entries[atom - 1U].hash);
  while (table.slots[slot] != 0) slot = NextSlot(table, slot);
  table.slots[slot] = atom;
}

void GrowSlots(AtomTable& table) {
  const std::size_t count = std::max(kFirstSlotCount, table.slots.size() * 2);
  table.slots.assign(count, 0);
  for (std::size_t i = 0; i < table.entries.size(); ++i) PlaceAtom(table, static_cast<Atom>(i + 1));
}

std::string_view StoreName(AtomTable& table, std::string_view name) {
  const std::size_t size = name.size() + 1;
  if (size > table.left) {
    const std::size_t blockSize = std::max(kBlockSize, size);
    table.blocks.push_back(std::make_unique<char[]>(blockSize));
    table.place = table.blocks.back().get();
    table.left = blockSize;
  }
  char* place = table.place;
  std::copy(name.begin(), name.end(), place);
  place[name.size()] = '\0';
  table.place += size;
  table.left -= size;
  return {place, name.size()};
}

}  // namespace

Atom InternName(AtomTable& table, std::string_view name) {
  const std::uint32_t hash = HashName(name);
  if (!table.slots.empty()) {
    for (std::size_t slot = FirstSlot(table, hash); table.slots[slot] != 0;
         slot = NextSlot(table, slot)) {
      const AtomEntry& entry = table.entries[table.slots[slot] - 1U];
      if (entry.hash == hash && entry.name == name) return table.slots[slot];
    }
  }
  if (table.entries.size() == kMaxAtoms) {
    Fail(kErrorTooManyNames,
         "no more distinct names can be held: all " + std::to_string(kMaxAtoms) + " are in use");
  }
  if ((table.entries.size() + 1) * 2 > table.slots.size()) GrowSlots(table);
  table.entries.push_back({StoreName(table, name), hash});
  const Atom atom = static_cast<Atom>(table.entries.size());
  PlaceAtom(table, atom);
  return atom;
}

const char* AtomName(const AtomTable& table, Atom atom) {
  if (atom == 0 || atom > table.entries.size()) return nullptr;
  return table.entries[atom - 1U].name.data();
}

Atom InternName(std::string_view name) { return InternName(ProcessTable(), name); }

namespace core {

Atom AtomFromName(const char* text) {
  if (text == nullptr) Fail(kErrorBadParameter, "a name is missing");
  return InternName(text);
}

const char* NameFromAtom(Atom atom) { return AtomName(ProcessTable(), atom); }

}  // namespace core
}  // namespace quillon
