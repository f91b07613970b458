#include "LedgerUI/Presentation/Ledger/Listing/LedgerNotice.h"

#include "LedgerCore/Domain/Access/LedgerEntryAccess.h"
#include "LedgerCore/Domain/Access/MemberRights.h"
#include "LedgerUI/Presentation/Ledger/Listing/LedgerFilterChoices.h"
#include "LedgerUI/Presentation/Period/PeriodLabel.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

using Offer = LedgerNotice::Offer;
using Reason = LedgerNotice::Reason;
using Remedy = LedgerNotice::Remedy;

LedgerNotice nothingRecorded(const LedgerBook& book)
{
    const auto& locale = book.locale();
    const auto text = [&](std::string_view key) { return wordIn(locale, ledgerWords(), key); };
    if (book.snapshot().accounts.empty() && MemberRights::canManage(book.snapshot().currentMember))
        return {Reason::noAccounts,
                text("empty.title"),
                text("empty.noAccountsBody"),
                {{Remedy::setUp, text("empty.setUp"), {}}},
                {}};
    if (book.snapshot().accounts.empty())
        return {Reason::noAccess, text("empty.noAccess"), text("empty.noAccessBody"), {}, {}};
    if (!book.snapshot().currentMember.canRecord())
        return {Reason::nothingRecorded, text("empty.title"), text("empty.body"), {}, {}};
    LedgerNotice notice{Reason::nothingRecorded, text("empty.title"), {}, {}, {}};
    if (LedgerEntryAccess::accounts(book.snapshot(), EntryKind::opening).empty()) {
        notice.sentence = text("empty.bodyRecord");
        notice.offers = {{Remedy::record, text("newEntry"), {}}};
        return notice;
    }
    notice.sentence = text("empty.bodySteps");
    notice.steps = {
        {text("step.opening"), text("step.openingBody"), {Remedy::recordOpening, text("step.openingGo"), {}}},
        {text("step.record"), text("step.recordBody"), {Remedy::record, text("step.recordGo"), {}}}};
    return notice;
}

LedgerNotice nothingInPeriod(const LedgerBook& book, const LedgerFilter& filter, const PeriodCounts& counts,
                             std::chrono::year_month_day today)
{
    const auto& locale = book.locale();
    auto nearest = counts.latestDayUntil(today);
    if (!nearest)
        nearest = counts.latestDay();
    LedgerNotice notice{
        Reason::nothingInPeriod,
        wordIn(locale, ledgerWords(), "period.title", {periodLabel(filter.period, locale).toStdString()}),
        {},
        {},
        {}};
    if (nearest) {
        auto latest = filter;
        latest.period = filter.period.movedTo(*nearest);
        const auto label = periodLabel(latest.period, locale).toStdString();
        notice.sentence = wordIn(locale, ledgerWords(), "period.body", {label});
        notice.offers.push_back(
            {Remedy::changeFilter, wordIn(locale, ledgerWords(), "period.go", {label}), std::move(latest)});
    }
    return notice;
}

/// A search may be anything that was pasted.
QString shortened(const QString& name)
{
    constexpr qsizetype most = 60;
    if (name.size() <= most)
        return name;
    const bool splitsPair = name[most - 2].isHighSurrogate();
    return name.left(most - (splitsPair ? 2 : 1)) + QStringLiteral("…");
}

LedgerNotice nothingMatches(const LedgerBook& book, const LedgerFilter& filter)
{
    const auto& locale = book.locale();
    LedgerNotice notice{Reason::nothingMatches,
                        wordIn(locale, ledgerWords(), "noMatch.title"),
                        wordIn(locale, ledgerWords(), "noMatch.body"),
                        {},
                        {}};
    if (const auto blocking = blockingPart(book, filter)) {
        const auto part = shortened(partText(book, filter, blocking->part)).toStdString();
        const auto name = wordIn(locale, ledgerWords(), "quoted", {part});
        notice.sentence = wordIn(locale, ledgerWords(), blocking->entries == 1 ? "noMatch.one" : "noMatch.many",
                                 {name.toStdString(), groupedNumber(blocking->entries, locale)});
        notice.offers.push_back(
            {Remedy::changeFilter, wordIn(locale, ledgerWords(), "noMatch.drop"), filter.without(blocking->part)});
    }
    if (!filter.period.isAllTime())
        notice.offers.push_back({Remedy::changeFilter, wordIn(locale, ledgerWords(), "noMatch.allTime"),
                                 filter.without(LedgerFilter::Part::period)});
    return notice;
}

}

LedgerNotice noticeFor(const LedgerBook& book, const LedgerFilter& filter, const PeriodCounts& counts,
                       std::chrono::year_month_day today)
{
    if (book.size() == 0)
        return nothingRecorded(book);
    if (filter.narrows())
        return nothingMatches(book, filter);
    return nothingInPeriod(book, filter, counts, today);
}
