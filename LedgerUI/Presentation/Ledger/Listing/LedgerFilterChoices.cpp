#include "LedgerUI/Presentation/Ledger/Listing/LedgerFilterChoices.h"

#include <algorithm>

#include "LedgerCore/Domain/Entries/EntryWords.h"
#include "LedgerCore/Domain/Money/CurrencyInfo.h"
#include "LedgerCore/Domain/Money/DecimalText.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerCore/Domain/Text/Collation.h"
#include "LedgerCore/Domain/Text/WordTable.h"
#include "LedgerUI/Presentation/Period/PeriodLabel.h"
#include "LedgerUI/Presentation/Reports/ReportFigureText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

using Choices = std::vector<LedgerFilterChoice>;
using Level = LedgerFilterChoice::Level;
using Part = LedgerFilter::Part;
using Receipts = LedgerFilter::Receipts;

constexpr std::int64_t largestBound = 900'000'000'000'000; // hundredths: every amount that exists is below

DecimalText::Marks marksOf(std::string_view locale)
{
    const auto marks = Money::separators(locale);
    return {.decimal = marks.decimal, .grouping = marks.grouping};
}

constexpr std::string_view attached = "attached";
constexpr std::string_view missing = "missing";

QString kindName(std::string_view kind, std::string_view locale)
{
    const auto key = "kind." + std::string{kind};
    return ledgerWords().contains(key) ? wordIn(locale, ledgerWords(), key) : qString(kind);
}

Choices kindChoices(const LedgerBook& book)
{
    static constexpr std::string_view order[] = {EntryKind::income,   EntryKind::expense, EntryKind::transfer,
                                                 EntryKind::exchange, EntryKind::refund,  EntryKind::reversal,
                                                 EntryKind::opening,  EntryKind::capital, EntryKind::dividend};
    Choices choices;
    const auto add = [&](std::string_view kind) {
        choices.push_back({std::string{kind}, kindName(kind, book.locale())});
    };
    for (const auto kind : order) {
        if (book.kinds().contains(kind))
            add(kind);
    }
    for (std::uint32_t each = 0; each < book.kinds().size(); ++each) {
        if (std::ranges::find(order, book.kinds().id(each)) == std::end(order))
            add(book.kinds().id(each));
    }
    return choices;
}

Choices accountChoices(const LedgerBook& book)
{
    Choices choices;
    for (const auto& account : book.snapshot().accounts) {
        if (book.accounts().contains(account.id))
            choices.push_back({account.id, QString::fromStdString(account.name)});
    }
    std::ranges::sort(
        choices,
        [&](std::string_view left, std::string_view right) { return Collation::isBefore(left, right, book.locale()); },
        [&](const LedgerFilterChoice& choice) { return book.names().account(choice.id); });
    return choices;
}

Choices memberChoices(const LedgerBook& book)
{
    Choices choices;
    for (std::uint32_t each = 0; each < book.members().size(); ++each)
        choices.push_back({book.members().id(each), qString(book.members().shown(each))});
    std::ranges::sort(
        choices,
        [&](std::string_view left, std::string_view right) { return Collation::isBefore(left, right, book.locale()); },
        [&](const LedgerFilterChoice& choice) { return book.names().member(choice.id); });
    return choices;
}

Choices categoryChoices(const LedgerBook& book)
{
    Choices choices;
    const auto& directory = book.names().categories();
    const auto isUsed = [&](const Category& category) { return book.categories().contains(category.id); };
    for (const auto kind : {EntryKind::income, EntryKind::expense}) {
        for (const auto* category : directory.ordered(kind, ArchivedCategories::included)) {
            const bool childUsed = std::ranges::any_of(directory.children(category->id, ArchivedCategories::included),
                                                       [&](const Category* child) { return isUsed(*child); });
            if (isUsed(*category) || childUsed)
                choices.push_back({category->id, qString(directory.pathName(*category, book.locale())),
                                   directory.parent(*category) ? Level::child : Level::top});
        }
    }
    return choices;
}

Choices currencyChoices(const LedgerBook& book)
{
    Choices choices;
    const auto add = [&](const std::string& code) {
        const auto name = qString(EntryWords::currency(code, book.locale()));
        choices.push_back({code, name == qString(code) ? name : QStringLiteral("%1  %2").arg(qString(code), name)});
    };
    for (const auto& currency : CurrencyInfo::supported()) {
        if (book.currencies().contains(currency.code))
            add(currency.code);
    }
    for (std::uint32_t each = 0; each < book.currencies().size(); ++each) {
        if (!CurrencyInfo::isSupported(book.currencies().id(each)))
            add(book.currencies().id(each));
    }
    return choices;
}

