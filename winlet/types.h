// The words of Win32, in the sizes that they have on Windows.
#pragma once

#include <cstdint>

using BOOL = int;
using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using INT = int;
using UINT = unsigned int;
using LONG = std::int32_t;
using UINT_PTR = std::uintptr_t;
using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;
using LRESULT = std::intptr_t;
using LPSTR = char*;
using LPCSTR = const char*;
using LPVOID = void*;

using HANDLE = void*;
using HGLOBAL = HANDLE;
using HGDIOBJ = void*;
using HINSTANCE = struct HINSTANCE__*;
using HMODULE = HINSTANCE;
using HRSRC = struct HRSRC__*;
using HWND = struct HWND__*;
using HDC = struct HDC__*;
using HFONT = struct HFONT__*;

// The names of Win32 are what they are, macros included.
#define TRUE 1
#define FALSE 0
#define WINAPI
#define CALLBACK
