#include "CurrentUser.h"

#include "windows/Users.h"

TvlString TvlUtl::GetCurrentUserName()
{
    const Ports::Users& users = Ports::Users::Get();
    const std::wstring name = users.DisplayName();
    return name.empty() ? users.AccountName() : name;
}
