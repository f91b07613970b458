#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include <QString>

#include "LedgerCore/Domain/Categories/CategoryRules.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerUI/Presentation/Forms/Submission.h"

/// One category as it is being filled in; without an identifier it is a new one.
struct CategoryForm {
    std::string id;
    std::string kind;
    std::string parentID; // empty on the top level
    TextMap names;        // of the four languages; others stay as they are saved
    std::string symbol;

    bool operator==(const CategoryForm&) const = default;

    static CategoryForm fresh(std::string_view kind);
    static CategoryForm of(const Category& category);

    /// What was changed from `before` on, done to `now`.
    [[nodiscard]] CategoryForm rebased(const CategoryForm& before, const CategoryForm& now) const;
    [[nodiscard]] CategoryCreate creation() const;
    /// Only what differs from `saved`.
    [[nodiscard]] CategoryUpdate update(const CategoryForm& saved) const;
    /// What keeps the form from being saved, or nothing.
    [[nodiscard]] std::optional<CategoryRules::Refusal> whyNot(const CategoryForm& saved,
                                                               const LedgerSnapshot& snapshot) const;
    /// What the category is called in the language of `locale`.
    [[nodiscard]] QString title(std::string_view locale) const;
};

/// What is sent for a known category.
struct CategoryChange {
    std::string id;
    CategoryUpdate update;
};

using CategoryCommand = std::variant<CategoryCreate, CategoryChange>;
using CategorySubmission = Submission<CategoryForm, CategoryCommand>;

namespace CategoryText {

QString refusal(CategoryRules::Refusal refused, std::string_view locale);

/// What keeps the category from being archived or restored, or nothing.
std::optional<CategoryRules::Refusal> whyNotArchived(const Category& category, bool isArchived,
                                                     const LedgerSnapshot& snapshot);

}
