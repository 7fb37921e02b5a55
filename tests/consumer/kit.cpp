// A test of an application's own code, on a machine that is all made up.
#include "FatalError.h"
#include "TvlTestKit/FakeLocale.h"
#include "TvlTestKit/FakeWindowing.h"
#include "TvlTestKit/TemporarySuite.h"
#include "TvlTestKit/UserWorld.h"
#include "Units.h"
#include "WUTLRegistry.h"

#include "siblings/TvlResources/Resources.h"

#include <iostream>

namespace {
int failures = 0;

void Expect(bool holds, const char* what)
{
    std::cout << (holds ? "ok      " : "FAILED  ") << what << "\n";
    failures += holds ? 0 : 1;
}
}   // namespace

int main()
{
    TvlTestKit::UserWorld user;   // folders of its own, an empty registry
    TvlTestKit::TemporarySuite suite;
    TvlTestKit::FakeLocale locale;
    TvlTestKit::FakeWindowing windows;

    locale.settings = TvlTestKit::FakeLocale::German();
    UNITInitialize();
    wchar_t separator[4];
    UNITGetSeparatorString(2, separator);
    Expect(separator[0] == L',', "measures follow the settings of the test's locale");

    suite.Write("Languages/EN/Data/Texts/own.json", R"({"version": 1, "texts": {"my-key": "mine"}})");
    Expect(Framework::Resources::GetString(L"my-key") == L"mine", "texts come from the test's suite");

    UIMSG_FatalError(3, "kit.cpp", 42, L"Consumer", 0);
    Expect(windows.boxes.size() == 1, "boxes are recorded, and nobody has to press a button");

    ULONG depth = 0;
    WUTLRegistry(L"HKEY_CURRENT_USER\\Software\\Consumer", WUTLRegistry::kReadWriteAccess, 1);
    WUTLRegistry key(L"HKEY_CURRENT_USER\\Software\\Consumer");
    key.SetValue(L"Depth", 7);
    Expect(key.GetValue(L"Depth", depth) == 0 && depth == 7, "the registry is the test's own, and works");
    return failures;
}
