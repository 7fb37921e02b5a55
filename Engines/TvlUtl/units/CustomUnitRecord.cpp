// Custom units as lines of text.
#include "CustomUnitRecord.h"

#include "siblings/TvlUtils/String.h"

#include <algorithm>
#include <charconv>
#include <cwchar>
#include <limits>
#include <string>

namespace {
constexpr int kDefaultBaseUnit = 1;   // the inch
constexpr std::size_t kLeastFields = 5;

/// Takes the fields of a record one by one; empty ones do not count.
class Fields {
public:
    explicit Fields(std::wstring_view text) : m_rest(text) { }

    std::optional<std::wstring> Next()
    {
        constexpr std::wstring_view kDelimiters = L",\n";
        m_rest.remove_prefix(std::min(m_rest.find_first_not_of(kDelimiters), m_rest.size()));
        if (m_rest.empty())
            return std::nullopt;
        const std::wstring_view field = m_rest.substr(0, m_rest.find_first_of(kDelimiters));
        m_rest.remove_prefix(field.size());
        return std::wstring(field);
    }

private:
    std::wstring_view m_rest;
};

template <std::size_t size>
void CopyName(const std::wstring& name, wchar_t (&to)[size])
{
    std::copy_n(name.begin(), std::min(name.size(), size), to);
}

/// Whether a text begins with a word of small letters, in whatever case.
bool BeginsWith(std::wstring_view text, std::wstring_view word)
{
    return text.size() >= word.size() && std::equal(word.begin(), word.end(), text.begin(), [](wchar_t a, wchar_t b) {
        return a == (b >= L'A' && b <= L'Z' ? b - L'A' + L'a' : b);
    });
}

/// As wcstod in the C locale, but to the last bit on every system: some go through a longer type, or need memory and do not
/// look whether they got it.
double RealOf(const std::wstring& field)
{
    std::wstring_view text = field;
    text.remove_prefix(std::min(text.find_first_not_of(L" \t\n\v\f\r"), text.size()));
    const double sign = text.starts_with(L'-') ? -1.0 : 1.0;
    std::wstring_view digits = text;
    digits.remove_prefix(text.starts_with(L'-') || text.starts_with(L'+') ? 1 : 0);
    if (BeginsWith(digits, L"inf"))
        return sign * std::numeric_limits<double>::infinity();
    if (BeginsWith(digits, L"nan"))
        return sign * std::numeric_limits<double>::quiet_NaN();
    if (!BeginsWith(digits, L"0x"))
        return TvlUtils::String::DblFromString(field);
    const std::string bytes(digits.begin() + 2, digits.end());
    double value = 0.0;
    std::from_chars(bytes.data(), bytes.data() + bytes.size(), value, std::chars_format::hex);
    return sign * value;
}

std::int32_t IntegerOf(const std::wstring& field)
{
    using Limits = std::numeric_limits<std::int32_t>;
    return static_cast<std::int32_t>(
        std::clamp<long long>(std::wcstoll(field.c_str(), nullptr, 10), Limits::min(), Limits::max()));
}

/// The fields behind the factor. The first that is missing ends them, and the rest keep their defaults.
void ReadOptionalFields(Fields& fields, CustomUnitRecord& record)
{
    const auto base = fields.Next();
    if (!base)
        return;
    record.baseUnit = IntegerOf(*base);
    for (double& increment : record.increments) {
        const auto field = fields.Next();
        if (!field)
            return;
        increment = RealOf(*field);
    }
    if (const auto decimals = fields.Next())
        record.decimals = IntegerOf(*decimals);
}
}   // namespace

std::optional<CustomUnitRecord> ReadCustomUnitRecord(std::wstring_view text)
{
    text = text.substr(0, text.find(L'\0'));
    Fields fields(text.substr(0, kCustomUnitRecordSize - 1));
    std::wstring required[kLeastFields];
    for (std::wstring& field : required) {
        auto next = fields.Next();
        if (!next)
            return std::nullopt;
        field = std::move(*next);
    }
    CustomUnitRecord record{};
    CopyName(required[0], record.firstName);
    CopyName(required[1], record.secondName);
    CopyName(required[2], record.thirdName);
    CopyName(required[3], record.fourthName);
    record.factor = RealOf(required[4]);
    if (record.factor == 0.0)
        return std::nullopt;
    record.baseUnit = kDefaultBaseUnit;
    ReadOptionalFields(fields, record);
    return record;
}

TvlString WriteCustomUnitRecord(const CustomUnitRecord& record)
{
    TvlString text;
    text.Format(L"%s,%s,%s,%s,%f,%d,%f,%f,%f,%d", CustomUnitName(record.firstName), CustomUnitName(record.secondName),
        CustomUnitName(record.thirdName), CustomUnitName(record.fourthName), record.factor, record.baseUnit,
        record.increments[0], record.increments[1], record.increments[2], record.decimals);
    return text.Left(kCustomUnitRecordSize - 1);
}
