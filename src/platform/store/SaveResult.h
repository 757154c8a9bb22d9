#pragma once

#include <QString>

#include <system_error>

// The outcome of saving a file; true on success.
struct SaveResult {
    std::error_code error {};
    QString path {}; // the file that could not be written or backed up; empty on success

    explicit operator bool() const { return !error; }
};
