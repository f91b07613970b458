#include "LedgerService/Books/BookInvariants.h"

#include <algorithm>
#include <map>
#include <set>
#include <tuple>
#include <unordered_map>
#include <utility>

#include <fmt/core.h>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Entries/EntryReference.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerService/Books/SectionInvariants.h"

namespace LedgerService {

namespace {

template <class Row>
using Index = std::unordered_map<std::string_view, const Row*>;

using AccountCurrency = std::pair<std::string_view, std::string_view>;

/// One pass over the books; each check appends what it finds.
class Audit {
public:
    explicit Audit(const Books& books) : m_books(books) {}

    std::vector<std::string> run()
    {
        m_accounts = indexed(m_books.accounts, "account");
        m_categories = indexed(m_books.categories, "category");
        m_members = indexed(m_books.members, "member");
        m_entries = indexed(m_books.entries, "entry");
        m_attachments = indexed(m_books.attachments, "receipt");
        for (const auto& account : m_books.accounts)
            checkAccount(account);
        for (const auto& category : m_books.categories)
            checkCategory(category);
        for (const auto& entry : m_books.entries) {
            checkHead(entry);
            checkLegs(entry);
            checkReversal(entry);
            checkRefund(entry);
            checkOpening(entry);
            checkAttachments(entry);
        }
        checkRefundTotals();
        checkBalances();
        checkLinkedAttachments();
        return std::move(m_found);
    }

private:
    template <class... Arguments>
    void found(fmt::format_string<Arguments...> words, Arguments&&... arguments)
    {
        m_found.push_back(fmt::format(words, std::forward<Arguments>(arguments)...));
    }

    template <class Row>
    Index<Row> indexed(const std::vector<Row>& rows, std::string_view what)
    {
        Index<Row> index;
        index.reserve(rows.size());
        for (const auto& row : rows) {
            if (row.id.empty() || !index.emplace(row.id, &row).second)
                found("{} '{}': the id is empty or not the only one", what, row.id);
        }
        return index;
    }

    template <class Row>
    static const Row* find(const Index<Row>& index, std::string_view id)
    {
        const auto row = index.find(id);
        return row == index.end() ? nullptr : row->second;
    }

    void checkAccount(const Account& account)
    {
        const std::set<std::string_view> currencies{account.currencies.begin(), account.currencies.end()};
        if (currencies.empty() || currencies.size() != account.currencies.size())
            found("account {}: holds no currency, or one twice", account.id);
        const auto responsible = account.responsibleMemberID();
        if (account.isRestricted() && !(responsible && find(m_members, *responsible)))
            found("account {}: nobody answers for it", account.id);
        if (account.returnAccountID && !find(m_accounts, *account.returnAccountID))
            found("account {}: its money goes back to no account", account.id);
        const auto holds = [](const auto& balance) { return balance.second != 0; };
        if (account.archived && std::ranges::any_of(account.balances, holds))
            found("account {}: archived with money on it", account.id);
    }

    void checkCategory(const Category& category)
    {
        if (category.kind != EntryKind::income && category.kind != EntryKind::expense)
            found("category {}: is of no kind", category.id);
        if (!category.parentID)
            return;
        const auto* const parent = find(m_categories, *category.parentID);
        if (!parent || parent->kind != category.kind || parent->parentID)
            found("category {}: stands under none of the first level and its kind", category.id);
        else if (parent->archived && !category.archived)
            found("category {}: in use under an archived one", category.id);
    }

    void checkHead(const LedgerTransaction& entry)
    {
        if (!LedgerDay::isValid(entry.date))
            found("entry {}: '{}' is no day", entry.id, entry.date);
        if (m_books.settings && m_books.settings->bookkeepingStartDate &&
            entry.date < *m_books.settings->bookkeepingStartDate)
            found("entry {}: booked before the start of the books", entry.id);
        if (!find(m_members, entry.memberID))
            found("entry {}: recorded by nobody", entry.id);
        const bool booked = entry.kind == EntryKind::income || entry.kind == EntryKind::expense;
        const auto* const category = entry.categoryID ? find(m_categories, *entry.categoryID) : nullptr;
        if (booked ? !category || category->kind != entry.kind : entry.categoryID.has_value())
            found("entry {}: its category does not fit its kind", entry.id);
    }

