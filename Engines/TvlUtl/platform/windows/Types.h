// The Windows names of types, with their Windows widths on every target.
#pragma once

#include <cstdint>

#ifdef _WIN32
#include <guiddef.h>

#define TVL_EXPORT __declspec(dllexport)
#define TVL_IMPORT __declspec(dllimport)
#define TVL_LOADER_CALLS_DLLMAIN

using BYTE = unsigned char;
using WORD = unsigned short;
using LONG = long;
using ULONG = unsigned long;
using DWORD = unsigned long;
using UINT = unsigned int;
using HKEY = struct HKEY__*;
using HWND = struct HWND__*;
using HINSTANCE = struct HINSTANCE__*;
using HMODULE = HINSTANCE;
#else
#define TVL_EXPORT __attribute__((visibility("default")))
#define TVL_IMPORT __attribute__((visibility("default")))

using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using DWORD = std::uint32_t;
using UINT = std::uint32_t;
using HKEY = struct HKEY__*;
using HWND = struct HWND__*;
using HINSTANCE = struct HINSTANCE__*;
using HMODULE = HINSTANCE;

struct GUID {
    std::uint32_t Data1;
    std::uint16_t Data2;
    std::uint16_t Data3;
    std::uint8_t Data4[8];
};
#endif

using LCID = DWORD;
using LANGID = WORD;

static_assert(sizeof(LONG) == 4 && sizeof(ULONG) == 4 && sizeof(DWORD) == 4 && sizeof(GUID) == 16);
