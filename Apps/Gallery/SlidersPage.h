// Sliders with linear, logarithmic, exponential and centred values.
#pragma once

#include "MeasureField.h"
#include "SliderTransform.h"

#include <memory>

class SlidersPage : public Page {
public:
    explicit SlidersPage(HWND parent);

private:
    /// A mapping with its slider and the field of its value.
    struct Slider {
        HWND bar;
        std::unique_ptr<Framework::UI::Experimental::WICmnUISliderTransform> mapping;
        std::unique_ptr<MeasureField> value;
    };

    LRESULT OnNotify(const NMHDR& notice) override;
    void OnSlide(HWND bar) override;
    std::unique_ptr<MeasureField> AddNumber(const wchar_t* name, int id, int x, double value);
    void AddSlider(std::size_t index);
    /// Takes the range into all mappings; tells when it is none, and leaves the sliders as they were.
    void TakeRange();
    void TakeValue(Slider& slider, double value);

    std::unique_ptr<MeasureField> m_minimum;
    std::unique_ptr<MeasureField> m_maximum;
    std::unique_ptr<MeasureField> m_step;
    std::unique_ptr<MeasureField> m_centre;
    std::vector<Slider> m_sliders;
};
