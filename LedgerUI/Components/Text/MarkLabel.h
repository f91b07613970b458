#pragma once

#include <QWidget>

/// The application's mark, `extent` logical pixels wide and high.
class MarkLabel final : public QWidget {
    Q_OBJECT
public:
    explicit MarkLabel(int extent, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};
