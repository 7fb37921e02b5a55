// The hooks.
#pragma once

#include "DelayInit.h"
#include "siblings/TvlUtils/Singleton.h"

#include <map>
#include <vector>

class DelayInitRegistrarImpl final : public DelayInitRegistrar, public TvlUtils::Singleton<DelayInitRegistrarImpl, 1> {
public:
    void AddHook(EHookStage stage, const Delegate& hook, EPriority priority) override;
    bool RemoveHook(EHookStage stage, const Delegate& hook) override;
    void RunStartupHooks(bool earlyGroup) override;
    void RunShutdownHooks(bool earlyGroup) override;
    bool RunHooks(EHookStage stage, bool reverse, bool earlyGroup) override;

private:
    // By stage, then priority; delegates in the order of their registration.
    std::map<EHookStage, std::map<EPriority, std::vector<Delegate>>> m_hooks;
};
