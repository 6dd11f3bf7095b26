// Fonts and the screen that they are made for.
#pragma once

#include <cstddef>

#include "winlet/types.h"

inline constexpr int LF_FACESIZE = 32;

struct LOGFONTA {
  LONG lfHeight;
  LONG lfWidth;
  LONG lfEscapement;
  LONG lfOrientation;
  LONG lfWeight;
  BYTE lfItalic;
  BYTE lfUnderline;
  BYTE lfStrikeOut;
  BYTE lfCharSet;
  BYTE lfOutPrecision;
  BYTE lfClipPrecision;
  BYTE lfQuality;
  BYTE lfPitchAndFamily;
  char lfFaceName[LF_FACESIZE];
};

#define FW_DONTCARE 0
#define FW_BOLD 700
#define ANSI_CHARSET 0
#define OUT_DEFAULT_PRECIS 0
#define CLIP_DEFAULT_PRECIS 0
#define DEFAULT_QUALITY 0
#define VARIABLE_PITCH 2
#define FF_SWISS 0x20
#define HORZRES 8
#define VERTRES 10
#define LOGPIXELSX 88
#define LOGPIXELSY 90

// Fonts. A face is not looked for before something is drawn with it.
HFONT CreateFontA(int height, int width, int escapement, int orientation, int weight, DWORD italic,
                  DWORD underline, DWORD strikeOut, DWORD charSet, DWORD outPrecision,
                  DWORD clipPrecision, DWORD quality, DWORD pitchAndFamily, LPCSTR faceName);
HFONT CreateFontIndirectA(const LOGFONTA* font);
// Knows fonts only. Without a buffer, the bytes there are.
int GetObjectA(HGDIOBJ object, int size, LPVOID buffer);
BOOL DeleteObject(HGDIOBJ object);

// The screen. Every window's device context is the same: 96 units an inch. Other capabilities than
// those above are 0.
HDC GetDC(HWND window);
int ReleaseDC(HWND window, HDC context);
int GetDeviceCaps(HDC context, int index);

// number * numerator / denominator, rounded to nearest with halves away from zero; -1 when the
// denominator is 0 or the result does not fit.
int MulDiv(int number, int numerator, int denominator);

namespace winlet {

// Made and not yet given back; tests look for leaks with them.
std::size_t LiveGdiObjects();
std::size_t LiveDeviceContexts();

}  // namespace winlet
