#pragma once

#include "platform/store/UserDefaults.h"

#include <QString>

#include <map>
#include <optional>

// User defaults in a property list, saved as AtomicFile does. At start a damaged file counts as empty. In a file
// edited by hand, entries that are not lists of dictionaries are skipped; dictionariesOf reads the others. A file that
// cannot be read completely is backed up before it is replaced (backUpUnreadableFile). A save reads the file again
// first, so programs that run at the same time keep each other's keys. A query reads the file again as well, so it
// returns what another program has saved; while the file is missing or not completely readable, it returns what was
// read before.
class SettingsUserDefaults final : public UserDefaults {
public:
    // The application's own file, in the user's configuration directory.
    SettingsUserDefaults();
    explicit SettingsUserDefaults(const QString& path);

    [[nodiscard]] QString path() const { return m_path; }

    [[nodiscard]] std::optional<PropertyDictionaries> arrayForKey(const QString& key) const override;
    [[nodiscard]] std::optional<PropertyDictionaries> savedArrayForKey(const QString& key) const override;
    void setArray(const QString& key, const PropertyDictionaries& array) override;
    void removeObjectForKey(const QString& key) override;
    SaveResult synchronize() override;

private:
    using Arrays = std::map<QString, PropertyDictionaries>;
    struct StoredArrays {
        Arrays arrays;
        bool isComplete { false }; // the file holds nothing else
    };

    [[nodiscard]] static StoredArrays readArrays(const QString& path);
    void applyChanges(Arrays& arrays) const;

    QString m_path;
    mutable Arrays m_saved; // as last read or written
    std::map<QString, std::optional<PropertyDictionaries>> m_changes; // since then; std::nullopt removes the key
};
