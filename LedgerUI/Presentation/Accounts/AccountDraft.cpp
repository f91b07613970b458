#include "LedgerUI/Presentation/Accounts/AccountDraft.h"

#include <algorithm>
#include <utility>

#include "LedgerCore/Domain/Access/AccountGrants.h"
#include "LedgerCore/Domain/Money/CurrencyInfo.h"
#include "LedgerCore/Domain/Text/TextFold.h"

namespace {

using AccountRules::Refusal;
using Texts = std::vector<std::string>;

bool isRestricted(const AccountDraft& draft)
{
    return draft.purpose != AccountGroup::company;
}

std::optional<std::string> purposeOf(const AccountDraft& draft)
{
    switch (draft.purpose) {
    case AccountGroup::employee:
        return std::string{AccountPurpose::employee};
    case AccountGroup::refund:
        return std::string{AccountPurpose::refund};
    case AccountGroup::company:
    case AccountGroup::archived:
        break;
    }
    return std::nullopt;
}

/// The return account and the funders of an account that has none are kept in the draft, not sent.
std::string returnOf(const AccountDraft& draft)
{
    return isRestricted(draft) ? draft.returnAccountID : std::string{};
}

Texts fundersOf(const AccountDraft& draft)
{
    return isRestricted(draft) ? Texts{draft.funderIDs.begin(), draft.funderIDs.end()} : Texts{};
}

std::optional<std::string> unlessEmpty(const std::string& text)
{
    return text.empty() ? std::nullopt : std::optional{text};
}

AccountCreate createOf(const AccountDraft& draft)
{
    AccountCreate create;
    create.name = TextFold::trimmed(draft.name);
    create.currencies = draft.currencies;
    create.operatorMemberID = unlessEmpty(draft.responsibleID);
    create.purpose = purposeOf(draft);
    create.returnAccountID = unlessEmpty(returnOf(draft));
    if (auto funders = fundersOf(draft); !funders.empty())
        create.fundingMemberIDs = std::move(funders);
    return create;
}

AccountUpdate updateOf(const AccountDraft& before, const AccountDraft& draft)
{
    AccountUpdate update;
    if (TextFold::trimmed(draft.name) != TextFold::trimmed(before.name))
        update.name = TextFold::trimmed(draft.name);
    if (draft.purpose != before.purpose)
        update.purpose = purposeOf(draft).value_or(std::string{AccountPurpose::operating});
    if (draft.responsibleID != before.responsibleID)
        update.operatorMemberID = draft.responsibleID;
    if (returnOf(draft) != returnOf(before))
        update.returnAccountID = returnOf(draft);
    if (isRestricted(draft) && fundersOf(draft) != fundersOf(before))
        update.fundingMemberIDs = fundersOf(draft);
    Texts added;
    std::ranges::copy_if(draft.currencies, std::back_inserter(added), [&](const std::string& code) {
        return std::ranges::find(before.currencies, code) == before.currencies.end();
    });
    if (!added.empty())
        update.addCurrencies = std::move(added);
    if (draft.acknowledgesHistory)
        update.acknowledgeHistoryAccess = true;
    if (draft.acknowledgesCurrencies)
        update.acknowledgeCurrencyAccess = true;
    return update;
}

std::optional<AccountField> fieldOf(Refusal refusal)
{
    using enum Refusal;
    switch (refusal) {
    case nameUnsound:
    case nameTaken:
        return AccountField::name;
    case purposeUnknown:
    case nonzeroBalance:
        return AccountField::purpose;
    case memberUnknown:
    case memberInactive:
    case operatorMissing:
    case exclusiveOperator:
    case notHeld:
        return AccountField::responsible;
    case returnUnknown:
    case returnUnsuitable:
        return AccountField::returnAccount;
    case currencyRequired:
    case currencyUnknown:
    case currencyRepeated:
        return AccountField::currencies;
    case notFunded:
        return AccountField::funders;
    case historyAcknowledgementRequired:
        return AccountField::historyAcknowledgement;
    case currencyAcknowledgementRequired:
        return AccountField::currencyAcknowledgement;
    case noAuthority:
    case unknownAccount:
    case archived:
        break;
    }
    return std::nullopt;
}

/// The rules name one thing at a time. With the field that they name put right, they are asked for the next.
AccountDraft mended(const AccountSubject& subject, AccountDraft draft, AccountField field,
                    const LedgerSnapshot& snapshot)
{
    switch (field) {
    case AccountField::name:
        draft.name =
            subject.isNew() ? snapshot.company.id + snapshot.currentMember.id + "-unused" : subject.before.name;
        break;
    case AccountField::purpose:
        draft.purpose = subject.before.purpose;
        break;
    case AccountField::responsible:
        draft.responsibleID = draft.responsibleID.empty() || !subject.isNew() ? snapshot.currentMember.id : "";
        draft.funderIDs.clear(); // nobody says whether the one in charge or a funder is meant
        break;
    case AccountField::returnAccount:
        draft.returnAccountID.clear();
        break;
    case AccountField::currencies:
        draft.currencies = subject.isNew() ? Texts{CurrencyInfo::supported().front().code} : subject.before.currencies;
        break;
    case AccountField::funders:
        draft.funderIDs.clear();
        break;
    case AccountField::historyAcknowledgement:
        draft.acknowledgesHistory = true;
        break;
    case AccountField::currencyAcknowledgement:
        draft.acknowledgesCurrencies = true;
        break;
    }
    return draft;
}

std::optional<Refusal> whyNot(const AccountSubject& subject, const AccountDraft& draft, const LedgerSnapshot& snapshot,
                              AccountRules::History history)
{
    const auto ground = AccountRules::groundOf(snapshot);
    if (subject.isNew())
        return AccountRules::whyNotCreate(createOf(draft), ground);
    return AccountRules::whyNotUpdate(subject.accountID, updateOf(subject.before, draft), ground, history);
}

void note(AccountDrafts::Judgement& judgement, AccountField field, Refusal refusal, const AccountDraft& draft)
{
    const bool isHistory = field == AccountField::historyAcknowledgement;
    const bool isCurrency = field == AccountField::currencyAcknowledgement;
    if (isHistory && judgement.problems.contains(AccountField::responsible))
        return; // who would see it is not known yet
    judgement.widensHistory = judgement.widensHistory || isHistory;
    judgement.widensCurrencies = judgement.widensCurrencies || isCurrency;
    const bool isAcknowledged =
        (isHistory && draft.acknowledgesHistory) || (isCurrency && draft.acknowledgesCurrencies);
    if (!isAcknowledged)
        judgement.problems.emplace(field, refusal);
}

std::string commonestCurrency(const LedgerSnapshot& snapshot)
{
    std::map<std::string, int> uses;
    for (const auto& account : snapshot.accounts) {
        for (const auto& code : account.currencies)
            ++uses[code];
    }
    const auto most = std::ranges::max_element(uses, {}, [](const auto& each) { return each.second; });
    return most == uses.end() ? std::string{} : most->first;
}

}

