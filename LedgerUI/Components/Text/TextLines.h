#pragma once

class QPainter;
class QRect;
class QString;

/// Paints a text in the painter's font and pen on up to two lines, in the middle of `area`'s height. A word too long
/// for a line is broken; what needs a third line is cut with an ellipsis.
void drawTwoLines(QPainter& painter, const QRect& area, const QString& text);
