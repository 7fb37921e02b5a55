// The network through WinINet.
#include "Windows/SystemPorts.h"

#include "siblings/TvlUtils/LogMessage.h"

#include <vector>
#include <windows.h>
#include <wininet.h>

namespace Ports {

namespace {
constexpr DWORD kHttpDecoding = 65;              // INTERNET_OPTION_HTTP_DECODING
constexpr DWORD kMostMilliseconds = 60 * 1000;   // without a connection, and then without a byte of the answer
constexpr DWORD kTimeouts[] = {INTERNET_OPTION_CONNECT_TIMEOUT, INTERNET_OPTION_SEND_TIMEOUT,
    INTERNET_OPTION_RECEIVE_TIMEOUT, INTERNET_OPTION_DATA_SEND_TIMEOUT, INTERNET_OPTION_DATA_RECEIVE_TIMEOUT};

void LogEnd(DWORD error)
{
    // The address may hold what is nobody's business.
    TvlUtils::LogMessage(
        TvlUtils::LogLevel::Warning, TvlString().Format(L"A download ended early: WinINet's error %u", error));
}

struct HandleCloser {
    void operator()(void* handle) const { InternetCloseHandle(handle); }
};
using Handle = std::unique_ptr<void, HandleCloser>;

class WinInetFile final : public InternetFile {
public:
    WinInetFile(Handle session, Handle file) : m_session(std::move(session)), m_file(std::move(file)) { }

    std::optional<std::size_t> Read(void* data, std::size_t size) override
    {
        DWORD read = 0;
        if (!InternetReadFile(m_file.get(), data, static_cast<DWORD>(size), &read)) {
            LogEnd(GetLastError());
            return std::nullopt;
        }
        return read;
    }

private:
    Handle m_session;   // closed behind the file
    Handle m_file;
};

class Win32Internet final : public Internet {
public:
    bool IsConnected() const override
    {
        DWORD flags = 0;
        return InternetGetConnectedState(&flags, 0);
    }

    bool IsUrl(const std::wstring& url) const override
    {
        std::vector<wchar_t> scheme(url.size() + 1);
        std::vector<wchar_t> host(url.size() + 1);
        std::vector<wchar_t> path(url.size() + 1);
        URL_COMPONENTSW parts{};
        parts.dwStructSize = sizeof parts;
        parts.lpszScheme = scheme.data();
        parts.lpszHostName = host.data();
        parts.lpszUrlPath = path.data();
        parts.dwSchemeLength = parts.dwHostNameLength = parts.dwUrlPathLength = static_cast<DWORD>(scheme.size());
        return InternetCrackUrlW(url.c_str(), static_cast<DWORD>(url.size()), ICU_DECODE, &parts);
    }

    std::unique_ptr<InternetFile> OpenUrl(
        const std::wstring& agent, const std::wstring& url, const std::wstring& headers) override
    {
        Handle session(InternetOpenW(agent.c_str(), INTERNET_OPEN_TYPE_DIRECT, nullptr, nullptr, 0));
        if (!session)
            return nullptr;
        DWORD enable = 1;
        InternetSetOptionW(session.get(), kHttpDecoding, &enable, sizeof enable);
        DWORD milliseconds = kMostMilliseconds;
        for (const DWORD timeout : kTimeouts)
            InternetSetOptionW(session.get(), timeout, &milliseconds, sizeof milliseconds);
        Handle file(InternetOpenUrlW(session.get(), url.c_str(), headers.c_str(), static_cast<DWORD>(headers.size()),
            INTERNET_FLAG_RELOAD | INTERNET_FLAG_NO_AUTH, 0));
        if (!file) {
            LogEnd(GetLastError());
            return nullptr;
        }
        return std::make_unique<WinInetFile>(std::move(session), std::move(file));
    }
};
}   // namespace

template <>
Internet& SystemPort<Internet>()
{
    static Win32Internet internet;
    return internet;
}

}   // namespace Ports
