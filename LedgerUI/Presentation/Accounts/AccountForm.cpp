#include "LedgerUI/Presentation/Accounts/AccountForm.h"

#include <algorithm>

#include "LedgerCore/Domain/Access/AccountGrants.h"
#include "LedgerCore/Domain/Entries/EntryWords.h"
#include "LedgerCore/Domain/Money/CurrencyInfo.h"
#include "LedgerUI/Presentation/Accounts/AccountRights.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Presentation/Workspace/RoleText.h"

namespace {

using AccountRules::Refusal;
using Content = AccountFormContent;

QString text(std::string_view key, std::string_view locale)
{
    return wordIn(locale, accountFormWords(), key);
}

std::string_view refusalKey(Refusal refusal)
{
    using enum Refusal;
    switch (refusal) {
    case noAuthority:
        return "noAuthority";
    case unknownAccount:
        return "unknownAccount";
    case nameUnsound:
        return "nameUnsound";
    case nameTaken:
        return "nameTaken";
    case currencyRequired:
        return "currencyRequired";
    case currencyUnknown:
        return "currencyUnknown";
    case currencyRepeated:
        return "currencyRepeated";
    case purposeUnknown:
        return "purposeUnknown";
    case memberUnknown:
        return "memberUnknown";
    case memberInactive:
        return "memberInactive";
    case operatorMissing:
        return "operatorMissing";
    case exclusiveOperator:
        return "exclusiveOperator";
    case notFunded:
        return "notFunded";
    case returnUnknown:
        return "returnUnknown";
    case returnUnsuitable:
        return "returnUnsuitable";
    case notHeld:
        return "notHeld";
    case archived:
        return "archived";
    case nonzeroBalance:
        return "nonzeroBalance";
    case historyAcknowledgementRequired:
        return "historyAcknowledgementRequired";
    case currencyAcknowledgementRequired:
        return "currencyAcknowledgementRequired";
    }
    return {};
}

/// Fills the content part by part.
class Composer {
public:
    Composer(const AccountSubject& subject, const AccountDraft& draft, const LedgerSnapshot& snapshot,
             std::string_view locale)
        : m_subject(subject), m_draft(draft), m_snapshot(snapshot), m_locale(locale)
    {
    }

    Content compose(const AccountEditing& editing)
    {
        m_content.title = text(m_subject.isNew() ? "title.new" : "title.change", m_locale);
        m_content.confirm = text(m_subject.isNew() ? "confirm.new" : "confirm.change", m_locale);
        m_content.name = qString(m_draft.name);
        m_content.isRestricted = m_draft.purpose != AccountGroup::company;
        addPurposes();
        addPeople();
        addReturns();
        addCurrencies();
        addFunders();
        addConsequence();
        judge(editing);
        return std::move(m_content);
    }

private:
    void addPurposes()
    {
        for (const auto group : {AccountGroup::company, AccountGroup::employee, AccountGroup::refund}) {
            const std::string name{accountGroupName(group)};
            m_content.purposes.push_back({.group = group,
                                          .title = wordIn(m_locale, accountWords(), "purpose." + name),
                                          .sentence = text("tile." + name, m_locale),
                                          .glyph = accountGroupGlyph(group),
                                          .isChosen = group == m_draft.purpose});
        }
    }

    /// The row for nobody is chosen like any other, or the arrow keys would not get past it.
    static std::string orNobody(const std::string& id) { return id.empty() ? AccountForm::nobody : id; }

    void addPeople()
    {
        if (!m_content.isRestricted)
            m_content.people.push_back(
                {AccountForm::nobody, text("responsible.none", m_locale), {}, {}, QStringLiteral("dash")});
        m_content.responsiblePrompt = text("responsible.prompt", m_locale);
        for (const auto& member : m_snapshot.members) {
            if (member.active || member.id == m_draft.responsibleID)
                m_content.people.push_back(
                    {member.id, qString(member.name), roleText(member.role, m_locale), {}, QStringLiteral("person")});
        }
        m_content.responsibleID = m_content.isRestricted ? m_draft.responsibleID : orNobody(m_draft.responsibleID);
    }

    void addReturns()
    {
        m_content.returns.push_back(
            {AccountForm::nobody, text("returnAccount.none", m_locale), {}, {}, QStringLiteral("dash")});
        for (const auto& account : m_snapshot.accounts) {
            const bool isSuitable = !account.archived && !account.isRestricted();
            if ((isSuitable || account.id == m_draft.returnAccountID) && account.id != m_subject.accountID)
                m_content.returns.push_back({account.id,
                                             qString(account.name),
                                             codesOf(account.currencies),
                                             {},
                                             accountGroupGlyph(accountGroupInUse(account))});
        }
        m_content.returnID = orNobody(m_draft.returnAccountID);
    }

