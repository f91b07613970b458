#include "LedgerUI/Screens/Ledger/LedgerCells.h"

#include "LedgerUI/Components/Text/EntryKindColor.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Ledger/Rows/LedgerTableModel.h"
#include "LedgerUI/Presentation/Text/EntryKindGlyph.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

using Density = RowDelegate::Density;

constexpr auto arrow = "arrow-right";

Cell dateCell(const LedgerTableModel& model, int row)
{
    const bool isGrouped = model.listing()->query.sort.key == LedgerSort::Key::date;
    const bool repeats = isGrouped && model.repeatsDay(row);
    return {.lines = {{.text = model.row(row).day, .ink = repeats ? Token::text3 : Token::text}}};
}

Cell entryCell(const LedgerRow& row, const ThemeColor& kindInk, Density density)
{
    Cell cell{.glyph = entryKindGlyph(row.kind), .glyphInk = kindInk};
    cell.lines.push_back(
        {.text = row.title, .ink = row.isReversed ? Token::text2 : Token::text, .isStruck = row.isReversed});
    if (row.receiptCount > 0)
        cell.marks.push_back({.word = row.receiptCount > 1 ? QString::number(row.receiptCount) : QString{},
                              .glyph = QStringLiteral("paperclip")});
    if (row.isReversed)
        cell.marks.push_back({.word = word(ledgerWords(), "reversed")});
    CellText note{.text = row.note, .step = TypeStep::small, .ink = Token::text2};
    if (density == Density::oneLine) {
        if (!row.destination.isEmpty()) {
            note.glyph = QString::fromLatin1(arrow);
            note.text = row.note.isEmpty() ? row.destination : QStringLiteral("%1 · %2").arg(row.destination, row.note);
        }
        cell.beside = note;
    } else if (!row.note.isEmpty()) {
        cell.lines.push_back(note);
    }
    return cell;
}

Cell accountCell(const LedgerRow& row, Density density)
{
    Cell cell{.lines = {{.text = row.account, .step = TypeStep::small, .ink = Token::text2}}};
    if (density == Density::oneLine)
        return cell;
    cell.wraps = row.destination.isEmpty();
    if (!row.destination.isEmpty())
        cell.lines.push_back({.text = row.destination,
                              .step = TypeStep::small,
                              .ink = Token::text2,
                              .glyph = QString::fromLatin1(arrow)});
    return cell;
}

ThemeColor amountInk(const LedgerRow& row, const MoneyText& amount, const ThemeColor& kindInk)
{
    if (!amount.isKnown())
        return Token::text3;
    if (row.isReversed)
        return Token::text2;
    return amount.sign == MoneyText::Sign::plus ? kindInk : ThemeColor{Token::text};
}

/// Both amounts of an exchange are always there; on one line they stand in smaller figures.
Cell amountCell(const LedgerRow& row, const ThemeColor& kindInk, Density density)
{
    const bool isTight = density == Density::oneLine && row.amounts.size() > 1;
    Cell cell;
    for (const auto& amount : row.amounts) {
        if (cell.amounts.size() == 2)
            break;
        cell.amounts.push_back({.code = amount.currency,
                                .figure = {.text = amount.figure(),
                                           .step = isTight ? TypeStep::small : TypeStep::body,
                                           .ink = amountInk(row, amount, kindInk),
                                           .isStruck = row.isReversed}});
    }
    return cell;
}

/// The day and how much was recorded on it, and at the other end what it brought.
Cell dayCell(const LedgerDayRow& row)
{
    Cell cell{.lines = {{.text = row.day, .step = TypeStep::small, .isBold = true}},
              .beside = CellText{.text = row.entries, .step = TypeStep::small, .ink = Token::text2},
              .isHead = true,
              .spansRow = true};
    for (const auto& net : row.nets)
        cell.sums.push_back({.code = net.currency,
                             .figure = {.text = net.figure(),
                                        .step = TypeStep::small,
                                        .ink = net.sign == MoneyText::Sign::plus ? Token::ok : Token::text2,
                                        .isBold = true}});
    return cell;
}

/// In red where money is owed.
Cell balanceCell(const LedgerTableModel& model, int row)
{
    Cell cell;
    for (const auto& balance : model.balancesAt(row)) {
        const auto ink = balance.sign == MoneyText::Sign::minus ? Token::danger : Token::text2;
        cell.amounts.push_back({.code = balance.currency, .figure = {.text = balance.figure(), .ink = ink}});
    }
    return cell;
}

}

Cell ledgerCell(const LedgerTableModel& model, const QModelIndex& index, Density density)
{
    if (model.isHeadAt(index.row()))
        return dayCell(model.dayRow(index.row()));
    const auto& row = model.row(index.row());
    const auto kindInk = entryKindColor(row.kind, model.book()->snapshot());
    switch (index.column()) {
    case LedgerTableModel::date:
        return dateCell(model, index.row());
    case LedgerTableModel::entry:
        return entryCell(row, kindInk, density);
    case LedgerTableModel::account:
        return accountCell(row, density);
    case LedgerTableModel::member:
        return {.lines = {{.text = row.member, .step = TypeStep::small, .ink = Token::text2}}};
    case LedgerTableModel::amount:
        return amountCell(row, kindInk, density);
    case LedgerTableModel::balance:
        return balanceCell(model, index.row());
    default:
        return {};
    }
}
