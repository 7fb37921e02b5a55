// A registry that takes every call and does nothing, unless a test says more.
#pragma once

#include "siblings/TvlPref/IRegistry.h"

#include <gmock/gmock.h>

class MockRegistry : public PREFUTILS::IRegistry {
public:
    MockRegistry() { SetForTests(this); }
    MockRegistry(const MockRegistry&) = delete;
    MockRegistry& operator=(const MockRegistry&) = delete;
    ~MockRegistry() override { SetForTests(nullptr); }

    MOCK_METHOD(LONG, RegOpenKeyExW, (HKEY, const wchar_t*, DWORD, DWORD, HKEY*), (override));
    MOCK_METHOD(LONG, RegCloseKey, (HKEY), (override));
    MOCK_METHOD(LONG, RegCreateKeyExW,
        (HKEY, const wchar_t*, DWORD, wchar_t*, DWORD, DWORD, const void*, HKEY*, DWORD*), (override));
    MOCK_METHOD(LONG, RegDeleteKeyW, (HKEY, const wchar_t*), (override));
    MOCK_METHOD(LONG, RegEnumKeyExW, (HKEY, DWORD, wchar_t*, DWORD*, DWORD*, wchar_t*, DWORD*, void*), (override));
    MOCK_METHOD(LONG, RegEnumValueW, (HKEY, DWORD, wchar_t*, DWORD*, DWORD*, DWORD*, BYTE*, DWORD*), (override));
    MOCK_METHOD(LONG, RegSetValueExW, (HKEY, const wchar_t*, DWORD, DWORD, const BYTE*, DWORD), (override));
    MOCK_METHOD(LONG, RegQueryValueExW, (HKEY, const wchar_t*, DWORD*, DWORD*, BYTE*, DWORD*), (override));
    MOCK_METHOD(LONG, RegDeleteValueW, (HKEY, const wchar_t*), (override));
    MOCK_METHOD(LONG, BeginBatch, (), (override));
    MOCK_METHOD(LONG, EndBatch, (bool), (override));
};
