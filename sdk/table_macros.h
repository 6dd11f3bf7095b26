// How a table is described. Each table is one macro, QUILLON_<NAME>_TABLE(X), that lists its
// operations once as X(slot, Return, Name, (parameters)). The record of function pointers, the
// host's filling of it and the layout checks are all made from that list.
//
// In memory a table is an array of pointer-sized words: word 0 is the number of slots, word n is
// the routine of slot n. Slots are appended, never moved and never reused.
//
// Unless an operation's comment says otherwise, every operation may raise (Core.Raise): the call
// then does not return but unwinds to the innermost open frame (Core.PushFrame).
#pragma once

#include <cstddef>
#include <cstdint>

#define QUILLON_TABLE_FIELD(slot, Return, Name, Params) Return(*Name) Params;

#define QUILLON_TABLE_COUNT(slot, Return, Name, Params) +1

#define QUILLON_TABLE_CHECK(slot, Return, Name, Params)                \
  static_assert(offsetof(TableRecord, Name) == (slot) * sizeof(void*), \
                "slots follow one another in the order of their numbers");

// Declares `struct TableName { ... }` from the list, with its slot count and layout checks.
#define QUILLON_DECLARE_TABLE(TableName, List)                                       \
  struct TableName {                                                                 \
    std::uintptr_t slotCount;                                                        \
    List(QUILLON_TABLE_FIELD)                                                        \
  };                                                                                 \
  inline constexpr std::uintptr_t k##TableName##Slots = 0 List(QUILLON_TABLE_COUNT); \
  namespace check_##TableName {                                                      \
    using TableRecord = TableName;                                                   \
    List(QUILLON_TABLE_CHECK)                                                        \
  }
