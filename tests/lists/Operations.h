// Operations on lists as data, so that one sequence can run on a list and on its plain model, by chance or by a fuzzer.
#pragma once

#include "windows/Types.h"

#include <ostream>
#include <string>

namespace ListTrials {

/// Where the choices come from.
class Choices {
public:
    virtual ~Choices() = default;
    /// A number below `bound`, which is above 0.
    virtual unsigned Below(unsigned bound) = 0;
};

/// The first rows of either table of operations are those that add.
constexpr unsigned kAddingKinds = 7;

struct Operation {
    unsigned kind = 0;
    LONG index = 0;
    std::string data;   // to store or to look for; its length is also the room of results
};

/// What an operation gives: the result, and the bytes that it hands out.
struct Outcome {
    LONG result = 0;
    std::string out;
    bool operator==(const Outcome&) const = default;
};

inline std::ostream& operator<<(std::ostream& stream, const Outcome& outcome)
{
    return stream << outcome.result << " with " << outcome.out.size() << " bytes";
}

/// What went wrong and where; empty when nothing did.
inline std::string Describe(const char* name, const Operation& operation, const std::string& wrong)
{
    return wrong.empty() ? wrong
                         : std::string(name) + " at " + std::to_string(operation.index) + " of "
            + std::to_string(operation.data.size()) + " bytes: " + wrong;
}

/// An operation for a list of `count` elements. Bytes come from a small alphabet, so that searches find something.
inline Operation Choose(Choices& choices, unsigned kinds, LONG count)
{
    Operation operation;
    operation.kind = choices.Below(kinds);
    operation.index = static_cast<LONG>(choices.Below(static_cast<unsigned>(count) + 4)) - 1;
    const unsigned size = choices.Below(16) == 0 ? choices.Below(300) : choices.Below(10);
    for (unsigned i = 0; i < size; ++i)
        operation.data += static_cast<char>(choices.Below(3));
    return operation;
}

}   // namespace ListTrials
