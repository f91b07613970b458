#include "LedgerUI/Screens/Accounts/AccountActions.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Keys/KeyBindings.h"
#include "LedgerUI/Presentation/Period/PeriodLabel.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

QString text(std::string_view key)
{
    return word(accountWords(), key);
}

QString sortID(const std::string& currency)
{
    return QStringLiteral("sort.balance.") + qString(currency);
}

constexpr std::array statements{"statement.month", "statement.previous", "statement.year"};

/// The periods that statements are asked for most, in the order of their names.
std::array<Period, statements.size()> statementPeriods(std::chrono::year_month_day today)
{
    const auto month = Period::containing(Period::Span::month, today);
    return {month, month.previous().value_or(month), Period::containing(Period::Span::year, today)};
}

std::vector<Action> statementActions(const AccountActions::Chosen& chosen)
{
    std::vector<Action> actions;
    const auto periods = statementPeriods(chosen.today);
    for (std::size_t at = 0; at < statements.size(); ++at) {
        const auto period = periodLabel(periods[at], InterfaceLanguage::tag()).toStdString();
        actions.push_back({.id = QString::fromLatin1(statements[at]),
                           .text = word(accountWords(), "statement", {period}),
                           .glyph = at == 0 ? QStringLiteral("printer") : QString{},
                           .isOffered = chosen.detail && chosen.offersStatements,
                           .run = [print = chosen.printStatement, period = periods[at]] { print(period); }});
    }
    return actions;
}

}

std::vector<Action> AccountActions::onAccount(const Chosen& chosen)
{
    const auto& detail = chosen.detail;
    const auto busy = chosen.isBusy ? text("busy") : QString{};
    const bool mayChange = detail && detail->offersChange;
    std::vector<Action> actions{{.id = QStringLiteral("openAccount"),
                                 .text = text("showDetail"),
                                 .isOffered = detail.has_value(),
                                 .run = chosen.open},
                                {.id = QStringLiteral("openingBalance"),
                                 .text = text("openingBalance"),
                                 .whyNot = busy,
                                 .isOffered = detail && detail->offersOpening,
                                 .run = chosen.recordOpening},
                                {.id = QStringLiteral("editAccount"),
                                 .text = text("edit"),
                                 .glyph = QStringLiteral("pencil"),
                                 .keys = KeyBindings::keys(Command::editRecord),
                                 .whyNot = busy,
                                 .isOffered = mayChange && !detail->isArchived,
                                 .run = chosen.edit},
                                {.id = QStringLiteral("addCurrency"),
                                 .text = text("addCurrency"),
                                 .whyNot = busy,
                                 .isOffered = mayChange && !detail->isArchived,
                                 .run = chosen.addCurrency},
                                {.id = QStringLiteral("changeState"),
                                 .text = text(detail && detail->isArchived ? "restore" : "archive"),
                                 .glyph = QStringLiteral("archive"),
                                 .whyNot = busy,
                                 .isOffered = mayChange,
                                 .run = chosen.changeState},
                                {.id = QStringLiteral("showInLedger"),
                                 .text = text("inLedger"),
                                 .glyph = QStringLiteral("journal-text"),
                                 .isOffered = detail.has_value(),
                                 .run = chosen.showInLedger}};
    std::ranges::move(statementActions(chosen), std::back_inserter(actions));
    return actions;
}

QList<QString> AccountActions::accountMenu()
{
    return {QStringLiteral("openAccount"),
            QStringLiteral("showInLedger"),
            {},
            QStringLiteral("openingBalance"),
            QStringLiteral("editAccount"),
            QStringLiteral("addCurrency"),
            QStringLiteral("changeState"),
            {},
            QString::fromLatin1(statements[0]),
            QString::fromLatin1(statements[1]),
            QString::fromLatin1(statements[2])};
}

std::vector<Action> AccountActions::beginning(const Beginning& beginning)
{
    const auto busy = beginning.isBusy ? text("busy") : QString{};
    return {{.id = QStringLiteral("newAccount"),
             .text = text("new"),
             .glyph = QStringLiteral("plus-lg"),
             .keys = KeyBindings::keys(Command::newEntry),
             .whyNot = busy,
             .isOffered = beginning.mayManage,
             .run = beginning.newAccount},
            {.id = QStringLiteral("recordOpenings"),
             .text = countedIn(InterfaceLanguage::tag(), accountWords(), "openings", beginning.openingsDue),
             .glyph = QStringLiteral("journal-plus"),
             .whyNot = busy,
             .isOffered = beginning.openingsDue > 0,
             .run = beginning.recordOpenings}};
}

std::vector<Action> AccountActions::sorting(const AccountListing& listing,
                                            const std::function<void(const AccountSort&)>& sortBy)
{
    using Key = AccountSort::Key;
    const auto now = listing.query.sort;
    std::vector<Action> actions{{.id = QStringLiteral("sort.name"),
                                 .text = text("sort.name"),
                                 .isOn = now.key == Key::name,
                                 .run = [sortBy, now] { sortBy(now.by(Key::name)); }}};
    for (const auto& currency : listing.currencies)
        actions.push_back({.id = sortID(currency),
                           .text = word(accountWords(), "sort.balance", {currency}),
                           .isOn = now.key == Key::balance && now.currency == currency,
                           .run = [sortBy, now, currency] { sortBy(now.by(Key::balance, currency)); }});
    actions.push_back({.id = QStringLiteral("turnSort"),
                       .text = text("sort.turn"),
                       .keys = KeyBindings::keys(Command::turnSort),
                       .run = [sortBy, now] { sortBy(now.turned()); }});
    return actions;
}

QList<QString> AccountActions::sortingMenu(const AccountListing& listing)
{
    QList<QString> ids{QStringLiteral("sort.name")};
    for (const auto& currency : listing.currencies)
        ids << sortID(currency);
    return ids << QString{} << QStringLiteral("turnSort");
}
