#pragma once

#include <QString>

// Receives the outcome of every attempt to save a file, so that the user learns what will be lost.
class SaveReport {
public:
    virtual ~SaveReport() = default;
    // The reason is a phrase of the system, such as "No space left on device".
    virtual void saveFailed(const QString& path, const QString& reason) = 0;
    virtual void saveSucceeded(const QString& path) = 0;
};
