#include <algorithm>

#include "LedgerCore/Domain/Access/LedgerEntryAccess.h"
#include "LedgerCore/Domain/Access/OpeningBalancePolicy.h"
#include "LedgerCore/Domain/Categories/CategoryDirectory.h"
#include "LedgerCore/Domain/Entries/EntryRules.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerCore/Domain/Text/TextFold.h"

namespace {

/// Judges one draft against one snapshot, field by field, and keeps what it learned for the command.
class DraftCheck {
public:
    DraftCheck(const TransactionDraft& draft, const LedgerSnapshot& snapshot, std::string_view locale)
        : m_draft(draft), m_snapshot(snapshot), m_locale(locale)
    {
    }

    std::vector<EntryProblem> problems();
    [[nodiscard]] TransactionInput input() const;

private:
    void checkAccount();
    void checkDestination();
    void checkAmount();
    void checkReserve();
    void checkLimit();
    void checkTargetAmount();
    void checkCategory();
    void checkOriginal();
    void checkOpening();

    [[nodiscard]] std::optional<std::int64_t> positiveAmount(EntryField field, std::string_view text,
                                                             std::string_view currency);
    [[nodiscard]] bool clear(EntryField field) const;
    void refuse(EntryField field, decltype(EntryProblem::reason) reason);

