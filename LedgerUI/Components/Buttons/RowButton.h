#pragma once

#include <QAbstractButton>

/// A whole row that can be pressed: what it shows stands in its layout, or is painted over its ground.
class RowButton : public QAbstractButton {
    Q_OBJECT
public:
    explicit RowButton(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
};
