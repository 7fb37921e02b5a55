// A field for a measure, as applications of the suite have them.
#pragma once

#include "Page.h"
#include "siblings/TvlPlatform/TvlString.h"

#include <functional>

/// An edit control with arrows and a line for problems. It takes expressions in any unit; Enter and leaving the field
/// evaluate them and show the value in the field's unit, Escape brings the last value back. Up and Down step by the unit's
/// small increment, with Shift by the medium one, Page Up, Page Down and with Ctrl by the large one. A text without a value
/// stays as it is, with the place that is wrong selected.
class MeasureField {
public:
    using Changed = std::function<void(double value)>;

    /// @param id   of the edit control; kFieldSpin and kFieldProblem stand behind it
    /// @param box  of the edit control with its arrows
    /// @param unit display id of a WUnit
    MeasureField(Page& page, int id, const Box& box, int unit, double value);
    MeasureField(const MeasureField&) = delete;
    MeasureField& operator=(const MeasureField&) = delete;
    ~MeasureField();

    /// Called when the user has changed the value.
    void WhenChanged(Changed changed) { m_changed = std::move(changed); }
    /// In the field's unit.
    double Value() const { return m_value; }
    int Unit() const { return m_unit; }
    /// Shows another value, and tells nobody.
    void SetValue(double value);
    /// Shows the same measure in another unit; a number without a unit keeps its digits.
    void SetUnit(int unit);
    /// Takes the text's value; false when it has none.
    bool Commit();
    /// For the page: a press on the arrows. Returns what the arrows are to do themselves, which is nothing.
    LRESULT OnSpin(const NMHDR& notice);

private:
    static LRESULT CALLBACK Procedure(
        HWND edit, UINT message, WPARAM first, LPARAM second, UINT_PTR id, DWORD_PTR field);
    bool OnKey(WPARAM key);
    void Step(int level, bool up);
    void Show();
    void ShowProblem(const TvlString& problem, std::size_t place);
    void TakeFromUser(double value);

    Page& m_page;
    int m_id;
    int m_unit;
    double m_value;
    TvlString m_shown;   // the value's text: while it stands there, nothing was typed
    Changed m_changed;
};

/// Adds the displays of WUnit to a list, by their names and with their ids.
void AddUnits(HWND combo);
