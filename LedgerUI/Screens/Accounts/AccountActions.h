#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <vector>

#include "LedgerCore/Domain/Calendar/Period.h"
#include "LedgerUI/Components/Page/Action.h"
#include "LedgerUI/Presentation/Accounts/AccountDetail.h"
#include "LedgerUI/Presentation/Accounts/AccountListing.h"

/// What can be done on the page of accounts.
namespace AccountActions {

/// The chosen account and what the page does with it.
struct Chosen {
    std::optional<AccountDetail> detail; // nothing while none is chosen
    bool isBusy = false;
    std::function<void()> open;
    std::function<void()> showInLedger;
    std::function<void()> recordOpening;
    std::function<void()> edit;
    std::function<void()> addCurrency;
    std::function<void()> changeState; // archives it, or restores it
    bool offersStatements = false;     // to who may take figures out of the books
    std::chrono::year_month_day today{};
    std::function<void(const Period&)> printStatement;
};
std::vector<Action> onAccount(const Chosen& chosen);
/// In the order of the menu; an empty id stands for a line.
QList<QString> accountMenu();

/// What makes an account, and what goes through the opening balances that are still due.
struct Beginning {
    bool mayManage = false;
    bool isBusy = false;
    std::size_t openingsDue = 0;
    std::function<void()> newAccount;
    std::function<void()> recordOpenings;
};
std::vector<Action> beginning(const Beginning& beginning);

/// The orders of the accounts: by name, and by the balance in each currency that is held.
std::vector<Action> sorting(const AccountListing& listing, const std::function<void(const AccountSort&)>& sortBy);
QList<QString> sortingMenu(const AccountListing& listing);

}
