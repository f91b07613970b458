#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <boost/describe.hpp>

/// Minor units by currency code.
using MinorByCurrency = std::map<std::string, std::int64_t, std::less<>>;

namespace AccountPurpose {
inline constexpr std::string_view employee = "employee";   // an employee's float
inline constexpr std::string_view refund = "refund";       // pays refunds out
inline constexpr std::string_view operating = "operating"; // an ordinary company account that says so
}

/// A place that holds the company's money, in one or more currencies.
struct Account {
    std::string id;
    std::string name;
    std::vector<std::string> currencies;
    std::optional<std::string> ownerMemberID; // an account held by one member
    bool archived = false;                    // takes no new entries
    MinorByCurrency balances;
    std::optional<std::string> purpose;          // an `AccountPurpose`; unset for an ordinary company account
    std::optional<std::string> operatorMemberID; // goes before `ownerMemberID` as the responsible member
    std::optional<std::string> returnAccountID;

    bool operator==(const Account&) const = default;

    /// Minor units held in the currency; 0 when the account does not hold it.
    [[nodiscard]] std::int64_t balance(std::string_view currency) const;

    [[nodiscard]] bool holds(std::string_view currency) const;

    [[nodiscard]] bool hasPurpose(std::string_view wanted) const { return purpose && *purpose == wanted; }

    /// An employee's or refund account, or one owned by a member: only its responsible member records on it.
    [[nodiscard]] bool isRestricted() const;

    /// Money that an employee holds for the company: a restricted account that is no refund account. Its balances
    /// never go below zero, since nobody hands out more cash than there is.
    [[nodiscard]] bool isEmployeeFund() const { return isRestricted() && !hasPurpose(AccountPurpose::refund); }

    /// The member who answers for a restricted account, or nothing when none is named.
    [[nodiscard]] std::optional<std::string_view> responsibleMemberID() const;
};
BOOST_DESCRIBE_STRUCT(Account, (),
                      (id, name, currencies, ownerMemberID, archived, balances, purpose, operatorMemberID,
                       returnAccountID))

/// Body of account creation.
struct AccountCreate {
    std::string name;
    std::vector<std::string> currencies;
    std::optional<std::string> ownerMemberID;
    std::optional<std::string> operatorMemberID;
    std::optional<std::string> purpose;
    std::optional<std::string> returnAccountID;
    std::optional<std::vector<std::string>> fundingMemberIDs; // members allowed to fund the account

    bool operator==(const AccountCreate&) const = default;
};
BOOST_DESCRIBE_STRUCT(AccountCreate, (),
                      (name, currencies, ownerMemberID, operatorMemberID, purpose, returnAccountID, fundingMemberIDs))

/// Body of taking an account out of use, or back into it.
struct Archive {
    bool archived = false;

    bool operator==(const Archive&) const = default;
};
BOOST_DESCRIBE_STRUCT(Archive, (), (archived))

/// Body of an account change; an absent field is left unchanged.
struct AccountUpdate {
    std::optional<std::vector<std::string>> addCurrencies;
    std::optional<bool> acknowledgeCurrencyAccess; // more people will see the new currency
    std::optional<std::string> name;
    std::optional<std::string> purpose;
    std::optional<std::string> operatorMemberID;
    std::optional<std::string> returnAccountID;
    std::optional<std::vector<std::string>> fundingMemberIDs;
    std::optional<bool> archived;
    std::optional<bool> acknowledgeHistoryAccess; // a new operator will see the account's history

    bool operator==(const AccountUpdate&) const = default;
};
BOOST_DESCRIBE_STRUCT(AccountUpdate, (),
                      (addCurrencies, acknowledgeCurrencyAccess, name, purpose, operatorMemberID, returnAccountID,
                       fundingMemberIDs, archived, acknowledgeHistoryAccess))
