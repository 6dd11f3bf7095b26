// What the viewer room keeps for each view.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "quillon/viewer/draw_page.h"
#include "sdk/types.h"

namespace quillon::viewer {

struct ViewRecord;

// The page area of a view. Device units are pixels; y grows downwards from the area's upper edge.
struct PageViewRecord {
  explicit PageViewRecord(ViewRecord* owner) : view(owner) {}

  ViewRecord* view;
  std::uint32_t page = 0;
  Fixed zoom = kFixedOne;
  std::int32_t scrollX = 0;  // device units of the page that lie left of the area
  std::int32_t scrollY = 0;
  std::int32_t width = 0;  // of the area; 0 when it is as large as the page
  std::int32_t height = 0;
  void* drawState = nullptr;
  std::vector<DrawnAppearance>* drawing = nullptr;  // where a drawing in progress goes
  std::optional<DeviceRect> invalid;
  std::uint32_t operations = 0;  // between PageViewBeginOp and PageViewEndOp
  ColourRec color{};             // black
};

struct ViewSelection {
  Atom type = kNoAtom;
  void* data = nullptr;
};

struct ViewRecord {
  DocHandle doc = nullptr;
  bool external = false;
  PlatformWindow window = nullptr;
  PageViewRecord pageView{this};
  ViewSelection selection;
};

// The handles are good until the view closes; anything else throws kErrorBadParameter.
ViewRecord& RecordOf(DocView view);
PageViewRecord& RecordOf(PageView view);
DocView HandleOf(const ViewRecord* record);
PageView HandleOf(const PageViewRecord* record);
bool IsOpen(DocView view);

ViewRecord& AddView(DocHandle doc);
void RemoveView(ViewRecord* record);

// Newest first.
std::vector<DocView> OpenViews();
void SetActiveView(DocView view);

}  // namespace quillon::viewer
