#include "quillon/viewer/operations.h"
#include "quillon/viewer/platform_operations.h"

namespace quillon::viewer {

void FillTable(ViewerTable* table) {
  table->slotCount = kViewerTableSlots;
#define QUILLON_VIEWER_SLOT(slot, Return, Name, Params) \
  table->Name = SlotOf<&quillon::viewer::Name>;
  QUILLON_VIEWER_TABLE(QUILLON_VIEWER_SLOT)
#undef QUILLON_VIEWER_SLOT
}

}  // namespace quillon::viewer

namespace quillon::platform {

void FillTable(PlatformTable* table) {
  table->slotCount = kPlatformTableSlots;
  table->DocViewWindow = SlotOf<&quillon::platform::DocViewWindow>;
}

}  // namespace quillon::platform
