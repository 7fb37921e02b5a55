// Arguments of TvlStringT::Format: each carries its type, so that a wrong form can't read what is not there.
#pragma once

#include "siblings/SiblingsApi.h"

#include <cstdarg>
#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>

template <class C>
class TvlStringT;

namespace TvlPlatform {

/// One argument of a printf form. Refers to text, does not own it.
class FormatArgument {
public:
    /// What an argument is, whatever the form takes it for; None is no argument.
    enum class Kind { None, Signed, Unsigned, Float, Wide, Narrow, Pointer };

    /// No argument: any conversion prints nothing of it.
    FormatArgument() = default;
    /// An integer of any width, a bool, a character or an enumerator.
    template <class T>
    requires std::is_integral_v<T> || std::is_enum_v<T> FormatArgument(T value)
        : kind(std::is_signed_v<T> || std::is_enum_v<T> ? Kind::Signed : Kind::Unsigned), size(sizeof(T)),
          integer(static_cast<long long>(value))
    {
    }
    /// A float or a double.
    FormatArgument(double value) : kind(Kind::Float), size(sizeof value), real(value) { }
    /// @{
    /// Text that lives as long as the argument; null prints as "(null)".
    FormatArgument(const wchar_t* text) : FormatArgument(text ? std::wstring_view(text) : L"(null)") { }
    FormatArgument(const char* text) : FormatArgument(text ? std::string_view(text) : "(null)") { }
    /// @}
    /// @{
    /// Text that lives as long as the argument, and need not end with a zero.
    FormatArgument(std::wstring_view text) : kind(Kind::Wide), wide(text) { }
    FormatArgument(std::string_view text) : kind(Kind::Narrow), narrow(text) { }
    /// @}
    /// The characters of a string that lives as long as the argument.
    template <class C>
    FormatArgument(const TvlStringT<C>& text) : FormatArgument(static_cast<std::basic_string_view<C>>(text))
    {
    }
    /// The same of a standard string.
    template <class C>
    FormatArgument(const std::basic_string<C>& text) : FormatArgument(std::basic_string_view<C>(text))
    {
    }
    /// The address alone.
    FormatArgument(const void* pointer) : kind(Kind::Pointer), integer(reinterpret_cast<long long>(pointer)) { }

    Kind kind = Kind::None;    // which of the others counts
    std::size_t size = 0;      // bytes of a number
    long long integer = 0;     // numbers and pointers
    double real = 0.0;         // floating-point numbers
    std::wstring_view wide;    // for Kind::Wide
    std::string_view narrow;   // for Kind::Narrow
};

/// @{
/// Formats `count` arguments by a printf form; see TvlStringT::Format. Never throws for a wrong form.
TVLSIBLINGS_API std::wstring FormatText(const wchar_t* form, const FormatArgument* arguments, std::size_t count);
TVLSIBLINGS_API std::string FormatText(const char* form, const FormatArgument* arguments, std::size_t count);
/// @}

/// @{
/// The same for the arguments of a C function, which must fit the form: integers of 32 bits unless I64 or ll says 64.
TVLSIBLINGS_API std::wstring FormatVariadic(const wchar_t* form, std::va_list arguments);
TVLSIBLINGS_API std::string FormatVariadic(const char* form, std::va_list arguments);
/// @}

}   // namespace TvlPlatform
