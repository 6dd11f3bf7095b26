// Interned names. One table serves the whole process, so an atom means the same name everywhere.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "sdk/types.h"

namespace quillon {

// Atoms are given out from 1 on; 0 and kNoAtom name nothing.
inline constexpr std::size_t kMaxAtoms = 65534;

struct AtomEntry {
  std::string_view name;  // a NUL follows it
  std::uint32_t hash;
};

// An open-addressed hash table over names that never move once they are stored.
struct AtomTable {
  std::vector<std::unique_ptr<char[]>> blocks;  // the names, one after another
  char* place = nullptr;                        // where the next name goes in the last block
  std::size_t left = 0;                         // bytes left there
  std::vector<AtomEntry> entries;               // of atom 1, 2, ...
  std::vector<Atom> slots;                      // a power of two of them; 0 is empty
};

// The atom of a name, made when it is new. The name may hold any bytes but NUL. Throws HostFailure
// (kErrorTooManyNames) when the table is full.
Atom InternName(AtomTable& table, std::string_view name);

// Null for an atom that the table never gave out.
const char* AtomName(const AtomTable& table, Atom atom);

// The same in the process's own table.
Atom InternName(std::string_view name);

}  // namespace quillon
