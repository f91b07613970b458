#pragma once

#include <vector>

#include "LedgerUI/Presentation/Ledger/Listing/LedgerBalances.h"
#include "LedgerUI/Screens/Ledger/Detail/LedgerDetailBody.h"

class SelectableText;
class TextLabel;

/// What is on every account at the end of a day.
class LedgerBalancesBody final : public LedgerDetailBody {
    Q_OBJECT
public:
    LedgerBalancesBody(const LedgerBalances& balances, QWidget* parent);

    /// Shows other amounts of the same accounts, which another day or another entry mostly comes to; false where there
    /// is more to change than that.
    bool renew(const LedgerBalances& balances);

Q_SIGNALS:
    void accountWanted(const QString& accountID);

private:
    void addGroups();

    LedgerBalances m_balances;
    SelectableText* m_day = nullptr;
    std::vector<TextLabel*> m_figures; // of the accounts, then of the totals
};