    const TransactionDraft& m_draft;
    const LedgerSnapshot& m_snapshot;
    std::string_view m_locale;
    const Account* m_account = nullptr;
    std::optional<EntryDestination> m_destination;
    std::int64_t m_amountMinor = 0; // positive once it is read
    std::optional<std::int64_t> m_targetAmount;
    std::string m_date;
    std::vector<EntryProblem> m_problems;
};

bool staysWithinLimit(const Account& account, std::string_view currency, std::int64_t change)
{
    const auto after = Money::add(account.balance(currency), change);
    return after && Money::isWithinLimit(*after);
}

bool contains(const std::vector<std::string>& currencies, std::string_view currency)
{
    return std::ranges::find(currencies, currency) != currencies.end();
}

bool DraftCheck::clear(EntryField field) const
{
    return std::ranges::find(m_problems, field, &EntryProblem::field) == m_problems.end();
}

/// The first problem of a field stands.
void DraftCheck::refuse(EntryField field, decltype(EntryProblem::reason) reason)
{
    if (clear(field))
        m_problems.push_back({field, std::move(reason)});
}

std::vector<EntryProblem> DraftCheck::problems()
{
    m_date = m_draft.date;
    checkAccount();
    if (m_draft.hasDestination())
        checkDestination();
    checkAmount();
    if (m_draft.kind == EntryKind::exchange)
        checkTargetAmount();
    if (m_draft.hasCategory())
        checkCategory();
    if (m_draft.kind == EntryKind::refund)
        checkOriginal();
    if (m_draft.kind == EntryKind::opening)
        checkOpening();
    return m_problems;
}

void DraftCheck::checkAccount()
{
    const auto& id = m_draft.primaryAccount();
    if (!id || id->empty())
        return refuse(EntryField::account, EntryValidationError{EntryValidationError::AccountRequired{}});
    const auto offered = LedgerEntryAccess::accounts(m_snapshot, m_draft.kind);
    const auto found = std::ranges::find(offered, *id, &Account::id);
    if (found == offered.end())
        return refuse(EntryField::account, EntryObstacle::accountUnavailable);
    if (!(*found)->holds(m_draft.currency))
        return refuse(EntryField::account, EntryValidationError{EntryValidationError::AccountRequired{}});
    m_account = *found;
}

void DraftCheck::checkDestination()
{
    const auto options = EntryRules::destinations(m_snapshot, m_draft);
    const auto kept = EntryRules::retainedTarget(m_draft.target, options);
    if (!kept)
        return refuse(EntryField::destination, EntryValidationError{EntryValidationError::DestinationRequired{}});
    m_destination = *std::ranges::find(options, *kept, &EntryDestination::id);
    if (m_draft.kind != EntryKind::exchange)
        return;
    if (!contains(m_destination->currencies, m_draft.targetCurrency))
        return refuse(EntryField::destination, EntryValidationError{EntryValidationError::AccountRequired{}});
    if (m_draft.targetCurrency == m_draft.currency)
        refuse(EntryField::destination, EntryObstacle::sameCurrency);
}

std::optional<std::int64_t> DraftCheck::positiveAmount(EntryField field, std::string_view text,
                                                       std::string_view currency)
{
    const EntryValidationError needed{EntryValidationError::PositiveAmount{}};
    if (TextFold::trimmed(text).empty()) {
        refuse(field, needed);
        return std::nullopt;
    }
    if (currency.empty())
        return std::nullopt;
    const auto minor = Money::parse(text, currency, m_locale);
    if (minor && *minor > 0)
        return *minor;
    if (minor)
        refuse(field, needed);
    else
        refuse(field, minor.error());
    return std::nullopt;
}

void DraftCheck::checkAmount()
{
    m_amountMinor = positiveAmount(EntryField::amount, m_draft.amount, m_draft.currency).value_or(0);
    if (m_amountMinor == 0 || !m_account)
        return;
    if (!m_draft.onlyArrives() && m_account->isEmployeeFund())
        checkReserve();
    checkLimit();
}

void DraftCheck::checkReserve()
{
    const auto available = EntryRules::reserve(m_snapshot, *m_account, m_draft.currency);
    if (!available)
        refuse(EntryField::amount, EntryValidationError{EntryValidationError::ReserveUnknown{m_draft.currency}});
    else if (m_amountMinor > *available)
        refuse(EntryField::amount,
               EntryValidationError{EntryValidationError::ReserveInsufficient{*available, m_draft.currency}});
}

void DraftCheck::checkLimit()
{
    const auto change = m_draft.onlyArrives() ? m_amountMinor : -m_amountMinor;
    const auto* const receiving = m_draft.kind == EntryKind::transfer && m_destination ? m_destination->seen : nullptr;
    if (!staysWithinLimit(*m_account, m_draft.currency, change) ||
        (receiving && !staysWithinLimit(*receiving, m_draft.currency, m_amountMinor)))
        refuse(EntryField::amount, EntryObstacle::balanceLimit);
}

void DraftCheck::checkTargetAmount()
{
    m_targetAmount = positiveAmount(EntryField::targetAmount, m_draft.targetAmount, m_draft.targetCurrency);
    if (m_targetAmount && m_destination && m_destination->seen &&
        !staysWithinLimit(*m_destination->seen, m_draft.targetCurrency, *m_targetAmount))
        refuse(EntryField::targetAmount, EntryObstacle::balanceLimit);
}

void DraftCheck::checkCategory()
{
    if (!m_draft.categoryID || m_draft.categoryID->empty())
        return refuse(EntryField::category, EntryValidationError{EntryValidationError::CategoryRequired{}});
    const CategoryDirectory directory{m_snapshot.categories};
    const auto* const category = directory.find(*m_draft.categoryID);
    if (!category || category->archived || category->kind != m_draft.kind)
        refuse(EntryField::category, EntryObstacle::categoryUnavailable);
}

void DraftCheck::checkOriginal()
{
    if (!m_draft.originalIncomeID) {
        if (TextFold::trimmed(m_draft.refundReference).empty())
            refuse(EntryField::original, EntryObstacle::originalRequired);
        return;
    }
    const auto open = EntryRules::refundableIncomes(m_snapshot, m_draft.currency);
    const auto found =
        std::ranges::find(open, *m_draft.originalIncomeID, [](const RefundableIncome& each) { return each.entry->id; });
    if (found == open.end())
        refuse(EntryField::original, EntryObstacle::originalUnavailable);
    else if (m_amountMinor > found->remainingMinor)
        refuse(EntryField::amount, RefundLimit{found->remainingMinor, m_draft.currency});
}

void DraftCheck::checkOpening()
{
    using enum OpeningBalancePolicy::Refusal;
    const auto day = OpeningBalancePolicy::recordingDate(m_snapshot, m_draft.date);
    if (day)
        m_date = *day;
    else
        refuse(EntryField::account, EntryObstacle::openingDateUnreadable);
    if (!m_account)
        return;
    const auto refusal = OpeningBalancePolicy::whyNot(m_snapshot, m_account->id, m_draft.currency);
    if (refusal == alreadyOpened)
        refuse(EntryField::account, EntryObstacle::openingExists);
    else if (refusal == historyIncomplete)
        refuse(EntryField::account, EntryObstacle::openingUnverifiable);
    else if (refusal)
        refuse(EntryField::account, EntryObstacle::accountUnavailable);
}

TransactionInput DraftCheck::input() const
{
    TransactionInput input;
    input.kind = m_draft.kind;
    input.date = m_date;
    input.note = TextFold::trimmed(m_draft.note);
    input.currency = m_draft.currency;
    input.amountMinor = m_amountMinor;
    input.attachmentIDs = m_draft.attachments;
    input.idempotencyKey = m_draft.idempotencyKey;
    (m_draft.onlyArrives() ? input.targetAccountID : input.sourceAccountID) = m_account->id;
    if (m_draft.hasCategory())
        input.categoryID = m_draft.categoryID;
    if (m_destination) {
        input.targetAccountID = m_destination->id;
        input.transferPurpose = m_destination->transferPurpose;
    }
    if (m_draft.kind == EntryKind::exchange) {
        input.targetCurrency = m_draft.targetCurrency;
        input.targetAmountMinor = m_targetAmount;
    }
    if (m_draft.kind == EntryKind::refund) {
        input.originalTransactionID = m_draft.originalIncomeID;
        if (const auto reference = TextFold::trimmed(m_draft.refundReference); !reference.empty())
            input.externalReference = std::string{reference};
    }
    return input;
}

}

std::expected<TransactionInput, std::vector<EntryProblem>>
EntryRules::input(const TransactionDraft& draft, const LedgerSnapshot& snapshot, std::string_view locale)
{
    DraftCheck check{draft, snapshot, locale};
    if (auto problems = check.problems(); !problems.empty()) {
        std::ranges::sort(problems, {}, &EntryProblem::field);
        return std::unexpected(std::move(problems));
    }
    return check.input();
}
