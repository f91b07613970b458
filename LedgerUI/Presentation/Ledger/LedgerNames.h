#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

#include "LedgerCore/Domain/Categories/CategoryDirectory.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

/// What accounts, members, categories and entries of one snapshot are called in one language. Indexed once; every
/// answer is UTF-8 and never empty. The snapshot must outlive it.
class LedgerNames {
public:
    LedgerNames(const LedgerSnapshot& snapshot, std::string locale);

    [[nodiscard]] const std::string& locale() const { return m_locale; }
    [[nodiscard]] const CategoryDirectory& categories() const { return m_categories; }

    /// A transfer's far end may be known by name only; an account of neither kind has a stand-in.
    [[nodiscard]] std::string account(std::string_view id) const;
    [[nodiscard]] std::string member(std::string_view id) const;
    /// "Utilities › Electricity", or a stand-in for a category that the snapshot does not hold.
    [[nodiscard]] std::string category(std::string_view id) const;

    /// "Expense", "Funding", "Dividend payment": the entry's kind as precisely as the entry tells it.
    [[nodiscard]] std::string kind(const LedgerTransaction& entry) const;
    /// The category's path where the entry has one, else its kind.
    [[nodiscard]] std::string title(const LedgerTransaction& entry) const;

private:
    std::string m_locale;
    CategoryDirectory m_categories;
    std::unordered_map<std::string_view, std::string_view> m_accounts;
    std::unordered_map<std::string_view, std::string_view> m_members;
};

/// The kind that glyph, colour and filters go by: entries of capital and of dividends are told by what made them.
std::string_view displayKind(const LedgerTransaction& entry);
