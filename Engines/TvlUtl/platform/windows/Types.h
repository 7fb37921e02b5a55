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
/// @{
/// Marks what a module exports, and what it takes from another module.
#define TVL_EXPORT __attribute__((visibility("default")))
#define TVL_IMPORT __attribute__((visibility("default")))
/// @}

/// @{
/// The integer that Windows calls so: BYTE has 8 bits, WORD 16, all others 32; LONG alone is signed.
using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using DWORD = std::uint32_t;
using UINT = std::uint32_t;
/// @}
/// @{
/// A handle as Windows declares it: nothing is behind the pointer for callers.
using HKEY = struct HKEY__*;
using HWND = struct HWND__*;
using HINSTANCE = struct HINSTANCE__*;
using HMODULE = HINSTANCE;
/// @}

/// A globally unique identifier, 16 bytes in Windows' layout.
struct GUID {
    std::uint32_t Data1;     // the first 4 bytes as one number
    std::uint16_t Data2;     // the next 2
    std::uint16_t Data3;     // the next 2
    std::uint8_t Data4[8];   // the last 8, one by one
};
#endif

/// @{
/// Number of a locale or of a language, as Windows counts them.
using LCID = DWORD;
using LANGID = WORD;
/// @}

static_assert(sizeof(LONG) == 4 && sizeof(ULONG) == 4 && sizeof(DWORD) == 4 && sizeof(GUID) == 16);
