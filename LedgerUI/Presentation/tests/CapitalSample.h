#pragma once

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "LedgerCore/Domain/Capital/CapitalCommands.h"
#include "LedgerCore/Domain/Capital/CapitalHistory.h"
#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Dividends/DividendCommands.h"
#include "LedgerCore/Domain/Dividends/DividendHistory.h"
#include "LedgerCore/Domain/testing/SnapshotBuilder.h"

/// Books with capital and dividends, made by the very commands that a person would send. Records are named in the
/// order in which they come: "c1" and on in the capital section, "d1" and on in the dividend section; their entries
/// "entry-c1", "entry-d1".
class CapitalSample {
public:
    explicit CapitalSample(SnapshotBuilder books) : m_books{books.build()}
    {
        m_books.capital.emplace().showInSidebar = true;
        m_books.dividends.emplace().showInSidebar = true;
    }

    CapitalSample& owner(std::string name, std::optional<std::string> memberID = {})
    {
        return apply(CapitalCommands::setParticipant(capital(), issue("2026-01-01"),
                                                     {.name = std::move(name), .memberID = std::move(memberID)}));
    }
    CapitalSample& archiveOwner(std::string id, std::string name)
    {
        return apply(CapitalCommands::setParticipant(capital(), issue("2026-01-01"),
                                                     {.id = std::move(id), .name = std::move(name), .archived = true}));
    }
    CapitalSample& contribute(std::string day, std::string owner, std::string currency, std::string amount,
                              std::string account, std::string note = {})
    {
        return apply(CapitalCommands::contribute(capital(), issue(std::move(day)),
                                                 {.participantID = std::move(owner),
                                                  .currency = std::move(currency),
                                                  .amount = std::move(amount),
                                                  .accountID = std::move(account),
                                                  .note = std::move(note)},
                                                 "en-US"));
    }
    CapitalSample& reverseContribution(std::string day, const std::string& id, std::string note)
    {
        return apply(
            CapitalCommands::reverse(CapitalContext::of(m_books, id), issue(std::move(day)), id, std::move(note)));
    }
    CapitalSample& baseline(std::string day, std::string currency, std::string through,
                            std::vector<CapitalCommands::OwnerText> amounts)
    {
        return apply(CapitalCommands::setBaseline(capital(), issue(std::move(day)),
                                                  {.currency = std::move(currency),
                                                   .throughDate = std::move(through),
                                                   .amounts = std::move(amounts),
                                                   .zero = CapitalCommands::ZeroBaseline::confirmed},
                                                  "en-US"));
    }
    CapitalSample& ownership(std::string day, const std::vector<CapitalCommands::OwnerText>& shares)
    {
        return apply(CapitalCommands::setOwnership(capital(), issue(std::move(day)), shares, "en-US"));
    }

