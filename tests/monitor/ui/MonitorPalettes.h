#pragma once

#include <QPalette>

inline QPalette lightPalette()
{
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(0xef, 0xef, 0xef));
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Text, Qt::black);
    palette.setColor(QPalette::WindowText, Qt::black);
    return palette;
}

inline QPalette darkPalette()
{
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(0x35, 0x35, 0x35));
    palette.setColor(QPalette::Base, QColor(0x23, 0x23, 0x23));
    palette.setColor(QPalette::Text, QColor(0xee, 0xee, 0xee));
    palette.setColor(QPalette::WindowText, QColor(0xee, 0xee, 0xee));
    return palette;
}
