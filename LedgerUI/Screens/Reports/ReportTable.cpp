#include "LedgerUI/Screens/Reports/ReportTable.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <tuple>
#include <utility>

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QScrollBar>

#include "LedgerUI/Components/Table/CellPainter.h"
#include "LedgerUI/Components/Table/RowHeads.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Keys/KeyBindings.h"
#include "LedgerUI/Presentation/Reports/Grids/ReportGridModel.h"
#include "LedgerUI/Presentation/Reports/Grids/ReportSorting.h"
#include "LedgerUI/Presentation/Text/EntryKindGlyph.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Space.h"

namespace {

using Density = RowDelegate::Density;
using Kind = ReportGridColumn::Kind;
using Level = ReportGridRow::Level;
using Tone = ReportGridCell::Tone;

constexpr int nameMinimum = 132;
constexpr int nameBeforeSpare = 220; // names as long as this are shown in full rather than a spare column
constexpr int drawingWidth = 76;
constexpr int columnGap = 12; // beyond the paddings of the cells
constexpr int shareBar = 44;

int textWidth(TypeStep step, bool isBold, const QString& text)
{
    const auto font = isBold ? TypeScale::bold(step) : TypeScale::font(step);
    return static_cast<int>(std::ceil(QFontMetricsF{font}.horizontalAdvance(text)));
}

bool isBold(const ReportGridRow& row, const ReportGridCell& cell)
{
    return cell.tone == Tone::strong || row.level == Level::total || row.level == Level::parent;
}

}

struct ReportTable::Look {
    ChartColors colors{.income = Token::ok, .expense = Token::danger};
    bool hasParents = false; // among the rows
    std::function<ThemeColor(std::string_view)> kindInk;
};

namespace {

ThemeColor barInk(ChartRole role, const ChartColors& colors)
{
    if (role == ChartRole::income)
        return colors.income;
    if (role == ChartRole::expense)
        return colors.expense;
    return Token::chartOther;
}

/// Beside parents, which have a glyph before their names, the others stand as far in, and children a step further.
int indentOf(Level level, bool hasParents)
{
    if (!hasParents || level == Level::total)
        return 0;
    return CellPainter::glyphIndent + (level == Level::child ? Space::step3 : 0);
}

Cell painted(const ReportGridModel& model, const QModelIndex& index, Density density, const ChartColors& colors,
             bool hasParents)
{
    const auto& row = model.row(index.row());
    const auto& cell = row.cells[static_cast<std::size_t>(index.column())];
    CellText text{.text = cell.text, .isBold = isBold(row, cell)};
    if (cell.tone == Tone::quiet)
        text.ink = Token::text2;
    else if (cell.tone == Tone::incoming)
        text.ink = colors.income;
    const bool isList = density == Density::list;
    const CellText second{.text = cell.beside, .step = isList ? TypeStep::micro : TypeStep::small, .ink = Token::text2};
    Cell shown{.glyph = cell.entryKind.empty() ? cell.glyph : entryKindGlyph(cell.entryKind), .joinsBelow = isList};
    if (index.column() == 0 && shown.glyph.isEmpty())
        shown.indent = indentOf(row.level, hasParents);
    if (row.level == Level::child && index.column() == 0)
        text.ink = Token::text2;
    shown.values = cell.line;
    if (cell.bar)
        shown.bar = CellBar{cell.bar->fraction, barInk(cell.bar->role, colors)};
    const auto kind = model.grid().columns[static_cast<std::size_t>(index.column())].kind;
    if (kind == Kind::figure && !cell.bar) {
        shown.amounts.push_back({.code = {}, .figure = std::move(text)});
        if (!cell.beside.isEmpty() && density != Density::oneLine)
            shown.amounts.push_back({.code = {}, .figure = second});
    } else {
        shown.lines.push_back(std::move(text));
        if (!cell.beside.isEmpty())
            shown.beside = second;
    }
    return shown;
}

}

ReportTable::ReportTable(const QString& name, Density density, QWidget* parent)
    : ReportTable{new ReportGridModel, std::make_shared<Look>(), name, density, parent}
{
}

ReportTable::ReportTable(ReportGridModel* model, std::shared_ptr<Look> look, const QString& name, Density density,
                         QWidget* parent)
    : RowTable{*model,
               [model, look](const QModelIndex& index, Density shown) {
                   auto cell = painted(*model, index, shown, look->colors, look->hasParents);
                   if (look->kindInk && !cell.glyph.isEmpty())
                       cell.glyphInk = look->kindInk(model->cell(index)->entryKind);
                   return cell;
               },
               parent},
      m_model{model}, m_look{std::move(look)}, m_density{density}
{
    setObjectName(name);
    m_model->setParent(this);
    setSelectionMode(SingleSelection);
    frameCells();
    freezeFirstColumn();
    presentSort();
    connect(&heads(), &QHeaderView::sectionClicked, this, [this](int column) {
        presentSort(); // the toolkit has marked the head already
        const auto at = static_cast<std::size_t>(column);
        if (ReportSorting::isOffered(m_model->grid(), at))
            Q_EMIT sortWanted(ReportSorting::pressed(m_model->grid(), at));
    });
    connect(this, &RowTable::opened, this, &ReportTable::openCurrent);
    connect(this, &RowTable::menuWanted, this, &ReportTable::openMenu);
    connect(this, &RowTable::selectionMoved, this, [this] {
        const auto ids = selectedIDs();
        if (!ids.empty())
            Q_EMIT rowChosen(qString(ids.front()));
    });
}

