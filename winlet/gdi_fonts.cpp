#include "winlet/gdi_fonts.h"

#include <cstdint>
#include <cstring>
#include <limits>
#include <map>
#include <memory>
#include <set>

#include "winlet/windows.h"

namespace {

constexpr int kUnitsAnInch = 96;

std::map<HGDIOBJ, std::unique_ptr<LOGFONTA>>& Fonts() {
  static std::map<HGDIOBJ, std::unique_ptr<LOGFONTA>> fonts;
  return fonts;
}

struct DeviceContexts {
  std::set<HDC> live;
  std::uintptr_t lastNumber = 0;
};

DeviceContexts& Contexts() {
  static DeviceContexts contexts;
  return contexts;
}

BYTE Byte(DWORD value) { return static_cast<BYTE>(value); }

}  // namespace

HFONT CreateFontA(int height, int width, int escapement, int orientation, int weight, DWORD italic,
                  DWORD underline, DWORD strikeOut, DWORD charSet, DWORD outPrecision,
                  DWORD clipPrecision, DWORD quality, DWORD pitchAndFamily, LPCSTR faceName) {
  LOGFONTA font{};
  font.lfHeight = height;
  font.lfWidth = width;
  font.lfEscapement = escapement;
  font.lfOrientation = orientation;
  font.lfWeight = weight;
  font.lfItalic = Byte(italic);
  font.lfUnderline = Byte(underline);
  font.lfStrikeOut = Byte(strikeOut);
  font.lfCharSet = Byte(charSet);
  font.lfOutPrecision = Byte(outPrecision);
  font.lfClipPrecision = Byte(clipPrecision);
  font.lfQuality = Byte(quality);
  font.lfPitchAndFamily = Byte(pitchAndFamily);
  if (faceName != nullptr) std::strncpy(font.lfFaceName, faceName, LF_FACESIZE - 1);
  return CreateFontIndirectA(&font);
}

HFONT CreateFontIndirectA(const LOGFONTA* font) {
  if (font == nullptr) return nullptr;
  auto made = std::make_unique<LOGFONTA>(*font);
  const auto handle = reinterpret_cast<HFONT>(made.get());
  Fonts().emplace(handle, std::move(made));
  return handle;
}

int GetObjectA(HGDIOBJ object, int size, LPVOID buffer) {
  const auto found = Fonts().find(object);
  if (found == Fonts().end()) return 0;
  constexpr int whole = sizeof(LOGFONTA);
  if (buffer == nullptr) return whole;
  const int copied = size < whole ? size : whole;
  if (copied <= 0) return 0;
  std::memcpy(buffer, found->second.get(), static_cast<std::size_t>(copied));
  return copied;
}

BOOL DeleteObject(HGDIOBJ object) { return Fonts().erase(object) == 1 ? TRUE : FALSE; }

HDC GetDC(HWND) {
  DeviceContexts& contexts = Contexts();
  const auto handle = reinterpret_cast<HDC>(++contexts.lastNumber);
  contexts.live.insert(handle);
  return handle;
}

int ReleaseDC(HWND, HDC context) { return static_cast<int>(Contexts().live.erase(context)); }

int GetDeviceCaps(HDC context, int index) {
  if (!Contexts().live.contains(context)) return 0;
  switch (index) {
    case HORZRES:
      return kWinletScreenWidth;
    case VERTRES:
      return kWinletScreenHeight;
    case LOGPIXELSX:
    case LOGPIXELSY:
      return kUnitsAnInch;
    default:
      return 0;
  }
}

int MulDiv(int number, int numerator, int denominator) {
  if (denominator == 0) return -1;
  const std::int64_t product = std::int64_t{number} * numerator;
  const std::int64_t divisor = denominator;
  const bool negative = (product < 0) != (divisor < 0);
  const std::int64_t size = product < 0 ? -product : product;
  const std::int64_t by = divisor < 0 ? -divisor : divisor;
  const std::int64_t rounded = (size + by / 2) / by;
  if (rounded > std::numeric_limits<int>::max()) return -1;
  return static_cast<int>(negative ? -rounded : rounded);
}

namespace winlet {

std::size_t LiveGdiObjects() { return Fonts().size(); }

std::size_t LiveDeviceContexts() { return Contexts().live.size(); }

}  // namespace winlet