    CapitalSample& participant(std::string name, std::string ratio, std::optional<std::string> memberID = {})
    {
        return apply(DividendCommands::setParticipant(
            dividends(), issue("2026-01-01"),
            {.name = std::move(name), .memberID = std::move(memberID), .percentage = std::move(ratio)}, "en-US"));
    }
    CapitalSample& allocate(std::string day, std::string period, std::string currency, std::string amount,
                            std::vector<DividendCommands::ShareText> shares)
    {
        return apply(DividendCommands::allocate(dividends(), issue(std::move(day)),
                                                {.period = std::move(period),
                                                 .currency = std::move(currency),
                                                 .amount = std::move(amount),
                                                 .shares = std::move(shares)},
                                                "en-US"));
    }
    CapitalSample& advance(std::string day, std::string participant, std::string currency, std::string amount,
                           std::string account)
    {
        return apply(DividendCommands::advance(dividends(), issue(std::move(day)),
                                               {.participantID = std::move(participant),
                                                .currency = std::move(currency),
                                                .amount = std::move(amount),
                                                .accountID = std::move(account)},
                                               "en-US"));
    }
    CapitalSample& pay(std::string day, std::string batch, std::string participant, std::string amount,
                       std::string account)
    {
        return apply(DividendCommands::pay(dividends(), issue(std::move(day)),
                                           {.batchID = std::move(batch),
                                            .participantID = std::move(participant),
                                            .amount = std::move(amount),
                                            .accountID = std::move(account)},
                                           "en-US"));
    }
    CapitalSample& applyAdvance(std::string day, std::string batch, std::string participant, std::string advanceID,
                                std::string amount)
    {
        return apply(DividendCommands::apply(dividends(), issue(std::move(day)),
                                             {.batchID = std::move(batch),
                                              .participantID = std::move(participant),
                                              .advanceID = std::move(advanceID),
                                              .amount = std::move(amount)},
                                             "en-US"));
    }
    CapitalSample& giveBack(std::string day, std::string advanceID, std::string amount, std::string account)
    {
        return apply(DividendCommands::returnAdvance(
            dividends(), issue(std::move(day)),
            {.advanceID = std::move(advanceID), .amount = std::move(amount), .accountID = std::move(account)},
            "en-US"));
    }
    CapitalSample& reverseMovement(std::string day, const std::string& id, std::string note)
    {
        return apply(
            DividendCommands::reverse(DividendContext::of(m_books, id), issue(std::move(day)), id, std::move(note)));
    }
    CapitalSample& cancelBatch(std::string day, std::string id)
    {
        return apply(DividendCommands::cancelBatch(dividends(), issue(std::move(day)), std::move(id), {}));
    }

    [[nodiscard]] const LedgerSnapshot& books() const { return m_books; }
    [[nodiscard]] LedgerSnapshot& books() { return m_books; }
    [[nodiscard]] std::string json() const { return Json::encode(m_books); }

    CapitalSample& apply(const CapitalCommands::Built& built)
    {
        require(built.has_value(), "a sample is made of commands that are accepted");
        auto& state = *m_books.capital;
        const auto change = CapitalHistory::changeFor(*built, state, stamp('c', state.revision + 1));
        CapitalHistory::apply(change, state);
        if (const auto* made = std::get_if<CapitalContribution>(&change.made)) {
            const auto* original =
                made->reversalOf ? entry("entry-" + *made->reversalOf) : static_cast<const LedgerTransaction*>(nullptr);
            post(made->transactionID, original ? EntryKind::reversal : EntryKind::capital, made->date, change.note,
                 {original ? original->legs.front().accountID : built->accountID.value_or(""), made->currency,
                  made->amountMinor},
                 original ? original->id : std::string{});
        }
        return *this;
    }

    CapitalSample& apply(const DividendCommands::Built& built)
    {
        require(built.has_value(), "a sample is made of commands that are accepted");
        auto& state = *m_books.dividends;
        const auto context = built->movementID ? DividendContext::of(m_books, *built->movementID) : dividends();
        const auto change = DividendHistory::changeFor(*built, context, stamp('d', state.revision + 1));
        DividendHistory::apply(change, state);
        const auto* made = std::get_if<DividendMovement>(&change.made);
        if (!made || !made->transactionID)
            return *this;
        const auto* original =
            made->reversalOf ? entry("entry-" + *made->reversalOf) : static_cast<const LedgerTransaction*>(nullptr);
        const auto sign = made->kind == DividendMovementKind::returning ? 1 : -1;
        post(*made->transactionID, original ? EntryKind::reversal : EntryKind::dividend, made->date, change.note,
             {original ? original->legs.front().accountID : built->accountID.value_or(""), made->currency,
              original ? -original->legs.front().amountMinor : sign * made->amountMinor},
             original ? original->id : std::string{});
        return *this;
    }

private:
    [[nodiscard]] CapitalContext capital() const { return CapitalContext::of(m_books); }
    [[nodiscard]] DividendContext dividends() const { return DividendContext::of(m_books); }
    static CommandIssue issue(std::string day) { return {.date = std::move(day), .idempotencyKey = "sample"}; }

