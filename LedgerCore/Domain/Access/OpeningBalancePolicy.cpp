#include "LedgerCore/Domain/Access/OpeningBalancePolicy.h"

#include <algorithm>
#include <utility>

#include <boost/unordered/unordered_flat_map.hpp>

#include "LedgerCore/Domain/Access/LedgerEntryAccess.h"
#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Money/Money.h"

namespace {

using EntryIndex = boost::unordered_flat_map<std::string_view, const LedgerTransaction*>;

struct Candidate {
    OpeningBalanceEligibility eligibility;
    std::int64_t balance = 0;
    std::optional<std::int64_t> legs = 0; // nothing once the sum left 64 bits
    std::size_t entries = 0;
    const LedgerTransaction* lastTouched = nullptr;
};

const LedgerTransaction* find(const EntryIndex& entries, const std::optional<std::string>& id)
{
    if (!id)
        return nullptr;
    const auto found = entries.find(*id);
    return found == entries.end() ? nullptr : found->second;
}

bool isLinked(const LedgerTransaction& entry, const EntryIndex& entries)
{
    if (entry.kind == EntryKind::opening && entry.reversedBy) {
        const auto* reversal = find(entries, entry.reversedBy);
        return reversal && reversal->kind == EntryKind::reversal && reversal->reversalOf == entry.id;
    }
    if (entry.kind == EntryKind::reversal) {
        const auto* original = find(entries, entry.reversalOf);
        return original && original->reversedBy == entry.id;
    }
    return true;
}

/// An entry may touch an account with several legs, but is one entry of its history.
void touch(Candidate& candidate, const LedgerTransaction& entry, const LedgerLeg& leg, const EntryIndex& entries)
{
    if (candidate.legs)
        candidate.legs = Money::add(*candidate.legs, leg.amountMinor);
    if (std::exchange(candidate.lastTouched, &entry) == &entry)
        return;
    ++candidate.entries;
    auto& eligibility = candidate.eligibility;
    if (entry.kind == EntryKind::opening && !entry.reversedBy)
        eligibility.activeOpeningIDs.push_back(entry.id);
    if (!isLinked(entry, entries))
        eligibility.historyComplete = false;
}

Candidate candidateFor(const LedgerSnapshot& snapshot, const Account& account, std::string_view currency)
{
    Candidate candidate;
    candidate.eligibility.accountID = account.id;
    candidate.eligibility.currency = currency;
    candidate.eligibility.hasAuthority =
        !account.archived && snapshot.currentMember.can(AccountAction::opening, account.id);
    candidate.balance = account.balance(currency);
    return candidate;
}

bool isExamined(const LedgerSnapshot& snapshot, const Account* account, std::string_view currency)
{
    return account && account->holds(currency) && snapshot.currentMember.can(AccountAction::view, account->id);
}

/// The entries that a link between an opening or any other original and its reversal can end at.
EntryIndex linkEnds(const EntryList& entries)
{
    EntryIndex ends;
    for (const auto& entry : entries) {
        if (entry.reversedBy || entry.kind == EntryKind::reversal)
            ends.emplace(entry.id, &entry);
    }
    return ends;
}

void walk(const LedgerSnapshot& snapshot, std::vector<Candidate>& candidates)
{
    boost::unordered_flat_map<std::string_view, std::vector<Candidate*>> byAccount;
    for (auto& candidate : candidates)
        byAccount[candidate.eligibility.accountID].push_back(&candidate);
    const auto ends = linkEnds(snapshot.transactions);
    for (const auto& entry : snapshot.transactions) {
        for (const auto& leg : entry.legs) {
            const auto ofAccount = byAccount.find(leg.accountID);
            if (ofAccount == byAccount.end())
                continue;
            for (auto* candidate : ofAccount->second) {
                if (candidate->eligibility.currency == leg.currency)
                    touch(*candidate, entry, leg, ends);
            }
        }
    }
    for (auto& candidate : candidates) {
        if (candidate.entries > 0 && candidate.legs != candidate.balance)
            candidate.eligibility.historyComplete = false;
    }
}

}

std::optional<std::string> OpeningBalancePolicy::recordingDate(const LedgerSnapshot& snapshot, std::string_view today)
{
    const auto& settings = snapshot.financialSettings;
    const auto start =
        settings && settings->bookkeepingStartDate ? std::string_view{*settings->bookkeepingStartDate} : today;
    return LedgerDay::isValid(start) ? std::optional<std::string>{start} : std::nullopt;
}

