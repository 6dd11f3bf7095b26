// Places where something outside the plug-in's power can fail: every call of the host's tables and
// every allocation. One of them is made to fail, by its number, while a piece of work runs.
#pragma once

#include <cstdint>

namespace quillon::test {

enum class FaultKind {
  kHostCall,    // an operation of a host table raises kErrorGeneral
  kAllocation,  // operator new throws std::bad_alloc, or Support.Alloc answers null
};

// Puts a counting routine in front of every operation of the tables that the host offers now.
// Operations that never raise are left as they are; those that let something go do so before they
// raise, or every failure would be a leak by definition.
void WatchTables();

// From here on the call or allocation of that number, counted from 1, fails, once; 0: none does.
void ArmFault(FaultKind kind, std::uint64_t number);

struct FaultCount {
  std::uint64_t seen;  // places of the kind that were passed
  const char* place;   // the operation that failed; empty when none did
};
FaultCount DisarmFault();

}  // namespace quillon::test
