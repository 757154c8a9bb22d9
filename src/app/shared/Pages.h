#pragma once

#include <QString>

// What the pages and the device watch ask of each other, as narrow interfaces: the rooms of the pages do not know
// each other, and a test can record the calls. A page that is absent is a null pointer; its calls are skipped.

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
    // The user has connected by hand: the active profile is not re-applied by itself any more.
    virtual void DisabledActivateProfile() = 0;
};

class AdvancePage {
public:
    virtual ~AdvancePage() = default;
    virtual void RadioStatus() = 0;
    virtual void OnApply() = 0;
};

class AboutPage {
public:
    virtual ~AboutPage() = default;
    virtual void GetAllInformation() = 0;
};
