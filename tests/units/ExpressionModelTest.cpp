// Random expressions beside a plain evaluator that tries every token on every text.
#include "WEqParser.h"
#include "siblings/TvlPlatform/TextEncoding.h"
#include "siblings/TvlResources/Resources.h"

#include <cmath>
#include <cwctype>
#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace {

enum class Kind { End, Value, Sign, Operator, Open, Closed, Function };

struct ModelToken {
    Kind kind;
    std::wstring text;
    int input;
    int stack;
    unsigned flag;
    double (*apply)(double y, double x) = nullptr;
    int angle = 0;   // 1 takes an angle, 2 gives one
};

std::wstring Text(const wchar_t* key) { return Framework::Resources::GetString(key).Std(); }

/// The tokens in the order in which they are tried, numbers aside.
std::vector<ModelToken> MakeTable()
{
    const auto function = [](const wchar_t* key, unsigned flag, double (*apply)(double, double), int angle = 0) {
        return ModelToken{Kind::Function, Text(key), 6, 5, flag, apply, angle};
    };
    return {
        {Kind::Operator, Text(L"cbd93da8-193a-4a4a-8671-1b9034087d84"), 1, 2, 1,
            [](double y, double x) { return y + x; }},
        {Kind::Sign, Text(L"9ca6a3a9-dc17-4a81-8a9b-4d9054012a67"), 1, 2, 1, [](double y, double x) { return y - x; }},
        {Kind::Operator, Text(L"c8e96f17-5af8-4145-8d7c-4e544bb780e9"), 3, 4, 1,
            [](double y, double x) { return y * x; }},
        {Kind::Operator, Text(L"d7e27cba-81e9-46ba-baa6-1baf9c43940e"), 3, 4, 1,
            [](double y, double x) { return y / x; }},
        {Kind::Operator, Text(L"aafcc9b1-30ec-4e82-ae42-8df55783afed"), 6, 5, 1,
            [](double y, double x) { return std::pow(y, x); }},
        {Kind::Open, Text(L"7dae8cae-7e41-49ec-90fc-db582c9c8df7"), 100, 0, 1},
        {Kind::Closed, Text(L"4d25d174-6d20-404d-a71f-f6cc9b68fcaa"), 0, 99, 1},
        {Kind::Open, Text(L"e00db661-07f6-458e-8cd5-c6dec7afb4a7"), 100, 0, 1},
        {Kind::Closed, Text(L"ea85cb54-372e-47a2-8a4b-7a691ecc208c"), 0, 99, 1},
        {Kind::Open, Text(L"29894b87-fa56-4fcd-b777-7c9118c97442"), 100, 0, 1},
        {Kind::Closed, Text(L"bf28deda-0e0b-490d-b2de-1f1ae78ab626"), 0, 99, 1},
        function(L"bd1d6815-abbd-4d78-92a0-1b3386a310e3", 4, [](double, double x) { return std::log10(x); }),
        function(L"b50151e7-6ad9-4e50-9c42-2b24c620e5ee", 4, [](double, double x) { return std::log(x); }),
        function(L"aa592d3a-8208-4da6-8468-2091db12ee1d", 4, [](double, double x) { return std::sqrt(x); }),
        function(
            L"487dee10-dc27-420a-8128-b1b59df75942", 8, [](double, double x) { return std::sin(x); }, 1),
        function(
            L"9366ef2f-37b0-4bf2-83c4-ffa8507a89e3", 8, [](double, double x) { return std::cos(x); }, 1),
        function(
            L"554a60ca-d249-45ba-b751-571ebfab8502", 8, [](double, double x) { return std::tan(x); }, 1),
        function(
            L"a306f134-fde6-4164-a804-52fc7eea07d1", 8, [](double, double x) { return std::asin(x); }, 2),
        function(
            L"3ac06531-d929-4536-845b-2f405871e1a9", 8, [](double, double x) { return std::acos(x); }, 2),
        function(
            L"5fc8c0b2-06b9-42f1-8568-1068b3a81955", 8, [](double, double x) { return std::atan(x); }, 2),
        function(
            L"82487d5d-b0cd-448c-9b36-0ada532c8186", 8, [](double, double x) { return 1.0 / std::sin(x); }, 1),
        function(
            L"8b795e2b-b8fb-4d03-9e3c-2f60cc8f6741", 8, [](double, double x) { return 1.0 / std::cos(x); }, 1),
        function(
            L"94de302c-eebe-43c7-9574-a22954c2ac70", 8, [](double, double x) { return 1.0 / std::tan(x); }, 1),
        function(
            L"4f841b5d-c0db-45cf-a1e2-aa67b8dba622", 8, [](double, double x) { return std::asin(1.0 / x); }, 2),
        function(
            L"1f495856-89d4-4a80-9f5a-cfb0fb982777", 8, [](double, double x) { return std::acos(1.0 / x); }, 2),
        function(
            L"ba71022f-f6b0-4907-ad42-c014289c1fef", 8, [](double, double x) { return std::atan(1.0 / x); }, 2),
        function(L"7902c344-1560-40c2-bbad-069e115b2412", 16, [](double, double x) { return std::sinh(x); }),
        function(L"5d763103-f775-4f84-9e43-15e4cdae7f88", 16, [](double, double x) { return std::cosh(x); }),
        function(L"d29947ea-247c-430b-9eb6-4df79a1b8f2f", 16, [](double, double x) { return std::tanh(x); }),
    };
}