QString standingName(std::string_view standing, std::string_view locale)
{
    return wordIn(locale, ledgerWords(), "standing." + std::string{standing});
}

Choices standingChoices(std::string_view locale)
{
    Choices choices;
    for (const auto standing : LedgerStandings::all)
        choices.push_back({std::string{standing}, standingName(standing, locale)});
    return choices;
}

/// What one chosen id is called on a chip.
QString choiceName(const LedgerBook& book, Part part, const std::string& id)
{
    if (part == Part::accounts)
        return QString::fromStdString(book.names().account(id));
    if (part == Part::categories)
        return QString::fromStdString(book.names().category(id));
    if (part == Part::members)
        return QString::fromStdString(book.names().member(id));
    if (part == Part::standings)
        return standingName(id, book.locale());
    return part == Part::kinds ? kindName(id, book.locale()) : QString::fromStdString(id);
}

/// "100–500", "from 100", "up to 500".
QString amountsText(const LedgerFilter::Amounts& amounts, std::string_view locale)
{
    const auto least = amountBoundText(amounts.least, locale).toStdString();
    const auto most = amountBoundText(amounts.most, locale).toStdString();
    if (most.empty())
        return wordIn(locale, ledgerWords(), "amounts.from", {least});
    return least.empty() ? wordIn(locale, ledgerWords(), "amounts.to", {most})
                         : wordIn(locale, ledgerWords(), "amounts.between", {least, most});
}

/// What a figure of a report is called: "Expense in IDR, Payroll".
QString figureText(const LedgerBook& book, const ReportFigure& figure)
{
    const auto& locale = book.locale();
    QStringList parts{reportFigureText(figure, locale)};
    if (figure.lines == ReportFigure::Lines::severalCategories)
        parts << countedIn(locale, reportWords(), "categoryCount", figure.categoryIDs.size());
    else if (figure.lines != ReportFigure::Lines::all)
        parts << (figure.categoryID.empty() ? wordIn(locale, reportWords(), "noCategory")
                                            : QString::fromStdString(book.names().category(figure.categoryID)));
    if (figure.scope.accountIDs && figure.scope.accountIDs->size() == 1)
        parts << QString::fromStdString(book.names().account(*figure.scope.accountIDs->begin()));
    else if (figure.scope.accountIDs)
        parts << countedIn(locale, reportWords(), "accounts", figure.scope.accountIDs->size());
    return listed(parts, locale);
}

}

QString amountBoundText(const std::optional<std::int64_t>& hundredths, std::string_view locale)
{
    if (!hundredths)
        return {};
    const bool isWhole = *hundredths % 100 == 0;
    return qString(isWhole ? DecimalText::grouped(*hundredths / 100, 0, marksOf(locale))
                           : DecimalText::grouped(*hundredths, 2, marksOf(locale)));
}

std::optional<std::optional<std::int64_t>> readAmountBound(const QString& text, std::string_view locale)
{
    const auto typed = text.trimmed().toStdString();
    if (typed.empty())
        return std::optional<std::int64_t>{};
    const auto read = DecimalText::read(typed, 2, marksOf(locale), largestBound);
    if (!read || *read < 0)
        return std::nullopt;
    return std::optional<std::int64_t>{*read};
}

std::vector<LedgerFilterChoice> filterChoices(const LedgerBook& book, Part part)
{
    switch (part) {
    case Part::kinds:
        return kindChoices(book);
    case Part::accounts:
        return accountChoices(book);
    case Part::categories:
        return categoryChoices(book);
    case Part::currencies:
        return currencyChoices(book);
    case Part::members:
        return memberChoices(book);
    case Part::receipts:
        return {{std::string{attached}, wordIn(book.locale(), ledgerWords(), "filter.attached")},
                {std::string{missing}, wordIn(book.locale(), ledgerWords(), "filter.missing")}};
    case Part::standings:
        return standingChoices(book.locale());
    case Part::period:
    case Part::text:
    case Part::amounts:
    case Part::figure:
    case Part::selection:
        break;
    }
    return {};
}

