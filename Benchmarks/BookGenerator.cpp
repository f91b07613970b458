#include "Benchmarks/BookGenerator.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <fmt/core.h>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"

namespace {

constexpr std::chrono::sys_days firstDay{std::chrono::year{2021} / 1 / 1};
constexpr std::size_t bookDays = 1826;
constexpr std::array<std::string_view, 5> currencies{"USD", "IDR", "VND", "EUR", "CNY"};
constexpr std::size_t memberCount = 8;
constexpr std::size_t companyAccountCount = 8;
constexpr std::size_t accountCount = 12;
constexpr std::array<std::string_view, 10> words{"invoice", "delivery", "harbour", "月结",  "paper",
                                                 "tháng",   "sewa",     "fuel",    "toner", "client"};

/// A generator of numbers that is the same everywhere, unlike the standard library's distributions.
class Numbers {
public:
    /// Evenly spread over 0 to `bound` - 1.
    std::size_t below(std::size_t bound) { return static_cast<std::size_t>(next() % bound); }

private:
    std::uint64_t next()
    {
        m_state += 0x9e3779b97f4a7c15U;
        auto mixed = m_state;
        mixed = (mixed ^ (mixed >> 30)) * 0xbf58476d1ce4e5b9U;
        mixed = (mixed ^ (mixed >> 27)) * 0x94d049bb133111ebU;
        return mixed ^ (mixed >> 31);
    }

    std::uint64_t m_state = 20210101;
};

/// An identifier of the length and shape of those that the service issues.
std::string identifier(std::string_view family, std::size_t number)
{
    return fmt::format("{:0<8}-{:04x}-4000-8000-{:012x}", family, number % 65536, number);
}

class Bookkeeper {
public:
    explicit Bookkeeper(std::size_t entryCount) : m_entryCount(entryCount) {}

    LedgerSnapshot keep()
    {
        addCompany();
        addAccounts();
        addCategories("income", 3, 7);
        addCategories("expense", 6, 6);
        m_books.transactions.reserve(m_entryCount);
        for (std::size_t at = 0; at < m_entryCount; ++at)
            post(at);
        return std::move(m_books);
    }

private:
    void addCompany()
    {
        m_books.company.id = identifier("company", 1);
        m_books.company.name = "Harbour & Hill Trading";
        m_books.company.createdAt = "2021-01-01T01:00:00.000Z";
        for (std::size_t at = 0; at < memberCount; ++at) {
            auto& member = m_books.members.emplace_back();
            member.id = identifier("member", at);
            member.userID = identifier("user", at);
            member.name = fmt::format("Member {}", at + 1);
            member.role = at == 0 ? "owner" : "finance";
            member.active = true;
        }
        m_books.members.front().permissions = {"viewCompany", "manageCompany", "exportData"};
    }

    void addAccounts()
    {
        auto& grants = m_books.members.front().accountGrants.emplace();
        for (std::size_t at = 0; at < accountCount; ++at) {
            auto& account = m_books.accounts.emplace_back();
            account.id = identifier("account", at);
            account.name = fmt::format("Account {}", at + 1);
            for (std::size_t held = 0; held < (isFloat(at) ? 1U : 3U); ++held)
                account.currencies.emplace_back(currencies[(at + held) % currencies.size()]);
            if (isFloat(at)) {
                account.purpose = AccountPurpose::employee;
                account.operatorMemberID = identifier("member", at % memberCount);
            }
            grants.push_back({account.id, {AccountGrant::knownActions.begin(), AccountGrant::knownActions.end()}});
        }
        m_books.currentMember = m_books.members.front();
    }

    static bool isFloat(std::size_t account) { return account >= companyAccountCount; }

    void addCategories(std::string_view kind, std::size_t parents, std::size_t children)
    {
        for (std::size_t at = 0; at < parents; ++at) {
            const auto parent = addCategory(kind, {});
            for (std::size_t child = 0; child < children; ++child)
                addCategory(kind, parent);
        }
    }

    std::string addCategory(std::string_view kind, std::optional<std::string> parent)
    {
        const auto number = m_books.categories.size();
        auto& category = m_books.categories.emplace_back();
        category.id = identifier("category", number);
        category.kind = kind;
        category.names = {{"en-US", fmt::format("Category {}", number)}, {"zh-CN", fmt::format("类别 {}", number)}};
        category.symbol = "tag";
        category.parentID = std::move(parent);
        if (category.parentID) // entries are booked to the lower level
            (kind == EntryKind::income ? m_incomeCategories : m_expenseCategories).push_back(category.id);
        return category.id;
    }

    void post(std::size_t position)
    {
        auto& entry = m_books.transactions.emplace_back();
        const auto day = firstDay + std::chrono::days{position * bookDays / m_entryCount};
        entry.id = identifier("entry", position);
        entry.date = LedgerDay::format(std::chrono::year_month_day{day});
        entry.createdAt = fmt::format("{}T{:02}:{:02}:{:02}.125Z", entry.date, m_numbers.below(24), m_numbers.below(60),
                                      m_numbers.below(60));
        entry.memberID = m_books.members[m_numbers.below(memberCount)].id;
        entry.note = fmt::format("{} {} {}", words[m_numbers.below(words.size())], words[m_numbers.below(words.size())],
                                 m_numbers.below(10000));
        choose(entry, m_numbers.below(1000));
        for (const auto& leg : entry.legs)
            accountOf(leg).balances[leg.currency] += leg.amountMinor;
        if (m_numbers.below(5) == 0)
            attach(entry, position);
    }

