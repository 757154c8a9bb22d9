#include "survey/RescanProgress.h"

#include <QCoreApplication>

#include <utility>

namespace {

QString tr(const char* text)
{
    return QCoreApplication::translate("RescanProgress", text);
}

} // namespace

void RescanProgress::begin(std::weak_ptr<ProfileData> task)
{
    m_task = std::move(task);
    m_asked = true;
}

QString RescanProgress::text(bool deviceExists) const
{
    if (!m_asked)
        return {};
    return deviceExists ? tr("Searching for networks…") : tr("The search starts when a wireless card is ready.");
}