LedgerFilter::Choices chosenIn(const LedgerFilter& filter, Part part)
{
    switch (part) {
    case Part::kinds:
        return filter.kinds;
    case Part::accounts:
        return filter.accountIDs;
    case Part::categories:
        return filter.categoryIDs;
    case Part::currencies:
        return filter.currencies;
    case Part::receipts:
        if (filter.receipts != Receipts::any)
            return {std::string{filter.receipts == Receipts::attached ? attached : missing}};
        break;
    case Part::members:
        return filter.memberIDs;
    case Part::standings:
        return filter.standings;
    case Part::period:
    case Part::text:
    case Part::amounts:
    case Part::figure:
    case Part::selection:
        break;
    }
    return {};
}

LedgerFilter withChosen(LedgerFilter filter, Part part, LedgerFilter::Choices choices)
{
    switch (part) {
    case Part::kinds:
        filter.kinds = std::move(choices);
        break;
    case Part::accounts:
        filter.accountIDs = std::move(choices);
        break;
    case Part::categories:
        filter.categoryIDs = std::move(choices);
        break;
    case Part::currencies:
        filter.currencies = std::move(choices);
        break;
    case Part::receipts:
        // Both choices together let everything through.
        filter.receipts = choices.size() != 1          ? Receipts::any
                          : choices.contains(attached) ? Receipts::attached
                                                       : Receipts::missing;
        break;
    case Part::members:
        filter.memberIDs = std::move(choices);
        break;
    case Part::standings:
        filter.standings = std::move(choices);
        break;
    case Part::period:
    case Part::text:
    case Part::amounts:
    case Part::figure:
    case Part::selection:
        break;
    }
    return filter;
}

QString partName(Part part, std::string_view locale)
{
    static constexpr std::string_view keys[] = {"filter.period",    "filter.text",       "filter.kinds",
                                                "filter.accounts",  "filter.categories", "filter.currencies",
                                                "filter.receipts",  "filter.members",    "filter.amounts",
                                                "filter.standings", "filter.figure",     "filter.selection"};
    return wordIn(locale, ledgerWords(), keys[static_cast<std::size_t>(part)]);
}

QString partText(const LedgerBook& book, const LedgerFilter& filter, Part part)
{
    const auto& locale = book.locale();
    const auto named = [&](const std::string& value) {
        return wordIn(locale, ledgerWords(), "chip", {partName(part, locale).toStdString(), value});
    };
    if (part == Part::period)
        return named(periodLabel(filter.period, locale).toStdString());
    if (part == Part::text || part == Part::amounts || part == Part::figure || part == Part::selection)
        return filter.isSet(part) ? named(partValue(book, filter, part).toStdString()) : QString{};
    if (part == Part::receipts)
        return partValue(book, filter, part);
    const auto chosen = chosenIn(filter, part);
    if (chosen.empty())
        return partName(part, locale);
    const auto first = choiceName(book, part, *chosen.begin()).toStdString();
    if (chosen.size() == 1)
        return named(first);
    return wordIn(locale, ledgerWords(), "chip.several",
                  {partName(part, locale).toStdString(), first, groupedNumber(chosen.size() - 1, locale)});
}

QString partValue(const LedgerBook& book, const LedgerFilter& filter, Part part)
{
    const auto& locale = book.locale();
    switch (part) {
    case Part::period:
        return periodLabel(filter.period, locale);
    case Part::text:
        return qString(filter.text);
    case Part::amounts:
        return amountsText(filter.amounts, locale);
    case Part::figure:
        return filter.figure ? figureText(book, *filter.figure) : QString{};
    case Part::selection:
        return filter.entryIDs ? countedIn(locale, ledgerWords(), "entries", filter.entryIDs->size()) : QString{};
    case Part::receipts:
        return wordIn(locale, ledgerWords(),
                      filter.receipts == Receipts::attached ? "filter.attached" : "filter.missing");
    case Part::kinds:
    case Part::accounts:
    case Part::categories:
    case Part::currencies:
    case Part::members:
    case Part::standings:
        break;
    }
    QStringList names;
    auto unnamed = chosenIn(filter, part);
    for (const auto& choice : filterChoices(book, part)) {
        if (unnamed.erase(choice.id) > 0)
            names << choice.text;
    }
    if (part == Part::accounts && !unnamed.empty()) // not seen any more
        names << wordIn(locale, ledgerWords(), "account.hidden");
    return listed(names, locale);
}
