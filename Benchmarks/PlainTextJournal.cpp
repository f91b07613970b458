#include "Benchmarks/PlainTextJournal.h"

#include <cstdlib>
#include <iterator>
#include <string_view>
#include <unordered_map>

#include <fmt/format.h>

#include "LedgerCore/Domain/Money/Money.h"

namespace {

using Names = std::unordered_map<std::string_view, std::string>;

Names assetNames(const LedgerSnapshot& books)
{
    Names names;
    for (const auto& account : books.accounts)
        names.emplace(account.id, "assets:" + account.name);
    return names;
}

/// "expense:Category 3:Category 5".
Names categoryNames(const LedgerSnapshot& books)
{
    Names own;
    for (const auto& category : books.categories)
        own.emplace(category.id, category.names.at("en-US"));
    Names names;
    for (const auto& category : books.categories) {
        const auto parent = category.parentID ? own.at(*category.parentID) + ':' : std::string{};
        names.emplace(category.id, category.kind + ':' + parent + own.at(category.id));
    }
    return names;
}

class Journal {
public:
    explicit Journal(const LedgerSnapshot& books) : m_assets(assetNames(books)), m_categories(categoryNames(books))
    {
        for (const auto& entry : books.transactions)
            m_entries.emplace(entry.id, &entry);
    }

    void write(const LedgerTransaction& entry)
    {
        fmt::format_to(std::back_inserter(m_text), "{} {}\n", entry.date, entry.note);
        for (std::size_t at = 0; at < entry.legs.size(); ++at)
            posting(m_assets.at(entry.legs[at].accountID), entry.legs[at], at == 0 ? priceOf(entry) : nullptr);
        if (entry.legs.size() == 1) {
            auto other = entry.legs.front();
            other.amountMinor = -other.amountMinor;
            posting(otherSide(entry), other, nullptr);
        }
        m_text += '\n';
    }

    std::string take() { return std::move(m_text); }

private:
    /// The leg that an exchange's first leg was bought or sold for.
    static const LedgerLeg* priceOf(const LedgerTransaction& entry)
    {
        const bool exchanges = entry.legs.size() == 2 && entry.legs[0].currency != entry.legs[1].currency;
        return exchanges ? &entry.legs[1] : nullptr;
    }

    void posting(std::string_view account, const LedgerLeg& leg, const LedgerLeg* price)
    {
        fmt::format_to(std::back_inserter(m_text), "    {}  {} {}", account,
                       Money::decimalString(leg.amountMinor, leg.currency), leg.currency);
        if (price)
            fmt::format_to(std::back_inserter(m_text), " @@ {} {}",
                           Money::decimalString(std::abs(price->amountMinor), price->currency), price->currency);
        m_text += '\n';
    }

    std::string otherSide(const LedgerTransaction& entry) const
    {
        if (entry.reversalOf)
            return otherSide(*m_entries.at(*entry.reversalOf));
        if (entry.originalTransactionID)
            return otherSide(*m_entries.at(*entry.originalTransactionID));
        if (entry.categoryID)
            return m_categories.at(*entry.categoryID);
        return entry.kind == EntryKind::refund ? "income:Refunds" : "equity:" + entry.kind;
    }

    Names m_assets;
    Names m_categories;
    std::unordered_map<std::string_view, const LedgerTransaction*> m_entries;
    std::string m_text;
};

}

std::string PlainTextJournal::render(const LedgerSnapshot& books)
{
    Journal journal{books};
    for (const auto& entry : books.transactions)
        journal.write(entry);
    return journal.take();
}
