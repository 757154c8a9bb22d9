#pragma once

#include "platform/UserDefaults.h"

#include <QSettings>

// User defaults in a settings file (a property list), for its user alone (mode 0600) and replaced as a whole. What a
// process leaves beside the file that ends while it saves, the next save removes. A file
// that is damaged holds nothing; before it is replaced it is kept beside (keepUnreadableFile). Where it
// cannot be kept, it stays, and nothing can be set.
class SettingsUserDefaults final : public UserDefaults {
public:
    // The file of the application's own domain, in the user's folder of settings.
    SettingsUserDefaults();
    explicit SettingsUserDefaults(const QString& path);

    [[nodiscard]] QString path() const { return m_settings.fileName(); }

    [[nodiscard]] std::optional<PropertyDictionaries> arrayForKey(const QString& key) const override;
    void setArray(const QString& key, const PropertyDictionaries& array) override;
    void removeObjectForKey(const QString& key) override;
    void synchronize() override;

private:
    [[nodiscard]] bool keepDamaged();

    QSettings m_settings;
    bool m_damaged;
};
