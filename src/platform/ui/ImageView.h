#pragma once

#include <QIcon>
#include <QWidget>

// Shows one image at the size and scale of the view; accessible as a graphic with the view's accessible name. The view
// is square and sized in lines of text, so that it stays in proportion to neighbouring text.
class ImageView final : public QWidget {
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
