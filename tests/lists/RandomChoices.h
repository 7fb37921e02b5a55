// Choices that repeat with their seed.
#pragma once

#include "Operations.h"

#include <random>

namespace ListTrials {

class RandomChoices : public Choices {
public:
    explicit RandomChoices(unsigned seed) : m_engine(seed) { }
    unsigned Below(unsigned bound) override { return static_cast<unsigned>(m_engine() % bound); }

private:
    std::mt19937 m_engine;
};

}   // namespace ListTrials
