#include "LedgerUI/Presentation/Accounts/AccountState.h"

#include "LedgerCore/Domain/Text/TextFold.h"
#include "LedgerUI/Presentation/Accounts/AccountForm.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

AccountStateChange AccountStates::of(const Account& account)
{
    using enum AccountStateChange::Target;
    return {.accountID = account.id,
            .target = account.archived ? inUse : archived,
            .oldName = account.name,
            .name = account.name};
}

AccountUpdate AccountStates::command(const AccountStateChange& change)
{
    AccountUpdate update;
    update.archived = change.target == AccountStateChange::Target::archived;
    if (TextFold::trimmed(change.name) != change.oldName)
        update.name = TextFold::trimmed(change.name);
    return update;
}

AccountStateContent AccountStates::content(const AccountStateSubmission& submission, const LedgerSnapshot& snapshot,
                                           std::string_view locale)
{
    const auto& change = submission.form();
    const bool isArchiving = change.target == AccountStateChange::Target::archived;
    const auto& words = accountFormWords();
    AccountStateContent content{
        .title = wordIn(locale, words, isArchiving ? "archive.title" : "restore.title"),
        .text = wordIn(locale, words, isArchiving ? "archive.text" : "restore.text", {change.oldName}),
        .confirm = wordIn(locale, words, isArchiving ? "archive.confirm" : "restore.confirm"),
        .name = qString(change.name),
        .showsName = !isArchiving,
        .nameMessage = {},
        .whyNot = {},
        .done = wordIn(locale, words, isArchiving ? "done.archive" : "done.restore")};
    // What was sent is the service's to judge.
    const auto refused = submission.isEditing()
                             ? AccountRules::whyNotUpdate(change.accountID, command(change),
                                                          AccountRules::groundOf(snapshot), AccountRules::History::none)
                             : std::nullopt;
    using enum AccountRules::Refusal;
    if (refused && (*refused == nameUnsound || *refused == nameTaken))
        content.nameMessage = AccountForm::refusalText(*refused, locale);
    else if (refused)
        content.whyNot = AccountForm::refusalText(*refused, locale);
    return content;
}
