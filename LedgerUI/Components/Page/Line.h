#pragma once

#include <QFrame>

/// A line of one pixel: horizontal between rows and sections, vertical between panes and figures.
class Line final : public QFrame {
public:
    explicit Line(Qt::Orientation orientation, QWidget* parent = nullptr) : QFrame{parent}
    {
        setProperty("line", orientation == Qt::Horizontal ? QStringLiteral("h") : QStringLiteral("v"));
    }
};
