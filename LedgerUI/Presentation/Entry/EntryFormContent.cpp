#include "LedgerUI/Presentation/Entry/EntryFormContent.h"

#include <algorithm>
#include <array>
#include <iterator>

#include <QStringList>

#include "LedgerCore/Domain/Access/LedgerEntryAccess.h"
#include "LedgerCore/Domain/Access/OpeningBalancePolicy.h"
#include "LedgerCore/Domain/Entries/EntryRules.h"
#include "LedgerCore/Domain/Entries/EntryWords.h"
#include "LedgerCore/Domain/Money/CurrencyInfo.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerUI/Presentation/Entry/EntryCategories.h"
#include "LedgerUI/Presentation/Entry/EntryFormWords.h"
#include "LedgerUI/Presentation/Entry/EntryKindGlyph.h"
#include "LedgerUI/Presentation/Text/DayText.h"
#include "LedgerUI/Presentation/Text/Words.h"

namespace {

constexpr std::array switchKinds{EntryKind::expense, EntryKind::income, EntryKind::transfer, EntryKind::exchange};

/// Whose an account is, in the order in which pickers show them.
enum class Group { company, employee, refund };
constexpr std::array groups{Group::company, Group::employee, Group::refund};

Group groupOf(const Account& account)
{
    if (account.hasPurpose(AccountPurpose::refund))
        return Group::refund;
    return account.isRestricted() ? Group::employee : Group::company;
}

QString headOf(Group group, std::string_view locale)
{
    switch (group) {
    case Group::company:
        return entryWord("balances.company", locale);
    case Group::employee:
        return entryWord("balances.employee", locale);
    case Group::refund:
        return entryWord("balances.refund", locale);
    }
    return {};
}

QString glyphOf(Group group)
{
    switch (group) {
    case Group::company:
        return QStringLiteral("bank");
    case Group::employee:
        return QStringLiteral("person");
    case Group::refund:
        return QStringLiteral("arrow-return-left");
    }
    return {};
}

/// The number of an amount and its code never part at the end of a line.
QString money(std::int64_t minor, std::string_view currency, std::string_view locale)
{
    return qString(Money::format(minor, currency, locale)).replace(QLatin1Char{' '}, QChar::Nbsp);
}

AccountChoice choiceOf(const std::string& id, const std::string& name, Group group, std::string_view locale)
{
    return {id, qString(name), {}, headOf(group, locale), glyphOf(group)};
}

AccountChoice choiceOf(const Account& account, std::string_view locale)
{
    auto choice = choiceOf(account.id, account.name, groupOf(account), locale);
    QStringList balances;
    for (const auto& code : account.currencies)
        balances << money(account.balance(code), code, locale);
    choice.balances = balances.join(QStringLiteral("   "));
    return choice;
}

std::vector<AccountChoice> groupedTogether(const std::vector<AccountChoice>& choices, std::string_view locale)
{
    std::vector<AccountChoice> together;
    for (const auto group : groups)
        std::ranges::copy_if(choices, std::back_inserter(together),
                             [head = headOf(group, locale)](const auto& each) { return each.group == head; });
    return together;
}

std::vector<CurrencyChoice> currencyRows(const std::vector<std::string>& codes, std::string_view locale,
                                         std::string_view without = {})
{
    std::vector<CurrencyChoice> rows;
    for (const auto& currency : CurrencyInfo::supported()) {
        if (currency.code != without && std::ranges::find(codes, currency.code) != codes.end())
            rows.push_back({currency.code, qString(EntryWords::currency(currency.code, locale))});
    }
    return rows;
}

std::string_view accountLabelOf(std::string_view kind)
{
    if (kind == EntryKind::income)
        return "receivingAccount";
    if (kind == EntryKind::transfer)
        return "fromAccount";
    if (kind == EntryKind::exchange)
        return "sentFrom";
    return kind == EntryKind::opening ? "account" : "paymentAccount";
}

std::string_view confirmKeyOf(const TransactionDraft& draft, std::string_view purpose)
{
    if (draft.kind == EntryKind::income)
        return "saveIncome";
    if (draft.kind == EntryKind::transfer) {
        if (purpose == TransferPurpose::funding)
            return "confirmFunding";
        return purpose == TransferPurpose::returning ? "confirmReturn" : "confirmTransfer";
    }
    if (draft.kind == EntryKind::exchange)
        return "confirmExchange";
    if (draft.kind == EntryKind::refund)
        return "saveRefund";
    return draft.kind == EntryKind::opening ? "saveOpening" : "saveExpense";
}

std::string_view directionOf(std::string_view kind)
{
    if (kind == EntryKind::transfer)
        return "transferDirection";
    if (kind == EntryKind::exchange)
        return "exchangeDirection";
    return kind == EntryKind::opening ? "openingHint" : std::string_view{};
}

std::string_view keyOf(PasteRefusal refusal)
{
    switch (refusal) {
    case PasteRefusal::negative:
        return "paste.negative";
    case PasteRefusal::several:
        return "paste.several";
    case PasteRefusal::notAnAmount:
        return "paste.notAnAmount";
    }
    return {};
}

EntryBalanceMark markOf(std::int64_t minor)
{
    if (!Money::isWithinLimit(minor))
        return EntryBalanceMark::beyondLimit;
    return minor < 0 ? EntryBalanceMark::negative : EntryBalanceMark::none;
}

/// Makes one content out of one submission; members are what several parts look at.
class Description {
public:
    Description(const EntrySubmission& submission, const LedgerSnapshot& snapshot, std::string_view today,
                std::string_view locale)
        : m_submission(submission), m_editing(submission.form()), m_draft(m_editing.draft), m_snapshot(snapshot),
          m_today(today), m_locale(locale)
    {
        m_content.stage = submission.stage();
    }

