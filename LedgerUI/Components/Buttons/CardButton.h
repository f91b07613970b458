#pragma once

#include <QAbstractButton>

#include "LedgerUI/Theme/Token.h"

/// A flat button of one or two lines with something at its left: a glyph, the application's mark or a person's
/// initials. Used for the company, the member and the ways to sign in. Folded, it shows only what stands at the left.
class CardButton final : public QAbstractButton {
    Q_OBJECT
public:
    enum class Lead { glyph, mark, initials };
    enum class Shape { full, folded };

    CardButton(Lead lead, int height, QWidget* parent = nullptr);

    void setGlyph(const QString& glyph);
    void setTitle(const QString& title);
    void setSubtitle(const QString& subtitle);
    /// A glyph at the right end that says what a click opens.
    void setTrailing(const QString& glyph);
    void setShape(Shape shape);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    [[nodiscard]] QRect leadRect() const;
    [[nodiscard]] QRect textRect() const;
    void paintGround(QPainter& painter) const;
    void paintLead(QPainter& painter) const;
    void paintTexts(QPainter& painter) const;
    [[nodiscard]] QFont titleFont() const;

    Lead m_lead;
    Shape m_shape = Shape::full;
    int m_height;
    QString m_glyph;
    QString m_subtitle;
    QString m_trailing;
};
