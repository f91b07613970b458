#pragma once

#include <QPushButton>

/// The filled button of a form or page. Its focus ring lies inside the fill.
class PrimaryButton final : public QPushButton {
    Q_OBJECT
public:
    explicit PrimaryButton(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};
