#pragma once

#include <algorithm>
#include <array>
#include <map>
#include <random>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerUI/Presentation/tests/CapitalSample.h"

inline constexpr std::array walkedPeople{"Budi", "Chen", "Huong"};
inline constexpr std::array walkedCurrencies{"IDR", "USD"};

/// A year of capital and dividends in which everything happens that a person can do, in any order.
class RandomYear {
public:
    explicit RandomYear(unsigned seed) : m_random{seed}
    {
        constexpr std::array ratios{"45", "30", "25"};
        for (const auto* name : walkedPeople)
            m_sample.owner(name);
        for (std::size_t at = 0; at < walkedPeople.size(); ++at)
            m_sample.participant(walkedPeople[at], ratios[at]);
        for (int step = 0; step < 300; ++step)
            live(step);
    }

    [[nodiscard]] const LedgerSnapshot& books() const { return m_sample.books(); }
    [[nodiscard]] int timesDone(int action) const { return m_done.contains(action) ? m_done.at(action) : 0; }
    static constexpr int actions = 14;

private:
    std::size_t under(std::size_t count) { return std::uniform_int_distribution<std::size_t>{0, count - 1}(m_random); }
    std::string amount(const std::string& currency, std::int64_t most)
    {
        const auto minor = std::uniform_int_distribution<std::int64_t>{1, std::max<std::int64_t>(1, most)}(m_random);
        return Money::formatDigits(minor, currency, "en-US");
    }
    template <class Record>
    std::string anyOf(const std::vector<Record>& records)
    {
        return records.empty() ? "none" : records[under(records.size())].id;
    }
    template <class Built>
    void take(int action, const Built& built)
    {
        if (!built)
            return; // what the rules refuse does not happen
        m_sample.apply(built);
        ++m_done[action];
    }

    void live(int step)
    {
        using namespace std::chrono;
        const auto day = LedgerDay::format(sys_days{year{2026} / January / 2} + days{step});
        const CommandIssue issue{day, "walk"};
        const auto action = static_cast<int>(under(actions));
        if (action < 2)
            takeCapital(action, issue);
        else if (action < 5)
            takeNew(action, issue);
        else if (action < 9)
            takeSettlement(action, issue);
        else if (action < 11)
            takeHistory(action, issue);
        else
            takePeople(action, issue);
    }
    void takeCapital(int action, const CommandIssue& issue)
    {
        const auto& books = m_sample.books();
        const std::string currency = walkedCurrencies[under(2)];
        if (action == 0)
            return take(0, CapitalCommands::contribute(CapitalContext::of(books), issue,
                                                       {.participantID = anyOf(books.capital->participants),
                                                        .currency = currency,
                                                        .amount = amount(currency, 900'000),
                                                        .accountID = "Operating bank"},
                                                       "en-US"));
        const auto id = anyOf(books.capital->contributions);
        take(1, CapitalCommands::reverse(CapitalContext::of(books, id), issue, id, {}));
    }
    /// Percentages for everybody who is not archived; together a hundred.
    template <class Text, class Person>
    std::vector<Text> shares(const std::vector<Person>& all)
    {
        std::vector<Text> texts;
        int left = 100;
        auto others = std::ranges::count(all, false, &Person::archived);
        for (const auto& each : all) {
            if (each.archived)
                continue;
            const int share = --others == 0 ? left : static_cast<int>(under(static_cast<std::size_t>(left) + 1));
            left -= share;
            texts.push_back({each.id, std::to_string(share)});
        }
        return texts;
    }
    /// What was paid in before, corrected again and again; and shares that add up to a hundred percent.
    void takeHistory(int action, const CommandIssue& issue)
    {
        const auto context = CapitalContext::of(m_sample.books());
        const auto& owners = context.state.participants;
        if (action == 10)
            return take(
                10, CapitalCommands::setOwnership(context, issue, shares<CapitalCommands::OwnerText>(owners), "en-US"));
        const std::string currency = walkedCurrencies[under(2)];
        std::vector<CapitalCommands::OwnerText> amounts;
        for (const auto& each : owners)
            amounts.push_back({each.id, amount(currency, 400'000)});
        take(9, CapitalCommands::setBaseline(
                    context, issue, {.currency = currency, .throughDate = "2025-12-31", .amounts = amounts}, "en-US"));
    }
    /// People are archived and come back, and their default ratios change.
    void takePeople(int action, const CommandIssue& issue)
    {
        const auto& books = m_sample.books();
        const auto place = under(walkedPeople.size());
        const bool isArchived = under(4) == 0;
        if (action == 11) {
            const auto& owner = books.capital->participants[place];
            return take(11,
                        CapitalCommands::setParticipant(CapitalContext::of(books), issue,
                                                        {.id = owner.id, .name = owner.name, .archived = isArchived}));
        }
        const auto context = DividendContext::of(books);
        if (action == 13)
            return take(13, DividendCommands::fillFromOwnership(context, issue));
        const auto& participant = books.dividends->participants[place];
        take(12, DividendCommands::setParticipant(context, issue,
                                                  {.id = participant.id,
                                                   .name = participant.name,
                                                   .percentage = std::to_string(under(101)),
                                                   .archived = isArchived},
                                                  "en-US"));
    }
    void takeNew(int action, const CommandIssue& issue)
    {
        const auto context = DividendContext::of(m_sample.books());
        const std::string currency = walkedCurrencies[under(2)];
        if (action == 2) {
            return take(2, DividendCommands::allocate(
                               context, issue,
                               {.period = issue.date,
                                .currency = currency,
                                .amount = amount(currency, 700'000),
                                .shares = shares<DividendCommands::ShareText>(context.state.participants)},
                               "en-US"));
        }
        if (action == 3)
            return take(3, DividendCommands::advance(context, issue,
                                                     {.participantID = anyOf(context.state.participants),
                                                      .currency = currency,
                                                      .amount = amount(currency, 200'000),
                                                      .accountID = "Operating bank"},
                                                     "en-US"));
        take(4, DividendCommands::cancelBatch(context, issue, anyOf(context.state.batches), {}));
    }
    void takeSettlement(int action, const CommandIssue& issue)
    {
        const auto& books = m_sample.books();
        const auto context = DividendContext::of(books);
        const auto movement = anyOf(books.dividends->movements);
        const std::string currency = walkedCurrencies[under(2)];
        const DividendCommands::Settlement settled{.batchID = anyOf(books.dividends->batches),
                                                   .participantID = anyOf(books.dividends->participants),
                                                   .advanceID = movement,
                                                   .amount = amount(currency, 150'000),
                                                   .accountID = "Operating bank"};
        if (action == 5)
            return take(5, DividendCommands::pay(context, issue, settled, "en-US"));
        if (action == 6)
            return take(6, DividendCommands::apply(context, issue, settled, "en-US"));
        if (action == 7)
            return take(7, DividendCommands::returnAdvance(context, issue, settled, "en-US"));
        take(8, DividendCommands::reverse(DividendContext::of(books, movement), issue, movement, {}));
    }

    CapitalSample m_sample{capitalGround()};
    std::mt19937 m_random;
    std::map<int, int> m_done;
};
