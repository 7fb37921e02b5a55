// The conversions of printf forms.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

/// One conversion of a form, such as "%s" or "%-5.*lu", or "%%".
struct TextConversion {
    std::size_t begin;   // of the percent sign
    std::size_t end;
    std::vector<std::string> arguments;   // types that it takes: {"s"}, or {"*", "lu"}; none for "%%"
};

/// The conversions of a text in their order.
/// @param takesBlank whether a blank behind the sign may be a flag; in prose it is the end of "100 %"
std::vector<TextConversion> ConversionsOf(const std::string& text, bool takesBlank);

/// The types of all arguments of a form, in their order.
std::vector<std::string> ArgumentsOf(const std::string& text, bool takesBlank);
