#include "LedgerUI/Presentation/Capital/ContributionList.h"

#include <algorithm>

#include "LedgerCore/Domain/Capital/CapitalCommands.h"
#include "LedgerCore/Domain/Capital/CapitalSummary.h"
#include "LedgerCore/Domain/Contract.h"
#include "LedgerUI/Presentation/Records/CapitalRefusalText.h"
#include "LedgerUI/Presentation/Records/LatestFirst.h"
#include "LedgerUI/Presentation/Records/LinkedEntries.h"
#include "LedgerUI/Presentation/Records/RecordText.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

QString word(std::string_view key, std::string_view locale)
{
    return wordIn(locale, capitalWords(), key);
}

QString dated(std::string_view key, std::string_view day, std::string_view locale)
{
    return wordIn(locale, capitalWords(), key, {DayText::shortDate(day, locale).toStdString()});
}

const CapitalContribution* find(const CapitalState& state, std::string_view id)
{
    const auto found = std::ranges::find(state.contributions, id, &CapitalContribution::id);
    return found == state.contributions.end() ? nullptr : &*found;
}

/// "Reversal of 12 Aug 2026", "Reversed on 14 Aug 2026"; empty for one that stands alone.
QString linkText(const CapitalContribution& contribution, const CapitalState& state, std::string_view locale)
{
    const auto* linked = contribution.reversalOf   ? find(state, *contribution.reversalOf)
                         : contribution.reversedBy ? find(state, *contribution.reversedBy)
                                                   : nullptr;
    if (!linked)
        return {};
    return dated(contribution.reversalOf ? "contribution.reversalOf" : "contribution.reversedOn", linked->date, locale);
}

RecordRow rowOf(const CapitalContribution& contribution, const CapitalState& state, const LinkedEntries& entries,
                std::string_view locale)
{
    const bool isReversal = contribution.reversalOf.has_value();
    const auto* entry = entries.find(contribution.transactionID);
    const auto* account = entries.account(contribution.transactionID);
    const auto link = linkText(contribution, state, locale);
    RecordCell owner{.text = qString(contribution.participantName),
                     .second = link.isEmpty() && entry ? qString(entry->note) : link,
                     .glyph = isReversal ? QStringLiteral("arrow-counterclockwise") : QStringLiteral("people"),
                     .glyphTone = isReversal ? RecordTone::quiet : RecordTone::capital};
    auto amount = RecordText::movement(contribution.amountMinor, contribution.currency, locale);
    if (!isReversal)
        amount.tone = RecordTone::capital;
    if (contribution.reversedBy) {
        owner = RecordText::struck(std::move(owner));
        amount = RecordText::struck(std::move(amount));
    }
    return {.id = contribution.id,
            .cells = {RecordText::day(contribution.date, locale),
                      std::move(owner),
                      {.text = account ? qString(account->name) : word("account.unseen", locale),
                       .tone = account ? RecordTone::quiet : RecordTone::faint},
                      std::move(amount)}};
}

std::vector<const CapitalContribution*> contributionsOf(const CapitalState& state, const CapitalQuestion& question)
{
    std::vector<const CapitalContribution*> found;
    for (const auto& each : state.contributions) {
        if (each.currency == question.currency && question.period.contains(each.date))
            found.push_back(&each);
    }
    sortLatestFirst(found);
    return found;
}

BaselineSection sectionOf(const CapitalBaseline& baseline, bool isInForce, std::string_view locale)
{
    BaselineSection section{.id = baseline.id,
                            .title = dated("baseline.through", baseline.throughDate, locale),
                            .second =
                                dated(isInForce ? "baseline.recorded" : "baseline.superseded", baseline.date, locale),
                            .isInForce = isInForce,
                            .lines = {}};
    std::int64_t sum = 0; // within its limit in a valid state
    for (const auto& line : baseline.entries) {
        section.lines.push_back(
            {qString(line.participantName), balanceText(line.amountMinor, baseline.currency, locale).text()});
        sum += line.amountMinor;
    }
    section.lines.push_back({word("total", locale), balanceText(sum, baseline.currency, locale).text()});
    return section;
}

/// From the one in force down the line of those that it superseded.
std::vector<BaselineSection> chainOf(const CapitalState& state, std::string_view currency, std::string_view locale)
{
    std::vector<BaselineSection> chain;
    const auto* baseline = CapitalMath::currentBaseline(state, currency);
    while (baseline) {
        chain.push_back(sectionOf(*baseline, chain.empty(), locale));
        const auto before = std::ranges::find_if(
            state.baselines, [&](const CapitalBaseline& each) { return each.id == baseline->replacesID; });
        baseline = before == state.baselines.end() ? nullptr : &*before;
    }
    return chain;
}

