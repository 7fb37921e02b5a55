#include "siblings/TvlUtils/ShellUtils.h"

#include "windows/Shell.h"

namespace TvlUtils::ShellUtils {

bool TvlShellExecute::Execute(
    HWND owner, const wchar_t* verb, const wchar_t* target, const wchar_t* parameters, const wchar_t* folder, int show)
{
    return Ports::Shell::Get().Execute(owner, verb, target, parameters, folder, show);
}

}   // namespace TvlUtils::ShellUtils
