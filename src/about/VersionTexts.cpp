#include "about/VersionTexts.h"

QString eepromVersionText(const EepromVersion& version)
{
    return QStringLiteral("%1.%2").arg(version[2]).arg(version[3]);
}
