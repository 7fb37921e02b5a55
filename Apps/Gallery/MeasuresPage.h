// Numeric fields in several units.
#pragma once

#include "MeasureField.h"

#include <memory>

class MeasuresPage : public Page {
public:
    explicit MeasuresPage(HWND parent);

private:
    void OnCommand(int id, int code) override;
    LRESULT OnNotify(const NMHDR& notice) override;
    /// Tells a field's measure in the base units of documents.
    void ShowBases(std::size_t index);

    std::vector<std::unique_ptr<MeasureField>> m_fields;
};
