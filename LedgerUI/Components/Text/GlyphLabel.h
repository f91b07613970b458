#pragma once

#include <QWidget>

#include "LedgerUI/Theme/ThemeColor.h"

/// A single glyph in a theme colour. It says nothing to a reader: its meaning belongs to the text beside it.
class GlyphLabel final : public QWidget {
    Q_OBJECT
public:
    /// `extent` is the glyph's edge in logical pixels.
    GlyphLabel(QString name, const ThemeColor& color, int extent, QWidget* parent = nullptr);

    void setGlyph(const QString& name, const ThemeColor& color);
    [[nodiscard]] QSize sizeHint() const override { return {m_extent, m_extent}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_name;
    ThemeColor m_color;
    int m_extent;
};