    /// `lot` of 1000 decides the kind: two of three entries are expenses, as in a real company.
    void choose(LedgerTransaction& entry, std::size_t lot)
    {
        if (m_books.transactions.size() <= companyAccountCount)
            single(entry, EntryKind::opening, m_books.transactions.size() - 1, 500'000'000);
        else if (lot < 550)
            booked(entry, EntryKind::expense, m_expenseCategories, -amount());
        else if (lot < 850)
            booked(entry, EntryKind::income, m_incomeCategories, 2 * amount());
        else if (lot < 920)
            transfer(entry);
        else if (lot < 945)
            exchange(entry);
        else if (lot < 965)
            refund(entry);
        else if (lot < 990)
            reverse(entry);
        else
            single(entry, lot < 995 ? EntryKind::capital : EntryKind::dividend, m_numbers.below(companyAccountCount),
                   lot < 995 ? 9 * amount() : -3 * amount());
    }

    std::int64_t amount() { return static_cast<std::int64_t>(100 + m_numbers.below(900'000)); }

    Account& accountOf(const LedgerLeg& leg)
    {
        return *std::ranges::find(m_books.accounts, leg.accountID, &Account::id);
    }

    void single(LedgerTransaction& entry, std::string_view kind, std::size_t account, std::int64_t minor)
    {
        const auto& held = m_books.accounts[account];
        entry.kind = kind;
        entry.legs = {{held.id, held.currencies[m_numbers.below(held.currencies.size())], minor}};
    }

    void booked(LedgerTransaction& entry, std::string_view kind, const std::vector<std::string>& categories,
                std::int64_t minor)
    {
        single(entry, kind, m_numbers.below(accountCount), minor);
        entry.categoryID = categories[m_numbers.below(categories.size())];
        if (kind == EntryKind::income)
            m_lastIncome = m_books.transactions.size() - 1;
    }

    /// Neighbouring accounts share two of their currencies; a float holds the first one's.
    void transfer(LedgerTransaction& entry)
    {
        const auto source = m_numbers.below(companyAccountCount);
        const auto& currency = m_books.accounts[source].currencies[0];
        auto target = (source + 1) % accountCount;
        while (target == source || !m_books.accounts[target].holds(currency))
            target = (target + 1) % accountCount;
        entry.kind = EntryKind::transfer;
        const auto minor = amount();
        entry.legs = {{m_books.accounts[source].id, currency, -minor}, {m_books.accounts[target].id, currency, minor}};
        if (isFloat(target))
            entry.transferPurpose = TransferPurpose::funding;
    }

    void exchange(LedgerTransaction& entry)
    {
        const auto& account = m_books.accounts[m_numbers.below(companyAccountCount)];
        entry.kind = EntryKind::exchange;
        entry.legs = {{account.id, account.currencies[0], -amount()}, {account.id, account.currencies[1], amount()}};
    }

    /// Half of the latest income.
    void refund(LedgerTransaction& entry)
    {
        entry.kind = EntryKind::refund;
        entry.legs = {{m_books.accounts[0].id, m_books.accounts[0].currencies[0], -amount()}};
        const auto& income = m_books.transactions[m_lastIncome];
        if (income.kind != EntryKind::income || income.reversedBy)
            return;
        entry.originalTransactionID = income.id;
        entry.legs = income.legs;
        entry.legs.front().amountMinor /= -2;
    }

    /// The latest entry that may be reversed, as mistakes are seen soon.
    void reverse(LedgerTransaction& entry)
    {
        for (auto at = m_books.transactions.size() - 1; at-- > companyAccountCount;) {
            auto& original = m_books.transactions[at];
            if (original.reversedBy || original.kind == EntryKind::reversal || original.kind == EntryKind::refund ||
                original.kind == EntryKind::income)
                continue;
            entry.kind = EntryKind::reversal;
            entry.reversalOf = original.id;
            original.reversedBy = entry.id;
            entry.legs = original.legs;
            for (auto& leg : entry.legs)
                leg.amountMinor = -leg.amountMinor;
            return;
        }
        booked(entry, EntryKind::expense, m_expenseCategories, -amount());
    }

    void attach(LedgerTransaction& entry, std::size_t position)
    {
        auto& receipt = m_books.attachments.emplace_back();
        receipt.id = identifier("receipt", position);
        receipt.transactionID = entry.id;
        receipt.name = fmt::format("receipt-{}.jpg", position);
        receipt.mime = "image/jpeg";
        receipt.byteCount = static_cast<std::int64_t>(20'000 + m_numbers.below(400'000));
        receipt.createdAt = entry.createdAt;
        entry.attachmentIDs.push_back(receipt.id);
    }

    std::size_t m_entryCount;
    LedgerSnapshot m_books;
    Numbers m_numbers;
    std::vector<std::string> m_incomeCategories;
    std::vector<std::string> m_expenseCategories;
    std::size_t m_lastIncome = 0;
};

}

LedgerSnapshot BookGenerator::books(std::size_t entryCount)
{
    return Bookkeeper{entryCount}.keep();
}
