// In which folders the user's content lies.
#pragma once

#include "Page.h"

class LocationsPage : public Page {
public:
    explicit LocationsPage(HWND parent);
    /// Asks for the folders anew: the user may have made or deleted some.
    void Show() override;

private:
    LRESULT OnNotify(const NMHDR& notice) override;
};