void addLines(ContributionDetail& detail, const CapitalContribution& contribution, const LedgerSnapshot& snapshot,
              std::string_view locale)
{
    const LinkedEntries entries{snapshot, {contribution.transactionID}};
    const auto add = [&](std::string_view key, const QString& value) {
        if (!value.isEmpty())
            detail.lines.push_back({word(key, locale), value});
    };
    const auto* entry = entries.find(contribution.transactionID);
    const auto* account = entries.account(contribution.transactionID);
    add("detail.date", DayText::longDay(contribution.date, locale));
    add("detail.account", account ? qString(account->name) : word("account.unseen", locale));
    if (entry) {
        detail.entryID = entry->id;
        add("detail.note", qString(entry->note));
        if (!entry->attachmentIDs.empty())
            add("detail.receipts", countedIn(locale, capitalWords(), "receipts", entry->attachmentIDs.size()));
        const auto author = std::ranges::find(snapshot.members, entry->memberID, &Member::id);
        if (author != snapshot.members.end())
            add("detail.member", qString(author->name));
    }
    const auto& capital = promised(snapshot.capital, "a contribution is one to the capital");
    const auto* version = CapitalMath::ownershipInForce(capital, contribution.date);
    if (!version)
        return;
    const auto share =
        std::ranges::find(version->entries, contribution.participantID, &CapitalOwnershipLine::participantID);
    if (share != version->entries.end())
        add("detail.ownership", wordIn(locale, capitalWords(), "ownership.from",
                                       {RecordText::percent(share->ownershipBps, locale).toStdString(),
                                        DayText::shortDate(version->date, locale).toStdString()}));
}

}

std::optional<ContributionList> ContributionLists::list(const LedgerSnapshot& snapshot, const CapitalQuestion& question,
                                                        std::string_view locale)
{
    static const CapitalState none;
    const auto& state = snapshot.capital ? *snapshot.capital : none;
    const auto summary = CapitalSummary::create(state, question.currency, question.fromDay(), question.throughDay());
    if (!summary)
        return std::nullopt;
    ContributionList shown;
    if (!summary->historyKnown)
        shown.warning = word("history.unknown", locale);
    shown.hint = word("hint.contribution", locale);
    shown.baselines = chainOf(state, question.currency, locale);
    shown.rows.columns = {{.head = word("column.day", locale)},
                          {.head = word("column.owner", locale), .room = ColumnRoom::stretches},
                          {.head = word("column.account", locale), .room = ColumnRoom::mayGo},
                          {.head = word("column.amount", locale), .isAtRight = true}};
    const auto contributions = contributionsOf(state, question);
    std::unordered_set<std::string_view> ids;
    for (const auto* each : contributions)
        ids.insert(each->transactionID);
    const LinkedEntries entries{snapshot, ids};
    for (const auto* each : contributions)
        shown.rows.rows.push_back(rowOf(*each, state, entries, locale));
    shown.rows.total =
        RecordRow{.id = "total",
                  .cells = {{},
                            RecordText::bold({.text = word("contribution.inPeriod", locale)}),
                            {},
                            RecordText::bold(RecordText::amount(summary->periodMinor, question.currency, locale))}};
    return shown;
}

std::optional<ContributionDetail> ContributionLists::detail(const LedgerSnapshot& snapshot, std::string_view id,
                                                            std::string_view today, std::string_view locale)
{
    const auto& capital = snapshot.capital;
    const auto* contribution = capital ? find(*capital, id) : nullptr;
    if (!capital || !contribution)
        return std::nullopt;
    ContributionDetail detail{.id = contribution->id,
                              .owner = qString(contribution->participantName),
                              .amount = movementText(contribution->amountMinor, contribution->currency, locale),
                              .isReversed = contribution->reversedBy.has_value(),
                              .isReversal = contribution->reversalOf.has_value(),
                              .lines = {}};
    addLines(detail, *contribution, snapshot, locale);
    detail.link = linkText(*contribution, *capital, locale);
    if (!detail.link.isEmpty())
        detail.linkID = contribution->reversalOf.value_or(contribution->reversedBy.value_or(""));
    const auto context = CapitalContext::of(snapshot, id);
    const auto command = CapitalCommands::reverse(context, {.date = std::string{today}, .idempotencyKey = "unsent"},
                                                  contribution->id, {});
    if (!command)
        detail.whyNotReverse = command.error() == CapitalRefusal::accountUnavailable
                                   ? wordIn(locale, capitalWords(), "whyNot.noReturn")
                                   : refusalText(command.error(), locale);
    return detail;
}