const std::vector<ModelToken>& Table()
{
    static const std::vector<ModelToken> table = MakeTable();
    return table;
}

const ModelToken kEnd{Kind::End, L"", 0, -1, 0};
const ModelToken kNumber{Kind::Value, L"", 0, 0, 0};
const ModelToken kFraction{Kind::Value, L"", 0, 0, 2};

/// One evaluation, with "." for the decimal separator.
class Model {
public:
    Model(std::wstring text, unsigned flags, bool degrees) : m_text(std::move(text)), m_flags(flags), m_degrees(degrees)
    {
    }

    std::optional<double> Value()
    {
        if (m_text.find_first_not_of(L' ') == m_text.npos)
            m_values.push_back(0.0);
        for (const ModelToken* previous = nullptr;;) {
            const ModelToken* const token = Next();
            if (!token || (token->kind == Kind::Closed && (!previous || previous->kind == Kind::Open)))
                return std::nullopt;
            if (token == previous && token->kind == Kind::Value)
                return std::nullopt;
            // A sign directly behind an opening bracket has nothing on its left.
            if (token->kind == Kind::Sign && previous && previous->kind == Kind::Open)
                m_values.push_back(0.0);
            if (!Process(*token))
                return std::nullopt;
            if (token->kind == Kind::End)
                break;
            previous = token;
        }
        if (m_values.size() != 1 || m_operators.back()->kind != Kind::End || std::isinf(m_values[0]))
            return std::nullopt;
        return m_values[0];
    }

private:
    static std::size_t NumberLength(const std::wstring& text)
    {
        std::size_t length = 0;
        bool hasPoint = false;
        for (; length < text.size(); ++length) {
            const bool isPoint = text[length] == L'.';
            if ((isPoint && hasPoint) || (!isPoint && !std::iswdigit(static_cast<std::wint_t>(text[length]))))
                break;
            hasPoint |= isPoint;
        }
        return length;
    }

    static std::size_t Skip(const std::wstring& text, std::size_t from, const wchar_t* set)
    {
        return std::min(text.find_first_not_of(set, from), text.size());
    }

    static std::size_t FractionLength(const std::wstring& text)
    {
        if (text[0] < L'0' || text[0] > L'9')
            return 0;
        std::size_t at = Skip(text, 0, L"0123456789");
        if (at < text.size() && text[at] == L' ')
            at = Skip(text, at, L"0123456789 ");
        if (at == text.size() || text[at] != L'/')
            return 0;
        at = Skip(text, at + 1, L" ");
        const std::size_t end = Skip(text, at, L"0123456789");
        return end > at ? end : 0;
    }

    static double Fraction(const std::wstring& text)
    {
        const std::size_t divide = text.find(L'/');
        const std::size_t blank = text.find(L' ');
        double whole = 0.0;
        std::wstring numerator = text.substr(0, divide);
        if (blank < divide && Skip(text, blank, L" ") < divide) {
            whole = std::wcstod(numerator.c_str(), nullptr);
            numerator.erase(0, Skip(text, blank, L" "));
        }
        return std::wcstod(numerator.c_str(), nullptr) / std::wcstod(text.c_str() + divide + 1 + 0, nullptr) * 1.0
            * (text[divide + 1] == L' ' ? INFINITY : 1.0)
            + whole;
    }

