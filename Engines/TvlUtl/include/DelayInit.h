// Work that other modules register to be run at the application's start and stop. The host runs it; this library runs
// no hook of its own accord.
#pragma once

#include "TvlUtlApi.h"
#include "siblings/TvlUtils/Delegate.h"

/// When a hook runs.
enum EHookStage : int {
    eHookStageStartup = 0,    ///< the application starts
    eHookStageShutdown = 1,   ///< the application stops
};

/// Keeps the hooks. One thread: no call takes a lock, and a hook must not add or remove hooks while hooks run.
class TVLUTL_API DelayInitRegistrar {
public:
    /// What a hook gives is not read.
    using Delegate = TvlUtils::Delegate<bool (*)()>;

    /// Sort key of hooks; other values serve as well. Early hooks form a group of their own.
    enum EPriority : int {
        eEarly = 0,     ///< a group of their own, which the host runs apart
        eDefault = 2,   ///< where nothing else is asked for
    };

    /// The registrar of the process, made on first use.
    static DelayInitRegistrar& GetInst();

    /// Appends a copy of a delegate to the hooks of a stage and priority.
    virtual void AddHook(EHookStage stage, const Delegate& hook, EPriority priority) = 0;
    /// Removes the first equal delegate of every priority; true when one was found.
    virtual bool RemoveHook(EHookStage stage, const Delegate& hook) = 0;
    /// RunHooks of the start, from the first hook to the last.
    virtual void RunStartupHooks(bool earlyGroup) = 0;
    /// RunHooks of the stop, backwards.
    virtual void RunShutdownHooks(bool earlyGroup) = 0;
    /// Calls the hooks of the early group or of all other priorities: by ascending priority from the first registered
    /// to the last, or all of it backwards. Nothing is removed: a second run calls the same hooks again. Always true.
    virtual bool RunHooks(EHookStage stage, bool reverse, bool earlyGroup) = 0;

protected:
    ~DelayInitRegistrar() = default;
};

/// Base of an object that is told of start and stop. Registers itself for both as long as it lives; copies register
/// nothing.
class TVLUTL_API DelayInitBase {
public:
    /// Registers the object for the start and the stop, both under this priority.
    explicit DelayInitBase(DelayInitRegistrar::EPriority priority = DelayInitRegistrar::eDefault);
    /// @{
    /// Copies register nothing; the object that is assigned to stays registered as it was.
    DelayInitBase(const DelayInitBase&);
    DelayInitBase& operator=(const DelayInitBase&);
    /// @}
    ~DelayInitBase();

    /// Runs at the start. The result is not read.
    virtual bool DelayedStartup() = 0;
    /// Runs at the stop. The result is not read.
    virtual bool DelayedShutdown() = 0;
};

/// A delegate that runs at the start, as long as the object lives. A copy registers nothing; its end takes the
/// registration away all the same, since hooks are removed by value.
class TVLUTL_API StartupHook {
public:
    /// Registers a copy of the delegate for the start.
    StartupHook(const DelayInitRegistrar::Delegate& hook, DelayInitRegistrar::EPriority priority);
    /// @{
    /// Copies the delegate and registers nothing.
    StartupHook(const StartupHook&);
    StartupHook& operator=(const StartupHook&);
    /// @}
    ~StartupHook();

private:
    DelayInitRegistrar::Delegate m_hook;
};

/// A delegate that runs at the stop; otherwise as StartupHook.
class TVLUTL_API ShutdownHook {
public:
    /// Registers a copy of the delegate for the stop.
    ShutdownHook(const DelayInitRegistrar::Delegate& hook, DelayInitRegistrar::EPriority priority);
    /// @{
    /// Copies the delegate and registers nothing.
    ShutdownHook(const ShutdownHook&);
    ShutdownHook& operator=(const ShutdownHook&);
    /// @}
    ~ShutdownHook();

private:
    DelayInitRegistrar::Delegate m_hook;
};

/// Delegates for both; otherwise as StartupHook. Moving copies.
class TVLUTL_API InitHook {
public:
    /// Registers copies of both delegates under one priority.
    InitHook(const DelayInitRegistrar::Delegate& startup, const DelayInitRegistrar::Delegate& shutdown,
        DelayInitRegistrar::EPriority priority);
    /// @{
    /// Copies both delegates and registers nothing.
    InitHook(const InitHook&);
    InitHook(InitHook&&);
    InitHook& operator=(const InitHook&);
    InitHook& operator=(InitHook&&);
    /// @}
    ~InitHook();

private:
    DelayInitRegistrar::Delegate m_startup;
    DelayInitRegistrar::Delegate m_shutdown;
};
