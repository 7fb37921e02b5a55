// Four families in one program: a measure typed into a field, a paper for it, a list of both, and who runs it all.
#include "CpuID.h"
#include "PaperTypes.h"
#include "TvlUtlVersion.h"
#include "WEqParser.h"
#include "WGList.h"
#include "WUnit.h"

#include "siblings/TvlPlatform/TextEncoding.h"

#include <iostream>

namespace {
constexpr int kMillimetre = 2;

/// A measure as the user types it, in millimetres.
double Millimetres(const wchar_t* text)
{
    double value = 0.0;
    const int read =
        WUnit::GetDefaultWUnit().StringToValue(kMillimetre, text, value, kTokensAll | kTokensUnits, DRG::Degrees);
    return read == 1 ? value : -1.0;
}
}   // namespace

int main()
{
    // Measures.
    const double width = Millimetres(L"8in + 6.8mm");
    const double height = Millimetres(L"29.7 cm");
    std::cout << width << " x " << height << " mm\n";

    // Papers: lengths count in tenths of a micron.
    PaperTypeInformation paper;
    const int place = CPaperTypeMgr::GetInstance().FindPredefinedPaper(
        static_cast<int>(width * 10000 + 0.5), static_cast<int>(height * 10000 + 0.5), paper);
    std::cout << "paper " << place << ": " << TvlPlatform::ToUtf8(paper.DisplayName.Std()) << "\n";

    // Lists.
    WGList sides;
    sides.InsertEnd(&width, sizeof width);
    sides.InsertEnd(&height, sizeof height);
    std::cout << sides.ListSize() << " sides, the second of " << sides.Size(1) << " bytes\n";

    // The processor.
    std::cout << "popcnt " << (CpuID::GetInstance().HasPOPCNT() ? "yes" : "no") << "\n";
    std::cout << "TvlUtl " << TvlUtlVersion() << "\n";
    return place == kPaperA4 && sides.ListSize() == 2 ? 0 : 1;
}
