#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include <QString>

#include "LedgerUI/Presentation/Accounts/AccountDraft.h"
#include "LedgerUI/Presentation/Forms/AccountChoice.h"

/// Everything that the form of an account shows for a state.
struct AccountFormContent {
    struct Purpose {
        AccountGroup group = AccountGroup::company;
        QString title;
        QString sentence;
        QString glyph;
        bool isChosen = false;
    };
    struct Currency {
        std::string code;
        QString text; // "VND Vietnamese dong"
        QString removeName;
        bool isRemovable = true; // what an account holds it keeps
    };
    struct Funder {
        std::string memberID;
        QString name;
        bool isOn = false;
        QString whyFixed; // empty while it can be changed
    };
    struct Acknowledgement {
        QString text;  // who will see what
        QString check; // what a person confirms
        bool isGiven = false;
    };

    QString title;
    QString confirm;
    QString name;
    std::vector<Purpose> purposes;
    std::vector<AccountChoice> people; // in charge; the first one may stand for nobody
    QString responsiblePrompt;
    std::string responsibleID;
    bool isRestricted = false; // whether it returns money and is filled by funders
    std::vector<AccountChoice> returns;
    std::string returnID; // the row for no account until one is chosen
    std::vector<Currency> currencies;
    std::vector<CurrencyChoice> addable;
    std::vector<Funder> funders;
    QString consequence; // which rights follow; empty where none do
    std::optional<Acknowledgement> history;
    std::optional<Acknowledgement> currency;
    std::map<AccountField, QString> messages;
    QString whyNot; // what keeps the form from being sent at all
};

namespace AccountForm {

/// In the lists of people and return accounts this row stands for none.
inline constexpr const char* nobody = "-";

AccountFormContent content(const AccountSubject& subject, const AccountSubmission& submission,
                           const LedgerSnapshot& snapshot, std::string_view locale);

/// Why the rules refuse, in words.
QString refusalText(AccountRules::Refusal refusal, std::string_view locale);

}
