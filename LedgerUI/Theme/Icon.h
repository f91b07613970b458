#pragma once

#include <QColor>
#include <QIcon>
#include <QPixmap>
#include <QString>

#include "LedgerUI/Theme/ThemeColor.h"

class QPainter;

/// The glyphs of the icon set, by their name in it ("arrow-up-right"), in the colours of the theme in force: an icon
/// made once follows a change of theme by itself.
namespace Icon {

/// `checked` colours the icon of a control that is switched on.
QIcon of(const QString& name, const ThemeColor& color, const ThemeColor& checked);
QIcon of(const QString& name, const ThemeColor& color = Token::text2);

/// One glyph of `extent` logical pixels, sharp at `devicePixelRatio`.
QPixmap pixmap(const QString& name, const QColor& color, int extent, qreal devicePixelRatio);

/// Paints a glyph as lines, sharp on whatever is painted on. May be called on a worker.
void paint(QPainter& painter, const QString& name, const QColor& color, const QRectF& place);

/// The application's mark.
QIcon mark();
/// Painted as lines; may be called on a worker.
void paintMark(QPainter& painter, const QRectF& place);

/// Whether the icon set has a glyph of this name.
bool exists(const QString& name);

}
