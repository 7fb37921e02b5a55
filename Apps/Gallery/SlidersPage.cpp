#include "SlidersPage.h"

#include "ControlIds.h"

#include <cmath>
#include <commctrl.h>
#include <limits>

using namespace Framework::UI::Experimental;

namespace {
using Mapping = std::unique_ptr<WICmnUISliderTransform>;

template <class T>
Mapping Make(double)
{
    return std::make_unique<T>();
}

Mapping MakeCentred(double centre) { return std::make_unique<WCmnUICombinedSliderTransformation>(centre); }

struct Kind {
    const wchar_t* name;
    Mapping (*make)(double centre);
};

constexpr Kind kKinds[kSliderCount] = {
    {L"L&inear", &Make<WCmnUIDefaultSliderTransformation>},
    {L"L&ogarithmic", &Make<WCmnUILogarithmicSliderTransformation>},
    {L"&Exponential", &Make<WCmnUIExponentialSliderTransformation>},
    {L"Cen&tred", &MakeCentred},
};

constexpr int kPlainNumber = 0;   // unit
constexpr int kTop = 124;
constexpr int kRowHeight = 64;

int BarId(std::size_t index) { return kFirstSlider + static_cast<int>(index) * kSliderStride; }

/// Why a range can't be slid over; null when it can.
const wchar_t* ProblemOf(double min, double max, double step, double centre)
{
    if (!(max > min) || !std::isfinite(max - min))
        return L"The maximum must be above the minimum.";
    if (!(step > 0.0) || !((max - min) / step < std::numeric_limits<int>::max()))
        return L"The step must be above 0 and not too small for the range.";
    return centre > min && centre < max ? nullptr : L"The centre must lie inside the range.";
}
}   // namespace

SlidersPage::SlidersPage(HWND parent) : Page(parent)
{
    AddLabel(L"The same range on four sliders. A value can be typed too.", {16, 12, 640, 18});
    m_minimum = AddNumber(L"Mi&nimum:", kSliderMinimum, 16, 1.0);
    m_maximum = AddNumber(L"Ma&ximum:", kSliderMaximum, 180, 1000.0);
    m_step = AddNumber(L"&Step:", kSliderStep, 344, 1.0);
    m_centre = AddNumber(L"&Centre:", kSliderCentre, 508, 100.0);
    AddLabel(L"", {16, 98, 640, 18}, kSliderProblem);
    ShowAsProblem(kSliderProblem);
    for (std::size_t index = 0; index < kSliderCount; ++index)
        AddSlider(index);
    TakeRange();
}

std::unique_ptr<MeasureField> SlidersPage::AddNumber(const wchar_t* name, int id, int x, double value)
{
    AddLabel(name, {x, 36, 148, 18});
    auto field = std::make_unique<MeasureField>(*this, id, Box{x, 54, 140, 24}, kPlainNumber, value);
    field->WhenChanged([this](double) { TakeRange(); });
    return field;
}

void SlidersPage::AddSlider(std::size_t index)
{
    const int y = kTop + static_cast<int>(index) * kRowHeight;
    const int id = BarId(index);
    AddLabel(kKinds[index].name, {16, y + 6, 96, 18});
    const HWND bar = Add(TRACKBAR_CLASSW, L"", WS_TABSTOP | TBS_AUTOTICKS, id, {112, y, 390, 36});
    SendMessageW(bar, TBM_SETRANGE, TRUE, MAKELPARAM(0, kSliderPositions));
    SendMessageW(bar, TBM_SETTICFREQ, kSliderPositions / 10, 0);
    SendMessageW(bar, TBM_SETPAGESIZE, 0, kSliderPositions / 10);
    m_sliders.push_back({bar, nullptr,
        std::make_unique<MeasureField>(*this, id + kSliderValue, Box{516, y + 2, 132, 24}, kPlainNumber, 100.0)});
    m_sliders.back().value->WhenChanged([this, index](double value) { TakeValue(m_sliders[index], value); });
}

void SlidersPage::TakeRange()
{
    const double min = m_minimum->Value();
    const double max = m_maximum->Value();
    const wchar_t* const problem = ProblemOf(min, max, m_step->Value(), m_centre->Value());
    SetText(kSliderProblem, problem ? problem : L"");
    if (problem)
        return;
    for (std::size_t index = 0; index < m_sliders.size(); ++index) {
        Slider& slider = m_sliders[index];
        slider.mapping = kKinds[index].make(m_centre->Value());
        slider.mapping->SetRangeMin(min);   // a maximum below the fresh mapping's minimum would be refused
        slider.mapping->InitTransformation(min, max, kSliderPositions);
        slider.mapping->SetIncrementValue(m_step->Value());
        TakeValue(slider, slider.value->Value());
    }
}

void SlidersPage::TakeValue(Slider& slider, double value)
{
    const double position = slider.mapping->GetLinearValue(value);
    SendMessageW(slider.bar, TBM_SETPOS, TRUE, std::lround(position));
    // The nearest step in the range, exactly: positions of the bar are coarser.
    slider.value->SetValue(slider.mapping->GetMappedValue(position));
}

void SlidersPage::OnSlide(HWND bar)
{
    for (Slider& slider : m_sliders)
        if (slider.bar == bar)
            slider.value->SetValue(
                slider.mapping->GetMappedValue(static_cast<double>(SendMessageW(bar, TBM_GETPOS, 0, 0))));
}

LRESULT SlidersPage::OnNotify(const NMHDR& notice)
{
    const std::pair<UINT_PTR, MeasureField*> limits[] = {{kSliderMinimum, m_minimum.get()},
        {kSliderMaximum, m_maximum.get()}, {kSliderStep, m_step.get()}, {kSliderCentre, m_centre.get()}};
    for (const auto& [id, field] : limits)
        if (notice.idFrom == id + kFieldSpin)
            return field->OnSpin(notice);
    for (std::size_t index = 0; index < m_sliders.size(); ++index)
        if (notice.idFrom == static_cast<UINT_PTR>(BarId(index) + kSliderValue + kFieldSpin))
            return m_sliders[index].value->OnSpin(notice);
    return 0;
}
