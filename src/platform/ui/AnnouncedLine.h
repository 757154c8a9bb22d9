#pragma once

#include <QLabel>

// A line of status text that screen readers announce each time it changes. Hidden while it is empty.
class AnnouncedLine : public QLabel {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(AnnouncedLine)

public:
    explicit AnnouncedLine(QWidget* parent = nullptr);
    ~AnnouncedLine() override = default;

    // Without a text to display, the message itself is displayed.
    void announce(const QString& message, const QString& displayText = {});

    // Reserves the space that this text needs, so that announcements do not move the widgets around the line.
    void reserveRoomFor(const QString& text);

    [[nodiscard]] int heightForWidth(int width) const override;

private:
    QString m_reservedText;
};
