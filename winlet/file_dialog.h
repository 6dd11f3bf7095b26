// The platform's choosers of files.
#pragma once

#include "winlet/types.h"

using LPOFNHOOKPROC = UINT_PTR (*)(HWND dialog, UINT message, WPARAM word, LPARAM extra);

// What a chooser is asked for; the layout is that of Windows.
struct OPENFILENAMEA {
  DWORD lStructSize;
  HWND hwndOwner;
  HINSTANCE hInstance;
  LPCSTR
  lpstrFilter;  // descriptions and patterns in turn, each ended by a NUL, one more at the end
  LPSTR lpstrCustomFilter;
  DWORD nMaxCustFilter;
  DWORD nFilterIndex;  // counted from 1
  LPSTR lpstrFile;     // the name offered, and the path chosen
  DWORD nMaxFile;
  LPSTR lpstrFileTitle;
  DWORD nMaxFileTitle;
  LPCSTR lpstrInitialDir;
  LPCSTR lpstrTitle;
  DWORD Flags;
  WORD nFileOffset;
  WORD nFileExtension;
  LPCSTR lpstrDefExt;
  LPARAM lCustData;
  LPOFNHOOKPROC lpfnHook;
  LPCSTR lpTemplateName;
  void* pvReserved;
  DWORD dwReserved;
  DWORD FlagsEx;
};

#define OFN_OVERWRITEPROMPT 0x2u
#define OFN_HIDEREADONLY 0x4u
#define OFN_ENABLEHOOK 0x20u
#define OFN_PATHMUSTEXIST 0x800u
#define OFN_FILEMUSTEXIST 0x1000u
#define OFN_EXPLORER 0x80000u

// This layer has no screen to show a chooser on: the answer is that of a user who cancels, and what
// the record holds stays as it is.
BOOL GetOpenFileNameA(OPENFILENAMEA* question);
BOOL GetSaveFileNameA(OPENFILENAMEA* question);
