#pragma once

#include <QIcon>
#include <QWidget>

// Shows one image, drawn at the view's own size and scale, and to assistive technology as a graphic under its
// accessible name. It is square and measured in lines of its font's text, so that it keeps its proportion to what
// stands beside it.
class ImageView : public QWidget {
    Q_OBJECT
    Q_PROPERTY(int lines READ lines WRITE setLines)

public:
    explicit ImageView(QWidget* parent = nullptr);

    // A null icon shows nothing.
    void setImage(const QIcon& image);
    [[nodiscard]] const QIcon& image() const { return m_image; }

    [[nodiscard]] int lines() const { return m_lines; }
    void setLines(int lines);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QIcon m_image;
    int m_lines { 3 };
};
