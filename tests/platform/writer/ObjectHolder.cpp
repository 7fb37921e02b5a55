// Holds what processes share by name: object_holder WORK NAME, with WORK one of
//   hold     takes the mutex and stays until the event "NAME-go" is set, then ends without giving it back
//   add      adds one to the number in the file NAME, under the mutex "adders", a hundred times
//   set      sets the event, exit code 1 when there is none
#include "siblings/TvlUtils/FilePath.h"
#include "siblings/TvlUtils/InterProcess.h"
#include "windows/Modules.h"

#include <fstream>

using TvlUtils::InterProcessEvent;

namespace {
constexpr DWORD kLongest = 60000;   // milliseconds

int Hold(const TvlString& name)
{
    TvlUtils::InterProcessMutex mutex(name);
    const auto held = InterProcessEvent::openEvent(name + L"-held");
    const auto go = InterProcessEvent::openEvent(name + L"-go");
    if (!held || !go || mutex.lock() != TvlUtils::MutexState::Taken)
        return 1;
    held->set();
    // The process ends here, with the mutex.
    std::_Exit(go->wait(kLongest) ? 0 : 1);
}

int Add(const TvlString& path)
{
    TvlUtils::InterProcessMutex mutex(L"adders");
    for (int i = 0; i < 100; ++i) {
        const TvlUtils::InterProcessLock hold(mutex);
        int number = 0;
        std::ifstream(TvlUtils::SystemIO::ToFilePath(path)) >> number;
        std::ofstream(TvlUtils::SystemIO::ToFilePath(path)) << number + 1;
    }
    return 0;
}

int Set(const TvlString& name)
{
    const auto event = InterProcessEvent::openEvent(name);
    if (event)
        event->set();
    return event ? 0 : 1;
}
}   // namespace

int main()
{
    const auto arguments = Ports::Modules::Get().Arguments();
    if (arguments.size() != 2)
        return 1;
    return arguments[0] == L"hold" ? Hold(arguments[1])
        : arguments[0] == L"add"   ? Add(arguments[1])
                                   : Set(arguments[1]);
}
