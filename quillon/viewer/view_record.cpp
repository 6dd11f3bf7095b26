#include "quillon/viewer/view_record.h"

#include <algorithm>
#include <memory>

#include "quillon/core/guard.h"
#include "quillon/viewer/operations.h"

namespace quillon::viewer {
namespace {

struct Registry {
  std::vector<std::unique_ptr<ViewRecord>> views;  // newest last
  ViewRecord* active = nullptr;
};

Registry& TheRegistry() {
  static Registry registry;
  return registry;
}

}  // namespace

DocView HandleOf(const ViewRecord* record) {
  return reinterpret_cast<DocView>(const_cast<ViewRecord*>(record));
}

PageView HandleOf(const PageViewRecord* record) {
  return reinterpret_cast<PageView>(const_cast<PageViewRecord*>(record));
}

bool IsOpen(DocView view) {
  const auto& views = TheRegistry().views;
  return std::any_of(views.begin(), views.end(),
                     [&](const auto& record) { return HandleOf(record.get()) == view; });
}

ViewRecord& RecordOf(DocView view) {
  if (!IsOpen(view)) Fail(kErrorBadParameter, "the view is not open");
  return *reinterpret_cast<ViewRecord*>(view);
}

PageViewRecord& RecordOf(PageView view) {
  for (const auto& record : TheRegistry().views) {
    if (HandleOf(&record->pageView) == view) return record->pageView;
  }
  Fail(kErrorBadParameter, "the page view is not open");
}

ViewRecord& AddView(DocHandle doc) {
  auto record = std::make_unique<ViewRecord>();
  record->doc = doc;
  TheRegistry().views.push_back(std::move(record));
  return *TheRegistry().views.back();
}

void RemoveView(ViewRecord* record) {
  Registry& registry = TheRegistry();
  const bool wasActive = registry.active == record;
  std::erase_if(registry.views, [&](const auto& view) { return view.get() == record; });
  if (wasActive) registry.active = registry.views.empty() ? nullptr : registry.views.back().get();
}

std::vector<DocView> OpenViews() {
  std::vector<DocView> views;
  for (const auto& record : TheRegistry().views) views.push_back(HandleOf(record.get()));
  std::reverse(views.begin(), views.end());
  return views;
}

void SetActiveView(DocView view) {
  TheRegistry().active = view == nullptr ? nullptr : &RecordOf(view);
}

DocView ActiveDocView() {
  const ViewRecord* active = TheRegistry().active;
  return active == nullptr ? nullptr : HandleOf(active);
}

void EnumDocViews(DocViewEnumProc proc, void* clientData) {
  if (proc == nullptr) Fail(kErrorBadParameter, "EnumDocViews needs a routine");
  for (const DocView view : OpenViews()) {
    if (!IsOpen(view)) continue;
    if (CallGuarded([&] { return proc(view, clientData); }) == 0) return;
  }
}

}  // namespace quillon::viewer
