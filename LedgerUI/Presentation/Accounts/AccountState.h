#pragma once

#include <string>
#include <string_view>

#include <QString>

#include "LedgerCore/Domain/Access/AccountRules.h"
#include "LedgerUI/Presentation/Forms/Submission.h"

/// Taking an account out of use, or back into it.
struct AccountStateChange {
    enum class Target { archived, inUse };

    std::string accountID;
    Target target = Target::archived;
    std::string oldName;
    std::string name; // an account comes back under another name where its own has been taken since

    bool operator==(const AccountStateChange&) const = default;
};
using AccountStateSubmission = Submission<AccountStateChange, AccountUpdate>;

/// What the dialog says.
struct AccountStateContent {
    QString title;
    QString text;
    QString confirm;
    QString name;
    bool showsName = false;
    QString nameMessage; // what is wrong with the name
    QString whyNot;      // what keeps it from being done at all
    QString done;
};

namespace AccountStates {

AccountStateChange of(const Account& account);
AccountUpdate command(const AccountStateChange& change);
AccountStateContent content(const AccountStateSubmission& submission, const LedgerSnapshot& snapshot,
                            std::string_view locale);

}
