#include "platform/ui/CaptionAlignment.h"

#include <QLabel>

#include <algorithm>

void alignCaptions(QWidget& page)
{
    QList<QLabel*> captions = page.findChildren<QLabel*>();
    captions.removeIf([](const QLabel* label) { return label->buddy() == nullptr; });
    int width = 0;
    for (const QLabel* caption : captions)
        width = std::max(width, caption->sizeHint().width());
    for (QLabel* caption : captions)
        caption->setMinimumWidth(width);
}
