#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "LedgerCore/Domain/Access/AccountRules.h"
#include "LedgerUI/Presentation/Forms/Submission.h"
#include "LedgerUI/Presentation/Ledger/AccountGroup.h"

/// The parts of an account's form, in their order.
enum class AccountField {
    name,
    purpose,
    responsible,
    returnAccount,
    currencies,
    funders,
    historyAcknowledgement,
    currencyAcknowledgement
};

/// What a person has filled in about one account. An empty identifier stands for none.
struct AccountDraft {
    std::string name;
    AccountGroup purpose = AccountGroup::company; // never `archived`
    std::string responsibleID;
    std::string returnAccountID;
    std::vector<std::string> currencies;
    std::set<std::string> funderIDs; // besides those who lead the company
    bool acknowledgesHistory = false;
    bool acknowledgesCurrencies = false;

    bool operator==(const AccountDraft&) const = default;
};

/// What the form sends.
struct AccountChange {
    std::string accountID;
    AccountUpdate update;

    bool operator==(const AccountChange&) const = default;
};
using AccountCommand = std::variant<AccountCreate, AccountChange>;

/// What stands in the form, and what is wrong with it.
struct AccountEditing {
    AccountDraft draft;
    std::map<AccountField, AccountRules::Refusal> problems = {};
};
using AccountSubmission = Submission<AccountEditing, AccountCommand>;

/// What a form is about: a new account, or one that there is. An account is judged and sent by what has been changed
/// since `before`, so that what others changed meanwhile stays.
struct AccountSubject {
    std::string accountID = {}; // empty for a new one
    AccountDraft before = {};

    [[nodiscard]] bool isNew() const { return accountID.empty(); }
};

namespace AccountDrafts {

/// A new account, in the currency that most accounts hold.
AccountSubject fresh(const LedgerSnapshot& snapshot);
AccountSubject of(const Account& account, const LedgerSnapshot& snapshot);

AccountCommand command(const AccountSubject& subject, const AccountDraft& draft);
/// Whether the command would change anything.
bool changesAnything(const AccountSubject& subject, const AccountDraft& draft);

/// Everything that the rules say against the draft, field by field.
struct Judgement {
    std::map<AccountField, AccountRules::Refusal> problems;
    std::optional<AccountRules::Refusal> refusal; // of the whole, whatever stands in the fields
    bool widensHistory = false;                   // somebody will see what was recorded before
    bool widensCurrencies = false;                // others will see a new currency
};
Judgement judge(const AccountSubject& subject, const AccountDraft& draft, const LedgerSnapshot& snapshot);

/// The account in the snapshot that the command has led to; empty when there is none.
std::string resultOf(const AccountCommand& command, const LedgerSnapshot& snapshot);

}
