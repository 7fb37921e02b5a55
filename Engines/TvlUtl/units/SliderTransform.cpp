#include "SliderTransform.h"

#include "X64Integers.h"

#include <cmath>

namespace Framework::UI::Experimental {

namespace {
/// slope * x + offset runs from 1.0 at the minimum to `bound` at the maximum.
struct Line {
    double slope;
    double offset;
};

Line LineTo(double bound, double min, double max)
{
    return {(bound - 1.0) / (max - min), (max - min * bound) / (max - min)};
}
}   // namespace

WICmnUISliderTransform::WICmnUISliderTransform() = default;
WICmnUISliderTransform::~WICmnUISliderTransform() = default;

double WCmnUIDefaultSliderTransformation::GetRangeMin() const { return m_min; }
double WCmnUIDefaultSliderTransformation::GetRangeMax() const { return m_max; }
double WCmnUIDefaultSliderTransformation::GetSliderRange() const { return m_sliderRange; }
double WCmnUIDefaultSliderTransformation::GetIncrementValue() const { return m_increment; }
double WCmnUIDefaultSliderTransformation::FunctionTransform(double x) const { return x; }
double WCmnUIDefaultSliderTransformation::InverseFunction(double y) const { return y; }

int WCmnUIDefaultSliderTransformation::SetRangeMin(double min)
{
    if (m_max < min)
        return 0;
    m_min = min;
    return 1;
}

int WCmnUIDefaultSliderTransformation::SetRangeMax(double max)
{
    if (max < m_min)
        return 0;
    m_max = max;
    return 1;
}

int WCmnUIDefaultSliderTransformation::SetSliderRange(double range)
{
    m_sliderRange = range;
    return 1;
}

int WCmnUIDefaultSliderTransformation::InitTransformation(double min, double max, double sliderRange)
{
    // The maximum first: the new minimum is held against it.
    return SetRangeMax(max) && SetRangeMin(min) && SetSliderRange(sliderRange);
}

int WCmnUIDefaultSliderTransformation::SetIncrementValue(double increment)
{
    if (!(increment > 0.0))
        return 0;
    m_increment = increment;
    return 1;
}

double WCmnUIDefaultSliderTransformation::GetLinearValue(double value) const
{
    const double point = _GetValidPoint(value);
    const double low = FunctionTransform(m_min);
    return m_sliderRange / (FunctionTransform(m_max) - low) * (FunctionTransform(point) - low);
}

double WCmnUIDefaultSliderTransformation::GetMappedValue(double position) const
{
    const double low = FunctionTransform(m_min);
    const double y = (FunctionTransform(m_max) - low) * (position / m_sliderRange) + low;
    return _GetValidPoint(InverseFunction(y));
}

/// The nearest step, then the nearest end of the range. Steps are 32-bit integers: a value too many steps away, above the
/// range as well as below it, comes out at the minimum.
double WCmnUIDefaultSliderTransformation::_GetValidPoint(double value) const
{
    const double point = ToInt32AsX64((value - m_min) / m_increment + 0.5) * m_increment + m_min;
    const double capped = point > m_max ? m_max : point;
    return capped < m_min ? m_min : capped;
}

const double WCmnUILogarithmicSliderTransformation::kdMaxLogBound = 50.0;

int WCmnUILogarithmicSliderTransformation::InitTransformation(double min, double max, double sliderRange)
{
    if (!(max > min))
        return 0;
    WCmnUIDefaultSliderTransformation::InitTransformation(min, max, sliderRange);
    const auto [slope, offset] = LineTo(kdMaxLogBound, min, max);
    m_slope = slope;
    m_offset = offset;
    return 1;
}

double WCmnUILogarithmicSliderTransformation::FunctionTransform(double x) const
{
    return std::log(m_slope * x + m_offset);
}

double WCmnUILogarithmicSliderTransformation::InverseFunction(double y) const
{
    return (std::exp(y) - m_offset) / m_slope;
}

const double WCmnUIExponentialSliderTransformation::kdMaxExpBound = 10.0;

int WCmnUIExponentialSliderTransformation::InitTransformation(double min, double max, double sliderRange)
{
    if (!(max > min))
        return 0;
    WCmnUIDefaultSliderTransformation::InitTransformation(min, max, sliderRange);
    const auto [slope, offset] = LineTo(kdMaxExpBound, min, max);
    m_slope = slope;
    m_offset = offset;
    return 1;
}

double WCmnUIExponentialSliderTransformation::FunctionTransform(double x) const
{
    return std::exp(m_slope * x + m_offset);
}

double WCmnUIExponentialSliderTransformation::InverseFunction(double y) const
{
    return (std::log(y) - m_offset) / m_slope;
}

WCmnUICombinedSliderTransformation::WCmnUICombinedSliderTransformation(double centre) : m_centre(centre) { }

int WCmnUICombinedSliderTransformation::InitTransformation(double min, double max, double sliderRange)
{
    if (!(max > min))
        return 0;
    WCmnUIDefaultSliderTransformation::InitTransformation(min, max, sliderRange);
    return 1;
}

double WCmnUICombinedSliderTransformation::FunctionTransform(double x) const
{
    const double min = GetRangeMin();
    const double max = GetRangeMax();
    const double mid = (min + max) * 0.5;
    if (x <= m_centre)
        return (mid - min) * (x - min) / (m_centre - min) + min;
    return (x - max) * (max - mid) / (max - m_centre) + max;
}

double WCmnUICombinedSliderTransformation::InverseFunction(double y) const
{
    const double min = GetRangeMin();
    const double max = GetRangeMax();
    const double mid = (min + max) * 0.5;
    if (y <= mid)
        return (m_centre - min) * (y - min) / (mid - min) + min;
    return (max - m_centre) * (y - max) / (max - mid) + max;
}

}   // namespace Framework::UI::Experimental
