#pragma once

#include "platform/store/PropertyDictionary.h"

#include <QString>

#include <random>

// Random texts of pieces that are hard to store; reproducible by seed.
class RandomTexts {
public:
    explicit RandomTexts(unsigned seed)
        : m_random(seed)
    {
    }

    [[nodiscard]] int below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }

    // Representable in XML without escapes.
    [[nodiscard]] QString plain() { return ofPieces(plainPieces); }
    // May also contain control characters, unpaired surrogates, U+FFFE, U+FFFF and escapes.
    [[nodiscard]] QString any() { return below(3) == 0 ? ofPieces(oddPieces) : ofPieces(oddPieces) + plain(); }

    // Up to four dictionaries with up to six texts each.
    template <typename Text> [[nodiscard]] PropertyDictionaries dictionaries(Text text)
    {
        PropertyDictionaries result(static_cast<std::size_t>(below(5)));
        for (PropertyDictionary& dictionary : result)
            for (int entries = 1 + below(6); entries > 0; --entries)
                dictionary.set(text(), text());
        return result;
    }

private:
    using Piece = QString (RandomTexts::*)();

    QString letters() { return QStringLiteral("Home net 2,4"); }
    QString nothing() { return {}; }
    QString markup() { return QStringLiteral("<key>&amp;</key>\"']]><!-- & ${x} %41 @Invalid() ;=[]\\"); }
    QString spaces() { return QStringLiteral(" \t\n  "); }
    QString umlauts() { return QString(QChar(0xE4)) + QChar(0x20AC) + QChar(0x85) + QChar(0x7F) + QChar(0x2028); }
    QString supplementaryPlane() { return QString::fromUcs4(U"\U0001F4F6\U0010FFFF", 2); }
    QString networkName() { return QString(32, QChar(0xEF00 + below(256))); }
    QString carriageReturns() { return QStringLiteral("\r\n\r a \n\r"); }
    QString controlCharacter() { return QChar(below(32)); }
    QString unpairedSurrogate() { return QChar(0xD800 + below(0x800)); }
    QString noncharacter() { return QChar(0xFFFE + below(2)); }
    QString escape() { return QString(QChar(0xEEFF)) + (below(2) == 0 ? QStringLiteral("0041") : QString()); }

    static constexpr Piece plainPieces[] { &RandomTexts::letters, &RandomTexts::nothing, &RandomTexts::markup,
        &RandomTexts::spaces, &RandomTexts::umlauts, &RandomTexts::supplementaryPlane, &RandomTexts::networkName };
    static constexpr Piece oddPieces[] { &RandomTexts::carriageReturns, &RandomTexts::controlCharacter,
        &RandomTexts::unpairedSurrogate, &RandomTexts::noncharacter, &RandomTexts::escape };

    template <std::size_t count> QString ofPieces(const Piece (&pieces)[count])
    {
        QString text;
        for (int number = below(4); number > 0; --number)
            text += (this->*pieces[m_random() % count])();
        return text;
    }

    std::mt19937 m_random;
};
