// From free functions to tables. Each room of the host declares the operations of its table as free
// functions in a namespace of its own (quillon::objects::DictGet ...), straight from the table's
// list; host code calls those. SlotOf wraps one for the seam: what it throws becomes a raise.
#pragma once

#include <exception>
#include <new>
#include <utility>

#include "quillon/core/failure.h"
#include "sdk/table_macros.h"
#include "sdk/types.h"

// Declares an operation as a free function.
#define QUILLON_DECLARE_OPERATION(slot, Return, Name, Params) Return Name Params;

// Fills a table's field from the wrapped free function of the same name in namespace `ns`.
#define QUILLON_FILL_SLOT(ns, table, Name) (table).Name = ::quillon::SlotOf<&ns::Name>

namespace quillon {

// Remembers the failure's text for Support.ErrorText, then raises its code. Does not return.
[[noreturn]] void RaiseFailure(const HostFailure& failure);
[[noreturn]] void RaiseCode(FailureCode code);

template <auto Routine>
struct SlotWrapper;

template <typename Return, typename... Args, Return (*Routine)(Args...)>
struct SlotWrapper<Routine> {
  static Return Call(Args... args) {
    try {
      return Routine(args...);
    } catch (const HostFailure& failure) {
      RaiseFailure(failure);
    } catch (const std::bad_alloc&) {
      RaiseCode(kErrorNoMemory);
    } catch (const std::exception&) {
      RaiseCode(kErrorGeneral);
    }
  }
};

template <auto Routine>
inline constexpr auto SlotOf = &SlotWrapper<Routine>::Call;

}  // namespace quillon
