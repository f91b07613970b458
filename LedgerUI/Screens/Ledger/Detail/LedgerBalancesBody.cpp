#include "LedgerUI/Screens/Ledger/Detail/LedgerBalancesBody.h"

#include <algorithm>

#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/SelectableText.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Space.h"

namespace {

bool areInSameCurrencies(const std::vector<MoneyText>& left, const std::vector<MoneyText>& right)
{
    return std::ranges::equal(left, right, {}, &MoneyText::currency, &MoneyText::currency);
}

bool isSameAccount(const LedgerAccountBalance& left, const LedgerAccountBalance& right)
{
    return left.accountID == right.accountID && left.name == right.name &&
           areInSameCurrencies(left.amounts, right.amounts);
}

bool isSameGroup(const LedgerBalanceGroup& left, const LedgerBalanceGroup& right)
{
    return left.title == right.title && std::ranges::equal(left.accounts, right.accounts, isSameAccount);
}

std::vector<MoneyText> figuresOf(const LedgerBalances& balances)
{
    std::vector<MoneyText> figures;
    for (const auto& group : balances.groups) {
        for (const auto& account : group.accounts)
            figures.insert(figures.end(), account.amounts.begin(), account.amounts.end());
    }
    figures.insert(figures.end(), balances.totals.begin(), balances.totals.end());
    return figures;
}

}

LedgerBalancesBody::LedgerBalancesBody(const LedgerBalances& balances, QWidget* parent)
    : LedgerDetailBody{parent}, m_balances{balances}
{
    m_day = addText(m_balances.day, Token::text2);
    addGap(Space::step3);
    if (m_balances.groups.empty())
        addText(word(ledgerWords(), "balances.none"), Token::text2);
    addGroups();
    if (!m_balances.totals.empty())
        std::ranges::copy(addTotals(m_balances.totals, word(ledgerWords(), "balances.total")),
                          std::back_inserter(m_figures));
    if (m_balances.hint.isEmpty())
        return;
    addGap(Space::step3);
    addText(m_balances.hint, Token::text2);
}

void LedgerBalancesBody::addGroups()
{
    bool isFirst = true;
    for (const auto& group : m_balances.groups) {
        if (!isFirst)
            addGap(Space::step2);
        isFirst = false;
        addGroup(group.title);
        for (const auto& account : group.accounts) {
            const auto id = QString::fromStdString(account.accountID);
            std::ranges::copy(addAccount(account.name, account.amounts, [this, id] { Q_EMIT accountWanted(id); }),
                              std::back_inserter(m_figures));
        }
    }
}

bool LedgerBalancesBody::renew(const LedgerBalances& balances)
{
    if (balances.hint != m_balances.hint || !areInSameCurrencies(balances.totals, m_balances.totals) ||
        !std::ranges::equal(balances.groups, m_balances.groups, isSameGroup))
        return false;
    m_balances = balances;
    m_day->setText(m_balances.day);
    std::size_t next = 0;
    for (const auto& amount : figuresOf(m_balances))
        presentFigure(*m_figures[next++], amount);
    return true;
}
