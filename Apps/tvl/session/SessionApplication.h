// The application whose life a session is.
#pragma once

#include "Flyer.h"
#include "WorkspaceHost.h"

#include <string>
#include <vector>

/// An application that works on a document, and may refuse to change its workspace.
class SessionApplication final : public WorkspaceHost {
public:
    explicit SessionApplication(Flyer& document) : WorkspaceHost(kDesktopInteraction), m_document(document) { }

    /// Whether the next changes of the workspace are refused.
    void RefuseChanges(bool refuse) { m_refuses = refuse; }
    /// Changes of the workspace, and of what the device is used with, that it was told of.
    int CountChanges() const { return m_changes; }
    int CountModeChanges() const { return m_modeChanges; }
    /// The labels of features that were used.
    const std::vector<TvlString>& Labels() const { return m_labels; }
    /// Writes the preferences to the settings, as before a change.
    void Save() { SaveWorkspaceState(); }

    int TrackFeature(const wchar_t* label) override;
    ITovelCmn_Doc* GetActiveDocument() override { return &m_document; }

private:
    void OnWorkspaceChanging(bool first, bool second) override;
    void SaveWorkspaceState() override;
    void OnInteractionModeChanged() override { ++m_modeChanges; }

    Flyer& m_document;
    bool m_refuses = false;
    int m_changes = 0;
    int m_modeChanges = 0;
    std::vector<TvlString> m_labels;
};
