// The paper picker.
#pragma once

#include "Page.h"
#include "PaperTypes.h"

class PapersPage : public Page {
public:
    explicit PapersPage(HWND parent);
    ~PapersPage() override;

private:
    void OnCommand(int id, int code) override;
    void OnDraw(const DRAWITEMSTRUCT& item) override;
    /// Lists the papers in the order in which they are offered.
    void FillList();
    /// Takes the paper that is chosen, as it is turned.
    void ShowPaper();
    /// How much smaller than on paper the picture is drawn: the first round scale that it fits with.
    int ScaleFor(const RECT& room) const;

    PaperTypeInformation m_paper;   // with its sides changed when it is turned
};
