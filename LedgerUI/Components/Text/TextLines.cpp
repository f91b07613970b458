#include "LedgerUI/Components/Text/TextLines.h"

#include <QPainter>
#include <QTextLayout>
#include <QTextOption>

namespace {

constexpr int mostLines = 2;

}

void drawTwoLines(QPainter& painter, const QRect& area, const QString& text)
{
    const auto metrics = painter.fontMetrics();
    QTextOption wrapping{Qt::AlignLeft};
    wrapping.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    QTextLayout layout{text, painter.font()};
    layout.setTextOption(wrapping);
    QStringList lines;
    layout.beginLayout();
    while (lines.size() < mostLines) {
        auto line = layout.createLine();
        if (!line.isValid())
            break;
        line.setLineWidth(area.width());
        const bool isLast = lines.size() == mostLines - 1;
        const auto rest = text.mid(line.textStart(), isLast ? -1 : line.textLength()).trimmed();
        lines << metrics.elidedText(rest, Qt::ElideRight, area.width());
    }
    layout.endLayout();
    const int leading = metrics.height() - 2;
    int top = area.center().y() - static_cast<int>(lines.size()) * leading / 2;
    for (const auto& line : lines) {
        painter.drawText(QRect{area.left(), top, area.width(), leading}, Qt::AlignLeft | Qt::AlignVCenter, line);
        top += leading;
    }
}