    void checkLegs(const LedgerTransaction& entry)
    {
        for (const auto& leg : entry.legs) {
            const auto* const account = find(m_accounts, leg.accountID);
            if (!account || !account->holds(leg.currency))
                found("entry {}: {} does not hold {}", entry.id, leg.accountID, leg.currency);
            if (leg.amountMinor == 0 || !Money::isWithinLimit(leg.amountMinor))
                found("entry {}: moves the impossible amount {}", entry.id, leg.amountMinor);
            const auto sum = Money::add(m_sums[{leg.accountID, leg.currency}], leg.amountMinor);
            if (!sum)
                found("entry {}: the balance of {} overflows", entry.id, leg.accountID);
            m_sums[{leg.accountID, leg.currency}] = sum.value_or(0);
        }
        if (!hasLegsOfKind(entry))
            found("entry {}: its movements are not those of the kind {}", entry.id, entry.kind);
    }

    static bool hasLegsOfKind(const LedgerTransaction& entry)
    {
        const auto& legs = entry.legs;
        if (entry.kind == EntryKind::income || entry.kind == EntryKind::opening || entry.kind == EntryKind::capital)
            return legs.size() == 1 && legs[0].amountMinor > 0;
        if (entry.kind == EntryKind::expense || entry.kind == EntryKind::refund)
            return legs.size() == 1 && legs[0].amountMinor < 0;
        if (entry.kind == EntryKind::dividend)
            return legs.size() == 1;
        if (entry.kind == EntryKind::transfer)
            return legs.size() == 2 && legs[0].amountMinor < 0 && legs[1].amountMinor == -legs[0].amountMinor &&
                   legs[0].currency == legs[1].currency && legs[0].accountID != legs[1].accountID;
        if (entry.kind == EntryKind::exchange)
            return legs.size() == 2 && legs[0].amountMinor < 0 && legs[1].amountMinor > 0 &&
                   legs[0].currency != legs[1].currency;
        return !legs.empty();
    }

    void checkReversal(const LedgerTransaction& entry)
    {
        if (entry.reversedBy) {
            const auto* const reversal = find(m_entries, *entry.reversedBy);
            if (!reversal || reversal->reversalOf != entry.id)
                found("entry {}: reversed by {}, which does not reverse it", entry.id, *entry.reversedBy);
        }
        if ((entry.kind == EntryKind::reversal) != entry.reversalOf.has_value())
            found("entry {}: a reversal, and only that, reverses an entry", entry.id);
        if (!entry.reversalOf)
            return;
        const auto* const original = find(m_entries, *entry.reversalOf);
        if (!original || original->reversedBy != entry.id || original->kind == EntryKind::reversal)
            found("entry {}: reverses {}, which does not know it", entry.id, *entry.reversalOf);
        else if (!std::ranges::equal(entry.legs, original->legs, isOpposite))
            found("entry {}: is not the opposite of {}", entry.id, original->id);
    }

    static bool isOpposite(const LedgerLeg& left, const LedgerLeg& right)
    {
        return left.accountID == right.accountID && left.currency == right.currency &&
               left.amountMinor == -right.amountMinor;
    }

