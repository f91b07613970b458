#pragma once

#include <QTextEdit>

#include "LedgerUI/Theme/Token.h"
#include "LedgerUI/Theme/TypeScale.h"

/// A person's own text, whole and ready to be copied: in as many lines as it needs, broken inside a word where the
/// word alone is wider than its place.
class SelectableText final : public QTextEdit {
    Q_OBJECT
public:
    /// `tone` is `text` or `text2`.
    SelectableText(const QString& text, TypeStep step, Token tone, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
};
