// Finds a paper by its size, stores one of the user's own, and reads which pages are to be printed.
#include "PaperTypes.h"
#include "siblings/TvlPlatform/TextEncoding.h"

#include <iostream>

int main()
{
    CPaperTypeMgr& papers = CPaperTypeMgr::GetInstance();
    PaperTypeInformation found;
    // Tenths of a micron: 297 by 210 millimetres, which is A4 turned.
    const int place = papers.FindPredefinedPaper(2970000, 2100000, found);
    std::cout << place << ": " << TvlPlatform::ToUtf8(found.DisplayName) << ", "
              << TvlPlatform::ToUtf8(TvlUtl::GetPageDimensions(found)) << '\n';

    PaperTypeInformation poster = CPaperTypeMgr::SetCustomPaper(24.0, 36.0, 1);   // inches
    poster.DisplayName = L"Poster";
    papers.AddCustomPaper(poster, true);
    papers.AddMRUItem(papers.FindCustomPaperIndex(L"Poster"));
    PaperTypeInformation last;
    papers.GetPaperInfoAt(static_cast<int>(papers.GetMRUList().front()), last);
    std::cout << "used last: " << TvlPlatform::ToUtf8(last.DisplayName) << ", "
              << TvlPlatform::ToUtf8(TvlUtl::GetPageDimensions(last)) << '\n';

    std::vector<unsigned> pages;
    TvlUtl::MakePageRangeFromString(1, 10, L"1-3,5~", pages);
    std::cout << "pages";
    for (const unsigned page : pages)
        std::cout << ' ' << page;
    std::cout << '\n';

    CPaperTypeMgr::Shutdown();   // writes the user's file
}
