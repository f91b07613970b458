#pragma once

#include <map>
#include <string>
#include <vector>

#include <QString>

#include "LedgerCore/Domain/Entries/Drafts/EntryProblem.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerUI/Presentation/Entry/EntryFormState.h"
#include "LedgerUI/Presentation/Forms/AccountChoice.h"
#include "LedgerUI/Presentation/Period/DayTyping.h"

class EntryHistory;

/// A segment of the switch of kinds.
struct EntryKindRow {
    std::string kind;
    QString text;
    QString glyph;
    bool isAvailable = false;

    bool operator==(const EntryKindRow&) const = default;
};

/// How a balance that saving leads to is to be read.
enum class EntryBalanceMark { none, negative, beyondLimit };

/// An account, its currency and an amount, with what they lead to.
struct EntryMoneyContent {
    QString accountLabel;
    QString accountPrompt;
    std::vector<AccountChoice> accounts;
    std::string accountID;
    QString amountLabel;
    bool showsAmountLabel = true;
    std::vector<CurrencyChoice> currencies;
    std::string currency;
    QString amount;
    QString placeholder;
    QString result;       // of the arithmetic that stands in the field; empty for a plain amount
    QString notice;       // the amount was cleared
    QString caution;      // what looks wrong and keeps nobody from saving
    QString earlier;      // what is known of the entry that this one seems to repeat
    QString balanceLabel; // empty while no balance is known
    QString balance;
    EntryBalanceMark balanceMark = EntryBalanceMark::none;
};

/// One account in the pane that shows what saving does.
struct EntryEffect {
    QString account;
    QString before;
    QString changeLabel;
    QString change; // empty while no amount can be read
    QString after;
    EntryBalanceMark afterMark = EntryBalanceMark::none;
    QString warning; // what that means, in words
    bool isSeen = true;
};

/// Everything the entry form shows for a state, apart from its categories and refundable incomes.
struct EntryFormContent {
    QString title;
    std::vector<EntryKindRow> kinds; // empty where the kind is fixed
    std::string kind;
    QString kindHint; // why some kinds are off
    QString direction;
    QString helpTitle; // of a help that opens in the form; empty without one
    QString help;
    EntryMoneyContent sent;
    EntryMoneyContent received; // transfer: the account only; exchange: whole
    bool showsDestination = false;
    bool showsReceivedAmount = false;
    bool showsCategory = false;
    bool showsOriginal = false;
    std::string categoryID;
    QString categoryPath;
    QString note;
    QString reference;
    std::vector<EntryEffect> effects; // transfer: what both accounts come to
    QString purpose;
    std::vector<QString> rates; // exchange: both ways, "–" while an amount is missing
    std::map<EntryField, QString> messages;
    QString receiptsMessage; // what is wrong with the receipts, which have no field
    QString confirm;
    QString another; // the button that saves and goes on with the next entry; empty where there is no next one
    DayContent day;
    SubmissionStage stage = SubmissionStage::editing;
};

namespace EntryForm {

/// `today` is the day on which an entry is booked for which no other was chosen; `history` is of the same snapshot, and
/// without it nothing is said about earlier entries.
EntryFormContent content(const EntrySubmission& submission, const LedgerSnapshot& snapshot, std::string_view today,
                         std::string_view locale, const EntryHistory* history = nullptr);

}
