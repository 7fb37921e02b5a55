// Work at the application's start and stop, and an object that exists once.
#include "DelayInit.h"
#include "TvlUtlVersion.h"
#include "siblings/TvlUtils/Singleton.h"

#include <iostream>

namespace {

/// One object for the process, made by the first call of GetInstance.
class Cache : public TvlUtils::Singleton<Cache, 0> {
public:
    Cache() { std::cout << "cache made\n"; }
    ~Cache() { std::cout << "cache gone\n"; }
    int entries = 0;
};

bool OpenCache()
{
    ++Cache::GetInstance().entries;
    return true;
}

bool CloseCache()
{
    Cache::ReleaseInstance(true);
    return true;
}

/// Is told of start and stop as long as it lives.
class Palette : public DelayInitBase {
public:
    Palette() : DelayInitBase(DelayInitRegistrar::eDefault) { }
    bool DelayedStartup() override { return static_cast<bool>(std::cout << "palette starts\n"); }
    bool DelayedShutdown() override { return static_cast<bool>(std::cout << "palette stops\n"); }
};

}   // namespace

int main()
{
    using Hook = DelayInitRegistrar::Delegate;
    const InitHook cache(Hook::To<OpenCache>(), Hook::To<CloseCache>(), DelayInitRegistrar::eEarly);
    const Palette palette;

    // The host decides when hooks run: the early group first, at the stop the other way round.
    DelayInitRegistrar& hooks = DelayInitRegistrar::GetInst();
    hooks.RunStartupHooks(true);
    hooks.RunStartupHooks(false);
    std::cout << "running, cache entries: " << Cache::GetInstance().entries << '\n';
    hooks.RunShutdownHooks(false);
    hooks.RunShutdownHooks(true);
}
