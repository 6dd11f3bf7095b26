// The words that a host and its plug-ins exchange. Everything here is plain data: nothing owns
// anything, and every handle stays the property of the side that made it unless an operation's
// comment says otherwise.
#pragma once

#include <cstdint>

namespace quillon {

// An interned name. The host owns all atoms; they live as long as the process.
using Atom = std::uint16_t;
inline constexpr Atom kNoAtom = 0xFFFF;

// Signed 16.16 fixed point. Lengths and coordinates are points (1/72 inch) in user space.
using Fixed = std::int32_t;
inline constexpr Fixed kFixedOne = 0x10000;

// A truth value at the seam: 0 is false, anything else is true; the sides write 1.
using Boolean = std::uint16_t;

using FailureCode = std::int32_t;
using ExtensionId = std::uint32_t;

// A routine as it crosses the seam. The side that calls it knows the real signature from the
// record, slot or registration it came with.
using Callback = void (*)();

// A PDF object of one document. {0, 0} is the null object; other values are the host's business
// and are compared with Objects.Equal only.
struct ObjectHandle {
  std::uint32_t first;
  std::uint32_t second;
};
inline constexpr ObjectHandle kNullObject{0, 0};

// An annotation: wraps the annotation's dictionary. {0, 0} is no annotation.
struct AnnotHandle {
  std::uint32_t first;
  std::uint32_t second;
};
inline constexpr AnnotHandle kNoAnnot{0, 0};

// Opaque words. A null pointer means none.
using ObjectDoc = struct ObjectDocOpaque*;  // an object-layer document (PDF or FDF)
using DocHandle = struct DocOpaque*;        // a document with pages
using PageHandle = struct PageOpaque*;      // acquired, released by whoever acquired it
using ActionHandle = struct ActionOpaque*;  // an action dictionary or destination
using FileSpecHandle = struct FileSpecOpaque*;
using DocView = struct DocViewOpaque*;    // a view of a document
using PageView = struct PageViewOpaque*;  // the page area of a view
using PathHandle = struct PathOpaque*;
using FileSystemHandle = struct FileSystemOpaque*;
using FileHandle = struct FileOpaque*;
using StreamHandle = struct StreamOpaque*;
using TableServer = struct TableServerOpaque*;
using TableHandle = struct TableOpaque*;
using MenuHandle = struct MenuOpaque*;
using MenuItemHandle = struct MenuItemOpaque*;
using ToolbarHandle = struct ToolbarOpaque*;
using ToolButtonHandle = struct ToolButtonOpaque*;
using CursorHandle = struct CursorOpaque*;
using ModalWindowHandle = struct ModalWindowOpaque*;
using IconHandle = struct IconOpaque*;      // a platform bitmap
using WindowHandle = struct WindowOpaque*;  // a window of the viewer
using PlatformWindow = void*;               // the platform's own window handle

// Kinds of PDF objects, as Objects.TypeOf answers them.
enum class ObjectKind : std::uint16_t {
  kNull = 0,
  kInteger = 1,
  kFixed = 2,
  kBoolean = 3,
  kName = 4,
  kString = 5,
  kDict = 6,
  kArray = 7,
  kStream = 8,
};

struct FixedPoint {
  Fixed x;
  Fixed y;
};

// A rectangle in user or form space; top is above bottom in a normal one.
struct FixedRect {
  Fixed left;
  Fixed top;
  Fixed right;
  Fixed bottom;
};

// A rectangle in device units of a page view; y grows downwards.
struct DeviceRect {
  std::int16_t left;
  std::int16_t top;
  std::int16_t right;
  std::int16_t bottom;
};

// [a b c d e f] of ISO 32000-1, 8.3.3.
struct FixedMatrix {
  Fixed a;
  Fixed b;
  Fixed c;
  Fixed d;
  Fixed e;
  Fixed f;
};

// A colour: space 0 grey, 1 RGB, 2 CMYK, 255 none; components in the order of the space, 0 to 1.
struct ColourRec {
  std::int16_t space;
  Fixed c1;
  Fixed c2;
  Fixed c3;
  Fixed c4;
};

// Versions of the records and tables, as the entry handshake names them.
inline constexpr std::uint32_t kHandshakeVersion = 0x20000;
inline constexpr std::uint32_t kSetupVersion = 0x20000;
inline constexpr std::uint32_t kCoreVersion = 0x20000;
inline constexpr std::uint32_t kSupportVersion = 0x20002;
inline constexpr std::uint32_t kObjectsVersion = 0x20002;
inline constexpr std::uint32_t kDocumentVersion = 0x20003;
inline constexpr std::uint32_t kViewerVersion = 0x20003;
inline constexpr std::uint32_t kPlatformVersion = 0x20002;
inline constexpr std::uint32_t kOldestTableVersion = 0x20000;

// The names under which Core.GetTable knows the host's tables.
inline constexpr const char* kSupportTableName = "QuillSupport";
inline constexpr const char* kObjectsTableName = "Cel";
inline constexpr const char* kDocumentTableName = "DocModel";
inline constexpr const char* kViewerTableName = "QuillView";
inline constexpr const char* kPlatformTableName = "Plat";

}  // namespace quillon
