#pragma once

#include <QString>

// What the property list of an installed bundle tells about it.
struct BundleInformation {
    QString version; // its CFBundleShortVersionString; empty where there is none
    QString date; // the day on which the file was last changed, YYYY-MM-DD in local time; empty without a file

    bool operator==(const BundleInformation&) const = default;
};

// The places of the utility's and the driver's property lists. They are fixed; a root before them is for tests.
[[nodiscard]] QString utilityInformationPath(const QString& root = QString());
[[nodiscard]] QString driverInformationPath(const QString& root = QString());

// A file that is missing or is no property list leaves empty what it would tell. Links are followed.
[[nodiscard]] BundleInformation bundleInformation(const QString& path);