AccountSubject AccountDrafts::fresh(const LedgerSnapshot& snapshot)
{
    AccountSubject subject;
    if (auto currency = commonestCurrency(snapshot); !currency.empty())
        subject.before.currencies = {std::move(currency)};
    return subject;
}

AccountSubject AccountDrafts::of(const Account& account, const LedgerSnapshot& snapshot)
{
    AccountSubject subject{.accountID = account.id};
    auto& draft = subject.before;
    draft.name = account.name;
    draft.purpose = accountGroupInUse(account);
    draft.responsibleID = account.responsibleMemberID().value_or("");
    draft.returnAccountID = account.returnAccountID.value_or("");
    draft.currencies = account.currencies;
    for (const auto& member : snapshot.members) {
        if (account.isRestricted() && !AccountGrants::leads(member) &&
            member.can(AccountAction::transferIn, account.id))
            draft.funderIDs.insert(member.id);
    }
    return subject;
}

AccountCommand AccountDrafts::command(const AccountSubject& subject, const AccountDraft& draft)
{
    if (subject.isNew())
        return createOf(draft);
    return AccountChange{subject.accountID, updateOf(subject.before, draft)};
}

bool AccountDrafts::changesAnything(const AccountSubject& subject, const AccountDraft& draft)
{
    auto plain = draft;
    plain.acknowledgesHistory = plain.acknowledgesCurrencies = false;
    return subject.isNew() || updateOf(subject.before, plain) != AccountUpdate{};
}

AccountDrafts::Judgement AccountDrafts::judge(const AccountSubject& subject, const AccountDraft& draft,
                                              const LedgerSnapshot& snapshot)
{
    Judgement judgement;
    auto asked = draft;
    asked.acknowledgesHistory = asked.acknowledgesCurrencies = false;
    const auto history =
        subject.isNew() ? AccountRules::History::none : AccountRules::historyOf(subject.accountID, snapshot);
    while (const auto refused = whyNot(subject, asked, snapshot, history)) {
        const auto field = fieldOf(*refused);
        if (!field) {
            judgement.refusal = refused;
            return judgement;
        }
        // Where mending did not help there is nothing more to learn.
        const auto before = std::exchange(asked, mended(subject, asked, *field, snapshot));
        note(judgement, *field, *refused, draft);
        if (asked == before)
            break;
    }
    return judgement;
}

std::string AccountDrafts::resultOf(const AccountCommand& command, const LedgerSnapshot& snapshot)
{
    if (const auto* change = std::get_if<AccountChange>(&command))
        return snapshot.account(change->accountID) ? change->accountID : std::string{};
    const auto* made = AccountRules::alreadyCreated(std::get<AccountCreate>(command), AccountRules::groundOf(snapshot));
    return made ? made->id : std::string{};
}
