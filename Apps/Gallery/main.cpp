// The gallery: the library's families in one window, for those who build applications on it.
//
//   TvlGallery [PAGE]    begins with the page of this name, such as "papers"
#include "MainWindow.h"
#include "windows/Modules.h"

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int)
{
    const auto arguments = Ports::Modules::Get().Arguments();
    const int page = arguments.empty() ? 0 : PageNumber(arguments.front());
    if (page < 0) {
        const std::wstring problem = L"There is no page \"" + arguments.front() + L"\".";
        MessageBoxW(nullptr, problem.c_str(), L"TvlUtl Gallery", MB_ICONERROR);
        return 1;
    }
    MainWindow(page).Run();
    return 0;
}
