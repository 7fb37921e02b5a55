// What a fault must never leave, counted so that a run can print that there was none of it.
#pragma once

#include <string>

/// Fails unless what a run has left is the old state or the new one, and the new one when the run has told that it is done.
/// Neither of the two counts as torn, the old one in the place of what was told as lost.
void ExpectOldOrNew(const std::string& found, const std::string& old, const std::string& next, bool isDone);
/// Fails when there are files beside those of a sound run, behind the next success; each counts.
void ExpectNoLeftovers(std::size_t found, std::size_t sound, const std::string& names);
