#include "LedgerUI/Screens/Records/RecordTotal.h"

#include <QHeaderView>
#include <QPainter>
#include <QScrollBar>
#include <QStringList>
#include <QTableView>

#include "LedgerUI/Components/Table/CellPainter.h"
#include "LedgerUI/Components/Table/RowDelegate.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/Theme.h"

Cell recordCell(const RecordCell& cell, const RecordColumn& column, const RecordInks& inks, bool hasTwoLines)
{
    Cell shown;
    const CellText first{
        .text = cell.text, .ink = inks.of(cell.tone), .isStruck = cell.isStruck, .isBold = cell.isBold};
    const CellText second{.text = cell.second, .step = TypeStep::small, .ink = Token::text2};
    if (column.isAtRight) {
        shown.amounts.push_back({.code = {}, .figure = first});
        if (!cell.second.isEmpty())
            shown.amounts.push_back({.code = {}, .figure = second});
        return shown;
    }
    shown.glyph = cell.swatch ? QStringLiteral("square-fill") : cell.glyph;
    shown.glyphInk = cell.swatch ? RecordInks::ofPerson(*cell.swatch) : inks.of(cell.glyphTone);
    shown.lines.push_back(first);
    if (!cell.chip.isEmpty())
        shown.marks.push_back({.word = cell.chip});
    if (hasTwoLines && !cell.second.isEmpty())
        shown.lines.push_back(second);
    else if (!cell.second.isEmpty())
        shown.beside = second;
    return shown;
}

RecordTotal::RecordTotal(QTableView& table) : QWidget{table.parentWidget()}, m_table{table}
{
    setFixedHeight(Space::totalsStrip);
    const auto again = [this] { update(); };
    connect(table.horizontalHeader(), &QHeaderView::sectionResized, this, again);
    connect(table.horizontalScrollBar(), &QScrollBar::valueChanged, this, again);
    connect(&Theme::current(), &Theme::changed, this, again);
}

void RecordTotal::present(const RecordRows& rows, const RecordInks& inks)
{
    m_columns = rows.columns;
    m_total = rows.total;
    m_inks = inks;
    setVisible(m_total.has_value());
    QStringList said;
    for (std::size_t at = 0; m_total && at < m_total->cells.size(); ++at) {
        const auto& cell = m_total->cells[at];
        if (!cell.text.isEmpty())
            said << QStringLiteral("%1: %2").arg(m_columns[at].head, cell.spoken.isEmpty() ? cell.text : cell.spoken);
    }
    setAccessibleName(said.join(QStringLiteral(", ")));
    update();
}

void RecordTotal::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter{this};
    painter.setRenderHint(QPainter::Antialiasing);
    const auto& theme = Theme::current();
    painter.fillRect(rect(), theme.color(Token::surfaceAlt));
    painter.fillRect(QRect{0, 0, width(), 1}, theme.color(Token::divider));
    painter.fillRect(QRect{0, height() - 1, width(), 1}, theme.color(Token::divider));
    if (!m_total)
        return;
    const auto& heads = *m_table.horizontalHeader();
    const int columns = static_cast<int>(m_columns.size());
    for (int at = 0; at < columns && static_cast<std::size_t>(at) < m_total->cells.size(); ++at) {
        if (heads.isSectionHidden(at))
            continue;
        const QRect cell{heads.sectionViewportPosition(at), 0, heads.sectionSize(at), height()};
        CellPainter{painter}.paint(recordCell(m_total->cells[static_cast<std::size_t>(at)],
                                              m_columns[static_cast<std::size_t>(at)], *m_inks, false),
                                   RowDelegate::contentsOf(cell, at, columns));
    }
}
