#pragma once

#include <QString>

// Version and date of an installed bundle, from its property list.
struct BundleInformation {
    QString version; // CFBundleShortVersionString; empty if missing
    QString date; // modification date of the file, YYYY-MM-DD in local time; empty if missing

    bool operator==(const BundleInformation&) const = default;
};

// The fixed paths of the utility's and the driver's property lists. Tests prepend a root.
[[nodiscard]] QString utilityInformationPath(const QString& root = QString());
[[nodiscard]] QString driverInformationPath(const QString& root = QString());

// Fields that cannot be read are left empty. Follows symbolic links.
[[nodiscard]] BundleInformation bundleInformation(const QString& path);
