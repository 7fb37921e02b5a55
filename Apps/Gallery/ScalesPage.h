// Drawing scales: the presets on offer, and any other.
#pragma once

#include "MeasureField.h"
#include "WorldScale.h"

#include <memory>

class ScalesPage : public Page {
public:
    explicit ScalesPage(HWND parent);
    void TakeEnter() override { TakeText(); }

private:
    void OnCommand(int id, int code) override;
    LRESULT OnNotify(const NMHDR& notice) override;
    void TakePreset();
    /// Takes what was typed, such as "1:50", "2:1" or "1/4 in : 1 ft".
    void TakeText();
    void ShowScale();
    void ShowPageDistance();
    void ShowWorldDistance();

    std::vector<TvlUtl::WorldScale::Preset> m_presets;
    double m_scale = 1.0;   // distance in the world by distance on the page
    std::unique_ptr<MeasureField> m_world;
    std::unique_ptr<MeasureField> m_page;
};
