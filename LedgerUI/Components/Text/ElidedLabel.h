#pragma once

#include "LedgerUI/Components/Text/TextLabel.h"

/// One line of a person's own data: cut with an ellipsis where room is short, whole in the tool tip.
class ElidedLabel final : public TextLabel {
    Q_OBJECT
public:
    explicit ElidedLabel(TypeStep step, Token tone = Token::text, Qt::TextElideMode mode = Qt::ElideRight,
                         QWidget* parent = nullptr);

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    [[nodiscard]] QString shownText() const;

    Qt::TextElideMode m_mode;
};
