// The user that the process runs for.
#pragma once

#include "siblings/SiblingsApi.h"

#include <string>

namespace Ports {

/// Names of the user that the process runs for.
class TVLSIBLINGS_API Users {
public:
    /// The system's, or the one that stands in for it.
    static Users& Get();
    /// Replaces the port; null restores the system's. The caller keeps ownership.
    static void SetForTests(Users*);

    virtual ~Users() = default;
    /// GetUserNameExW of "Secur32.dll" with the format of display names, asked for its size first; empty when there is
    /// none. On linux the full name of the user's entry in the password database.
    virtual std::wstring DisplayName() const = 0;
    /// GetUserNameW: the name that the user logs in with, of 256 characters at most; empty when the system does not tell.
    virtual std::wstring AccountName() const = 0;
};

}   // namespace Ports
