#include "quillon/viewer/draw_page.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "quillon/core/guard.h"
#include "quillon/core/operations.h"
#include "quillon/document/annots.h"
#include "quillon/document/names.h"
#include "quillon/document/object_reading.h"
#include "quillon/objects/operations.h"
#include "quillon/viewer/appearance_matrix.h"
#include "quillon/viewer/coordinates.h"
#include "quillon/viewer/held_page.h"
#include "quillon/viewer/operations.h"
#include "quillon/viewer/registrations.h"
#include "quillon/viewer/view_record.h"

namespace quillon::viewer {
namespace {

using document::Names;

using DrawRoutine = void (*)(const AnnotHandlerRecord* record, AnnotHandle annot, PageView view);

// The page view shows the page and draws into the list for as long as this stands.
struct Drawing {
  Drawing(PageViewRecord* pageView, std::uint32_t page, std::vector<DrawnAppearance>* list)
      : record(pageView),
        formerPage(std::exchange(pageView->page, page)),
        formerList(std::exchange(pageView->drawing, list)) {}
  ~Drawing() {
    record->page = formerPage;
    record->drawing = formerList;
  }
  Drawing(const Drawing&) = delete;
  Drawing& operator=(const Drawing&) = delete;

  PageViewRecord* record;
  std::uint32_t formerPage;
  std::vector<DrawnAppearance>* formerList;
};

// ISO 32000-1, Table 169. Invisible hides only what is not one of these.
constexpr std::string_view kStandardSubtypes[] = {
    "Text",        "Link",      "FreeText",       "Line",     "Square",    "Circle", "Polygon",
    "PolyLine",    "Highlight", "Underline",      "Squiggly", "StrikeOut", "Stamp",  "Caret",
    "Ink",         "Popup",     "FileAttachment", "Sound",    "Movie",     "Widget", "Screen",
    "PrinterMark", "TrapNet",   "Watermark",      "3D",
};

bool IsStandard(Atom subtype) {
  const char* name = core::NameFromAtom(subtype);
  return name != nullptr && std::find(std::begin(kStandardSubtypes), std::end(kStandardSubtypes),
                                      name) != std::end(kStandardSubtypes);
}

bool IsShown(std::uint32_t flags, Atom subtype, bool handled) {
  if ((flags & (kAnnotHidden | document::kAnnotNoView)) != 0) return false;
  return (flags & kAnnotInvisible) == 0 || handled || IsStandard(subtype);
}

// N itself, or its stream for the state AS.
ObjectHandle NormalAppearance(ObjectHandle annot) {
  const ObjectHandle normal = document::EntryOf(document::EntryOf(annot, Names().AP), Names().N);
  if (!document::IsKind(normal, ObjectKind::kDict)) return normal;
  const Atom state = document::NameOr(document::EntryOf(annot, Names().AS), kNoAtom);
  return state == kNoAtom ? kNullObject : objects::DictGet(normal, state);
}

void DrawDefault(PageView view, AnnotHandle annot) {
  const ObjectHandle stream = NormalAppearance(document::DictOf(annot));
  if (document::IsKind(stream, ObjectKind::kStream)) DrawAppearance(view, annot, stream);
}

void DrawAnnot(PageView view, AnnotHandle annot, const RegisteredAnnotHandler* handler) {
  if (handler == nullptr || handler->record->draw == nullptr) {
    DrawDefault(view, annot);
    return;
  }
  const auto draw = reinterpret_cast<DrawRoutine>(handler->record->draw);
  CallGuarded([&] { draw(handler->record, annot, view); });
}

void DrawOne(PageView view, AnnotHandle annot, std::vector<PlugInFailure>* failures) {
  const Atom subtype = document::AnnotSubtype(annot);
  const RegisteredAnnotHandler* handler = AnnotHandlerOf(subtype);
  if (!IsShown(document::AnnotFlags(annot), subtype, handler != nullptr)) return;
  try {
    DrawAnnot(view, annot, handler);
  } catch (const HostFailure& failure) {
    const ExtensionId extension = handler != nullptr ? handler->extension : 0;
    const PlugInFailure told = {"drawing an annotation", extension, failure.code, failure.what()};
    if (failures != nullptr) {
      failures->push_back(told);
    } else {
      ReportPlugInFailure(told);
    }
  }
}

std::vector<AnnotHandle> AnnotsOf(DocHandle doc, std::uint32_t number) {
  const HeldPage page(doc, number);
  std::vector<AnnotHandle> annots;
  const std::uint32_t count = document::AnnotCount(page.handle);
  for (std::uint32_t i = 0; i < count; ++i) annots.push_back(document::AnnotAt(page.handle, i));
  return annots;
}

}  // namespace

Boolean AnnotAtPoint(PageView view, std::int16_t x, std::int16_t y, AnnotHandle* annot) {
  if (annot == nullptr) Fail(kErrorBadParameter, "AnnotAtPoint needs an annotation");
  const PageViewRecord& record = RecordOf(view);
  const std::vector<AnnotHandle> annots = AnnotsOf(record.view->doc, record.page);
  const auto topmost = std::find_if(annots.rbegin(), annots.rend(), [&](AnnotHandle each) {
    const Atom subtype = document::AnnotSubtype(each);
    if (!IsShown(document::AnnotFlags(each), subtype, AnnotHandlerOf(subtype) != nullptr)) {
      return false;
    }
    DeviceRect rect{};
    AnnotDeviceRect(view, each, &rect);
    return x >= rect.left && x <= rect.right && y >= rect.top && y <= rect.bottom;
  });
  if (topmost == annots.rend()) return 0;
  *annot = *topmost;
  return 1;
}

void* PageViewDrawState(PageView view) {
  PageViewRecord& record = RecordOf(view);
  if (record.drawing == nullptr) return nullptr;
  return record.drawState != nullptr ? record.drawState : &record;
}

void PageViewSetDrawState(PageView view, void* state) { RecordOf(view).drawState = state; }

void DrawAppearance(PageView view, AnnotHandle annot, ObjectHandle stream) {
  PageViewRecord& record = RecordOf(view);
  if (!document::IsKind(stream, ObjectKind::kStream)) {
    Fail(kErrorBadObject, "an appearance is a stream");
  }
  FixedRect rect{};
  document::AnnotRect(annot, &rect);
  const PageFrame frame = FrameOf(record);
  if (record.drawing == nullptr) {
    // Nothing can be painted between drawings; the next one takes care of the place.
    const DeviceRect place = ToDevice(frame, rect);
    InvalidateRect(view, &place);
    return;
  }
  const bool upright = (document::AnnotFlags(annot) & document::kAnnotNoRotate) != 0;
  const AppearanceFit fit = FitAppearance(stream, rect, frame.rotation, upright);
  record.drawing->push_back({stream, fit.matrix, fit.placement, record.page, annot});
}

}  // namespace quillon::viewer

namespace quillon {

std::vector<DrawnAppearance> DrawPageAnnots(DocView view, std::uint32_t page,
                                            std::vector<PlugInFailure>* failures) {
  viewer::PageViewRecord& record = viewer::RecordOf(view).pageView;
  std::vector<DrawnAppearance> drawn;
  const std::vector<AnnotHandle> annots = viewer::AnnotsOf(record.view->doc, page);
  const viewer::Drawing drawing(&record, page, &drawn);
  for (const AnnotHandle annot : annots) {
    // A handler may have removed those that come after it.
    if (document::AnnotIsValid(annot) == 0) continue;
    viewer::DrawOne(viewer::HandleOf(&record), annot, failures);
  }
  return drawn;
}

}  // namespace quillon
