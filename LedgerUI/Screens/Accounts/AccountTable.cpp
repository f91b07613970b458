#include "LedgerUI/Screens/Accounts/AccountTable.h"

#include <algorithm>
#include <cmath>

#include "LedgerUI/Components/Table/RowHeads.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Accounts/AccountTableModel.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Space.h"

namespace {

using Model = AccountTableModel;

constexpr int nameMinimum = 176;

int textWidth(const QFont& font, const QString& text)
{
    return static_cast<int>(std::ceil(QFontMetricsF{font}.horizontalAdvance(text)));
}

Cell headCell(const AccountRow& row, int column)
{
    Cell cell{.isHead = true};
    if (column == Model::account)
        cell.lines = {{.text = row.name, .step = TypeStep::small, .ink = Token::text2, .isBold = true}};
    return cell;
}

Cell figureCell(const MoneyText& money, ThemeColor ink, bool isBold)
{
    const auto tone = money.isKnown() ? ink : ThemeColor{Token::text3};
    return {.amounts = {{.code = {}, .figure = {.text = money.figure(), .ink = tone, .isBold = isBold}}}};
}

Cell accountCell(const AccountRow& row, int column)
{
    if (row.isHead)
        return headCell(row, column);
    const auto name = row.group == AccountGroup::archived ? Token::text2 : Token::text;
    switch (column) {
    case Model::account: {
        Cell cell{.joinsBelow = !row.isLast};
        if (row.isFirst) {
            cell.glyph = row.glyph;
            cell.lines = {{.text = row.name, .ink = name}};
        }
        return cell;
    }
    case Model::currency:
        return {.lines = {{.text = row.currency, .step = TypeStep::micro, .ink = Token::text2}}};
    case Model::incoming:
        return figureCell(row.incoming, Token::ok, false);
    case Model::outgoing:
        return figureCell(row.outgoing, Token::text, false);
    case Model::balance: {
        const bool owes = row.balance.sign == MoneyText::Sign::minus;
        return figureCell(row.balance, owes ? Token::danger : Token::text, true);
    }
    default:
        return {};
    }
}

}

AccountTable::AccountTable(QWidget* parent) : AccountTable{new AccountTableModel, parent} {}

AccountTable::AccountTable(AccountTableModel* model, QWidget* parent)
    : RowTable{*model,
               [model](const QModelIndex& index, RowDelegate::Density /*density*/) {
                   return accountCell(model->row(index.row()), index.column());
               },
               parent},
      m_model{model}
{
    setObjectName(QStringLiteral("accountTable"));
    m_model->setParent(this);
    setSelectionMode(SingleSelection);
    setDensity(RowDelegate::Density::oneLine);
    heads().setGlyphColumn(Model::account);
    connect(&heads(), &QHeaderView::sectionClicked, this, [this](int column) {
        presentSort(); // the toolkit has marked the head already
        if (column == Model::account)
            Q_EMIT nameHeadPressed();
        else if (column == Model::balance)
            Q_EMIT balanceHeadPressed(heads().mapToGlobal(QPoint{heads().sectionPosition(column), heads().height()}));
    });
}

void AccountTable::present(const AccountListingPointer& listing)
{
    m_model->present(listing);
    presentSort();
}

void AccountTable::presentSort()
{
    if (!m_model->listing())
        return;
    const auto& sort = m_model->listing()->query.sort;
    heads().setSortIndicator(sort.key == AccountSort::Key::name ? Model::account : Model::balance,
                             sort.direction == AccountSort::Direction::ascending ? Qt::AscendingOrder
                                                                                 : Qt::DescendingOrder);
}

void AccountTable::retranslate()
{
    setAccessibleName(word(accountWords(), "table"));
}

const AccountBook::Line* AccountTable::chosen() const
{
    const auto rows = selectedRows();
    if (rows.size() != 1 || m_model->row(rows.front()).isHead)
        return nullptr;
    return &m_model->listing()->book->lines()[m_model->row(rows.front()).line];
}

/// Figures get what they need; what comes and goes in a month leaves first where the names have too little room.
void AccountTable::layOut()
{
    const auto widest = [this](int column, const QFont& font) {
        int width = 0;
        for (int row = 0; row < m_model->rowCount(); ++row)
            width = std::max(width, textWidth(font, m_model->index(row, column).data().toString()));
        return width + 2 * Space::cellPadding;
    };
    const auto body = TypeScale::font(TypeStep::body);
    const auto columnWidth = [&](int column, const QFont& font) {
        return std::max(horizontalHeader()->sectionSizeHint(column), widest(column, font));
    };
    const int codes = textWidth(TypeScale::font(TypeStep::micro), QStringLiteral("WWW")) + 2 * Space::cellPadding;
    const int incoming = columnWidth(Model::incoming, body);
    const int outgoing = columnWidth(Model::outgoing, body);
    const int balances =
        columnWidth(Model::balance, TypeScale::bold(TypeStep::body)) + Space::cellPaddingOuter - Space::cellPadding;
    const int room = viewport()->width();
    const bool showsMonth = room - codes - balances - incoming - outgoing >= nameMinimum;
    setColumnHidden(Model::incoming, !showsMonth);
    setColumnHidden(Model::outgoing, !showsMonth);
    setColumnWidth(Model::currency, codes);
    setColumnWidth(Model::incoming, incoming);
    setColumnWidth(Model::outgoing, outgoing);
    setColumnWidth(Model::balance, balances);
    const int others = codes + balances + (showsMonth ? incoming + outgoing : 0);
    setColumnWidth(Model::account, std::max(nameMinimum, room - others));
}
