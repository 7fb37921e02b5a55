#include "TvrContainer/NamePattern.h"

#include <cstddef>
#include <vector>

namespace TvrContainers {

namespace {
struct Step {
    wchar_t letter;
    bool isAny;
    bool isRepeated;
};

std::vector<Step> StepsOf(std::wstring_view expression)
{
    std::vector<Step> steps;
    for (const wchar_t c : expression) {
        if (c == L'*' && !steps.empty())
            steps.back().isRepeated = true;
        else
            steps.push_back({c, c == L'.', false});
    }
    return steps;
}
}   // namespace

bool FitsExpression(std::wstring_view expression, std::wstring_view name)
{
    const std::vector<Step> steps = StepsOf(expression);
    // Steps that the characters so far may have led to; one behind the last is the end.
    std::vector<char> reached(steps.size() + 1, 0);
    const auto passRepeated = [&] {
        for (std::size_t i = 0; i < steps.size(); ++i)
            if (reached[i] && steps[i].isRepeated)
                reached[i + 1] = 1;
    };
    reached[0] = 1;
    passRepeated();
    for (const wchar_t c : name) {
        std::vector<char> next(reached.size(), 0);
        for (std::size_t i = 0; i < steps.size(); ++i)
            if (reached[i] && (steps[i].isAny || steps[i].letter == c))
                next[steps[i].isRepeated ? i : i + 1] = 1;
        reached = std::move(next);
        passRepeated();
    }
    return reached.back();
}

}   // namespace TvrContainers
