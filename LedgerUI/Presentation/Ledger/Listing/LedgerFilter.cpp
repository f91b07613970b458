#include "LedgerUI/Presentation/Ledger/Listing/LedgerFilter.h"

#include <algorithm>
#include <limits>

#include "LedgerCore/Domain/Entries/EntryStanding.h"
#include "LedgerCore/Domain/Money/CurrencyInfo.h"
#include "LedgerCore/Domain/Reports/ReportBook.h"
#include "LedgerCore/Domain/Text/TextFold.h"
#include "LedgerUI/Presentation/Ledger/Listing/LedgerSearch.h"
#include "LedgerUI/Presentation/Period/PeriodCounts.h"

namespace {

using Part = LedgerFilter::Part;
using Receipts = LedgerFilter::Receipts;
using Choices = LedgerFilter::Choices;

/// The choices of one part as a mask over the book's numbers; without a choice it asks nothing.
class Mask {
public:
    Mask(const LedgerKeys& keys, const Choices& choices) : m_asks(!choices.empty())
    {
        if (m_asks)
            m_accepted = keys.mask([&](std::uint32_t number) { return choices.contains(keys.id(number)); });
    }

    [[nodiscard]] bool asks() const { return m_asks; }
    [[nodiscard]] bool accepts(std::uint32_t number) const
    {
        return !m_asks || (number != LedgerBook::none && m_accepted[number]);
    }

private:
    bool m_asks;
    std::vector<bool> m_accepted;
};

/// The bounds in the minor units of each of the book's currencies.
class AmountBounds {
public:
    AmountBounds(const LedgerBook& book, const LedgerFilter::Amounts& amounts)
        : m_asks(amounts != LedgerFilter::Amounts{})
    {
        if (!m_asks)
            return;
        for (std::uint32_t each = 0; each < book.currencies().size(); ++each) {
            const Wide minorUnits = CurrencyInfo::scaleOf(book.currencies().id(each)) == 0 ? 100 : 1;
            m_hundredths.push_back(minorUnits);
        }
        m_least = amounts.least.value_or(0);
        m_most = amounts.most ? Wide{*amounts.most} : std::numeric_limits<Wide>::max();
    }

    [[nodiscard]] bool asks() const { return m_asks; }
    [[nodiscard]] bool accepts(const LedgerBook::Leg& leg) const
    {
        if (!m_asks)
            return true;
        const auto moved = Wide{leg.amountMinor} * m_hundredths[leg.currency];
        const auto magnitude = moved < 0 ? -moved : moved;
        return magnitude >= m_least && magnitude <= m_most;
    }

private:
    using Wide = __int128;

    bool m_asks;
    std::vector<Wide> m_hundredths; // in a minor unit of each currency
    Wide m_least = 0;
    Wide m_most = 0;
};

/// The chosen standings, asked of an entry at a time.
class Standings {
public:
    Standings(const LedgerBook& book, const Choices& chosen)
        : m_book(book), m_asks(!chosen.empty()), m_inForce(chosen.contains(LedgerStandings::inForce)),
          m_reversed(chosen.contains(LedgerStandings::reversed)),
          m_reversals(chosen.contains(LedgerStandings::reversals)),
          m_ownByOthers(chosen.contains(LedgerStandings::ownByOthers))
    {
    }

    [[nodiscard]] bool accepts(std::uint32_t at) const
    {
        if (!m_asks)
            return true;
        const auto& entry = m_book.transaction(at);
        const bool isReversal = entry.kind == EntryKind::reversal;
        return (m_inForce && EntryStanding::isInForce(entry)) || (m_reversed && entry.reversedBy) ||
               (m_reversals && isReversal) || (m_ownByOthers && isReversal && undoesOwn(entry));
    }

private:
    [[nodiscard]] bool undoesOwn(const LedgerTransaction& reversal) const
    {
        const auto original = reversal.reversalOf ? m_book.find(*reversal.reversalOf) : LedgerBook::none;
        return original != LedgerBook::none && EntryStanding::isUndoneByOthers(m_book.transaction(original), reversal,
                                                                               m_book.snapshot().currentMember.id);
    }

    const LedgerBook& m_book;
    bool m_asks;
    bool m_inForce;
    bool m_reversed;
    bool m_reversals;
    bool m_ownByOthers;
};

/// The chosen categories and the children of the chosen parents.
Choices withChildren(const LedgerBook& book, const Choices& chosen)
{
    Choices all = chosen;
    for (const auto& category : book.snapshot().categories) {
        if (category.parentID && chosen.contains(*category.parentID))
            all.insert(category.id);
    }
    return all;
}

/// A filter with everything looked up once that it asks of each entry.
class Sieve {
public:
    Sieve(const LedgerBook& book, const LedgerFilter& filter)
        : m_book(book), m_search(book, filter.text), m_kinds(book.kinds(), filter.kinds),
          m_accounts(book.accounts(), filter.accountIDs),
          m_categories(book.categories(), withChildren(book, filter.categoryIDs)),
          m_currencies(book.currencies(), filter.currencies), m_members(book.members(), filter.memberIDs),
          m_amounts(book, filter.amounts), m_standings(book, filter.standings), m_receipts(filter.receipts),
          m_first(filter.period.isAllTime() ? 0 : dayNumber(filter.period.firstDay())),
          m_last(filter.period.isAllTime() ? std::numeric_limits<std::uint32_t>::max()
                                           : dayNumber(filter.period.lastDay())),
          m_isFigure(filter.figure.has_value()), m_isSelection(filter.entryIDs.has_value())
    {
        if (m_isFigure)
            m_ofFigure.resize(book.size());
        for (const auto& leg : figureLegs(book, filter))
            m_ofFigure[leg.entry] = true;
        if (m_isSelection)
            select(*filter.entryIDs);
    }

