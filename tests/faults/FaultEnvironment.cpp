// What all operations that are tried in this process stand on.
#include "FaultWorld.h"

#include <gtest/gtest.h>

namespace {
class FaultEnvironment : public testing::Environment {
public:
    void SetUp() override { EnterFaultWorld(); }
};

const auto* const environment = testing::AddGlobalTestEnvironment(new FaultEnvironment);
}   // namespace
