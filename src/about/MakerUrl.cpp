#include "about/MakerUrl.h"

#include "app/shared/Identity.h"
#include "platform/store/WindowSettings.h"

namespace {

bool isWebAddress(const QUrl& url)
{
    const bool isWeb = url.scheme() == QLatin1String("https") || url.scheme() == QLatin1String("http");
    return url.isValid() && isWeb && !url.host().isEmpty();
}

} // namespace

QUrl makerUrl(const WindowSettings& settings)
{
    const QUrl configured(settings.text(QStringLiteral("MakerUrl")), QUrl::StrictMode);
    return isWebAddress(configured) ? configured : QUrl(QLatin1String(Identity::makerUrl));
}
