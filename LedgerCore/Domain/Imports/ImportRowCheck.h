#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>

#include "LedgerCore/Domain/Imports/LedgerImportPlan.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

/// Checks the rows of an import file, one after another, against the books, and adds what each would record to the
/// plan.
class ImportRowCheck {
public:
    /// The columns of a row, in the order of the template.
    enum Column : std::size_t {
        date,
        kind,
        account,
        currency,
        amount,
        category,
        note,
        targetAccount,
        targetCurrency,
        targetAmount
    };
    using Cells = std::span<const std::string_view, 10>;

    /// Both must outlive the check.
    ImportRowCheck(const LedgerSnapshot& snapshot, LedgerImportPlan& plan);

    void check(int line, Cells cells, std::string identifier);

private:
    template <class Record>
    using ByName = std::unordered_map<std::string_view, const Record*>; // null for a name that several bear

    using ByPath = std::unordered_map<std::string, const Category*>; // the same, by parent and child

    void addPaths(const Category& parent, const Category& child);
    [[nodiscard]] const Category* categoryByPath(std::string_view entryKind, std::string_view path) const;
    [[nodiscard]] const Account* uniqueAccount(std::string_view name) const;
    [[nodiscard]] const Category* uniqueCategory(std::string_view entryKind, std::string_view name) const;
    void refuse(std::string_view issue, std::optional<Column> column);
    void checkDate();
    std::string_view checkedKind();
    const Account* checkedAccount();
    std::optional<std::int64_t> checkedAmount(Column amountColumn, std::string_view currencyCode,
                                              std::string_view issue);
    void checkPermission(const Account& source, std::string_view entryKind);
    void checkCategory(std::string_view entryKind, TransactionInput& input);
    void checkTransfer(const Account* source, TransactionInput& input);
    void checkExchange(TransactionInput& input);
    void checkTargetsAreEmpty();
    const Account* checkedTarget();

    const LedgerSnapshot& m_snapshot;
    LedgerImportPlan& m_plan;
    ByName<Account> m_accounts; // those that the member sees
    ByName<Category> m_incomeCategories;
    ByName<Category> m_expenseCategories;
    ByPath m_incomePaths;
    ByPath m_expensePaths;
    std::string m_previousDate; // of the row before

    int m_line = 0;
    const std::string_view* m_cells = nullptr;
    std::string m_currency; // in capitals
    std::string m_targetCurrency;
};
