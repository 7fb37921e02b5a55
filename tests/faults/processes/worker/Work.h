// The kinds of work that tests end in the middle.
#pragma once

#include "../SettingsText.h"

#include <fstream>
#include <string>

/// Kept outside of the process: what it has written is there whatever becomes of it.
class Ledger {
public:
    explicit Ledger(const char* path) : m_file(path, std::ios::app | std::ios::binary) { }
    void Begin(const std::string& entry) { m_file << "begin " << entry << std::endl; }
    void Done(const std::string& entry) { m_file << "done " << entry << std::endl; }
    /// Settings of a workspace that are on disk now.
    void Changed(const SettingsOwner& owner) { m_file << "changed " << owner.Text() << std::endl; }

private:
    std::ofstream m_file;
};

/// One piece of work, the `number`-th of the process; false when it tells of a failure.
using Work = bool (*)(Ledger& ledger, int number);

/// The work of this name; null for none.
///
///   save      adds a paper of the user's own and saves
///   switch    starts, makes the workspace "A" or "B" current, whichever is not, and ends; it changes the settings before and behind
///             that
///   extract   takes the settings out of "A" or "B"
///   apply     changes the settings on disk and makes them the preferences
///   prefer    stores a preference, and the language of the user interface
///   rounds    starts, changes the settings, switches, lists and ends; in the ledger a change that could be made is begun, and
///             the milliseconds that the round took are done
Work FindWork(const std::string& name);