void ReportTable::present(ReportGrid grid, const ChartColors& colors)
{
    m_look->colors = colors;
    m_look->hasParents = std::ranges::find(grid.rows, Level::parent, &ReportGridRow::level) != grid.rows.end();
    setAccessibleName(grid.name);
    forgetWidths();
    m_model->present(std::move(grid));
    presentSort();
    layOut();
    viewport()->update();
}

/// The order is told to readers as the table's description, too, which announces itself.
void ReportTable::presentSort()
{
    const auto& grid = m_model->grid();
    int column = -1;
    if (grid.sort)
        column = static_cast<int>(std::ranges::find(grid.columns, grid.sort->column, &ReportGridColumn::id) -
                                  grid.columns.begin());
    const bool isAscending = !grid.sort || grid.sort->direction == ReportSort::Direction::ascending;
    heads().setSortIndicator(column, isAscending ? Qt::AscendingOrder : Qt::DescendingOrder);
    if (grid.sorted != accessibleDescription())
        setAccessibleDescription(grid.sorted);
}

void ReportTable::haveEntries(std::function<ThemeColor(std::string_view)> kindInk)
{
    m_hasEntries = true;
    m_look->kindInk = std::move(kindInk);
}

void ReportTable::showWhole(int most)
{
    m_rowsShown = most;
    takeHeight();
}

void ReportTable::takeHeight()
{
    if (m_rowsShown == 0)
        return;
    const int rows = std::min(m_model->rowCount(), m_rowsShown);
    const int head = horizontalHeader()->isHidden() ? 0 : horizontalHeader()->height();
    const bool scrolls = horizontalScrollBarPolicy() != Qt::ScrollBarAlwaysOff;
    const int bar = scrolls ? horizontalScrollBar()->sizeHint().height() : 0;
    const int height = head + rows * verticalHeader()->defaultSectionSize() + bar;
    if (height != maximumHeight())
        setFixedHeight(height);
}

/// The widest contents of a column; of names not more than decides anything. Days, accounts and kinds come again and
/// again, and to measure a text takes far longer than to remember it.
int ReportTable::widestText(std::size_t at, Beside beside) const
{
    const auto kind = m_model->grid().columns[at].kind;
    std::set<std::tuple<QStringView, QStringView, bool, Level>> measured;
    int widest = kind == Kind::line ? drawingWidth : 0;
    for (const auto& row : m_model->grid().rows) {
        const auto& cell = row.cells[at];
        if (kind == Kind::name && widest >= nameBeforeSpare)
            break;
        if (!cell.bar && !measured.emplace(cell.text, cell.beside, isBold(row, cell), row.level).second)
            continue;
        int width = textWidth(TypeStep::body, isBold(row, cell), cell.text);
        if (kind == Kind::name && beside == Beside::counts && !cell.beside.isEmpty())
            width += Space::step2 + textWidth(TypeStep::small, false, cell.beside);
        if (kind == Kind::figure && cell.bar)
            width += Space::step2 + shareBar;
        if (at == 0)
            width += indentOf(row.level, m_look->hasParents);
        widest = std::max(widest, width);
    }
    return widest;
}

int ReportTable::contentWidth(int column) const
{
    return contentWidth(column, m_textWidths[static_cast<std::size_t>(column)]);
}

int ReportTable::contentWidth(int column, int widest) const
{
    const auto kind = m_model->grid().columns[static_cast<std::size_t>(column)].kind;
    const int left = column == 0 ? Space::cellPaddingOuter : Space::cellPadding;
    const int right = column == m_model->columnCount() - 1 ? Space::cellPaddingOuter : Space::cellPadding;
    const int gap = kind == Kind::figure ? 0 : columnGap;
    return std::max(horizontalHeader()->sectionSizeHint(column), left + widest + right + gap);
}

