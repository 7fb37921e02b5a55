#include "LanguageCaptions.h"

#include <map>

namespace {
struct Row {
    const wchar_t* language;
    const wchar_t* texts[kCaptionCount];
};

// The two kinds of Chinese share their texts on purpose. The Russian button is written in Cyrillic letters.
constexpr Row kRows[] = {
    {L"br",
        {L"Selecionar idioma", L"Selecione o idioma que deseja usar:", L"&Sempre usar este idioma para mim", L"OK"}},
    {L"cs", {L"选择语言", L"请选择要使用的语言:", L"总是使用这个语言(&A)", L"确定"}},
    {L"ct", {L"选择语言", L"请选择要使用的语言:", L"总是使用这个语言(&A)", L"确定"}},
    {L"cz", {L"Výběr jazyka", L"Vyberte jazyk, který chcete použít:", L"&Vždy používat tento jazyk", L"OK"}},
    {L"de",
        {L"Sprache auswählen", L"Wählen Sie die Sprache, die Sie verwenden möchten:",
            L"Für mich immer diese Spr&ache verwenden", L"OK"}},
    {L"en",
        {L"Select Language", L"Please select the language that you would like to use:",
            L"&Always use this language for me", L"OK"}},
    {L"es",
        {L"Seleccionar idioma", L"Seleccione el idioma que desea utilizar:", L"&Usar siempre este idioma", L"Aceptar"}},
    {L"fr",
        {L"Sélection d'une langue", L"Sélectionnez la langue à utiliser:", L"&Toujours utiliser cette langue", L"OK"}},
    {L"it", {L"Seleziona lingua", L"Seleziona la lingua da utilizzare:", L"&Seleziona sempre questa lingua", L"OK"}},
    {L"jp", {L"言語の選択", L"使用する言語を選択してください:", L"常にこの言語を使用する(&A)", L"OK"}},
    {L"nl",
        {L"Taal selecteren", L"Selecteer de taal die u wilt gebruiken:", L"&Gebruik deze taal altijd voor mij", L"OK"}},
    {L"pl", {L"Wybierz język", L"Wybierz język, którego chcesz używać:", L"&Zawsze chcę używać tego języka", L"OK"}},
    {L"ru", {L"Выбор языка", L"Выберите язык для использования:", L"&Всегда использовать этот язык", L"ОК"}},
    {L"sv", {L"Välj språk", L"Välj språket som du vill använda:", L"&Använd alltid det här språket", L"OK"}},
    {L"tr", {L"Dili Seçin", L"Lütfen kullanmak istediğiniz dili seçin:", L"&Her zaman bu dili kullan", L"OK"}},
};
constexpr const wchar_t* kEnglish = L"en";
}   // namespace

const std::vector<TvlString>& LanguageCaptions(const TvlString& language)
{
    static const auto captions = [] {
        std::map<TvlString, std::vector<TvlString>> map;
        for (const auto& [name, texts] : kRows)
            map.emplace(name, std::vector<TvlString>(std::begin(texts), std::end(texts)));
        return map;
    }();
    const auto found = captions.find(language);
    return found == captions.end() ? captions.at(kEnglish) : found->second;
}
