#pragma once

class QDialog;
struct ProfileProposal;

// The part of the profile editor that the site survey uses.
class ProfileEditorSheet {
public:
    virtual ~ProfileEditorSheet() = default;

    // Fills the editor with a scanned network. Returns false if the editor must not be shown.
    [[nodiscard]] virtual bool AddProfile(const ProfileProposal& proposal) = 0;
    virtual void selectFirstTab() = 0;
    // The sheet to run. It saves the profile itself.
    [[nodiscard]] virtual QDialog& ProfileEditorWindow() = 0;
};
