#include "about/BundleInformation.h"

#include "platform/store/PropertyListFile.h"

#include <QDateTime>
#include <QFileInfo>

namespace {

constexpr int datePartLength = 10; // of "YYYY-MM-DDTHH:MM:SS"

QString shortVersion(const QString& path)
{
    const auto root = readPropertyListFile(path);
    const PropertyValue* const version = root ? root->valueOf(u"CFBundleShortVersionString") : nullptr;
    const QString* const text = version ? version->text() : nullptr;
    return text ? *text : QString();
}

QString modificationDate(const QString& path)
{
    return QFileInfo(path).lastModified().toLocalTime().toString(Qt::ISODate).left(datePartLength);
}

} // namespace

QString utilityInformationPath(const QString& root)
{
    return root + QStringLiteral("/Applications/Vantrel.app/Contents/Info.plist");
}

QString driverInformationPath(const QString& root)
{
    return root + QStringLiteral("/System/Library/Extensions/Pellvane.kext/Contents/Info.plist");
}

BundleInformation bundleInformation(const QString& path)
{
    return { shortVersion(path), modificationDate(path) };
}
