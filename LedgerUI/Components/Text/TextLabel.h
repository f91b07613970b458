#pragma once

#include <optional>

#include <QLabel>

#include "LedgerUI/Theme/ThemeColor.h"
#include "LedgerUI/Theme/TypeScale.h"

/// A label of one text step and one of the text colours (text, text2, text3, accent, danger, warn, ok).
class TextLabel : public QLabel {
    Q_OBJECT
public:
    explicit TextLabel(TypeStep step, Token tone = Token::text, QWidget* parent = nullptr);

    void setTone(Token tone);
    /// A colour beyond those of text, for a label whose tone is `text`.
    void setInk(const ThemeColor& ink);
    void setBold(bool isBold);

    /// A label that wraps is never lower than its text needs at its width.
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void applyInk();

    std::optional<ThemeColor> m_ink;
};
