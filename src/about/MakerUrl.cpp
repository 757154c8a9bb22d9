#include "about/MakerUrl.h"

#include "app/shared/Identity.h"

#include <QSettings>

namespace {

bool isWebAddress(const QUrl& url)
{
    const bool isWeb = url.scheme() == QLatin1String("https") || url.scheme() == QLatin1String("http");
    return url.isValid() && isWeb && !url.host().isEmpty();
}

} // namespace

QUrl makerUrl(const QSettings& settings)
{
    const QUrl configured(settings.value(QStringLiteral("MakerUrl")).toString(), QUrl::StrictMode);
    return isWebAddress(configured) ? configured : QUrl(QLatin1String(Identity::makerUrl));
}
