#include "Commands.h"

#include <CLI/CLI.hpp>
#include <iostream>

void EndWithBadInput(const std::string& problem)
{
    std::cout.flush();
    std::cerr << "tvl: " << problem << '\n';
    throw CLI::RuntimeError(kBadInput);
}
