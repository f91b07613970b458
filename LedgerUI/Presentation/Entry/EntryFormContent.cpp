#include "LedgerUI/Presentation/Entry/EntryFormContent.h"

#include <algorithm>
#include <array>

#include "LedgerCore/Domain/Access/LedgerEntryAccess.h"
#include "LedgerCore/Domain/Access/OpeningBalancePolicy.h"
#include "LedgerCore/Domain/Entries/Drafts/EntryRules.h"
#include "LedgerCore/Domain/Entries/EntryCopy.h"
#include "LedgerCore/Domain/Entries/EntryWords.h"
#include "LedgerCore/Domain/Money/AmountExpression.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerUI/Presentation/Entry/EntryCategories.h"
#include "LedgerUI/Presentation/Entry/EntryChoices.h"
#include "LedgerUI/Presentation/Entry/EntryDouble.h"
#include "LedgerUI/Presentation/Entry/EntryHistory.h"
#include "LedgerUI/Presentation/Entry/EntryLabels.h"
#include "LedgerUI/Presentation/Text/EntryKindGlyph.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Values/MoneyText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

constexpr std::array switchKinds{EntryKind::expense, EntryKind::income, EntryKind::transfer, EntryKind::exchange};

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
                std::string_view locale, const EntryHistory* history)
        : m_submission(submission), m_editing(submission.form()), m_draft(m_editing.draft), m_snapshot(snapshot),
          m_today(today), m_locale(locale), m_history(history)
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
    void describeResult(EntryMoneyContent& money, const std::string& currency) const;
    void describeHistory();
    void describeBalance(EntryMoneyContent& money, const Account* account, std::int64_t sign) const;
    [[nodiscard]] EntryEffect effectOn(const EntryDestination& destination, std::int64_t sign) const;
    [[nodiscard]] std::optional<std::int64_t> amountOf(const QString& text, const std::string& currency) const;
    [[nodiscard]] QString resetNotice(bool wasReset, const std::string& currency) const;
    [[nodiscard]] QString another() const;
    [[nodiscard]] QString messageOf(const EntryProblem& problem) const;
    [[nodiscard]] QString warningOf(EntryBalanceMark mark, const std::string& currency) const;

    const EntrySubmission& m_submission;
    const EntryEditing& m_editing;
    const TransactionDraft& m_draft;
    const LedgerSnapshot& m_snapshot;
    std::string_view m_today;
    std::string_view m_locale;
    const EntryHistory* m_history; // may be null
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
    describeResult(m_content.sent, m_draft.currency);
    describeResult(m_content.received, m_draft.targetCurrency);
    if (m_history && m_submission.isEditing())
        describeHistory();
    return std::move(m_content);
}

void Description::describeHead()
{
    m_content.kind = m_draft.kind;
    const bool isFixed = std::ranges::find(switchKinds, m_draft.kind) == switchKinds.end();
    m_content.title = wordIn(m_locale, entryFormWords(),
                             isFixed || m_submission.isUncertain() ? "title." + m_draft.kind : "newEntry");
    m_content.direction = EntryLabels::direction(m_draft.kind, m_locale);
    if (m_draft.kind == EntryKind::opening)
        readRecordingDay();
    if (m_draft.kind == EntryKind::income) {
        m_content.helpTitle = wordIn(m_locale, EntryCopy::words(), "withdrawalHelp");
        m_content.help = wordIn(m_locale, EntryCopy::words(), "incomeHint");
    }
    if (isFixed || m_submission.isUncertain())
        return;
    const auto available = EntryRules::availableKinds(m_snapshot);
    for (const auto kind : switchKinds) {
        const bool isAvailable = std::ranges::find(available, kind) != available.end();
        m_content.kinds.push_back({std::string{kind}, wordIn(m_locale, ledgerWords(), "kind." + std::string{kind}),
                                   entryKindGlyph(kind), isAvailable});
    }
    if (available.empty())
        m_content.kindHint = wordIn(m_locale, EntryCopy::words(), "entryNoAvailableTypes");
    else if (available.size() < switchKinds.size())
        m_content.kindHint = wordIn(m_locale, EntryCopy::words(), "entryTypePermissionHint");
}