/// Names take what figures leave. Where that is too little, what stands beside them is cut first, then spare columns
/// give way, and then the table scrolls: there is room enough for names then.
void ReportTable::layOut()
{
    setDensity(m_density);
    const int columns = m_model->columnCount();
    if (columns == 0)
        return;
    for (auto at = m_textWidths.size(); std::cmp_less(at, columns); ++at) {
        m_textWidths.push_back(widestText(at, Beside::counts));
        const bool isName = m_model->grid().columns[at].kind == Kind::name;
        m_nameWidths.push_back(isName ? widestText(at, Beside::leftOut) : 0);
    }
    std::vector<int> widths;
    int taken = 0;
    int names = 0;
    int longer = 0; // what names would take beyond the least
    for (int column = 0; column < columns; ++column) {
        setColumnHidden(column, false);
        widths.push_back(contentWidth(column));
        const bool isName = m_model->grid().columns[static_cast<std::size_t>(column)].kind == Kind::name;
        taken += isName ? nameMinimum : widths.back();
        names += isName ? 1 : 0;
        const int name = contentWidth(column, m_nameWidths[static_cast<std::size_t>(column)]);
        longer += isName ? std::max(0, std::min(name, nameBeforeSpare) - nameMinimum) : 0;
    }
    const int room = viewport()->width();
    for (int column = columns - 1; column >= 0 && taken + longer > room; --column) {
        if (!m_model->grid().columns[static_cast<std::size_t>(column)].isSpare)
            continue;
        setColumnHidden(column, true);
        taken -= widths[static_cast<std::size_t>(column)];
    }
    const bool scrolls = taken > room;
    const int share = names > 0 ? std::max(0, room - taken) / names : 0;
    for (int column = 0; column < columns; ++column) {
        const bool isName = m_model->grid().columns[static_cast<std::size_t>(column)].kind == Kind::name;
        const int wanted = widths[static_cast<std::size_t>(column)];
        const int name = scrolls ? std::clamp(wanted, nameMinimum, nameBeforeSpare) : nameMinimum + share;
        setColumnWidth(column, isName ? name : wanted);
    }
    setHorizontalScrollBarPolicy(scrolls ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
    takeHeight();
}

void ReportTable::forgetWidths()
{
    m_textWidths.clear();
    m_nameWidths.clear();
}

void ReportTable::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        forgetWidths();
    RowTable::changeEvent(event);
}

void ReportTable::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Copy) && currentIndex().isValid())
        return copyCurrent();
    const QKeySequence pressed{event->keyCombination()};
    const auto& grid = m_model->grid();
    if (KeyBindings::keys(Command::turnSort).contains(pressed) && grid.sort)
        Q_EMIT sortWanted(ReportSorting::turned(grid));
    else if (KeyBindings::keys(Command::sortNext).contains(pressed) && !horizontalHeader()->isHidden())
        Q_EMIT sortWanted(ReportSorting::next(
            grid, [this](std::size_t column) { return !isColumnHidden(static_cast<int>(column)); }));
    else
        RowTable::keyPressEvent(event);
}

void ReportTable::openCurrent()
{
    const auto index = currentIndex();
    const auto* cell = m_model->cell(index);
    if (!cell)
        return;
    if (cell->backing)
        Q_EMIT backingWanted(*cell->backing);
    else
        Q_EMIT rowOpened(qString(m_model->idAt(index.row())));
}

void ReportTable::openMenu(QPoint place)
{
    const auto* cell = m_model->cell(currentIndex());
    auto* menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("figureMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const auto add = [&](std::string_view key, auto run) {
        auto* action = menu->addAction(word(reportWords(), key));
        action->setObjectName(qString(key));
        connect(action, &QAction::triggered, this, run);
    };
    if (cell && cell->backing)
        add("menu.showEntries", [this] { openCurrent(); });
    else if (cell && m_hasEntries)
        add("menu.showEntry", [this] { openCurrent(); });
    if (cell) {
        add("menu.copyFigure", [this] { copyCurrent(); });
        add("menu.copyRow", [this] { copyTable({currentIndex().row()}); });
    }
    add("menu.copyTable", [this] {
        if (m_model->grid().isCut)
            Q_EMIT wholeCopyWanted(qString(m_model->grid().id));
        else
            copyTable({});
    });
    if (m_offersSaving)
        add("menu.saveTable", [this] { Q_EMIT saveWanted(m_model->grid().name); });
    menu->popup(place);
}

void ReportTable::openRowMenu(std::string_view id, QPoint place)
{
    const int at = m_model->rowOf(id);
    if (at < 0)
        return;
    auto* menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("rowMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const auto& cells = m_model->row(at).cells;
    for (std::size_t column = 0; column < cells.size(); ++column) {
        const auto& cell = cells[column];
        if (!cell.backing)
            continue;
        const auto figure = m_model->grid().columns[column].head + QLatin1Char(' ') + cell.text;
        auto* action = menu->addAction(word(reportWords(), "menu.entriesOf", {figure.toStdString()}));
        connect(action, &QAction::triggered, this, [this, backing = *cell.backing] { Q_EMIT backingWanted(backing); });
    }
    menu->addSeparator();
    connect(menu->addAction(word(reportWords(), "menu.copyRow")), &QAction::triggered, this,
            [this, row = std::string{id}] { copyRow(row); });
    menu->popup(place);
}

void ReportTable::copyRow(std::string_view id)
{
    if (const int row = m_model->rowOf(id); row >= 0)
        copyTable({row});
}

void ReportTable::copyCurrent()
{
    const auto* cell = m_model->cell(currentIndex());
    QGuiApplication::clipboard()->setText(cell->copied.isEmpty() ? cell->text : cell->copied);
    Q_EMIT copied();
}

void ReportTable::copyTable(const std::vector<int>& rows)
{
    QGuiApplication::clipboard()->setText(ReportGrids::spreadsheetText(m_model->grid(), rows));
    Q_EMIT copied();
}
