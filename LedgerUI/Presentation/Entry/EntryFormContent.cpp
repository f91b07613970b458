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

EntryAccountRow::Group groupOf(const Account& account)
{
    if (account.hasPurpose(AccountPurpose::refund))
        return EntryAccountRow::Group::refund;
    return account.isRestricted() ? EntryAccountRow::Group::employee : EntryAccountRow::Group::company;
}

/// The number of an amount and its code never part at the end of a line.
QString money(std::int64_t minor, std::string_view currency, std::string_view locale)
{
    return qString(Money::format(minor, currency, locale)).replace(QLatin1Char{' '}, QChar::Nbsp);
}

EntryAccountRow rowOf(const Account& account, std::string_view locale)
{
    QStringList balances;
    for (const auto& code : account.currencies)
        balances << money(account.balance(code), code, locale);
    return {account.id, qString(account.name), balances.join(QStringLiteral("   ")), groupOf(account)};
}

std::vector<EntryAccountRow> groupedTogether(const std::vector<EntryAccountRow>& rows)
{
    using enum EntryAccountRow::Group;
    std::vector<EntryAccountRow> together;
    for (const auto group : {company, employee, refund})
        std::ranges::copy_if(rows, std::back_inserter(together),
                             [group](const auto& row) { return row.group == group; });
    return together;
}

std::vector<EntryCurrencyRow> currencyRows(const std::vector<std::string>& codes, std::string_view locale,
                                           std::string_view without = {})
{
    std::vector<EntryCurrencyRow> rows;
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

/// Makes one content out of one state; members are what several parts look at.
class Description {
public:
    Description(const EntryFormState& state, const LedgerSnapshot& snapshot, std::string_view locale)
        : m_draft(EntryForm::draftOf(state)), m_snapshot(snapshot), m_locale(locale),
          m_editing(std::get_if<EntryEditing>(&state))
    {
        if (const auto* uncertain = std::get_if<EntryUncertain>(&state))
            m_kept = &uncertain->input;
        m_content.isEditing = m_editing != nullptr;
        m_content.isUncertain = m_kept != nullptr;
        if (const auto* saving = std::get_if<EntrySaving>(&state))
            m_kept = &saving->input;
    }

    EntryFormContent make();

private:
    void describeHead();
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

    const TransactionDraft& m_draft;
    const LedgerSnapshot& m_snapshot;
    std::string_view m_locale;
    const EntryEditing* m_editing;
    const TransactionInput* m_kept = nullptr;
    std::vector<EntryDestination> m_destinations;
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
    m_content.title = entryWord(isFixed || m_content.isUncertain ? "title." + m_draft.kind : "newEntry", m_locale);
    m_content.direction = entryWord(directionOf(m_draft.kind), m_locale);
    if (isFixed || m_content.isUncertain)
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

void Description::describeSent()
{
    auto& sent = m_content.sent;
    sent.accountLabel = entryWord(accountLabelOf(m_draft.kind), m_locale);
    for (const auto* account : LedgerEntryAccess::accounts(m_snapshot, m_draft.kind))
        sent.accounts.push_back(rowOf(*account, m_locale));
    sent.accounts = groupedTogether(sent.accounts);
    sent.accountPrompt = entryWord(sent.accounts.empty() ? "noAccount" : "selectAccount", m_locale);
    sent.accountID = m_draft.primaryAccount().value_or(std::string{});
    sent.amountLabel = entryWord(m_draft.kind == EntryKind::exchange ? "outgoingAmount" : "amount", m_locale);
    const auto* const account = m_snapshot.account(sent.accountID);
    if (account)
        sent.currencies = currencyRows(account->currencies, m_locale);
    sent.currency = m_draft.currency;
    sent.amount = qString(m_draft.amount);
    sent.placeholder =
        m_draft.currency.empty() ? QString{} : qString(Money::formatDigits(0, m_draft.currency, m_locale));
    sent.notice = resetNotice(m_editing && m_editing->sourceCurrencyReset, m_draft.currency);
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
        received.accounts.push_back(option.seen ? rowOf(*option.seen, m_locale)
                                                : EntryAccountRow{option.id,
                                                                  qString(option.name),
                                                                  {},
                                                                  isFloat ? EntryAccountRow::Group::employee
                                                                          : EntryAccountRow::Group::company});
    }
    received.accounts = groupedTogether(received.accounts);
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
    received.notice = resetNotice(m_editing && m_editing->targetCurrencyReset, m_draft.targetCurrency);
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
                       .isSeen = destination.seen != nullptr};
    const auto amount = amountOf(m_content.sent.amount, m_draft.currency);
    if (amount)
        effect.change = money(sign * *amount, m_draft.currency, m_locale);
    if (!destination.seen)
        return effect;
    const auto before = destination.seen->balance(m_draft.currency);
    effect.before = money(before, m_draft.currency, m_locale);
    if (const auto after = amount ? Money::add(before, sign * *amount) : std::nullopt)
        effect.after = money(*after, m_draft.currency, m_locale);
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
    m_content.confirm = entryWord(m_content.isUncertain ? "retryOriginal" : confirmKeyOf(m_draft, m_purpose), m_locale);
    if (!m_editing)
        return;
    for (const auto& problem : m_editing->problems)
        m_content.messages.emplace(problem.field, qString(problem.message(m_locale)));
}

void Description::describeDay()
{
    auto day = m_kept ? m_kept->date : m_draft.date;
    if (m_draft.kind == EntryKind::opening)
        day = OpeningBalancePolicy::recordingDate(m_snapshot, day).value_or(day);
    m_content.day = DayText::longDay(day, m_locale);
    if (m_content.isUncertain)
        return;
    if (m_draft.kind == EntryKind::opening)
        m_content.dayHint = wordIn(m_locale, entryFormWords(), "openingDay");
    else
        m_content.dayHint = entryWord("automaticEntryDate", m_locale);
}

void Description::describeBalance(EntryMoneyContent& shown, const Account* account, std::int64_t sign) const
{
    if (!account || !account->holds(shown.currency))
        return;
    const auto before = account->balance(shown.currency);
    const auto amount = amountOf(shown.amount, shown.currency);
    const auto after = amount ? Money::add(before, sign * *amount) : std::nullopt;
    shown.balanceLabel = entryWord(after ? "afterSaving" : "currentBalance", m_locale);
    shown.balance = money(after.value_or(before), shown.currency, m_locale);
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

EntryFormContent EntryForm::content(const EntryFormState& state, const LedgerSnapshot& snapshot,
                                    std::string_view locale)
{
    return Description{state, snapshot, locale}.make();
}

QString EntryForm::glyphOf(EntryAccountRow::Group group)
{
    switch (group) {
    case EntryAccountRow::Group::company:
        return QStringLiteral("bank");
    case EntryAccountRow::Group::employee:
        return QStringLiteral("person");
    case EntryAccountRow::Group::refund:
        return QStringLiteral("arrow-return-left");
    }
    return {};
}