/// An opening balance that would stand after existing entries adds to them.
void Description::readRecordingDay()
{
    m_recording = OpeningBalancePolicy::recordingDay(m_snapshot, m_today, m_editing.earliestDay);
    if (m_recording && m_recording->historySince)
        m_content.direction +=
            QLatin1Char{'\n'} + wordIn(m_locale, entryFormWords(), "openingAfterHistory",
                                       {DayText::longDay(*m_recording->historySince, m_locale).toStdString()});
}

void Description::describeSent()
{
    auto& sent = m_content.sent;
    sent.accountLabel = EntryLabels::account(m_draft.kind, m_locale);
    for (const auto* account : EntryForm::accounts(m_editing, m_snapshot))
        sent.accounts.push_back(EntryChoices::account(*account, m_locale));
    sent.accounts = EntryChoices::grouped(sent.accounts, m_locale);
    sent.accountPrompt = sent.accounts.empty() ? EntryLabels::noAccount(m_draft.kind, m_locale)
                                               : wordIn(m_locale, EntryWords::words(), "selectAccount");
    sent.accountID = m_draft.primaryAccount().value_or(std::string{});
    sent.amountLabel = m_draft.kind == EntryKind::exchange ? wordIn(m_locale, EntryWords::words(), "outgoingAmount")
                                                           : wordIn(m_locale, entryFormWords(), "amount");
    const auto* const account = m_snapshot.account(sent.accountID);
    if (account)
        sent.currencies = EntryChoices::currencies(EntryForm::currencies(m_editing, *account), m_locale);
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
    received.accountLabel = wordIn(m_locale, entryFormWords(), isTransfer ? "toAccount" : "receivedIn");
    for (const auto& option : m_destinations) {
        const bool isFloat = option.transferPurpose == TransferPurpose::funding;
        received.accounts.push_back(
            option.seen ? EntryChoices::account(*option.seen, m_locale)
                        : EntryChoices::account(option.id, option.name,
                                                isFloat ? EntryChoices::Group::employee : EntryChoices::Group::company,
                                                m_locale));
    }
    received.accounts = EntryChoices::grouped(received.accounts, m_locale);
    const bool hasSource = m_draft.source && !m_draft.currency.empty();
    received.accountPrompt =
        wordIn(m_locale, EntryWords::words(), m_destinations.empty() && hasSource ? "noTarget" : "chooseAccount");
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
    received.amountLabel = wordIn(m_locale, entryFormWords(), "receivedAmount");
    const auto* const account = m_snapshot.account(received.accountID);
    if (account)
        received.currencies = EntryChoices::currencies(account->currencies, m_locale, m_draft.currency);
    received.currency = m_draft.targetCurrency;
    received.amount = qString(m_draft.targetAmount);
    if (!m_draft.targetCurrency.empty())
        received.placeholder = qString(Money::formatDigits(0, m_draft.targetCurrency, m_locale));
    received.notice = resetNotice(m_editing.targetCurrencyReset, m_draft.targetCurrency);
    describeBalance(received, account, 1);
    const auto from = amountOf(m_content.sent.amount, m_draft.currency).value_or(0);
    const auto to = amountOf(received.amount, m_draft.targetCurrency).value_or(0);
    m_content.rates = {rateText(from, m_draft.currency, to, m_draft.targetCurrency, m_locale),
                       rateText(to, m_draft.targetCurrency, from, m_draft.currency, m_locale)};
}

void Description::describeEffects()
{
    if (const auto* source = m_snapshot.account(m_content.sent.accountID))
        m_content.effects.push_back(effectOn({source->id, source->name, source->currencies, source, {}}, -1));
    const auto chosen = std::ranges::find(m_destinations, m_content.received.accountID, &EntryDestination::id);
    if (chosen != m_destinations.end())
        m_content.effects.push_back(effectOn(*chosen, 1));
    if (!m_purpose.empty())
        m_content.purpose = wordIn(m_locale, entryFormWords(), "purpose." + m_purpose);
}

