// The languages of the suite.
#pragma once

struct SuiteLanguage {
    const char* folder;      // of the language's files
    const wchar_t* region;   // whose settings most of its readers have
};

constexpr SuiteLanguage kLanguages[] = {{"EN", L"en-US"}, {"DE", L"de-DE"}, {"FR", L"fr-FR"}, {"ES", L"es-ES"},
    {"IT", L"it-IT"}, {"BR", L"pt-BR"}, {"NL", L"nl-NL"}, {"PL", L"pl-PL"}, {"CZ", L"cs-CZ"}, {"RU", L"ru-RU"},
    {"SV", L"sv-SE"}, {"TR", L"tr-TR"}, {"JP", L"ja-JP"}, {"CS", L"zh-CN"}, {"CT", L"zh-TW"}};
