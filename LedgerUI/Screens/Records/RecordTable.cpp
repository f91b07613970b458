#include "LedgerUI/Screens/Records/RecordTable.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <QScrollBar>

#include "LedgerUI/Components/Table/CellPainter.h"
#include "LedgerUI/Components/Table/RowHeads.h"
#include "LedgerUI/Screens/Records/RecordInks.h"
#include "LedgerUI/Screens/Records/RecordTotal.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int stretchMinimum = 112;
constexpr int stretchWish = 208; // most names in full; columns that may go make room for them

double textWidth(const QString& text, TypeStep step, bool isBold)
{
    return QFontMetricsF{isBold ? TypeScale::bold(step) : TypeScale::font(step)}.horizontalAdvance(text);
}

int widthOf(const RecordCell& cell, RecordTable::Lines lines)
{
    auto width = textWidth(cell.text, TypeStep::body, cell.isBold);
    if (lines == RecordTable::Lines::two)
        width = std::max(width, textWidth(cell.second, TypeStep::small, false));
    return static_cast<int>(std::ceil(width)) + 1;
}

}

struct RecordTable::Parts {
    RecordModel* model = nullptr;
    std::optional<RecordInks> inks;
    RecordTotal* total = nullptr;
};

RecordTable::RecordTable(Lines lines, QWidget* parent) : RecordTable{lines, std::make_unique<Parts>(), parent} {}

RecordTable::RecordTable(Lines lines, std::unique_ptr<Parts> parts, QWidget* parent)
    : RowTable{*(parts->model = new RecordModel),
               [at = parts.get(), lines](const QModelIndex& index, RowDelegate::Density) {
                   const auto& column = at->model->shown().columns[static_cast<std::size_t>(index.column())];
                   return recordCell(at->model->cell(index.row(), index.column()), column, *at->inks,
                                     lines == Lines::two);
               },
               parent},
      m_parts{std::move(parts)}, m_lines{lines}
{
    m_parts->model->setParent(this);
    m_parts->total = new RecordTotal(*this);
    setSelectionMode(SingleSelection);
    heads().setWrapping();
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setDensity(lines == Lines::two ? RowDelegate::Density::twoLines : RowDelegate::Density::oneLine);
}

RecordTable::~RecordTable() = default;

void RecordTable::present(RecordRows rows, const RecordInks& inks)
{
    m_parts->inks = inks;
    m_parts->total->present(rows, inks);
    m_parts->model->present(std::move(rows));
    layOut();
    viewport()->update();
}

void RecordTable::fitRows(int most)
{
    m_mostRows = most;
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    fitHeight();
}

QWidget* RecordTable::total() const
{
    return m_parts->total;
}

bool RecordTable::isEmpty() const
{
    return m_parts->model->rowCount() == 0;
}

std::string RecordTable::chosen() const
{
    const auto ids = selectedIDs();
    return ids.size() == 1 ? ids.front() : std::string{};
}

RecordEntry RecordTable::chosenEntry() const
{
    const auto rows = selectedRows();
    return rows.size() == 1 ? m_parts->model->shown().rows[static_cast<std::size_t>(rows.front())].entry
                            : RecordRow{}.entry;
}

void RecordTable::follow(std::string_view id)
{
    if (chosen() == id || id.empty())
        return;
    const QSignalBlocker quietly{this};
    choose(id);
}

/// The widest text of the column, its sum included.
int RecordTable::contentWidth(int column) const
{
    int widest = 0;
    for (int row = 0; row < m_parts->model->rowCount(); ++row)
        widest = std::max(widest, widthOf(m_parts->model->cell(row, column), m_lines));
    const auto& total = m_parts->model->shown().total;
    if (total && static_cast<std::size_t>(column) < total->cells.size())
        widest = std::max(widest, widthOf(total->cells[static_cast<std::size_t>(column)], Lines::one));
    const QRect wide{0, 0, 1000, 30};
    return widest + wide.width() - RowDelegate::contentsOf(wide, column, m_parts->model->columnCount()).width();
}

void RecordTable::layOut()
{
    const auto& columns = m_parts->model->shown().columns;
    const int count = static_cast<int>(columns.size());
    std::vector<int> widths;
    int needed = 0;
    for (int at = 0; at < count; ++at) {
        const bool stretches = columns[static_cast<std::size_t>(at)].room == ColumnRoom::stretches;
        widths.push_back(stretches ? std::clamp(contentWidth(at), stretchMinimum, stretchWish)
                                   : std::max({heads().wrappedWidth(at), contentWidth(at),
                                               heads().minimumSectionSize()})); // no column gets less than that
        needed += widths.back();
        setColumnHidden(at, false);
    }
    const int room = viewport()->width();
    std::vector<int> hidden;
    for (int at = 0; at < count && needed > room; ++at) {
        if (columns[static_cast<std::size_t>(at)].room != ColumnRoom::mayGo)
            continue;
        setColumnHidden(at, true);
        hidden.push_back(at);
        needed -= widths[static_cast<std::size_t>(at)];
    }
    for (int at = 0; at < count; ++at) {
        const bool stretches = columns[static_cast<std::size_t>(at)].room == ColumnRoom::stretches;
        const int width = widths[static_cast<std::size_t>(at)];
        setColumnWidth(at, stretches ? std::max(stretchMinimum, width + room - needed) : width);
    }
    heads().fitHeight();
    fitHeight();
    m_parts->total->setToolTip(hidden.empty() ? QString{} : m_parts->total->accessibleName());
    m_parts->total->update();
    m_parts->model->tellInToolTips(std::move(hidden));
}

void RecordTable::fitHeight()
{
    if (m_mostRows == 0)
        return;
    const int rows = std::min(std::max(1, m_parts->model->rowCount()), m_mostRows);
    const int bar = horizontalScrollBar()->isVisible() ? horizontalScrollBar()->height() : 0;
    const int height = heads().height() + rows * verticalHeader()->defaultSectionSize() + bar;
    if (height != this->height())
        setFixedHeight(height);
}
