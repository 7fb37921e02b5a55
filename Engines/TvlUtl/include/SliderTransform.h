// Sliders move linearly; the values that they set need not. A transformation maps slider positions, 0.0 to the slider's
// range, to values of a range and back, so that a control can spread a wide range or favour a part of it.
//
// Values and positions are plain numbers in the caller's units. Nothing guards a slider range of 0.0 or a range without
// extent: the arithmetic is that of IEEE 754, and a mapped value that is not a number becomes the range's minimum.
#pragma once

#include "TvlUtlApi.h"

/// The classes of slider mappings, under the name by which controls link them.
namespace Framework::UI::Experimental {

/// What a slider control asks of a transformation. Slot order is part of the interface.
class TVLUTL_API WICmnUISliderTransform {
public:
    /// There is no state here.
    WICmnUISliderTransform();
    virtual ~WICmnUISliderTransform();

    /// Lower end of the values, 0.0 until it is set.
    virtual double GetRangeMin() const = 0;
    /// Upper end of the values, 0.0 until it is set.
    virtual double GetRangeMax() const = 0;
    /// 1; 0, without a change, for a minimum above the maximum.
    virtual int SetRangeMin(double min) = 0;
    /// 1; 0, without a change, for a maximum below the minimum.
    virtual int SetRangeMax(double max) = 0;
    /// The slider's position at its end. Always 1.
    virtual int SetSliderRange(double range) = 0;
    /// What SetSliderRange took last, 0.0 before.
    virtual double GetSliderRange() const = 0;
    /// Takes the value range and the slider's; not 0 on success.
    virtual int InitTransformation(double min, double max, double sliderRange) = 0;
    /// The step of values, counted from the minimum. 1; 0, without a change, unless it is above 0.0. An infinite one leaves
    /// no values: they are no numbers then.
    virtual int SetIncrementValue(double increment) = 0;
    /// What SetIncrementValue took last, 10.0 before.
    virtual double GetIncrementValue() const = 0;
    /// The slider's position for a value.
    virtual double GetLinearValue(double value) const = 0;
    /// The value at a position of the slider.
    virtual double GetMappedValue(double position) const = 0;
    /// Bends a value; linear in the position of the slider.
    virtual double FunctionTransform(double x) const = 0;
    /// Undoes FunctionTransform.
    virtual double InverseFunction(double y) const = 0;

protected:
    /// @{
    /// Copies are objects of their own.
    WICmnUISliderTransform(const WICmnUISliderTransform&) = default;
    WICmnUISliderTransform& operator=(const WICmnUISliderTransform&) = default;
    /// @}
};

/// Values linear in the position. Every value that goes in or out is taken to the nearest step and kept in the range.
class TVLUTL_API WCmnUIDefaultSliderTransformation : public WICmnUISliderTransform {
public:
    double GetRangeMin() const override;
    double GetRangeMax() const override;
    int SetRangeMin(double min) override;
    int SetRangeMax(double max) override;
    int SetSliderRange(double range) override;
    double GetSliderRange() const override;
    /// Sets the maximum, the minimum and the slider's range, and stops at the first that is refused: the new maximum must
    /// not be below the minimum that stands, 0.0 on a fresh object.
    int InitTransformation(double min, double max, double sliderRange) override;
    int SetIncrementValue(double increment) override;
    double GetIncrementValue() const override;
    double GetLinearValue(double value) const override;
    double GetMappedValue(double position) const override;
    double FunctionTransform(double x) const override;
    double InverseFunction(double y) const override;

private:
    double _GetValidPoint(double value) const;

    double m_max = 0.0;
    double m_min = 0.0;
    double m_sliderRange = 0.0;
    double m_increment = 10.0;
};

/// Fine at the minimum, coarse at the maximum: the position grows with the logarithm of the value.
class TVLUTL_API WCmnUILogarithmicSliderTransformation : public WCmnUIDefaultSliderTransformation {
public:
    /// Upper end of the logarithm's argument, 50.0; the lower one is 1.0.
    static const double kdMaxLogBound;

    /// 0, without a change, unless `max` is above `min`. Otherwise 1, and the bend is that of the arguments even where
    /// the range that stands does not admit them.
    int InitTransformation(double min, double max, double sliderRange) override;
    double FunctionTransform(double x) const override;
    double InverseFunction(double y) const override;

private:
    double m_slope = 0.0;
    double m_offset = 0.0;
};

/// Coarse at the minimum, fine at the maximum: the position grows with the exponential function of the value.
class TVLUTL_API WCmnUIExponentialSliderTransformation : public WCmnUIDefaultSliderTransformation {
public:
    /// Upper end of the exponential function's argument, 10.0; the lower one is 1.0.
    static const double kdMaxExpBound;

    /// As the logarithmic transformation's.
    int InitTransformation(double min, double max, double sliderRange) override;
    double FunctionTransform(double x) const override;
    double InverseFunction(double y) const override;

private:
    double m_slope = 0.0;
    double m_offset = 0.0;
};

/// Linear on either side of a centre, which lies at the middle of the slider.
class TVLUTL_API WCmnUICombinedSliderTransformation : public WCmnUIDefaultSliderTransformation {
public:
    /// @param centre a value inside the range; at an end of it, the side without extent divides by zero
    explicit WCmnUICombinedSliderTransformation(double centre);

    /// 0, without a change, unless `max` is above `min`; otherwise 1, whatever became of the range.
    int InitTransformation(double min, double max, double sliderRange) override;
    double FunctionTransform(double x) const override;
    double InverseFunction(double y) const override;

private:
    double m_centre;
};

}   // namespace Framework::UI::Experimental
