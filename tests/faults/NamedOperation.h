// The operations of all areas.
#pragma once

#include "HeapOperation.h"

#include <ostream>
#include <string>
#include <vector>

struct NamedOperation {
    static std::vector<NamedOperation> All();

    std::string name;   // area and operation
    HeapOperation operation;

    friend void PrintTo(const NamedOperation& named, std::ostream* out) { *out << named.name; }
};