    void addCurrencies()
    {
        const auto named = [this](const std::string& code) {
            return QStringLiteral("%1 %2").arg(qString(code), qString(EntryWords::currency(code, m_locale)));
        };
        const auto& held = m_subject.before.currencies;
        for (const auto& code : m_draft.currencies) {
            const bool isHeld = !m_subject.isNew() && std::ranges::find(held, code) != held.end();
            m_content.currencies.push_back(
                {.code = code,
                 .text = named(code),
                 .removeName = wordIn(m_locale, accountFormWords(), "currencies.remove", {named(code).toStdString()}),
                 .isRemovable = !isHeld});
        }
        for (const auto& currency : CurrencyInfo::supported()) {
            if (std::ranges::find(m_draft.currencies, currency.code) == m_draft.currencies.end())
                m_content.addable.push_back({currency.code, named(currency.code)});
        }
    }

    void addFunders()
    {
        for (const auto& member : m_snapshot.members) {
            if (!m_content.isRestricted || (!member.active && !m_draft.funderIDs.contains(member.id)))
                continue;
            const bool leads = AccountGrants::leads(member);
            m_content.funders.push_back({.memberID = member.id,
                                         .name = qString(member.name),
                                         .isOn = leads || m_draft.funderIDs.contains(member.id),
                                         .whyFixed = leads ? text("funders.leads", m_locale) : QString{}});
        }
    }

    /// What the one in charge gains, where that is somebody else than before.
    void addConsequence()
    {
        const auto member = std::ranges::find(m_snapshot.members, m_draft.responsibleID, &Member::id);
        if (member == m_snapshot.members.end() || m_draft.responsibleID == m_subject.before.responsibleID ||
            AccountGrants::leads(*member))
            return;
        Account account;
        if (m_content.isRestricted)
            account.purpose =
                m_draft.purpose == AccountGroup::refund ? AccountPurpose::refund : AccountPurpose::employee;
        QStringList rights;
        for (const auto action : AccountGrants::ofOperator(account))
            rights << accountActionText(action, m_locale);
        m_content.consequence =
            wordIn(m_locale, accountFormWords(), "consequence", {member->name, listed(rights, m_locale).toStdString()});
        if (m_subject.isNew())
            m_content.consequence += QLatin1Char{' '} + text("consequence.history", m_locale);
    }

    void judge(const AccountEditing& editing)
    {
        const auto judgement = AccountDrafts::judge(m_subject, m_draft, m_snapshot);
        if (judgement.refusal)
            m_content.whyNot = AccountForm::refusalText(*judgement.refusal, m_locale);
        const auto member = std::ranges::find(m_snapshot.members, m_draft.responsibleID, &Member::id);
        if (judgement.widensHistory && member != m_snapshot.members.end())
            m_content.history =
                Content::Acknowledgement{.text = wordIn(m_locale, accountFormWords(), "history.text", {member->name}),
                                         .check = text("history.check", m_locale),
                                         .isGiven = m_draft.acknowledgesHistory};
        if (judgement.widensCurrencies)
            m_content.currency = Content::Acknowledgement{.text = currencyText(),
                                                          .check = text("currency.check", m_locale),
                                                          .isGiven = m_draft.acknowledgesCurrencies};
        for (const auto& [field, refusal] : editing.problems)
            m_content.messages.emplace(field, AccountForm::refusalText(refusal, m_locale));
    }

    [[nodiscard]] QString currencyText() const
    {
        QStringList added;
        for (const auto& each : m_content.currencies) {
            if (each.isRemovable)
                added << qString(each.code);
        }
        QStringList people;
        for (const auto& member : m_snapshot.members) {
            const bool sees =
                member.can(AccountAction::view, m_subject.accountID) || member.id == m_draft.responsibleID;
            if (sees && member.id != m_snapshot.currentMember.id)
                people << qString(member.name);
        }
        return wordIn(m_locale, accountFormWords(), "currency.text",
                      {listed(added, m_locale).toStdString(), listed(people, m_locale).toStdString()});
    }

    [[nodiscard]] QString codesOf(const std::vector<std::string>& currencies) const
    {
        QStringList codes;
        for (const auto& code : currencies)
            codes << qString(code);
        return listed(codes, m_locale);
    }

    const AccountSubject& m_subject;
    const AccountDraft& m_draft;
    const LedgerSnapshot& m_snapshot;
    std::string_view m_locale;
    Content m_content;
};

}

AccountFormContent AccountForm::content(const AccountSubject& subject, const AccountSubmission& submission,
                                        const LedgerSnapshot& snapshot, std::string_view locale)
{
    const auto& editing = submission.form();
    auto content = Composer{subject, editing.draft, snapshot, locale}.compose(editing);
    // What was sent is the service's to judge.
    if (!submission.isEditing())
        content.whyNot.clear();
    return content;
}

QString AccountForm::refusalText(AccountRules::Refusal refusal, std::string_view locale)
{
    return text("refusal." + std::string{refusalKey(refusal)}, locale);
}
