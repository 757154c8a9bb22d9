#pragma once

class QDialog;
struct ProfileProposal;

// The profile editor, as far as the site survey opens it.
class ProfileEditorSheet {
public:
    virtual ~ProfileEditorSheet() = default;

    // Prepares the editor with a network of the list. False when it is not to be shown.
    [[nodiscard]] virtual bool AddProfile(const ProfileProposal& proposal) = 0;
    virtual void selectFirstTab() = 0;
    // The sheet to be run; it saves the profile by itself.
    [[nodiscard]] virtual QDialog& ProfileEditorWindow() = 0;
};