    void checkRefund(const LedgerTransaction& entry)
    {
        if (entry.kind != EntryKind::refund) {
            if (entry.originalTransactionID || entry.externalReference)
                found("entry {}: only a refund names an original or a reference", entry.id);
            return;
        }
        if (!entry.originalTransactionID && !entry.externalReference)
            found("entry {}: a refund of nothing", entry.id);
        if (entry.reversedBy)
            return;
        for (const auto& leg : entry.legs) { // members who do not see an account may use its references once more
            if (entry.externalReference &&
                !m_references.insert({leg.accountID, EntryReference::folded(*entry.externalReference)}).second)
                found("entry {}: the reference '{}' is refunded twice", entry.id, *entry.externalReference);
        }
        if (!entry.originalTransactionID)
            return;
        const auto* const original = find(m_entries, *entry.originalTransactionID);
        if (!original || original->kind != EntryKind::income || original->reversedBy) {
            found("entry {}: refunds {}, which is no standing income", entry.id, *entry.originalTransactionID);
            return;
        }
        for (const auto& leg : entry.legs)
            m_refundable[{original->id, leg.currency}] += leg.amountMinor;
    }

    void checkRefundTotals()
    {
        for (auto& [key, remaining] : m_refundable) {
            const auto& [originalID, currency] = key;
            for (const auto& leg : find(m_entries, originalID)->legs) {
                if (leg.currency == currency)
                    remaining += leg.amountMinor;
            }
            if (remaining < 0)
                found("entry {}: more {} refunded than received", originalID, currency);
        }
    }

    void checkOpening(const LedgerTransaction& entry)
    {
        if (entry.kind != EntryKind::opening || entry.reversedBy)
            return;
        for (const auto& leg : entry.legs) {
            if (!m_opened.insert({leg.accountID, leg.currency}).second)
                found("entry {}: a second opening of {} in {}", entry.id, leg.accountID, leg.currency);
        }
    }

    void checkAttachments(const LedgerTransaction& entry)
    {
        for (const auto& id : entry.attachmentIDs) {
            const auto* const attachment = find(m_attachments, id);
            if (!attachment || attachment->transactionID != entry.id)
                found("entry {}: the receipt {} is not linked to it", entry.id, id);
        }
    }

    void checkLinkedAttachments()
    {
        for (const auto& attachment : m_books.attachments) {
            if (!attachment.transactionID)
                continue;
            const auto* const entry = find(m_entries, *attachment.transactionID);
            if (!entry || std::ranges::count(entry->attachmentIDs, attachment.id) != 1)
                found("receipt {}: linked to {}, which does not carry it", attachment.id, *attachment.transactionID);
        }
    }

    void checkBalances()
    {
        for (const auto& account : m_books.accounts) {
            for (const auto& [currency, minor] : account.balances) {
                const auto sum = m_sums.extract({account.id, currency});
                checkBalance(account, currency, minor, sum ? sum.mapped() : 0);
            }
        }
        for (const auto& [key, sum] : m_sums) {
            if (sum != 0)
                found("account {}: has no {} balance, its movements make {}", key.first, key.second, sum);
        }
    }

    void checkBalance(const Account& account, const std::string& currency, std::int64_t minor, std::int64_t sum)
    {
        if (minor != sum)
            found("account {}: the {} balance is {}, its movements make {}", account.id, currency, minor, sum);
        if (!Money::isWithinLimit(minor))
            found("account {}: the {} balance leaves the supported range", account.id, currency);
        if (account.isEmployeeFund() && minor < 0)
            found("account {}: the employee fund is below zero in {}", account.id, currency);
    }

    const Books& m_books;
    std::vector<std::string> m_found;
    Index<Account> m_accounts;
    Index<Category> m_categories;
    Index<Member> m_members;
    Index<LedgerTransaction> m_entries;
    Index<Attachment> m_attachments;
    std::map<AccountCurrency, std::int64_t> m_sums;
    std::map<AccountCurrency, std::int64_t> m_refundable; // income id and currency: received less refunded
    std::set<AccountCurrency> m_opened;
    std::set<std::pair<std::string_view, std::string>> m_references; // accounts and folded references
};

}

std::vector<std::string> BookInvariants::broken(const Books& books)
{
    auto found = Audit{books}.run();
    for (auto& each : SectionInvariants::broken(books))
        found.push_back(std::move(each));
    return found;
}

}
