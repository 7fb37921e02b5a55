// The parser's own tokens.
#pragma once

#include "WEqParser.h"

#include <cmath>

/// Floor of the operator stack, and the end of the text.
class WTokenNull : public WToken {
public:
    using WToken::WToken;
};

/// "1/2" or "3 1/2" as one number.
class WTokenFraction : public WTokenValue {
public:
    /// @param divide the first character of `divide` separates numerator and denominator
    using WTokenValue::WTokenValue;
    int Match(const TvlString& text, int& length, int& valueBefore) override;
    double Evaluate(const TvlString& text) override;
};

class WTokenOParen : public WTokenOpen {
public:
    using WTokenOpen::WTokenOpen;
};
class WTokenOBracket : public WTokenOpen {
public:
    using WTokenOpen::WTokenOpen;
};
class WTokenOBrace : public WTokenOpen {
public:
    using WTokenOpen::WTokenOpen;
};
class WTokenCParen : public WTokenClosed {
public:
    using WTokenClosed::WTokenClosed;
};
class WTokenCBracket : public WTokenClosed {
public:
    using WTokenClosed::WTokenClosed;
};
class WTokenCBrace : public WTokenClosed {
public:
    using WTokenClosed::WTokenClosed;
};

/// A sign that stands before a value and not behind one.
class WTokenUnarySign : public WToken {
public:
    using WToken::WToken;
    int Match(const TvlString& text, int& length, int& valueBefore) override;
};
class WTokenUnaryMinus : public WTokenUnarySign {
public:
    using WTokenUnarySign::WTokenUnarySign;
    int Execute(WValueStack& values) override;
};
class WTokenUnaryPlus : public WTokenUnarySign {
public:
    using WTokenUnarySign::WTokenUnarySign;
};

/// A sign between values.
class WTokenBinarySign : public WToken {
public:
    using WToken::WToken;
    int Match(const TvlString& text, int& length, int& valueBefore) override;
};
class WTokenOpPlus : public WTokenBinarySign {
public:
    using WTokenBinarySign::WTokenBinarySign;
    int Execute(WValueStack& values) override;
};
/// Takes 0.0 for a left side that is missing, so that a text may begin with a minus.
class WTokenOpMinus : public WTokenBinarySign {
public:
    using WTokenBinarySign::WTokenBinarySign;
    int Execute(WValueStack& values) override;
};

class WTokenOpMultiply : public WToken {
public:
    using WToken::WToken;
    int Execute(WValueStack& values) override;
};
class WTokenOpDivide : public WToken {
public:
    using WToken::WToken;
    int Execute(WValueStack& values) override;
};
class WTokenOpExp : public WToken {
public:
    using WToken::WToken;
    int Execute(WValueStack& values) override;
};

/// A function of one value.
template <class Group, double (*function)(double)>
class WTokenFunction : public Group {
public:
    using Group::Group;
    int Execute(WValueStack& values) override
    {
        if (values.empty())
            return 0;
        values.front() = function(values.front());
        return 1;
    }
};

namespace TokenFunctions {
inline double Log(double x) { return std::log10(x); }
inline double Ln(double x) { return std::log(x); }
inline double Sqrt(double x) { return std::sqrt(x); }
inline double Sin(double x) { return std::sin(x); }
inline double Cos(double x) { return std::cos(x); }
inline double Tan(double x) { return std::tan(x); }
inline double ASin(double x) { return std::asin(x); }
inline double ACos(double x) { return std::acos(x); }
inline double ATan(double x) { return std::atan(x); }
inline double Csc(double x) { return 1.0 / std::sin(x); }
inline double Sec(double x) { return 1.0 / std::cos(x); }
inline double Cot(double x) { return 1.0 / std::tan(x); }
inline double ACsc(double x) { return std::asin(1.0 / x); }
inline double ASec(double x) { return std::acos(1.0 / x); }
inline double ACot(double x) { return std::atan(1.0 / x); }
inline double SinH(double x) { return std::sinh(x); }
inline double CosH(double x) { return std::cosh(x); }
inline double TanH(double x) { return std::tanh(x); }
}   // namespace TokenFunctions

using WTokenLog = WTokenFunction<WToken, TokenFunctions::Log>;
using WTokenLn = WTokenFunction<WToken, TokenFunctions::Ln>;
using WTokenSqrt = WTokenFunction<WToken, TokenFunctions::Sqrt>;
using WTokenSin = WTokenFunction<WTokenTrig, TokenFunctions::Sin>;
using WTokenCos = WTokenFunction<WTokenTrig, TokenFunctions::Cos>;
using WTokenTan = WTokenFunction<WTokenTrig, TokenFunctions::Tan>;
using WTokenASin = WTokenFunction<WTokenRevTrig, TokenFunctions::ASin>;
using WTokenACos = WTokenFunction<WTokenRevTrig, TokenFunctions::ACos>;
using WTokenATan = WTokenFunction<WTokenRevTrig, TokenFunctions::ATan>;
using WTokenCsc = WTokenFunction<WTokenTrig, TokenFunctions::Csc>;
using WTokenSec = WTokenFunction<WTokenTrig, TokenFunctions::Sec>;
using WTokenCot = WTokenFunction<WTokenTrig, TokenFunctions::Cot>;
using WTokenACsc = WTokenFunction<WTokenRevTrig, TokenFunctions::ACsc>;
using WTokenASec = WTokenFunction<WTokenRevTrig, TokenFunctions::ASec>;
using WTokenACot = WTokenFunction<WTokenRevTrig, TokenFunctions::ACot>;
using WTokenSinH = WTokenFunction<WToken, TokenFunctions::SinH>;
using WTokenCosH = WTokenFunction<WToken, TokenFunctions::CosH>;
using WTokenTanH = WTokenFunction<WToken, TokenFunctions::TanH>;
