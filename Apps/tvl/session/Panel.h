// A part of the application that is told of its start and stop.
#pragma once

#include "DelayInit.h"

#include <string>
#include <utility>
#include <vector>

/// Writes into a diary when it starts and stops.
class Panel final : public DelayInitBase {
public:
    using Diary = std::vector<std::string>;

    Panel(std::string name, DelayInitRegistrar::EPriority priority, Diary& started, Diary& stopped)
        : DelayInitBase(priority), m_name(std::move(name)), m_started(started), m_stopped(stopped)
    {
    }
    Panel(const Panel&) = delete;
    Panel& operator=(const Panel&) = delete;

    bool DelayedStartup() override
    {
        m_started.push_back(m_name);
        return true;
    }
    bool DelayedShutdown() override
    {
        m_stopped.push_back(m_name);
        return true;
    }

private:
    const std::string m_name;
    Diary& m_started;
    Diary& m_stopped;
};
