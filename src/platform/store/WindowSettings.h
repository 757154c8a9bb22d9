#pragma once

#include "platform/store/PropertyDictionary.h"
#include "platform/store/SaveResult.h"

#include <QString>

// Settings of the window itself, texts by key: where it is, how its tables are sorted, the maker's web site. A property
// list of one dictionary, saved as writeDictionariesFile does. A save reads the file again first, so windows on
// different displays keep each other's keys.
//
// Not QSettings: that waits without a limit for a FIFO in place of its file, and for a program that holds its lock.
class WindowSettings {
public:
    // The application's own file, in the user's configuration directory.
    WindowSettings();
    explicit WindowSettings(const QString& path);

    // Empty for a missing key.
    [[nodiscard]] QString text(const QString& key) const { return m_texts.text(key); }
    void setText(const QString& key, const QString& text);

    // Writes the changes to disk. After a failure this object keeps them, and the next call tries again.
    SaveResult save();

private:
    QString m_path;
    PropertyDictionary m_texts;
    PropertyDictionary m_changes; // since they were last saved
};
