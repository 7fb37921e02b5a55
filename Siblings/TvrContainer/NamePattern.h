// Which names of entries are wanted.
#pragma once

#include <string_view>

namespace TvrContainers {

/// Whether an expression fits the whole name: "." is any character, "*" any number of what stands before it. Takes time in
/// proportion to the product of both lengths.
bool FitsExpression(std::wstring_view expression, std::wstring_view name);

}   // namespace TvrContainers
