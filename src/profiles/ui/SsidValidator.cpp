#include "profiles/ui/SsidValidator.h"

#include "profiles/ProfileEditorRules.h"

#include <algorithm>

QValidator::State SsidValidator::validate(QString& text, int& position) const
{
    const QString fitting = fittingSsid(text);
    if (fitting == text)
        return Acceptable;
    if (position < text.size())
        return Invalid;
    text = fitting;
    position = std::min(position, static_cast<int>(text.size()));
    return Acceptable;
}
