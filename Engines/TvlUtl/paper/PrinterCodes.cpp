// Papers and the paper codes of Windows printers, DMPAPER_... of wingdi.h.
#include "PaperKeys.h"
#include "X64Integers.h"

#include "siblings/TvlUtils/Guid.h"

#include <iterator>

namespace {
constexpr int kInch = 1;
constexpr int kMillimetre = 2;
constexpr int kNoCode = 256;

/// What a printer code stands for: a paper of the store, or a size of its own.
struct CodeRow {
    int index;   // in the store; 0 for none
    double width = 0.0;
    double height = 0.0;
    int units = 0;   // 0 without a size
};

consteval CodeRow Store(int index) { return {index}; }
consteval CodeRow Inches(double width, double height) { return {0, width, height, kInch}; }
consteval CodeRow Millimetres(double width, double height) { return {0, width, height, kMillimetre}; }
constexpr CodeRow kNone = {0};

// Codes from 1 on. Some sizes differ from those of the codes, which documents and printers of users rely on.
constexpr CodeRow kCodes[] = {Store(3), Inches(8.5, 11), Store(5), Inches(17, 11), Store(4), Store(6), Store(7),
    Store(14), Store(15), Store(15),
    // 11
    Store(16), Store(19), Store(20), Inches(8.5, 13), Millimetres(215, 275), Inches(10, 14), Store(5), Store(3),
    Store(30), Store(31),
    // 21
    Store(32), Store(33), Store(34), Inches(17, 22), Inches(22, 34), Inches(34, 44), Store(37), Store(25), Store(23),
    Store(24),
    // 31
    Store(26), Millimetres(114, 229), Store(19), Store(20), Millimetres(176, 125), Millimetres(110, 230), Store(35),
    Inches(3.625, 6.5), Store(8), Store(38),
    // 41
    Store(39), Store(19), kNone, Inches(9, 11), Inches(10, 11), Inches(15, 11), Millimetres(220, 220), kNone, kNone,
    Inches(9, 12),
    // 51
    Inches(9, 15), Inches(11.69, 18), Inches(9.27, 12.69), Store(3), Store(15), Inches(9, 12), Millimetres(227, 356),
    Millimetres(305, 487), Inches(8.5, 12.69), Millimetres(210, 300),
    // 61
    Millimetres(148, 210), Millimetres(182, 257), Millimetres(322, 445), Millimetres(174, 235), Millimetres(210, 276),
    Store(13), Store(14), Millimetres(322, 445), Store(41), Store(17),
    // 71
    kNone, kNone, kNone, kNone, Store(3), Store(14), Store(15), Store(16), Store(21), Store(22),
    // 81
    Store(40), Store(41), Store(17)};
static_assert(std::size(kCodes) == 83);

// Codes of papers 3 to 41.
constexpr int kFirstPaper = 3;
constexpr int kPapers[] = {1, 5, 3, 6, 7, 39, kNoCode, kNoCode, kNoCode, kNoCode, 66, 8, 9, 11, 70, kNoCode, 12, 13, 79,
    80, 29, 30, 28, 31, kNoCode, kNoCode, kNoCode, 19, 20, 21, 22, 23, 37, kNoCode, 27, 40, 41, 81, 69};
static_assert(std::size(kPapers) == 39);
}   // namespace

int CPaperTypeMgr::GetDevModeFromPaper(PaperType type)
{
    const auto place = static_cast<unsigned>(type) - kFirstPaper;
    return place < std::size(kPapers) ? kPapers[place] : kNoCode;
}

PaperTypeInformation CPaperTypeMgr::GetPaperFromDevMode(int code)
{
    const CPaperTypeMgr& store = GetInstance();
    const auto place = static_cast<unsigned>(code) - 1u;
    const CodeRow row = place < std::size(kCodes) ? kCodes[place] : kNone;
    PaperTypeInformation paper;
    if (row.units != 0)
        return SetCustomPaper(row.width, row.height, row.units);
    if (row.index != 0)
        store.GetPaperInfoAt(row.index, paper);
    return paper;
}

PaperTypeInformation CPaperTypeMgr::SetCustomPaper(double width, double height, int units)
{
    PaperTypeInformation paper;
    paper.DisplayName = PaperName(kPaperCustom);
    paper.PaperGuid = TvlUtils::Guid::Generate().ToString();
    paper.Units = units;
    const double factor = units == kInch ? 254000.0 : 10000.0;
    if (units == kInch || units == kMillimetre) {
        paper.Width = ToInt32AsX64(width * factor + 0.5);
        paper.Height = ToInt32AsX64(height * factor + 0.5);
    }
    return paper;
}
