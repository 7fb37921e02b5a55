// The dialog in a terminal.
#include "LanguageWorld.h"

#include "windows/Terminal.h"

#include <deque>
#include <gmock/gmock.h>

namespace {

class FakeTerminal : public Ports::Terminal {
public:
    FakeTerminal() { SetForTests(this); }
    FakeTerminal(const FakeTerminal&) = delete;
    FakeTerminal& operator=(const FakeTerminal&) = delete;
    ~FakeTerminal() override { SetForTests(nullptr); }

    std::optional<int> ErrorColumns() const override { return 80; }
    bool UnderstandsEscapes() const override { return false; }
    bool IsInteractive() const override { return isInteractive; }
    void Write(const std::wstring& text) override { written += text; }
    std::optional<std::wstring> ReadLine() override
    {
        if (lines.empty())
            return std::nullopt;
        std::wstring line = lines.front();
        lines.pop_front();
        return line;
    }

    bool isInteractive = true;
    std::deque<std::wstring> lines;
    std::wstring written;
};

class TerminalQuestion : public LanguageWorld {
protected:
    TerminalQuestion()
    {
        Ports::Dialogs::SetForTests(nullptr);
        Install("ENU DEU FRA");
        StoreText(L"ENU");
        StoreNumber(L"QueryStartupLang", 1);
    }
    FakeTerminal terminal;
};

TEST_F(TerminalQuestion, IsAnsweredByANumberAndALetter)
{
    terminal.lines = {L"x", L"0", L"9", L"3", L"y"};
    EXPECT_EQ(Chosen(), L"FRA");
    EXPECT_EQ(StoredLanguage(), L"FRA");
    EXPECT_EQ(IGLB_UILanguage::GetInst().ReadQueryStartupLang(), 0);
    EXPECT_THAT(terminal.written,
        testing::StartsWith(L"Select Language\nPlease select the language that you would like to use:\n"
                            L"  1  Name DEU\n  2  Name ENU\n  3  Name FRA\n1-3 [2]: "));
    EXPECT_THAT(terminal.written, testing::EndsWith(L"Always use this language for me [y/N]: "));
}

TEST_F(TerminalQuestion, EmptyLinesTakeWhatIsOffered)
{
    terminal.lines = {L"", L""};
    EXPECT_EQ(Chosen(), L"ENU");
    EXPECT_EQ(IGLB_UILanguage::GetInst().ReadQueryStartupLang(), 1);
}

TEST_F(TerminalQuestion, TakesNoChoiceWithoutATerminalOrAtTheEndOfTheInput)
{
    terminal.lines = {L"3"};
    EXPECT_EQ(Chosen(), L"ENU");
    Forget();
    terminal.isInteractive = false;
    terminal.written.clear();
    EXPECT_EQ(Chosen(), L"ENU");
    EXPECT_EQ(terminal.written, L"");
    EXPECT_EQ(StoredLanguage(), L"ENU");
}

/// A dialog of which nobody wants to know anything.
struct AnyDialog : Ports::DialogProcedure {
    void OnInitDialog(Ports::DialogWindow&) override { }
    void OnOK(Ports::DialogWindow&) override { }
    void OnDestroy(Ports::DialogWindow&) override { }
};

/// A template with a title, a text, a button with another one's data, and a list.
std::vector<BYTE> Template(const std::wstring& title, const std::wstring& text)
{
    std::vector<BYTE> bytes;
    const auto words = [&](std::initializer_list<unsigned> all) {
        for (const unsigned word : all)
            for (const unsigned byte : {word & 0xFF, word >> 8})
                bytes.push_back(static_cast<BYTE>(byte));
    };
    const auto write = [&](const std::wstring& line) {
        for (const wchar_t character : line)
            words({static_cast<unsigned>(character)});
        words({0});
    };
    words({0, 0, 0, 0, 3, 0, 0, 100, 100, 0, 0});
    write(title);
    for (const unsigned kind : {0x82u, 0x80u, 0x85u}) {
        bytes.resize((bytes.size() + 3) & ~std::size_t{3});
        words({3, 0, 0, 0, 1, 1, 50, 10, kind, 0xFFFF, kind});
        write(text);
        words({4, 0xFFFF, 0xFFFF});
    }
    return bytes;
}

TEST_F(TerminalQuestion, TextsDoNotSpeakToTheTerminal)
{
    AnyDialog dialog;
    Ports::Dialogs::Get().RunModal(Template(L"a\x1b[2J", L"b\r\u009bz\n"), nullptr, dialog);
    EXPECT_THAT(terminal.written, testing::StartsWith(L"a [2J\nb  z \n"));
    EXPECT_EQ(terminal.written.find_first_of(L"\x1b\r\u009b"), std::wstring::npos);
}

TEST_F(TerminalQuestion, IsReadNoFurtherThanItsTemplateGoes)
{
    AnyDialog dialog;
    const std::vector<BYTE> whole = Template(L"title", L"text");
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        terminal.lines = {L"1", L"y"};
        Ports::Dialogs::Get().RunModal(
            {whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)}, nullptr, dialog);
    }
    for (std::size_t at = 0; at + 1 < whole.size(); ++at) {   // counts and sizes that are not borne out
        std::vector<BYTE> wrong = whole;
        wrong[at] = wrong[at + 1] = 0xFF;
        terminal.lines = {L"1", L"y"};
        Ports::Dialogs::Get().RunModal(wrong, nullptr, dialog);
    }
    EXPECT_THAT(terminal.written, testing::HasSubstr(L"title\ntext\n"));
}

}   // namespace