    [[nodiscard]] bool accepts(std::uint32_t at) const
    {
        const auto& entry = m_book.entry(at);
        return entry.day >= m_first && entry.day <= m_last && (!m_isFigure || m_ofFigure[at]) &&
               (!m_isSelection || m_selected[at]) && m_kinds.accepts(entry.kind) &&
               m_categories.accepts(entry.category) && m_members.accepts(entry.member) &&
               acceptsReceipts(entry.hasReceipts) && acceptsLegs(at) && m_standings.accepts(at) &&
               (m_search.isEmpty() || m_search.accepts(at));
    }

private:
    void select(const SharedList<std::string>& ids)
    {
        m_selected.resize(m_book.size());
        for (const auto& id : ids) {
            if (const auto at = m_book.find(id); at != LedgerBook::none)
                m_selected[at] = true;
        }
    }

    [[nodiscard]] bool acceptsReceipts(bool attached) const
    {
        return m_receipts == Receipts::any || attached == (m_receipts == Receipts::attached);
    }

    /// One leg must pass all: an account's exchange from another currency is not its movement in this one.
    [[nodiscard]] bool acceptsLegs(std::uint32_t at) const
    {
        return (!m_accounts.asks() && !m_currencies.asks() && !m_amounts.asks()) ||
               std::ranges::any_of(m_book.legs(at), [&](const LedgerBook::Leg& leg) {
                   return m_accounts.accepts(leg.account) && m_currencies.accepts(leg.currency) &&
                          m_amounts.accepts(leg);
               });
    }

    const LedgerBook& m_book;
    LedgerSearch m_search;
    Mask m_kinds;
    Mask m_accounts;
    Mask m_categories;
    Mask m_currencies;
    Mask m_members;
    AmountBounds m_amounts;
    Standings m_standings;
    Receipts m_receipts;
    std::uint32_t m_first;
    std::uint32_t m_last;
    bool m_isFigure;
    std::vector<bool> m_ofFigure;
    bool m_isSelection;
    std::vector<bool> m_selected;
};

}

bool LedgerFilter::isSet(Part part) const
{
    switch (part) {
    case Part::period:
        return !period.isAllTime();
    case Part::text:
        return !TextFold::trimmed(text).empty();
    case Part::kinds:
        return !kinds.empty();
    case Part::accounts:
        return !accountIDs.empty();
    case Part::categories:
        return !categoryIDs.empty();
    case Part::currencies:
        return !currencies.empty();
    case Part::receipts:
        return receipts != Receipts::any;
    case Part::members:
        return !memberIDs.empty();
    case Part::amounts:
        return amounts != Amounts{};
    case Part::standings:
        return !standings.empty();
    case Part::figure:
        return figure.has_value();
    case Part::selection:
        return entryIDs.has_value();
    }
    return false;
}

LedgerFilter LedgerFilter::without(Part part) const
{
    auto wider = *this;
    switch (part) {
    case Part::period:
        wider.period = Period::allTime();
        break;
    case Part::text:
        wider.text.clear();
        break;
    case Part::kinds:
        wider.kinds.clear();
        break;
    case Part::accounts:
        wider.accountIDs.clear();
        break;
    case Part::categories:
        wider.categoryIDs.clear();
        break;
    case Part::currencies:
        wider.currencies.clear();
        break;
    case Part::receipts:
        wider.receipts = Receipts::any;
        break;
    case Part::members:
        wider.memberIDs.clear();
        break;
    case Part::amounts:
        wider.amounts = {};
        break;
    case Part::standings:
        wider.standings.clear();
        break;
    case Part::figure:
        wider.figure.reset();
        break;
    case Part::selection:
        wider.entryIDs.reset();
        break;
    }
    return wider;
}

bool LedgerFilter::narrows() const
{
    return isSet(Part::text) || isSet(Part::figure) || isSet(Part::selection) ||
           std::ranges::any_of(listedParts, [&](Part part) { return isSet(part); });
}

std::vector<ReportFigureLeg> figureLegs(const LedgerBook& book, const LedgerFilter& filter)
{
    if (!filter.figure)
        return {};
    const auto* reports = book.reports();
    return reports ? reports->legs(*filter.figure, ReportRanges::of(filter.period)) : std::vector<ReportFigureLeg>{};
}

std::vector<std::uint32_t> matching(const LedgerBook& book, const LedgerFilter& filter)
{
    const Sieve sieve{book, filter};
    std::vector<std::uint32_t> passed;
    for (const auto at : book.order()) {
        if (sieve.accepts(at))
            passed.push_back(at);
    }
    return passed;
}

std::optional<LedgerBlockingPart> blockingPart(const LedgerBook& book, const LedgerFilter& filter)
{
    std::optional<LedgerBlockingPart> worst;
    const auto consider = [&](Part part) {
        if (!filter.isSet(part))
            return;
        const auto entries = matching(book, filter.without(part)).size();
        if (entries > (worst ? worst->entries : 0))
            worst = LedgerBlockingPart{part, entries};
    };
    consider(Part::text);
    consider(Part::figure);
    consider(Part::selection);
    std::ranges::for_each(LedgerFilter::listedParts, consider);
    return worst;
}
