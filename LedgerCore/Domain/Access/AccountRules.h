#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

/// Which accounts a company can have and how they change. In a command an empty identifier or purpose stands for none.
namespace AccountRules {

enum class Refusal {
    noAuthority,    // only who manages the company
    unknownAccount, // or one that the member does not see
    nameUnsound,
    nameTaken, // by an account in use that the member sees: people and imports choose accounts by their names
    currencyRequired,
    currencyUnknown,
    currencyRepeated,
    purposeUnknown,
    memberUnknown,
    memberInactive,    // nobody is put in charge who cannot act
    operatorMissing,   // a new restricted account needs somebody who answers for it
    exclusiveOperator, // a restricted account would be left with nobody who answers for it
    notFunded,         // only restricted accounts have funders
    returnUnknown,     // or an account that the member does not see
    returnUnsuitable,  // money goes back to another account that is in use and not restricted, from a restricted one
    notHeld,           // somebody would get rights on the account that the member does not hold
    archived,          // an archived account is taken back into use before, or while, it changes
    nonzeroBalance,    // an account that is archived or becomes one of another kind holds nothing
    historyAcknowledgementRequired,
    currencyAcknowledgementRequired,
};

/// What the rules look at. Of the accounts only those count that the member sees; a view of what it is made from.
struct Ground {
    const Member& member; // who asks
    std::span<const Member> members;
    std::span<const Account> accounts;
};
Ground groundOf(const LedgerSnapshot& snapshot);

/// What is wrong with the command itself, whoever sends it, or nothing.
std::optional<Refusal> whyNotShaped(const AccountCreate& command);
std::optional<Refusal> whyNotShaped(const AccountUpdate& command);

/// What keeps the account from being made, or nothing.
std::optional<Refusal> whyNotCreate(const AccountCreate& command, const Ground& ground);

/// The account in use that is exactly what the command asks for, its funders included, or null. The command carries no
/// key: whoever did not get the reply and sends it again is answered by what it made.
const Account* alreadyCreated(const AccountCreate& command, const Ground& ground);

Account created(const AccountCreate& command, std::string id);

enum class History { none, recorded };

/// What keeps the account from changing, or nothing. `history` says whether any entry touches it.
std::optional<Refusal> whyNotUpdate(std::string_view accountID, const AccountUpdate& command, const Ground& ground,
                                    History history);

Account updated(const Account& account, const AccountUpdate& command);

/// The members with the rights that follow from the command.
std::vector<Member> membersAfter(const AccountCreate& command, const Account& account, std::span<const Member> members);
std::vector<Member> membersAfter(const AccountUpdate& command, const Account& before, const Account& after,
                                 std::span<const Member> members);

/// Whether an entry of the snapshot touches the account. Of an account that the member sees, the snapshot has them all.
History historyOf(std::string_view accountID, const LedgerSnapshot& snapshot);

}
