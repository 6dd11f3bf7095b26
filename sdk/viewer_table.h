// `Viewer` ("QuillView"): views, drawing, registrations, menus, tools, selection and modal state.
#pragma once

#include "table_macros.h"
#include "types.h"

namespace quillon {

// Positions in menus and toolbars: 0 is the first place; a position beyond the end means the end.
inline constexpr std::uint16_t kMenuEnd = 9999;

using ExecuteProc = void (*)(void* clientData);
using ComputeProc = Boolean (*)(void* clientData);
using DocViewEnumProc = Boolean (*)(DocView view, void* clientData);

// The host's part of an annotation handler. Word 0 is the record's size in bytes; unlisted words
// are null. The record stays the plug-in's and must live until the process ends.
struct AnnotHandlerRecord {
  std::uint32_t size;
  std::uint32_t flags;
  Callback click;         // Boolean (record, annot, page view, x, y, modifiers, click count)
  Callback adjustCursor;  // Boolean (record, annot, page view, x, y)
  Callback unused4;
  Callback unused5;
  Callback deselected;  // void (record, annot, page view)
  Callback selected;    // void (record, annot, page view)
  Callback draw;        // void (record, annot, page view)
  Callback unused9;
  Callback getType;  // Atom (record): the annotation subtype served
  Callback unused11;
  Callback properties;   // void (record, annot, doc view)
  Callback keyDown;      // Boolean (record, annot, key, modifiers)
  Callback getLayer;     // Fixed (record)
  Callback cursorEnter;  // void (record, annot, page view)
  Callback cursorLeave;  // void (record, annot, page view)
  Callback unused17;
};

// The host's part of a tool.
struct ToolRecord {
  std::uint32_t size;
  Callback activate;      // void (record, Boolean persistent)
  Callback deactivate;    // void (record)
  Callback click;         // Boolean (record, page view, x, y, modifiers, click count)
  Callback adjustCursor;  // Boolean (record, page view, x, y)
  Callback keyDown;       // Boolean (record, key, modifiers)
  Callback getType;       // Atom (record)
  Callback isPersistent;  // Boolean (record)
  Callback unused8;
  ComputeProc computeEnabled;
  void* computeEnabledData;
};

// The buttons of a message, its low four flag bits, and the answers, both as Win32 numbers them.
enum MessageButtons : std::uint32_t {
  kMessageOk = 0,
  kMessageOkCancel = 1,
  kMessageAbortRetryIgnore = 2,
  kMessageYesNoCancel = 3,
  kMessageYesNo = 4,
  kMessageRetryCancel = 5,
};
enum MessageAnswer : std::uint32_t {
  kMessageNotAnswered = 0,  // the plug-in shows its own box
  kAnswerOk = 1,
  kAnswerCancel = 2,
  kAnswerAbort = 3,
  kAnswerRetry = 4,
  kAnswerIgnore = 5,
  kAnswerYes = 6,
  kAnswerNo = 7,
};

// What performs one type of action (ISO 32000-1, 12.6). Unused slots are null.
struct ActionHandlerRecord {
  std::uint32_t size;
  void (*perform)(ActionHandle action, DocView view);
  void (*edit)(ActionHandle action, DocView view);
  void (*reserved)();
  std::uint32_t (*typeDescription)(ActionHandle action, char* buffer, std::uint32_t size);
  std::uint32_t (*buttonLabel)(ActionHandle action, char* buffer, std::uint32_t size);
  std::uint32_t (*firstLine)(ActionHandle action, char* buffer, std::uint32_t size);
  std::uint32_t (*secondLine)(ActionHandle action, char* buffer, std::uint32_t size);
  Callback unused9;
};

// Who takes data of one type that reaches the viewer.
struct DataHandlerRecord {
  std::uint32_t size;
  Boolean (*open)(const void* data, std::uint32_t length, DocView view);
};

#if UINTPTR_MAX == 0xFFFFFFFFu
static_assert(sizeof(AnnotHandlerRecord) == 72 && sizeof(ToolRecord) == 44 &&
              sizeof(ActionHandlerRecord) == 36 && sizeof(DataHandlerRecord) == 8);
#endif

// Who owns selections of one type. Every routine may be null.
struct SelectionServerRecord {
  std::uint32_t size;
  Atom (*getType)();
  void (*gained)(DocView view, void* data);
  void (*lost)(DocView view, void* data, Boolean highlighted);
  void (*destroy)(DocView view, void* data);
  Boolean (*keyDown)(DocView view, void* data, std::uint16_t key, std::uint32_t modifiers);
  Boolean (*canCopy)(DocView view, void* data);
  void (*copy)(DocView view, void* data);
  Boolean (*canCut)(DocView view, void* data);
  void (*cut)(DocView view, void* data);
  Boolean (*canPaste)(DocView view);
  void (*paste)(DocView view);
  Boolean (*canSelectAll)(DocView view);
  void (*selectAll)(DocView view);
};

// Views
//   ActiveDocView: null when no document is shown. DocOf: the view's document. EnumDocViews: every
//     view, newest first, until the routine answers false. DocIsExternal: the view's document is
//     shown inside a web browser (it was opened by URL).
//   DocPageView: the view's page area. PageViewDoc: back again. DocWindow, PlatformWindowOf: the
//     view's window and the platform's handle of it (null without a screen).
//   PageViewPageNumber, FirstVisiblePage, LastVisiblePage, IsPageVisible: pages counted from 0.
//   PageViewZoom: 1.0 is 72 device units an inch. PageViewAperture: the visible part in device
//     units. PageViewDrawState: an opaque word, 0 when nothing can be drawn now; handed back with
//     PageViewSetDrawState.
//   UserToDeviceRect, DeviceToUserRect: through the page's rotation, zoom and scroll position.
//   AnnotDeviceRect: AnnotRect through UserToDeviceRect.
// Drawing
//   InvalidateRect: null means the whole page view. UpdateView: draws what is invalid now.
//   DrawAppearance: draws an appearance stream into the annotation's rectangle on the page view
//     (ISO 32000-1, 12.5.5, algorithm 8.1); raises kErrorBadObject when it is no stream.
// Registrations: records stay the plug-in's and must outlive the host's last call; a later
//   registration for the same type wins.
//   RegisterNotification: notifications.h lists the numbers and their routines.
// Menus: AcquireMenuByName, MenuItemByName: null when missing; names compare exactly, the
//   language plays no part. MenuItemIndex: the place in its menu. NewMenuItem: label in host text
//   ("-" for a separator, "&" before the access key), submenu or null, no shortcut.
// Toolbar: GetToolbar, FindToolbarButton (null when missing); NewToolbarButton.
// Selection: one per view, of a type with data. SetSelection clears an earlier one first; the data
//   then belongs to the host until the selection server's destroy (or Support.Free without one).
// Modal state: BeginModal, EndModal nest. Beep: one of the host's sounds.
// PerformAction: runs the handler of the action's type, then those of the actions that follow it as
//   Next; types without a handler are passed over, each action is performed once. Raises
//   kErrorNotOffered when there was nothing that could be performed, and what a handler raises.
// OpenDocument (slot 44): opens a file in a view and makes it active; null when it cannot.
//   `replaceable`: plug-ins replace this slot to look at files first. CloseView: closes the view,
//   and the document with its last view.
// GetLanguage: the three-letter code of the user interface, "ENU" for English.
// ModifierKeys: bits 0x01 shift, 0x02 control, 0x04 alt.
// AnswerMessage: asked before a plug-in shows a message box; caption and text are host text, flags
//   those of the box. Without a screen the host prints the message and answers it by policy; a
//   MessageAnswer, kMessageNotAnswered when the plug-in is to show the box. Never raises.
// Views, continued
//   AnnotAtPoint: the topmost annotation shown under a point in device units (edges inclusive);
//     false and `annot` untouched without one. ScrollTo: the point given becomes the upper left
//     corner of the visible part. PageViewBeginOp, PageViewEndOp: nest; changes made between them
//     are drawn once, at the last end. DrawNow: what UpdateView does, of a window's view.
// Painting on what is shown; without a window nothing is seen of it
//   PageViewColor: black at first; what DrawRect fills and DrawRectOutline draws with,
//     its width inward in device units. InvertRect: flag 1; twice is as never.
// Mouse
//   MouseIsDown: whether the button is held now. GetMousePosition: device units of the page view.
//   TrackNewRect, TrackRect: follow the mouse until the button is released. `corner` 0 moves the
//     rectangle, 1 to 4 drag its top left, top right, bottom right or bottom left corner; the last
//     word but one is 0. True when the result differs from what was there before.
//   GetCursor: the viewer's cursor of that number, 0 being the arrow; CurrentCursor: the one shown.
// Tools: SetActiveTool deactivates the former tool, which LastTool names from then on, and
//   activates the new one; raises kErrorBadParameter for a type that nobody registered.
//   DefaultTool: the viewer's own, the hand. ToolIsEnabled: false for unknown types.
// SetAppFlag: one of the viewer's numbered settings.
// DoSelectionProperties: asks the selected annotation's handler for its properties dialog.
// EditAction: the viewer's action editor; a null action makes a new one. True after OK; the action
//   may be another one then, or null. Without a window there is no editor: false.
// RegisterModalWindow (kind 3, 0, 0): what BeginModal takes; lives until UnregisterModalWindow.
// DeliverData: data of a type that came for a view (null for none) from outside. A copy goes to the
//   data handler registered for the type when the viewer is idle next, so that what is running now
//   has ended by then; a view that is closed by then is handed over as null. False when nobody
//   takes the type.
#define QUILLON_VIEWER_TABLE(X)                                                                    \
  X(1, DocView, ActiveDocView, ())                                                                 \
  X(2, DocHandle, DocOf, (DocView view))                                                           \
  X(3, void, EnumDocViews, (DocViewEnumProc proc, void* clientData))                               \
  X(4, Boolean, DocIsExternal, (DocView view))                                                     \
  X(5, PageView, DocPageView, (DocView view))                                                      \
  X(6, DocView, PageViewDoc, (PageView view))                                                      \
  X(7, WindowHandle, DocWindow, (DocView view))                                                    \
  X(8, PlatformWindow, PlatformWindowOf, (WindowHandle window))                                    \
  X(9, std::uint32_t, PageViewPageNumber, (PageView view))                                         \
  X(10, std::uint32_t, FirstVisiblePage, (DocView view))                                           \
  X(11, std::uint32_t, LastVisiblePage, (DocView view))                                            \
  X(12, Boolean, IsPageVisible, (DocView view, std::uint32_t page))                                \
  X(13, void, SetPageViewPage, (PageView view, std::uint32_t page))                                \
  X(14, Fixed, PageViewZoom, (PageView view))                                                      \
  X(15, void, PageViewAperture, (PageView view, DeviceRect * rect))                                \
  X(16, void*, PageViewDrawState, (PageView view))                                                 \
  X(17, void, PageViewSetDrawState, (PageView view, void* state))                                  \
  X(18, void, UserToDeviceRect, (PageView view, const FixedRect* user, DeviceRect* device))        \
  X(19, void, DeviceToUserRect, (PageView view, const DeviceRect* device, FixedRect* user))        \
  X(20, void, AnnotDeviceRect, (PageView view, AnnotHandle annot, DeviceRect * rect))              \
  X(21, void, InvalidateRect, (PageView view, const DeviceRect* rect))                             \
  X(22, void, UpdateView, (PageView view))                                                         \
  X(23, void, DrawAppearance, (PageView view, AnnotHandle annot, ObjectHandle stream))             \
  X(24, void, RegisterAnnotHandler, (ExtensionId extension, const AnnotHandlerRecord* record))     \
  X(25, void, RegisterTool, (ExtensionId extension, const ToolRecord* record))                     \
  X(26, void, RegisterActionHandler,                                                               \
    (ExtensionId extension, Atom type, const ActionHandlerRecord* record, const char* name))       \
  X(27, const ActionHandlerRecord*, ActionHandlerOf, (Atom type))                                  \
  X(28, void, RegisterNotification,                                                                \
    (std::uint32_t number, ExtensionId extension, Callback routine, void* clientData))             \
  X(29, void, UnregisterNotification,                                                              \
    (std::uint32_t number, ExtensionId extension, Callback routine, void* clientData))             \
  X(30, void, RegisterSelectionServer,                                                             \
    (ExtensionId extension, const SelectionServerRecord* record))                                  \
  X(31, void, RegisterDataHandler,                                                                 \
    (ExtensionId extension, Atom type, const DataHandlerRecord* record))                           \
  X(32, MenuHandle, AcquireMenuByName, (const char* name))                                         \
  X(33, MenuItemHandle, MenuItemByName, (const char* name))                                        \
  X(34, MenuItemHandle, NewMenuItem,                                                               \
    (const char* label, const char* name, MenuHandle submenu, Boolean wantsShortcut,               \
     std::uint16_t shortcut, std::uint16_t modifiers, IconHandle icon, ExtensionId extension))     \
  X(35, void, SetExecuteProc, (MenuItemHandle item, ExecuteProc proc, void* clientData))           \
  X(36, void, SetComputeEnabledProc, (MenuItemHandle item, ComputeProc proc, void* clientData))    \
  X(37, void, SetComputeMarkedProc, (MenuItemHandle item, ComputeProc proc, void* clientData))     \
  X(38, void, AddMenuItem, (MenuHandle menu, MenuItemHandle item, std::uint16_t position))         \
  X(39, void, ReleaseMenuItem, (MenuItemHandle item))                                              \
  X(40, void, SetSelection, (DocView view, Atom type, void* data, Boolean highlighted))            \
  X(41, void, ClearSelection, (DocView view, Boolean highlighted))                                 \
  X(42, Atom, SelectionType, (DocView view))                                                       \
  X(43, void*, SelectionData, (DocView view))                                                      \
  X(44, DocView, OpenDocument,                                                                     \
    (PathHandle path, FileSystemHandle fileSystem, const char* title, std::uint32_t flags))        \
  X(45, void, CloseView, (DocView view))                                                           \
  X(46, std::uint32_t, BeginModal, (void* window))                                                 \
  X(47, void, EndModal, ())                                                                        \
  X(48, void, Beep, (std::uint16_t sound))                                                         \
  X(49, void, PerformAction, (ActionHandle action, DocView view))                                  \
  X(50, const char*, GetLanguage, ())                                                              \
  X(51, MenuHandle, NewMenu, (const char* title, const char* name, ExtensionId extension))         \
  X(52, MenuHandle, SubmenuOf, (MenuItemHandle item))                                              \
  X(53, MenuHandle, MenuOfItem, (MenuItemHandle item))                                             \
  X(54, std::uint16_t, MenuItemIndex, (MenuItemHandle item))                                       \
  X(55, ToolbarHandle, GetToolbar, ())                                                             \
  X(56, ToolButtonHandle, FindToolbarButton, (ToolbarHandle bar, Atom name))                       \
  X(57, ToolButtonHandle, NewToolbarButton,                                                        \
    (Atom name, IconHandle icon, std::uint32_t flags, std::uint32_t reserved))                     \
  X(58, void, AddToolbarButton,                                                                    \
    (ToolbarHandle bar, ToolButtonHandle button, Boolean before, ToolButtonHandle other))          \
  X(59, std::uint32_t, ModifierKeys, ())                                                           \
  X(60, std::uint32_t, AnswerMessage,                                                              \
    (const char* caption, const char* text, std::uint32_t flags))                                  \
  X(61, Boolean, AnnotAtPoint,                                                                     \
    (PageView view, std::int16_t x, std::int16_t y, AnnotHandle * annot))                          \
  X(62, void, ScrollTo, (PageView view, std::int16_t x, std::int16_t y))                           \
  X(63, void, PageViewBeginOp, (PageView view))                                                    \
  X(64, void, PageViewEndOp, (PageView view))                                                      \
  X(65, void, DrawNow, (WindowHandle window))                                                      \
  X(66, void, PageViewColor, (PageView view, ColourRec * color))                                   \
  X(67, void, PageViewSetColor, (PageView view, const ColourRec* color))                           \
  X(68, void, DrawRect, (PageView view, const DeviceRect* rect))                                   \
  X(69, void, DrawRectOutline, (PageView view, const DeviceRect* rect, std::uint16_t width))       \
  X(70, void, InvertRect, (PageView view, const DeviceRect* rect, std::uint16_t flag))             \
  X(71, Boolean, MouseIsDown, ())                                                                  \
  X(72, void, GetMousePosition, (PageView view, std::int16_t * x, std::int16_t * y))               \
  X(73, Boolean, TrackNewRect, (PageView view, std::int16_t x, std::int16_t y, DeviceRect * rect)) \
  X(74, Boolean, TrackRect,                                                                        \
    (PageView view, std::int16_t x, std::int16_t y, const DeviceRect* from, std::uint16_t corner,  \
     std::uint32_t reserved, DeviceRect* rect))                                                    \
  X(75, CursorHandle, GetCursor, (std::uint16_t number))                                           \
  X(76, CursorHandle, CurrentCursor, ())                                                           \
  X(77, void, SetCursor, (CursorHandle cursor))                                                    \
  X(78, void, SetActiveTool, (Atom type, Boolean persistent))                                      \
  X(79, Atom, ActiveTool, ())                                                                      \
  X(80, Atom, LastTool, ())                                                                        \
  X(81, Atom, DefaultTool, ())                                                                     \
  X(82, Boolean, ToolIsEnabled, (Atom type))                                                       \
  X(83, void, SetAppFlag, (std::uint32_t number, std::uint32_t value))                             \
  X(84, void, DoSelectionProperties, (DocView view))                                               \
  X(85, Boolean, EditAction, (ActionHandle * action, DocView view, const char* title))             \
  X(86, ModalWindowHandle, RegisterModalWindow,                                                    \
    (std::uint32_t kind, std::uint32_t reserved1, std::uint32_t reserved2, ExtensionId extension,  \
     void* window))                                                                                \
  X(87, void, UnregisterModalWindow, (ModalWindowHandle window))                                   \
  X(88, Boolean, DeliverData, (Atom type, const void* bytes, std::uint32_t length, DocView view))

QUILLON_DECLARE_TABLE(ViewerTable, QUILLON_VIEWER_TABLE)

inline constexpr std::uint32_t kViewerOpenDocumentSlot = 44;
// Hosts of before this slot have none: look at the table's slotCount first.
inline constexpr std::uint32_t kViewerAnswerMessageSlot = 60;

}  // namespace quillon
