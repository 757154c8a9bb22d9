#pragma once

#include "platform/store/SaveReport.h"

#include <map>

// The files whose last save failed, with the reasons.
class RecordingSaveReport final : public SaveReport {
public:
    void saveFailed(const QString& path, const QString& reason) override { failures[path] = reason; }
    void saveSucceeded(const QString& path) override { failures.erase(path); }

    std::map<QString, QString> failures;
};