    EntryFormContent make();

private:
    void describeHead();
    void readRecordingDay();
    void describeSent();
    void describeDestination();
    void describeReceived();
    void describeEffects();
    void describeRest();
    void describeDay();
    void describeBalance(EntryMoneyContent& money, const Account* account, std::int64_t sign) const;
    [[nodiscard]] EntryEffect effectOn(const EntryDestination& destination, std::int64_t sign) const;
    [[nodiscard]] std::optional<std::int64_t> amountOf(const QString& text, const std::string& currency) const;
    [[nodiscard]] QString resetNotice(bool wasReset, const std::string& currency) const;
    [[nodiscard]] QString messageOf(const EntryProblem& problem) const;
    [[nodiscard]] QString limitMessage(std::string_view key, const QString& text, const std::string& currency) const;

    const EntrySubmission& m_submission;
    const EntryEditing& m_editing;
    const TransactionDraft& m_draft;
    const LedgerSnapshot& m_snapshot;
    std::string_view m_today;
    std::string_view m_locale;
    std::vector<EntryDestination> m_destinations;
    std::optional<OpeningBalancePolicy::RecordingDay> m_recording; // of an opening balance
    std::string m_purpose;
    EntryFormContent m_content;
};

EntryFormContent Description::make()
{
    describeHead();
    describeSent();
    if (m_draft.hasDestination())
        describeDestination();
    if (m_draft.kind == EntryKind::exchange)
        describeReceived();
    if (m_draft.kind == EntryKind::transfer)
        describeEffects();
    describeRest();
    describeDay();
    return std::move(m_content);
}

void Description::describeHead()
{
    m_content.kind = m_draft.kind;
    const bool isFixed = std::ranges::find(switchKinds, m_draft.kind) == switchKinds.end();
    m_content.title = entryWord(isFixed || m_submission.isUncertain() ? "title." + m_draft.kind : "newEntry", m_locale);
    m_content.direction = entryWord(directionOf(m_draft.kind), m_locale);
    if (m_draft.kind == EntryKind::opening)
        readRecordingDay();
    if (isFixed || m_submission.isUncertain())
        return;
    const auto available = EntryRules::availableKinds(m_snapshot);
    for (const auto kind : switchKinds) {
        const bool isAvailable = std::ranges::find(available, kind) != available.end();
        m_content.kinds.push_back(
            {std::string{kind}, entryWord("kind." + std::string{kind}, m_locale), entryKindGlyph(kind), isAvailable});
    }
    if (available.empty())
        m_content.kindHint = entryWord("entryNoAvailableTypes", m_locale);
    else if (available.size() < switchKinds.size())
        m_content.kindHint = entryWord("entryTypePermissionHint", m_locale);
}

/// An opening balance that would stand after existing entries adds to them.
void Description::readRecordingDay()
{
    m_recording = OpeningBalancePolicy::recordingDay(m_snapshot, m_today);
    if (m_recording && m_recording->historySince)
        m_content.direction +=
            QLatin1Char{'\n'} + wordIn(m_locale, entryFormWords(), "openingAfterHistory",
                                       {DayText::longDay(*m_recording->historySince, m_locale).toStdString()});
}

void Description::describeSent()
{
    auto& sent = m_content.sent;
    sent.accountLabel = entryWord(accountLabelOf(m_draft.kind), m_locale);
    for (const auto* account : EntryForm::accounts(m_editing, m_snapshot))
        sent.accounts.push_back(choiceOf(*account, m_locale));
    sent.accounts = groupedTogether(sent.accounts, m_locale);
    const auto* const none = m_draft.kind == EntryKind::opening ? "noOpeningAccount" : "noAccount";
    sent.accountPrompt = entryWord(sent.accounts.empty() ? none : "selectAccount", m_locale);
    sent.accountID = m_draft.primaryAccount().value_or(std::string{});
    sent.amountLabel = entryWord(m_draft.kind == EntryKind::exchange ? "outgoingAmount" : "amount", m_locale);
    const auto* const account = m_snapshot.account(sent.accountID);
    if (account)
        sent.currencies = currencyRows(EntryForm::currencies(m_editing, *account), m_locale);
    sent.currency = m_draft.currency;
    sent.amount = qString(m_draft.amount);
    sent.placeholder =
        m_draft.currency.empty() ? QString{} : qString(Money::formatDigits(0, m_draft.currency, m_locale));
    sent.notice = resetNotice(m_editing.sourceCurrencyReset, m_draft.currency);
    describeBalance(sent, account, m_draft.onlyArrives() ? 1 : -1);
}

void Description::describeDestination()
{
    auto& received = m_content.received;
    const bool isTransfer = m_draft.kind == EntryKind::transfer;
    m_content.showsDestination = true;
    m_destinations = EntryRules::destinations(m_snapshot, m_draft);
    received.accountLabel = entryWord(isTransfer ? "toAccount" : "receivedIn", m_locale);
    for (const auto& option : m_destinations) {
        const bool isFloat = option.transferPurpose == TransferPurpose::funding;
        received.accounts.push_back(
            option.seen ? choiceOf(*option.seen, m_locale)
                        : choiceOf(option.id, option.name, isFloat ? Group::employee : Group::company, m_locale));
    }
    received.accounts = groupedTogether(received.accounts, m_locale);
    const bool hasSource = m_draft.source && !m_draft.currency.empty();
    received.accountPrompt = entryWord(m_destinations.empty() && hasSource ? "noTarget" : "chooseAccount", m_locale);
    received.accountID = m_draft.target.value_or(std::string{});
    const auto chosen = std::ranges::find(m_destinations, received.accountID, &EntryDestination::id);
    if (chosen != m_destinations.end())
        m_purpose = chosen->transferPurpose.value_or(std::string{});
}

void Description::describeReceived()
{
    auto& received = m_content.received;
    m_content.showsReceivedAmount = true;
    // Each amount stands right below the account that it belongs to.
    m_content.sent.showsAmountLabel = false;
    received.showsAmountLabel = false;
    received.amountLabel = entryWord("receivedAmount", m_locale);
    const auto* const account = m_snapshot.account(received.accountID);
    if (account)
        received.currencies = currencyRows(account->currencies, m_locale, m_draft.currency);
    received.currency = m_draft.targetCurrency;
    received.amount = qString(m_draft.targetAmount);
    if (!m_draft.targetCurrency.empty())
        received.placeholder = qString(Money::formatDigits(0, m_draft.targetCurrency, m_locale));
    received.notice = resetNotice(m_editing.targetCurrencyReset, m_draft.targetCurrency);
    describeBalance(received, account, 1);
    const auto from = amountOf(m_content.sent.amount, m_draft.currency).value_or(0);
    const auto to = amountOf(received.amount, m_draft.targetCurrency).value_or(0);
    m_content.rates = {EntryForm::impliedRate(from, m_draft.currency, to, m_draft.targetCurrency, m_locale),
                       EntryForm::impliedRate(to, m_draft.targetCurrency, from, m_draft.currency, m_locale)};
}

void Description::describeEffects()
{
    if (const auto* source = m_snapshot.account(m_content.sent.accountID))
        m_content.effects.push_back(effectOn({source->id, source->name, source->currencies, source, {}}, -1));
    const auto chosen = std::ranges::find(m_destinations, m_content.received.accountID, &EntryDestination::id);
    if (chosen != m_destinations.end())
        m_content.effects.push_back(effectOn(*chosen, 1));
    if (!m_purpose.empty())
        m_content.purpose = entryWord("purpose." + m_purpose, m_locale);
}

EntryEffect Description::effectOn(const EntryDestination& destination, std::int64_t sign) const
{
    EntryEffect effect{.account = qString(destination.name),
                       .before = {},
                       .changeLabel = entryWord(sign < 0 ? "effect.sent" : "effect.received", m_locale),
                       .change = {},
                       .after = {},
                       .afterMark = {},
                       .isSeen = destination.seen != nullptr};
    const auto amount = amountOf(m_content.sent.amount, m_draft.currency);
    if (amount)
        effect.change = money(sign * *amount, m_draft.currency, m_locale);
    if (!destination.seen)
        return effect;
    const auto before = destination.seen->balance(m_draft.currency);
    effect.before = money(before, m_draft.currency, m_locale);
    if (const auto after = amount ? Money::add(before, sign * *amount) : std::nullopt) {
        effect.after = money(*after, m_draft.currency, m_locale);
        effect.afterMark = markOf(*after);
    }
    return effect;
}

void Description::describeRest()
{
    m_content.showsCategory = m_draft.hasCategory();
    m_content.showsOriginal = m_draft.kind == EntryKind::refund;
    m_content.categoryID = m_draft.categoryID.value_or(std::string{});
    m_content.categoryPath = EntryCategories::path(m_snapshot, m_content.categoryID, m_locale);
    m_content.note = qString(m_draft.note);
    m_content.reference = qString(m_draft.refundReference);
    m_content.confirm =
        entryWord(m_submission.isUncertain() ? "retryOriginal" : confirmKeyOf(m_draft, m_purpose), m_locale);
    if (!m_submission.isEditing())
        return;
    for (const auto& problem : m_editing.problems) {
        // The count beside a text that is too long says so already, and the day stands apart from the fields.
        if (problem.reason == decltype(problem.reason){PostingReason::textTooLong} || problem.field == EntryField::date)
            continue;
        if (problem.field == EntryField::receipts)
            m_content.receiptsMessage = messageOf(problem);
        else
            m_content.messages.emplace(problem.field, messageOf(problem));
    }
    for (const auto& [field, refusal] : m_editing.refusedPastes)
        m_content.messages.emplace(field, entryWord(keyOf(refusal), m_locale));
}

/// A limit is named wherever it is what stands in the way.
QString Description::messageOf(const EntryProblem& problem) const
{
    const auto text = qString(problem.message(m_locale));
    const auto& currency = problem.field == EntryField::targetAmount ? m_draft.targetCurrency : m_draft.currency;
    const auto* const error = std::get_if<MoneyError>(&problem.reason);
    if (error && *error == MoneyError::outOfRange)
        return limitMessage("limit.amount", text, currency);
    const auto* const refusal = std::get_if<PostingReason>(&problem.reason);
    if (refusal && *refusal == PostingReason::balanceLimit)
        return limitMessage("limit.balance", text, currency);
    return text;
}

QString Description::limitMessage(std::string_view key, const QString& text, const std::string& currency) const
{
    return wordIn(m_locale, entryFormWords(), key,
                  {text.toStdString(), Money::format(Money::maximumMinor, currency, m_locale)});
}

void Description::describeDay()
{
    using Basis = OpeningBalancePolicy::RecordingDay::Basis;
    auto& shown = m_content.day;
    const bool isOpening = m_draft.kind == EntryKind::opening;
    const auto& sent = m_submission.command();
    shown.bounds = EntryDay::bounds(m_snapshot, m_today);
    shown.day = m_draft.date.empty() ? std::string{m_today} : m_draft.date;
    if (isOpening && m_recording)
        shown.day = m_recording->day;
    if (sent && !m_submission.isEditing())
        shown.day = sent->date;
    shown.text = DayText::longDay(shown.day, m_locale);
    shown.mayChange = m_submission.isEditing() && !isOpening;
    if (m_submission.isUncertain())
        shown.hint = entryWord("retainedEntryDate", m_locale);
    else if (isOpening)
        shown.hint =
            entryWord(m_recording && m_recording->basis == Basis::today ? "openingToday" : "openingDay", m_locale);
    else
        shown.hint = entryWord(m_draft.date.empty() ? "automaticEntryDate" : "chosenDay", m_locale);
    if (shown.mayChange)
        shown.message = EntryDay::whyNot(shown.day, shown.bounds, m_locale);
    const auto found = std::ranges::find(m_editing.problems, EntryField::date, &EntryProblem::field);
    if (m_submission.isEditing() && shown.message.isEmpty() && found != m_editing.problems.end())
        shown.message = messageOf(*found);
}

void Description::describeBalance(EntryMoneyContent& shown, const Account* account, std::int64_t sign) const
{
    if (!account || !account->holds(shown.currency))
        return;
    const auto before = account->balance(shown.currency);
    const auto amount = amountOf(shown.amount, shown.currency);
    const auto after = amount ? Money::add(before, sign * *amount) : std::nullopt;
    shown.balance = money(after.value_or(before), shown.currency, m_locale);
    shown.balanceLabel = entryWord(after ? "afterSaving" : "currentBalance", m_locale);
    if (!after)
        return;
    shown.balanceMark = markOf(*after);
    if (shown.balanceMark == EntryBalanceMark::negative)
        shown.balanceLabel = entryWord("afterSaving.negative", m_locale);
    else if (shown.balanceMark == EntryBalanceMark::beyondLimit)
        shown.balanceLabel = limitMessage("limit.balance", entryWord("balanceLimit", m_locale), shown.currency);
}

std::optional<std::int64_t> Description::amountOf(const QString& text, const std::string& currency) const
{
    const auto minor = Money::parse(text.toStdString(), currency, m_locale);
    return minor && *minor > 0 ? std::optional{*minor} : std::nullopt;
}

QString Description::resetNotice(bool wasReset, const std::string& currency) const
{
    return wasReset ? wordIn(m_locale, entryFormWords(), "currencyReset",
                             {EntryWords::text("currencyChanged", m_locale), std::string_view{currency}})
                    : QString{};
}

}

EntryFormContent EntryForm::content(const EntrySubmission& submission, const LedgerSnapshot& snapshot,
                                    std::string_view today, std::string_view locale)
{
    return Description{submission, snapshot, today, locale}.make();
}
