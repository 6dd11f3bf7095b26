#include "tests/fault_sweep/fault_points.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <new>
#include <string_view>

#include "quillon/core/slot.h"
#include "quillon/viewer/start.h"

namespace quillon::test {
namespace {

using namespace std::string_view_literals;

constexpr std::array kNeverRaise = {"Alloc"sv,         "Free"sv,         "FileSystemOf"sv,
                                    "AnswerMessage"sv, "FixedMul"sv,     "FixedDiv"sv,
                                    "ErrorText"sv,     "DocViewWindow"sv};
constexpr std::array kLetGo = {"Destroy"sv,       "CloseDocument"sv,   "CloseStream"sv,
                               "CloseFile"sv,     "DeleteFile"sv,      "ReleasePath"sv,
                               "ReleasePage"sv,   "ReleaseMenuItem"sv, "UnregisterNotification"sv,
                               "EndModal"sv,      "CloseView"sv,       "UnregisterModalWindow"sv,
                               "PageViewEndOp"sv, "AnnotDidChange"sv};

struct Armed {
  bool on = false;
  FaultKind kind = FaultKind::kHostCall;
  std::uint64_t number = 0;
  std::uint64_t seen = 0;
  const char* place = "";
};

Armed armed;

bool FailsNow(FaultKind kind, const char* place) {
  if (!armed.on || armed.kind != kind) return false;
  if (++armed.seen != armed.number) return false;
  armed.place = place;
  return true;
}

constexpr bool Contains(const auto& names, std::string_view name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

template <auto Field>
struct Watched;

template <typename Table, typename Return, typename... Args, Return (*Table::*Field)(Args...)>
struct Watched<Field> {
  static inline Return (*real)(Args...) = nullptr;
  static inline bool letsGo = false;
  static inline const char* name = "";

  static Return Call(Args... args) {
    if (FailsNow(FaultKind::kHostCall, name)) {
      if (letsGo) real(args...);
      RaiseCode(kErrorGeneral);
    }
    return real(args...);
  }
};

template <auto Field, typename Table>
void Watch(Table& table, const char* name) {
  if (Contains(kNeverRaise, name)) return;
  Watched<Field>::real = table.*Field;
  Watched<Field>::name = name;
  Watched<Field>::letsGo = Contains(kLetGo, name);
  table.*Field = &Watched<Field>::Call;
}

void* (*realAlloc)(std::uint32_t size) = nullptr;

void* AllocOrNull(std::uint32_t size) {
  return FailsNow(FaultKind::kAllocation, "Alloc") ? nullptr : realAlloc(size);
}

}  // namespace

void WatchTables() {
  HostTables& tables = OfferedTables();
#define WATCH_SUPPORT(slot, Return, Name, Params) Watch<&SupportTable::Name>(tables.support, #Name);
#define WATCH_OBJECTS(slot, Return, Name, Params) Watch<&ObjectsTable::Name>(tables.objects, #Name);
#define WATCH_DOCUMENT(slot, Return, Name, Params) \
  Watch<&DocumentTable::Name>(tables.document, #Name);
#define WATCH_VIEWER(slot, Return, Name, Params) Watch<&ViewerTable::Name>(tables.viewer, #Name);
  QUILLON_SUPPORT_TABLE(WATCH_SUPPORT)
  QUILLON_OBJECTS_TABLE(WATCH_OBJECTS)
  QUILLON_DOCUMENT_TABLE(WATCH_DOCUMENT)
  QUILLON_VIEWER_TABLE(WATCH_VIEWER)
  realAlloc = tables.support.Alloc;
  tables.support.Alloc = &AllocOrNull;
}

void ArmFault(FaultKind kind, std::uint64_t number) { armed = {true, kind, number, 0, ""}; }

FaultCount DisarmFault() {
  armed.on = false;
  return {armed.seen, armed.place};
}

namespace {

void* AllocateOrNull(std::size_t size) {
  if (FailsNow(FaultKind::kAllocation, "operator new")) return nullptr;
  return std::malloc(size == 0 ? 1 : size);
}

void* AllocateOrThrow(std::size_t size) {
  void* memory = AllocateOrNull(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

}  // namespace
}  // namespace quillon::test

void* operator new(std::size_t size) { return quillon::test::AllocateOrThrow(size); }
void* operator new[](std::size_t size) { return quillon::test::AllocateOrThrow(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return quillon::test::AllocateOrNull(size);
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }
