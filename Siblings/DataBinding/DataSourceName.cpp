#include "siblings/DataBinding/DataSourceFactory.h"

#include "siblings/TvlPlatform/TextEncoding.h"

#include <cstdlib>
#include <cxxabi.h>
#include <string_view>

TvlString DataSourceName(const std::type_info& type)
{
    // Names of types are mangled here; compilers that have them plain begin them with the word "class".
    constexpr std::string_view kClass = "class ";
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> plain(
        abi::__cxa_demangle(type.name(), nullptr, nullptr, &status), &std::free);
    std::string_view name = plain ? plain.get() : type.name();
    if (name.starts_with(kClass))
        name.remove_prefix(kClass.size());
    return TvlPlatform::FromUtf8(name);
}