std::optional<OpeningBalancePolicy::RecordingDay>
OpeningBalancePolicy::recordingDay(const LedgerSnapshot& snapshot, std::string_view today,
                                   const std::optional<std::string>& earliestVisible)
{
    auto day = recordingDate(snapshot, today);
    if (!day)
        return std::nullopt;
    const auto& settings = snapshot.financialSettings;
    const bool isConfirmed = settings && settings->bookkeepingStartDate;
    RecordingDay recording{.day = *std::move(day),
                           .basis = isConfirmed ? RecordingDay::Basis::startDate : RecordingDay::Basis::today};
    if (earliestVisible && *earliestVisible < recording.day)
        recording.historySince = earliestVisible;
    return recording;
}

OpeningBalanceEligibility OpeningBalancePolicy::evaluate(const LedgerSnapshot& snapshot, std::string_view accountID,
                                                         std::string_view currency)
{
    const auto* account = snapshot.account(accountID);
    if (!isExamined(snapshot, account, currency))
        return {std::string{accountID}, std::string{currency}};
    std::vector<Candidate> candidates{candidateFor(snapshot, *account, currency)};
    walk(snapshot, candidates);
    return std::move(candidates.front().eligibility);
}

std::vector<OpeningBalanceEligibility> OpeningBalancePolicy::evaluateAll(const LedgerSnapshot& snapshot)
{
    std::vector<Candidate> candidates;
    for (const auto& account : snapshot.accounts) {
        for (const auto& currency : account.currencies) {
            if (isExamined(snapshot, &account, currency))
                candidates.push_back(candidateFor(snapshot, account, currency));
        }
    }
    walk(snapshot, candidates);
    std::vector<OpeningBalanceEligibility> all;
    all.reserve(candidates.size());
    for (auto& candidate : candidates)
        all.push_back(std::move(candidate.eligibility));
    return all;
}

std::optional<OpeningBalancePolicy::Refusal>
OpeningBalancePolicy::whyNot(const LedgerSnapshot& snapshot, std::string_view accountID, std::string_view currency)
{
    return whyNot(snapshot, evaluate(snapshot, accountID, currency));
}

bool OpeningBalancePolicy::areWanted(const LedgerSnapshot& snapshot)
{
    const auto& settings = snapshot.financialSettings;
    return !settings || settings->initializationMode != InitializationMode::fromZero;
}

std::optional<OpeningBalancePolicy::Refusal> OpeningBalancePolicy::whyNot(const LedgerSnapshot& snapshot,
                                                                          const OpeningBalanceEligibility& eligibility)
{
    using enum Refusal;
    const auto* account = snapshot.account(eligibility.accountID);
    if (!isExamined(snapshot, account, eligibility.currency))
        return noAuthority;
    if (account->archived)
        return archived;
    if (const auto refused = LedgerEntryAccess::whyNotRecord(*account, snapshot.currentMember, EntryKind::opening))
        return *refused == LedgerEntryAccess::RecordRefusal::notResponsible ? notResponsible : noAuthority;
    if (!eligibility.activeOpeningIDs.empty())
        return alreadyOpened;
    if (!eligibility.historyComplete)
        return historyIncomplete;
    return std::nullopt;
}

std::vector<OpeningBalancePolicy::Eligible> OpeningBalancePolicy::eligible(const LedgerSnapshot& snapshot)
{
    std::vector<Eligible> offered;
    for (auto& each : evaluateAll(snapshot)) {
        if (whyNot(snapshot, each))
            continue;
        const auto* account = snapshot.account(each.accountID);
        if (offered.empty() || offered.back().account != account)
            offered.push_back({.account = account, .currencies = {}});
        offered.back().currencies.push_back(std::move(each.currency));
    }
    return offered;
}

std::optional<OpeningBalancePolicy::Preselection>
OpeningBalancePolicy::preselected(const std::vector<Eligible>& offered, std::string_view accountID,
                                  std::string_view currency)
{
    auto chosen = std::ranges::find_if(offered, [&](const Eligible& each) { return each.account->id == accountID; });
    if (chosen == offered.end() && offered.size() == 1)
        chosen = offered.begin();
    if (chosen == offered.end())
        return std::nullopt;
    Preselection preselection{.accountID = chosen->account->id};
    if (std::ranges::find(chosen->currencies, currency) != chosen->currencies.end())
        preselection.currency = currency;
    else if (chosen->currencies.size() == 1)
        preselection.currency = chosen->currencies.front();
    return preselection;
}

std::optional<std::string> OpeningBalancePolicy::earliestVisibleTransactionDay(const LedgerSnapshot& snapshot)
{
    std::optional<std::string_view> earliest;
    for (const auto& entry : snapshot.transactions) {
        const bool earlier = !earliest || entry.date < *earliest;
        if (earlier && LedgerDay::isValid(entry.date))
            earliest = entry.date;
    }
    return earliest ? std::optional<std::string>{*earliest} : std::nullopt;
}
