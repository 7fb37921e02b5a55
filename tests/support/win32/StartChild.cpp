#include "StartChild.h"

#include "siblings/TvlPlatform/TextEncoding.h"

#include <memory>
#include <system_error>
#include <thread>
#include <windows.h>

namespace {
[[noreturn]] void ThrowLastError()
{
    throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), "the program can't be started");
}

struct CloseLater {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using Handle = std::unique_ptr<void, CloseLater>;

Handle OpenStream(const std::filesystem::path& path, DWORD access, DWORD disposition)
{
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    const HANDLE file = CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited, disposition,
        FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        ThrowLastError();
    return Handle(file);
}

/// Quoted so that CommandLineToArgvW gives the argument back: backslashes count only before a quotation mark.
std::wstring Quoted(const std::wstring& argument)
{
    std::wstring quoted = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t c : argument) {
        if (c == L'"')
            quoted.append(backslashes + 1, L'\\');
        backslashes = c == L'\\' ? backslashes + 1 : 0;
        quoted += c;
    }
    return quoted.append(backslashes, L'\\') + L"\"";
}

/// Variables that children of this process see, as long as it lives.
class Variables {
public:
    explicit Variables(const std::map<std::string, std::string>& variables) : m_variables(variables)
    {
        for (const auto& [name, value] : m_variables)
            SetEnvironmentVariableW(TvlPlatform::FromUtf8(name).c_str(), TvlPlatform::FromUtf8(value).c_str());
    }
    Variables(const Variables&) = delete;
    Variables& operator=(const Variables&) = delete;
    ~Variables()
    {
        for (const auto& [name, value] : m_variables)
            SetEnvironmentVariableW(TvlPlatform::FromUtf8(name).c_str(), nullptr);
    }

private:
    const std::map<std::string, std::string>& m_variables;
};
}   // namespace

int StartChild(const std::filesystem::path& program, const ChildProcess& child, const ChildStreams& streams)
{
    std::wstring line = Quoted(program.wstring());
    for (const std::string& argument : child.arguments)
        line += L" " + Quoted(TvlPlatform::FromUtf8(argument));

    const Handle input = OpenStream(streams.input, GENERIC_READ, OPEN_EXISTING);
    const Handle output = OpenStream(streams.output, GENERIC_WRITE, CREATE_ALWAYS);
    const Handle errors = OpenStream(streams.errors, GENERIC_WRITE, CREATE_ALWAYS);
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = input.get();
    start.hStdOutput = output.get();
    start.hStdError = errors.get();

    const Variables variables(child.environment);
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &process))
        ThrowLastError();
    const Handle running(process.hProcess);
    const Handle thread(process.hThread);
    if (child.killAfter) {
        std::this_thread::sleep_for(*child.killAfter);
        TerminateProcess(running.get(), kKilledExitCode);
    }
    WaitForSingleObject(running.get(), INFINITE);
    DWORD exitCode = 0;
    GetExitCodeProcess(running.get(), &exitCode);
    return static_cast<int>(exitCode);
}