    SectionStamp stamp(char section, int revision)
    {
        const auto id = section + std::to_string(revision);
        const auto second = std::to_string(100 + ++m_steps);
        return {.recordID = id,
                .entryID = "entry-" + id,
                .memberID = m_books.currentMember.id,
                .createdAt = "2026-11-20T09:00:00." + second + "Z"};
    }

    [[nodiscard]] const LedgerTransaction* entry(const std::string& id) const
    {
        for (const auto& each : m_books.transactions) {
            if (each.id == id)
                return &each;
        }
        return nullptr;
    }

    void post(const std::string& id, std::string_view kind, const std::string& day, const std::string& note,
              const LedgerLeg& leg, const std::string& reversalOf)
    {
        LedgerTransaction posted;
        posted.id = id;
        posted.kind = kind;
        posted.date = day;
        posted.note = note;
        posted.createdAt = "2026-11-20T09:00:00.000Z";
        posted.memberID = m_books.currentMember.id;
        posted.legs = {leg};
        if (!reversalOf.empty())
            posted.reversalOf = reversalOf;
        m_books.transactions.push_back(std::move(posted));
        for (auto& account : m_books.accounts) {
            if (account.id == leg.accountID)
                account.balances[leg.currency] += leg.amountMinor;
        }
    }

    LedgerSnapshot m_books;
    int m_steps = 0;
};

/// An owner who may do everything with capital and dividends, and two accounts for it.
inline SnapshotBuilder capitalGround()
{
    auto books = snapshot().permissions({"viewCompany", "manageCompany", "exportData", "viewCapital", "postCapital",
                                         "correctCapital", "exportCapital", "viewDividends", "postDividends"});
    books.account("Operating bank", {"IDR", "USD"}).account("Singapore", {"USD"}).grantAll();
    FinancialSettings settings;
    settings.revision = 1;
    settings.contributionsEnabled = true;
    settings.dividendsEnabled = true;
    books.settings(settings);
    return books;
}

/// Three owners, a baseline, contributions, two allocations and an advance, as they stand on 20 November 2026.
inline CapitalSample capitalSample()
{
    CapitalSample sample{capitalGround()};
    sample.owner("Budi Santoso").owner("陈思远").owner("Nguyễn Thị Thanh Hương"); // c1 c2 c3
    sample.baseline("2026-01-02", "IDR", "2025-12-31", {{"c1", "1,050,000,000"}, {"c2", "800,000,000"}, {"c3", "0"}});
    sample.ownership("2025-07-01", {{"c1", "50"}, {"c2", "50"}, {"c3", "0"}});                                  // c5
    sample.ownership("2026-01-01", {{"c1", "45"}, {"c2", "38.33"}, {"c3", "16.67"}});                           // c6
    sample.contribute("2026-07-28", "c3", "IDR", "25,000,000", "Operating bank", "Typed twice");                // c7
    sample.reverseContribution("2026-07-30", "c7", "Was recorded already");                                     // c8
    sample.contribute("2026-11-13", "c1", "IDR", "150,000,000", "Operating bank", "Fourth round");              // c9
    sample.participant("Budi Santoso", "45").participant("陈思远", "30");                                       // d1 d2
    sample.participant("Nguyễn Thị Thanh Hương", "25");                                                         // d3
    sample.allocate("2026-07-31", "2026 Q2", "IDR", "125,000,000", {{"d1", "45"}, {"d2", "30"}, {"d3", "25"}}); // d4
    sample.pay("2026-09-01", "d4", "d2", "13,500,000", "Operating bank");                                       // d5
    sample.reverseMovement("2026-09-02", "d5", "Wrong account");                                                // d6
    sample.advance("2026-09-12", "d2", "IDR", "20,000,000", "Operating bank");                                  // d7
    sample.applyAdvance("2026-09-12", "d4", "d2", "d7", "12,000,000");                                          // d8
    sample.pay("2026-10-05", "d4", "d2", "13,500,000", "Operating bank");                                       // d9
    sample.allocate("2026-10-31", "2026 Q3", "IDR", "64,500,000", {{"d1", "45"}, {"d2", "30"}, {"d3", "25"}});  // d10
    return sample;
}
