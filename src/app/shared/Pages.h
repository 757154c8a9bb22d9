#pragma once

#include <QString>

// The pages as the device watch and other pages see them. The libraries of the pages do not depend on each other, and
// tests can record the calls. An absent page is a null pointer; callers skip it.

class SiteSurveyPage {
public:
    virtual ~SiteSurveyPage() = default;
    virtual void ClearAPList() = 0;
    virtual void RefreshAPList() = 0;
    virtual void StartSiteSurveyTimer() = 0;
    virtual void StopSiteSurveyTimer() = 0;
    virtual void UpdateConnectStatus(const QString& text) = 0;
};

class ProfilePage {
public:
    virtual ~ProfilePage() = default;
    virtual void RefreshProfileList() = 0;
    virtual void CheckProfileSettingForConnect() = 0;
    // The user connected manually: stop re-applying the active profile automatically.
    virtual void DisabledActivateProfile() = 0;
};

class AdvancePage {
public:
    virtual ~AdvancePage() = default;
    virtual void RadioStatus() = 0;
    virtual void OnApply() = 0;
    // No card was found: forget what was known about the last one. Sends no requests.
    virtual void ForgetCard() = 0;
    // What is known about the card may have changed: show it. Sends no requests.
    virtual void ShowCard() = 0;
};

class AboutPage {
public:
    virtual ~AboutPage() = default;
    virtual void GetAllInformation() = 0;
};
