#pragma once

#include <QToolButton>

/// The middle of the period navigator: a calendar, the period in bold, and a chevron.
class PeriodButton final : public QToolButton {
    Q_OBJECT
public:
    explicit PeriodButton(QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
};
