#pragma once

#include "survey/ChannelViewModel.h"
#include "survey/ui/ChannelViewGeometry.h"
#include "survey/ui/ChannelViewLabels.h"

#include <QFrame>

#include <functional>
#include <optional>
#include <vector>

class QHelpEvent;

// The networks of the list, each drawn at its channel, as high as its signal. A click or the keyboard selects a
// network: Left and Right along the axis, Up and Down by signal, Home and End. A double click or Return activates it.
// The accessible description holds the same in words.
class ChannelView final : public QFrame {
    Q_OBJECT

public:
    explicit ChannelView(QWidget* parent = nullptr);

    // A new list has new row numbers, so no row is selected afterwards. joinedRow is -1 for none.
    void setNetworks(std::vector<ChannelViewNetwork> networks, int joinedRow = -1);
    void setJoinedRow(int row);
    // Emits no signal. -1 for none.
    void setSelectedRow(int row);
    [[nodiscard]] int selectedRow() const { return m_model.selectedRow; }

    // Shown in place of networks while there are none.
    void setEmptyText(const QString& text);
    // The same for a text that changes: it is asked for whenever the view is painted or updateEmptyText is called.
    void setEmptyTextSource(std::function<QString()> source);
    void updateEmptyText();

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

Q_SIGNALS:
    // The user selected another row.
    void rowSelected(int row);
    void rowActivated(int row);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    [[nodiscard]] QString emptyText() const;
    [[nodiscard]] ChannelViewGeometry geometryOfContents() const;
    [[nodiscard]] const ChannelViewNetwork* networkAtPoint(const QPointF& point) const;
    [[nodiscard]] bool isSelectionDrawn() const;
    void select(int row);
    void showChanges();
    void showToolTip(const QHelpEvent& event);

    ChannelViewModel m_model;
    int m_pressedRow { -1 };
    std::function<QString()> m_emptyTextSource;
};