    const ModelToken* Next()
    {
        m_text.erase(0, Skip(m_text, 0, L" "));
        if (m_text.empty())
            return &kEnd;
        const ModelToken* best = nullptr;
        std::size_t length = NumberLength(m_text);
        if (length > 0) {
            best = &kNumber;
            m_number = std::wcstod(m_text.substr(0, length).c_str(), nullptr);
        }
        for (const ModelToken& token : Table()) {
            // Fractions stand behind the brackets in the order.
            if (&token == &Table()[11] && (m_flags & 2) && FractionLength(m_text) > length) {
                length = FractionLength(m_text);
                best = &kFraction;
                m_number = Fraction(m_text.substr(0, length));
            }
            if ((token.flag & m_flags) && token.text.size() > length && m_text.starts_with(token.text)) {
                best = &token;
                length = token.text.size();
            }
        }
        m_text.erase(0, length);
        return best;
    }

    bool Process(const ModelToken& token)
    {
        if (token.kind == Kind::Value)
            return m_values.push_back(m_number), true;
        if (token.kind == Kind::Closed) {
            const ModelToken* const opening = &token - 1;
            while (m_operators.back() != opening)
                if (m_operators.back()->kind == Kind::End || !Execute())
                    return false;
            return m_operators.pop_back(), true;
        }
        while (token.input < m_operators.back()->stack)
            if (!Execute())
                return false;
        if (token.input == m_operators.back()->stack)
            return false;
        if (token.kind != Kind::End)
            m_operators.push_back(&token);
        return true;
    }

    bool Execute()
    {
        const ModelToken& token = *m_operators.back();
        if (token.kind == Kind::Open || m_values.empty())
            return false;
        const double x = Pop() * (token.angle == 1 && m_degrees ? 3.141592653589793 : 1.0)
            / (token.angle == 1 && m_degrees ? 180.0 : 1.0);
        double y = 0.0;
        if (token.kind == Kind::Operator || (token.kind == Kind::Sign && !m_values.empty())) {
            if (m_values.empty())
                return false;
            y = Pop();
        }
        m_values.push_back(token.apply(y, x) / (token.angle == 2 && m_degrees ? 0.017453292519943295 : 1.0));
        m_operators.pop_back();
        return true;
    }

    double Pop()
    {
        const double value = m_values.back();
        m_values.pop_back();
        return value;
    }

    std::wstring m_text;
    unsigned m_flags;
    bool m_degrees;
    double m_number = 0.0;
    std::vector<double> m_values;
    std::vector<const ModelToken*> m_operators{&kEnd};
};

std::wstring RandomText(std::mt19937& random)
{
    static const std::vector<std::wstring> kPieces = [] {
        std::vector<std::wstring> pieces{
            L"1", L"2", L"30", L".5", L"7.25", L"1/2", L"3 1/4", L" ", L"  ", L"0", L"x", L"/"};
        for (const ModelToken& token : Table())
            pieces.push_back(token.text);
        return pieces;
    }();
    std::wstring text;
    const bool isLikely = random() % 4 != 0;   // a sensible order, so that most texts have a value
    for (unsigned count = 1 + random() % 9; count > 0; --count) {
        if (isLikely && random() % 3 == 0)
            text += Table()[14 + random() % 14].text + L" ";
        text += kPieces[isLikely ? random() % 7 : random() % kPieces.size()];
        if (isLikely && count > 1)
            text += Table()[random() % 5].text;
    }
    return text;
}

TEST(WEqParser, AgreesWithAPlainEvaluator)
{
    std::mt19937 random(20);
    int values = 0;
    for (int i = 0; i < 20000; ++i) {
        const std::wstring text = RandomText(random);
        const unsigned flags = i % 5 == 0 ? static_cast<unsigned>(random() % 32) : unsigned{kTokensAll};
        const bool degrees = random() % 2 == 0;
        double value = 0.0;
        WEqParser parser(text, flags, degrees ? DRG::Degrees : DRG::Radians);
        const bool hasValue = parser.GetValue(value) != 0;
        const auto expected = Model(text, flags, degrees).Value();
        ASSERT_EQ(hasValue, expected.has_value()) << TvlPlatform::ToUtf8(text) << " flags " << flags;
        ASSERT_TRUE(!hasValue || value == *expected || (std::isnan(value) && std::isnan(*expected)))
            << TvlPlatform::ToUtf8(text) << " flags " << flags << ": " << value << ", expected " << *expected;
        values += hasValue;
    }
    EXPECT_GT(values, 5000);
}

}   // namespace
