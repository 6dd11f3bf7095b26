// The host as the plug-in uses it: the tables as globals, its failures as exceptions, and the one
// place where the plug-in's routines are wrapped before the host gets them.
#pragma once

#include <cstdint>
#include <exception>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

#include "sdk/core_table.h"
#include "sdk/document_table.h"
#include "sdk/entry.h"
#include "sdk/errors.h"
#include "sdk/link_table.h"
#include "sdk/objects_table.h"
#include "sdk/platform_table.h"
#include "sdk/support_table.h"
#include "sdk/viewer_table.h"

namespace quillform {

using quillon::ActionHandle;
using quillon::AnnotHandle;
using quillon::Atom;
using quillon::Boolean;
using quillon::Callback;
using quillon::ColourRec;
using quillon::DocHandle;
using quillon::DocView;
using quillon::ExtensionId;
using quillon::FailureCode;
using quillon::FileHandle;
using quillon::Fixed;
using quillon::FixedMatrix;
using quillon::FixedRect;
using quillon::kFixedOne;
using quillon::kNoAnnot;
using quillon::kNoAtom;
using quillon::kNullObject;
using quillon::ObjectDoc;
using quillon::ObjectHandle;
using quillon::ObjectKind;
using quillon::PageHandle;
using quillon::PageView;
using quillon::PathHandle;
using quillon::StreamHandle;

// Set by the setup routine before anything else runs; never null afterwards.
extern quillon::CoreTable* Core;
extern quillon::SupportTable* Support;
extern quillon::ObjectsTable* Objects;
extern quillon::DocumentTable* Document;
extern quillon::ViewerTable* Viewer;
extern quillon::PlatformTable* Platform;
extern ExtensionId Extension;

// The link plug-in's table, asked for at initialisation; null when the host has no such plug-in.
extern quillon::LinkTable* Link;

// Told at entry, before the tables are: the owner of modal dialogs and of the clipboard, and this
// module, through which its resources are found.
extern quillon::PlatformWindow HostWindow;
extern void* ModuleInstance;

// What a raise of the host looks like inside the plug-in.
struct HostError {
  FailureCode code;
};

// A guarded block for its own lifetime: a raise inside arrives as a HostError at the try around it.
// Cleanup that calls operations which may raise needs a block of its own (DropFailures).
struct Guard {
  Guard();
  ~Guard();
  Guard(const Guard&) = delete;
  Guard& operator=(const Guard&) = delete;

  quillon::GuardFrame frame;
};

// Raises a code to the innermost block. Throws HostError when that block is the plug-in's own.
[[noreturn]] void Raise(FailureCode code);

// Runs `work` in a block and answers 0, or the code that ended it.
template <typename Work>
FailureCode CatchFailure(Work&& work) {
  Guard guard;
  try {
    std::forward<Work>(work)();
    return quillon::kErrorNone;
  } catch (const HostError& error) {
    return error.code;
  } catch (const std::bad_alloc&) {
    return quillon::kErrorNoMemory;
  } catch (const std::exception&) {
    return quillon::kErrorGeneral;
  }
}

// Runs cleanup whose failures nobody can act on.
template <typename Work>
void DropFailures(Work&& work) {
  static_cast<void>(CatchFailure(std::forward<Work>(work)));
}

// Memory that the host counts or the other side sees. AllocOrRaise raises host error 2 when there
// is none.
void* AllocOrRaise(std::uint32_t size);
struct HostFree {
  void operator()(void* block) const;
};
template <typename T>
using HostPtr = std::unique_ptr<T, HostFree>;

// An allocator over the host's memory for standard containers.
template <typename T>
struct HostAllocator {
  using value_type = T;
  HostAllocator() = default;
  template <typename U>
  HostAllocator(const HostAllocator<U>&) {}
  T* allocate(std::size_t count) {
    if (count > UINT32_MAX / sizeof(T)) throw std::bad_alloc();
    void* block = Support->Alloc(static_cast<std::uint32_t>(count * sizeof(T)));
    if (block == nullptr) throw std::bad_alloc();
    return static_cast<T*>(block);
  }
  void deallocate(T* block, std::size_t) { Support->Free(block); }
  template <typename U>
  bool operator==(const HostAllocator<U>&) const {
    return true;
  }
};

// What a wrapped routine does with a failure.
enum class OnFailure {
  kRaise,  // it reaches the host's (or another plug-in's) block
  kDrop,   // the routine answers 0, false or null instead
};

template <auto Routine, OnFailure policy>
struct Wrapper;

template <typename Return, typename... Args, Return (*Routine)(Args...), OnFailure policy>
struct Wrapper<Routine, policy> {
  static Return Call(Args... args) {
    FailureCode code = quillon::kErrorNone;
    {
      Guard guard;
      try {
        return Routine(args...);
      } catch (const HostError& error) {
        code = error.code;
      } catch (const std::bad_alloc&) {
        code = quillon::kErrorNoMemory;
      } catch (const std::exception&) {
        code = quillon::kErrorGeneral;
      }
    }
    if constexpr (policy == OnFailure::kRaise) {
      Core->Raise(code);
    }
    if constexpr (!std::is_void_v<Return>) {
      return Return{};
    }
  }
};

// The form in which a routine may be handed to the other side, keeping its type.
template <auto Routine, OnFailure policy = OnFailure::kRaise>
inline constexpr auto Wrap = &Wrapper<Routine, policy>::Call;

// The same as a callback of the host's making, for records and registrations.
template <auto Routine, OnFailure policy = OnFailure::kRaise>
Callback MakeHostCallback() {
  return Core->MakeCallback(Extension, reinterpret_cast<Callback>(&Wrapper<Routine, policy>::Call));
}

inline bool IsNull(ObjectHandle object) { return Objects->TypeOf(object) == ObjectKind::kNull; }

inline bool IsKind(ObjectHandle object, ObjectKind kind) { return Objects->TypeOf(object) == kind; }

}  // namespace quillform