EntryEffect Description::effectOn(const EntryDestination& destination, std::int64_t sign) const
{
    EntryEffect effect{.account = qString(destination.name),
                       .before = {},
                       .changeLabel = wordIn(m_locale, entryFormWords(), sign < 0 ? "effect.sent" : "effect.received"),
                       .change = {},
                       .after = {},
                       .afterMark = {},
                       .warning = {},
                       .isSeen = destination.seen != nullptr};
    const auto amount = amountOf(m_content.sent.amount, m_draft.currency);
    if (amount)
        effect.change = EntryChoices::money(sign * *amount, m_draft.currency, m_locale);
    if (!destination.seen)
        return effect;
    const auto before = destination.seen->balance(m_draft.currency);
    effect.before = EntryChoices::money(before, m_draft.currency, m_locale);
    if (const auto after = amount ? Money::add(before, sign * *amount) : std::nullopt) {
        effect.after = EntryChoices::money(*after, m_draft.currency, m_locale);
        effect.afterMark = markOf(*after);
        effect.warning = warningOf(effect.afterMark, m_draft.currency);
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
    m_content.confirm = m_submission.isUncertain() ? wordIn(m_locale, EntryWords::words(), "retryOriginal")
                                                   : EntryLabels::confirmation(m_draft.kind, m_purpose, m_locale);
    if (!m_submission.isUncertain())
        m_content.another = another();
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
        m_content.messages.emplace(field, EntryLabels::refusedPaste(refusal, m_locale));
}

/// Openings go from account to account while there are any left.
QString Description::another() const
{
    if (m_draft.kind != EntryKind::opening)
        return wordIn(m_locale, entryFormWords(), "saveAndNew");
    const EntryOpeningPlace here{m_draft.target.value_or(std::string{}), m_draft.currency};
    const auto left =
        m_editing.openings.size() - static_cast<std::size_t>(std::ranges::count(m_editing.openings, here));
    return left == 0 ? QString{} : wordIn(m_locale, entryFormWords(), "saveAndNext", {groupedNumber(left, m_locale)});
}

QString Description::messageOf(const EntryProblem& problem) const
{
    const auto& currency = problem.field == EntryField::targetAmount ? m_draft.targetCurrency : m_draft.currency;
    const auto* const error = std::get_if<MoneyError>(&problem.reason);
    const auto& typed = problem.field == EntryField::targetAmount ? m_draft.targetAmount : m_draft.amount;
    if (error && AmountExpression::isOne(typed)) {
        const auto result = AmountExpression::evaluate(typed, currency, m_locale);
        return EntryLabels::refusedExpression(result ? AmountExpression::Error::unreadable : result.error(), currency,
                                              m_locale);
    }
    return qString(problem.message(m_locale));
}

void Description::describeDay()
{
    using Basis = OpeningBalancePolicy::RecordingDay::Basis;
    auto& shown = m_content.day;
    const bool isOpening = m_draft.kind == EntryKind::opening;
    const auto& sent = m_submission.command();
    shown.bounds = DayTyping::bounds(m_snapshot, m_today);
    shown.day = m_draft.date.empty() ? std::string{m_today} : m_draft.date;
    if (isOpening && m_recording)
        shown.day = m_recording->day;
    if (sent && !m_submission.isEditing())
        shown.day = sent->date;
    shown.text = DayText::longDay(shown.day, m_locale);
    shown.mayChange = m_submission.isEditing() && !isOpening;
    if (m_submission.isUncertain())
        shown.hint = wordIn(m_locale, EntryCopy::words(), "retainedEntryDate");
    else if (isOpening)
        shown.hint = wordIn(m_locale, entryFormWords(),
                            m_recording && m_recording->basis == Basis::today ? "openingToday" : "openingDay");
    else
        shown.hint = m_draft.date.empty() ? wordIn(m_locale, EntryCopy::words(), "automaticEntryDate")
                                          : wordIn(m_locale, entryFormWords(), "chosenDay");
    if (shown.mayChange)
        shown.message = DayTyping::whyNot(shown.day, shown.bounds, m_locale);
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
    shown.balance = EntryChoices::money(after.value_or(before), shown.currency, m_locale);
    shown.balanceLabel = wordIn(m_locale, EntryWords::words(), after ? "afterSaving" : "currentBalance");
    if (!after)
        return;
    shown.balanceMark = markOf(*after);
    if (shown.balanceMark != EntryBalanceMark::none)
        shown.balanceLabel = warningOf(shown.balanceMark, shown.currency);
}

/// What is said of a balance that cannot or should not be.
QString Description::warningOf(EntryBalanceMark mark, const std::string& currency) const
{
    switch (mark) {
    case EntryBalanceMark::none:
        return {};
    case EntryBalanceMark::negative:
        return wordIn(m_locale, entryFormWords(), "afterSaving.negative");
    case EntryBalanceMark::beyondLimit:
        break;
    }
    return qString(RangeLimit{RangeLimit::Of::balance, currency}.message(m_locale));
}

std::optional<std::int64_t> Description::amountOf(const QString& text, const std::string& currency) const
{
    const auto minor = AmountTyping::minor(text, currency, m_locale);
    return minor && *minor > 0 ? minor : std::nullopt;
}

/// What arithmetic comes to is seen before it is taken, and an amount past its limit as soon as it is; what is still
/// being typed is left in peace.
void Description::describeResult(EntryMoneyContent& money, const std::string& currency) const
{
    const auto typed = money.amount.toStdString();
    if (!m_submission.isEditing() || currency.empty())
        return;
    if (!AmountExpression::isOne(typed)) {
        if (Money::parse(typed, currency, m_locale) == std::unexpected{MoneyError::outOfRange})
            money.caution = qString(RangeLimit{RangeLimit::Of::amount, currency}.message(m_locale));
        return;
    }
    const auto result = AmountExpression::evaluate(typed, currency, m_locale);
    if (result)
        money.result = wordIn(m_locale, entryFormWords(), "result", {Money::format(*result, currency, m_locale)});
    else if (result.error() != AmountExpression::Error::unreadable)
        money.caution = EntryLabels::refusedExpression(result.error(), currency, m_locale);
}

void Description::describeHistory()
{
    const auto amount = amountOf(m_content.sent.amount, m_draft.currency);
    const auto& account = m_draft.primaryAccount();
    if (!amount || !account)
        return;
    const auto moved = m_draft.onlyArrives() ? *amount : -*amount;
    if (const auto* entry = m_history->likelyDouble(m_content.day.day, *account, m_draft.currency, moved)) {
        m_content.sent.caution = EntryDouble::warning(*entry, m_snapshot, m_locale);
        m_content.sent.earlier = EntryDouble::facts(*entry, m_snapshot, m_locale);
    }
    if (m_draft.kind != EntryKind::exchange)
        return;
    const auto received = amountOf(m_content.received.amount, m_draft.targetCurrency);
    const auto last = m_history->lastExchange(m_draft.currency, m_draft.targetCurrency);
    if (received && last && isFarFrom(*last, *amount, *received)) {
        const auto rate = rateText(last->fromMinor, m_draft.currency, last->toMinor, m_draft.targetCurrency, m_locale);
        m_content.received.caution = wordIn(m_locale, entryFormWords(), "rateFar",
                                            {rate.toStdString(), DayText::longDay(last->day, m_locale).toStdString()});
    }
}

QString Description::resetNotice(bool wasReset, const std::string& currency) const
{
    return wasReset ? wordIn(m_locale, entryFormWords(), "currencyReset",
                             {EntryWords::text("currencyChanged", m_locale), std::string_view{currency}})
                    : QString{};
}

}

EntryFormContent EntryForm::content(const EntrySubmission& submission, const LedgerSnapshot& snapshot,
                                    std::string_view today, std::string_view locale, const EntryHistory* history)
{
    return Description{submission, snapshot, today, locale, history}.make();
}
