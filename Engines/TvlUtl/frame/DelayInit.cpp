#include "DelayInitRegistrarImpl.h"

#include <algorithm>

namespace {
using Registrar = DelayInitRegistrar;

Registrar::Delegate StartupOf(DelayInitBase* object)
{
    return Registrar::Delegate::To<&DelayInitBase::DelayedStartup>(object);
}
Registrar::Delegate ShutdownOf(DelayInitBase* object)
{
    return Registrar::Delegate::To<&DelayInitBase::DelayedShutdown>(object);
}
}   // namespace

DelayInitRegistrar& DelayInitRegistrar::GetInst() { return DelayInitRegistrarImpl::GetInstance(); }

void DelayInitRegistrarImpl::AddHook(EHookStage stage, const Delegate& hook, EPriority priority)
{
    m_hooks[stage][priority].push_back(hook);
}

bool DelayInitRegistrarImpl::RemoveHook(EHookStage stage, const Delegate& hook)
{
    bool removed = false;
    for (auto& [priority, hooks] : m_hooks[stage]) {
        const auto found = std::find(hooks.begin(), hooks.end(), hook);
        if (found == hooks.end())
            continue;
        hooks.erase(found);
        removed = true;
    }
    return removed;
}

void DelayInitRegistrarImpl::RunStartupHooks(bool earlyGroup) { RunHooks(eHookStageStartup, false, earlyGroup); }
void DelayInitRegistrarImpl::RunShutdownHooks(bool earlyGroup) { RunHooks(eHookStageShutdown, true, earlyGroup); }

bool DelayInitRegistrarImpl::RunHooks(EHookStage stage, bool reverse, bool earlyGroup)
{
    const auto isSelected = [earlyGroup](const auto& row) { return (row.first == eEarly) == earlyGroup; };
    const auto call = [](const Delegate& hook) { hook(); };
    const auto& priorities = m_hooks[stage];
    if (reverse) {
        for (auto row = priorities.rbegin(); row != priorities.rend(); ++row)
            if (isSelected(*row))
                std::for_each(row->second.rbegin(), row->second.rend(), call);
    } else {
        for (const auto& row : priorities)
            if (isSelected(row))
                std::for_each(row.second.begin(), row.second.end(), call);
    }
    return true;
}

DelayInitBase::DelayInitBase(Registrar::EPriority priority)
{
    Registrar::GetInst().AddHook(eHookStageStartup, StartupOf(this), priority);
    Registrar::GetInst().AddHook(eHookStageShutdown, ShutdownOf(this), priority);
}

// The delegates hold an object's own address, so that a copy has none.
DelayInitBase::DelayInitBase(const DelayInitBase&) { }
DelayInitBase& DelayInitBase::operator=(const DelayInitBase&) { return *this; }

DelayInitBase::~DelayInitBase()
{
    Registrar::GetInst().RemoveHook(eHookStageShutdown, ShutdownOf(this));
    Registrar::GetInst().RemoveHook(eHookStageStartup, StartupOf(this));
}

StartupHook::StartupHook(const Registrar::Delegate& hook, Registrar::EPriority priority) : m_hook(hook)
{
    Registrar::GetInst().AddHook(eHookStageStartup, m_hook, priority);
}

StartupHook::StartupHook(const StartupHook&) = default;
StartupHook& StartupHook::operator=(const StartupHook&) = default;
StartupHook::~StartupHook() { Registrar::GetInst().RemoveHook(eHookStageStartup, m_hook); }

ShutdownHook::ShutdownHook(const Registrar::Delegate& hook, Registrar::EPriority priority) : m_hook(hook)
{
    Registrar::GetInst().AddHook(eHookStageShutdown, m_hook, priority);
}

ShutdownHook::ShutdownHook(const ShutdownHook&) = default;
ShutdownHook& ShutdownHook::operator=(const ShutdownHook&) = default;
ShutdownHook::~ShutdownHook() { Registrar::GetInst().RemoveHook(eHookStageShutdown, m_hook); }

InitHook::InitHook(
    const Registrar::Delegate& startup, const Registrar::Delegate& shutdown, Registrar::EPriority priority)
    : m_startup(startup), m_shutdown(shutdown)
{
    Registrar::GetInst().AddHook(eHookStageStartup, m_startup, priority);
    Registrar::GetInst().AddHook(eHookStageShutdown, m_shutdown, priority);
}

InitHook::InitHook(const InitHook&) = default;
InitHook::InitHook(InitHook&&) = default;
InitHook& InitHook::operator=(const InitHook&) = default;
InitHook& InitHook::operator=(InitHook&&) = default;

InitHook::~InitHook()
{
    Registrar::GetInst().RemoveHook(eHookStageShutdown, m_shutdown);
    Registrar::GetInst().RemoveHook(eHookStageStartup, m_startup);
}
