#pragma once

#include <map>
#include <string>
#include <vector>

#include <QString>

#include "LedgerCore/Domain/Entries/EntryProblem.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerUI/Presentation/Entry/EntryFormState.h"

/// An account in a picker: its name, and what it holds in all its currencies.
struct EntryAccountRow {
    enum class Group { company, employee, refund };

    std::string id;
    QString name;
    QString balances; // empty where the member does not see them
    Group group = Group::company;

    bool operator==(const EntryAccountRow&) const = default;
};

struct EntryCurrencyRow {
    std::string code;
    QString name;

    bool operator==(const EntryCurrencyRow&) const = default;
};

/// A segment of the switch of kinds.
struct EntryKindRow {
    std::string kind;
    QString text;
    QString glyph;
    bool isAvailable = false;

    bool operator==(const EntryKindRow&) const = default;
};

/// An account, its currency and an amount, with what they lead to.
struct EntryMoneyContent {
    QString accountLabel;
    QString accountPrompt;
    std::vector<EntryAccountRow> accounts;
    std::string accountID;
    QString amountLabel;
    bool showsAmountLabel = true;
    std::vector<EntryCurrencyRow> currencies;
    std::string currency;
    QString amount;
    QString placeholder;
    QString notice;       // the amount was cleared
    QString balanceLabel; // empty while no balance is known
    QString balance;
};

/// One account in the pane that shows what saving does.
struct EntryEffect {
    QString account;
    QString before;
    QString changeLabel;
    QString change; // empty while no amount can be read
    QString after;
    bool isSeen = true;
};

/// Everything the entry form shows for a state, apart from its categories and refundable incomes.
struct EntryFormContent {
    QString title;
    std::vector<EntryKindRow> kinds; // empty where the kind is fixed
    std::string kind;
    QString kindHint; // why some kinds are off
    QString direction;
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
    QString confirm;
    QString day;
    QString dayHint; // empty while only the kept day may be sent again
    bool isEditing = true;
    bool isUncertain = false;
};

namespace EntryForm {

EntryFormContent content(const EntryFormState& state, const LedgerSnapshot& snapshot, std::string_view locale);

QString glyphOf(EntryAccountRow::Group group);

/// What one unit of `from` came to, to four digits or more: "SGD 1.340"; "–" where an amount is missing.
QString impliedRate(std::int64_t fromMinor, const std::string& from, std::int64_t toMinor, const std::string& to,
                    std::string_view locale);

}
