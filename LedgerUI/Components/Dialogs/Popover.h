#pragma once

#include <QFrame>
#include <QPointer>

/// A small panel over its window that belongs to the button it opens from. Esc, a click elsewhere and the focus moving
/// out close it; the focus then returns to that button, or, where the panel opens from something that takes no focus,
/// to what had it before.
class Popover : public QFrame {
    Q_OBJECT
public:
    enum class Edge { below, above, over };

    /// `anchor` decides the window and the place.
    explicit Popover(QWidget* anchor, Edge edge = Edge::below);

    /// Shows the panel beside its anchor, inside the window, and focuses `first`. Over its anchor it is as wide as
    /// that.
    void open(QWidget* first);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void place();
    [[nodiscard]] QWidget* focusAfterwards() const;

    QPointer<QWidget> m_anchor;
    QPointer<QWidget> m_opener; // had the focus before
    Edge m_edge;
};
