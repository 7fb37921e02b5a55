// Faults of a file of papers.
#pragma once

#include <string>
#include <vector>

/// What is wrong with a master or a user's file, a line each; empty for nothing. A file that is no XML document is one fault.
std::vector<std::string> LintPapers(const std::string& path);
