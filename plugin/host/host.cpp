#include "plugin/host/host.h"

#include <cstdlib>

namespace quillform {

quillon::CoreTable* Core = nullptr;
quillon::SupportTable* Support = nullptr;
quillon::ObjectsTable* Objects = nullptr;
quillon::DocumentTable* Document = nullptr;
quillon::ViewerTable* Viewer = nullptr;
quillon::PlatformTable* Platform = nullptr;
ExtensionId Extension = 0;
quillon::LinkTable* Link = nullptr;

quillon::PlatformWindow HostWindow = nullptr;
void* ModuleInstance = nullptr;

namespace {

[[noreturn]] void ThrowHostError(quillon::GuardFrame* frame) { throw HostError{frame->code}; }

}  // namespace

Guard::Guard() : frame{} { Core->PushFrame(&frame, &ThrowHostError); }

Guard::~Guard() { Core->PopFrame(); }

void Raise(FailureCode code) {
  Core->Raise(code);
  // A raise that comes back has lost the block it should have ended.
  std::abort();
}

void* AllocOrRaise(std::uint32_t size) {
  void* block = Support->Alloc(size);
  if (block == nullptr) Raise(quillon::kErrorNoMemory);
  return block;
}

void HostFree::operator()(void* block) const { Support->Free(block); }

}  // namespace quillform
