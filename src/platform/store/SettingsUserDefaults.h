#pragma once

#include "platform/store/UserDefaults.h"

#include <QSettings>
#include <QString>

#include <map>
#include <optional>

// User defaults in a settings file (a property list), for its user alone (mode 0600) and replaced as a whole. A file
// that is damaged holds nothing; in one written by hand, what is no list of dictionaries is left out, and what is no
// text is taken as dictionariesOf takes it. A file that does not come back as a whole is kept beside
// (keepUnreadableFile) before it is replaced. Where it cannot be kept or made private, or while another process saves,
// the file stays as it is, and what was set is known to this object alone until a later synchronize. What a process
// leaves beside the file that ends while it saves, the next save removes.
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
    [[nodiscard]] std::optional<PropertyDictionaries> savedArray(const QString& key) const;
    void saveAllAgain();

    QSettings m_settings;
    std::map<QString, std::optional<PropertyDictionaries>> m_unsaved; // nothing: to be removed
};
