#include "LedgerCore/Domain/Entries/Posting/PostingRules.h"

#include <algorithm>

#include "LedgerCore/Domain/Access/LedgerEntryAccess.h"
#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Entries/BalanceRules.h"
#include "LedgerCore/Domain/Entries/EntryDays.h"
#include "LedgerCore/Domain/Entries/EntryReference.h"
#include "LedgerCore/Domain/Entries/EntryText.h"
#include "LedgerCore/Domain/Entries/Posting/PostingShape.h"
#include "LedgerCore/Domain/Money/Money.h"

namespace {

using EntryText::given;

std::string_view targetCurrency(const TransactionInput& input)
{
    const auto received = given(input.targetCurrency);
    return received.empty() ? std::string_view{input.currency} : received;
}

PostingReason reasonFor(LedgerEntryAccess::RecordRefusal refusal)
{
    using enum LedgerEntryAccess::RecordRefusal;
    switch (refusal) {
    case archived:
        return PostingReason::accountArchived;
    case inactiveMember:
        return PostingReason::inactiveMember;
    case noIdentifier:
    case notViewable:
        return PostingReason::notFound;
    case notGranted:
        return PostingReason::notGranted;
    case notResponsible:
        return PostingReason::notResponsible;
    case kindRefused:
        return PostingReason::kindRefused;
    }
    return PostingReason::notFound;
}

PostingReason reasonFor(LedgerEntryAccess::DestinationRefusal refusal)
{
    using enum LedgerEntryAccess::DestinationRefusal;
    switch (refusal) {
    case sameAccount:
        return PostingReason::sameAccount;
    case notViewable:
        return PostingReason::notFound;
    case notGranted:
        return PostingReason::notGranted;
    case archived:
        return PostingReason::accountArchived;
    case restrictedToRestricted:
        return PostingReason::restrictedToRestricted;
    }
    return PostingReason::notFound;
}

/// Judges one command. What is found wrong is added to the refusals; later rules judge only what earlier ones left
/// standing.
class Judgement {
public:
    Judgement(const TransactionInput& input, const PostingContext& context)
        : m_input(input), m_context(context), m_member(*context.member), m_source(context.source),
          m_target(context.target), m_original(context.original)
    {
    }

    std::vector<PostingRefusal> run()
    {
        if (!m_member.active)
            refuse(EntryField::account, PostingReason::inactiveMember);
        PostingShape::judge(m_input, m_refusals);
        checkFound();
        checkAccounts();
        checkDay();
        checkCategory();
        if (m_input.kind == EntryKind::refund)
            checkRefund();
        if (m_input.kind == EntryKind::opening)
            checkOpening();
        checkReceipts();
        checkBalances();
        return std::move(m_refusals);
    }

private:
    void refuse(EntryField field, PostingReason reason) { m_refusals.push_back({field, reason}); }

    [[nodiscard]] bool isTransfer() const { return m_input.kind == EntryKind::transfer; }
    [[nodiscard]] EntryField targetField() const { return PostingShape::targetField(m_input.kind); }

    void checkFound();
    void keepFound(const std::optional<std::string>& id, const Account*& account, bool seen, EntryField field);
    [[nodiscard]] bool seesTarget() const;

    void checkAccounts();
    [[nodiscard]] bool isUsable(const Account& account, EntryField field);
    [[nodiscard]] bool takesTransfer(const Account& source, const Account& destination);
    void checkCurrency(const Account*& account, std::string_view currency, EntryField field);

    void checkDay();
    void checkCategory();
    void checkRefund();
    void checkOriginal();
    void checkOpening();
    void checkReceipts();
    void checkBalances();

    const TransactionInput& m_input;
    const PostingContext& m_context;
    const Member& m_member;
    // Null once they are found wanting.
    const Account* m_source;
    const Account* m_target;
    const LedgerTransaction* m_original;
    std::vector<PostingRefusal> m_refusals;
};

/// The destination of a transfer may be one that the member fills without seeing it.
bool Judgement::seesTarget() const
{
    if (!m_source || !isTransfer())
        return m_member.can(AccountAction::view, m_target->id);
    return LedgerEntryAccess::whyNotReceive(*m_source, *m_target, m_member) !=
           LedgerEntryAccess::DestinationRefusal::notViewable;
}

void Judgement::keepFound(const std::optional<std::string>& id, const Account*& account, bool seen, EntryField field)
{
    if (account)
        require(account->id == given(id), "the context holds the records that the command names");
    if (account && seen)
        return;
    account = nullptr;
    if (!given(id).empty())
        refuse(field, PostingReason::notFound);
}

void Judgement::checkFound()
{
    keepFound(m_input.sourceAccountID, m_source, m_source && m_member.can(AccountAction::view, m_source->id),
              EntryField::account);
    keepFound(m_input.targetAccountID, m_target, m_target && seesTarget(), targetField());
    if (!m_context.category && !given(m_input.categoryID).empty())
        refuse(EntryField::category, PostingReason::notFound);
    if (m_original && !LedgerEntryAccess::canView(*m_original, m_member))
        m_original = nullptr;
    if (!m_original && !given(m_input.originalTransactionID).empty())
        refuse(EntryField::original, PostingReason::notFound);
    if (m_context.receipts && m_context.receipts->size() != m_input.attachmentIDs.size())
        refuse(EntryField::receipts, PostingReason::notFound);
}

bool Judgement::isUsable(const Account& account, EntryField field)
{
    const auto refusal = LedgerEntryAccess::whyNotRecord(account, m_member, m_input.kind);
    if (refusal)
        refuse(field, reasonFor(*refusal));
    return !refusal;
}

bool Judgement::takesTransfer(const Account& source, const Account& destination)
{
    constexpr auto field = EntryField::destination;
    if (const auto refusal = LedgerEntryAccess::whyNotReceive(source, destination, m_member)) {
        refuse(field, reasonFor(*refusal));
        return false;
    }
    if (given(m_input.transferPurpose) != LedgerEntryAccess::transferPurpose(source, destination).value_or(""))
        refuse(field, PostingReason::wrongPurpose);
    return true;
}

void Judgement::checkCurrency(const Account*& account, std::string_view currency, EntryField field)
{
    if (!account || currency.empty() || account->holds(currency))
        return;
    refuse(field, PostingReason::currencyNotHeld);
    account = nullptr;
}

void Judgement::checkAccounts()
{
    const auto* const source = m_source;
    if (source && !isUsable(*source, EntryField::account))
        m_source = nullptr;
    if (m_target && !(isTransfer() ? !source || takesTransfer(*source, *m_target) : isUsable(*m_target, targetField())))
        m_target = nullptr;
    checkCurrency(m_source, m_input.currency, EntryField::account);
    checkCurrency(m_target, targetCurrency(m_input), targetField());
}

void Judgement::checkDay()
{
    if (const auto refusal = EntryDays::whyNot(m_input.date, m_context.today, m_context.start))
        refuse(EntryField::date,
               *refusal == EntryDays::Refusal::inFuture ? PostingReason::inFuture : PostingReason::beforeStart);
    if (m_input.kind == EntryKind::opening && !m_context.start.empty() && m_input.date != m_context.start)
        refuse(EntryField::date, PostingReason::openingDay);
}

void Judgement::checkCategory()
{
    if (m_context.category && m_context.category->kind != m_input.kind)
        refuse(EntryField::category, PostingReason::wrongCategoryKind);
    if (m_context.category && m_context.category->archived)
        refuse(EntryField::category, PostingReason::categoryArchived);
}

void Judgement::checkOriginal()
{
    const auto lookup = [this](std::string_view id) {
        const auto& accounts = m_context.originalAccounts;
        const auto found = std::ranges::find(accounts, id, &Account::id);
        return found == accounts.end() ? nullptr : *found;
    };
    const auto refusal = LedgerEntryAccess::whyNotRefund(*m_original, lookup, m_member, m_input.currency);
    if (!refusal)
        return;
    m_original = nullptr;
    switch (*refusal) {
        using enum LedgerEntryAccess::OriginalRefusal;
    case notIncome:
    case otherCurrency:
        return refuse(EntryField::original, PostingReason::notRefundable);
    case reversed:
    case notPermitted:
        return refuse(EntryField::original, PostingReason::originalUnavailable);
    }
}

void Judgement::checkRefund()
{
    if (m_original)
        checkOriginal();
    if (m_original && m_input.date < EntryDays::earliestAfter(m_original->date))
        refuse(EntryField::date, PostingReason::beforeOriginal);
    if (m_context.referenceUsed)
        refuse(EntryField::original, PostingReason::duplicateReference);
    if (!m_original)
        return;
    const auto total = Money::add(m_context.refundedMinor, m_input.amountMinor);
    if (!total || *total > PostingRules::receivedMinor(*m_original, m_input.currency))
        refuse(EntryField::amount, PostingReason::refundLimit);
}

void Judgement::checkOpening()
{
    if (m_context.openingExists)
        refuse(EntryField::account, PostingReason::openingExists);
    else if (!m_context.historyComplete)
        refuse(EntryField::account, PostingReason::historyIncomplete);
}

void Judgement::checkReceipts()
{
    if (!m_context.receipts)
        return;
    if (std::ranges::any_of(*m_context.receipts,
                            [](const Attachment* each) { return !given(each->transactionID).empty(); }))
        refuse(EntryField::receipts, PostingReason::receiptLinked);
}

void Judgement::checkBalances()
{
    if (m_input.amountMinor <= 0)
        return;
    if (m_source && m_source->isEmployeeFund() && !m_context.balanceKnown)
        return refuse(EntryField::amount, PostingReason::reserveUnknown);
    std::vector<const Account*> accounts;
    accounts.reserve(2);
    for (const auto* each : {m_source, m_target}) {
        if (each)
            accounts.push_back(each);
    }
    const auto movements = PostingRules::legs(m_input);
    const auto balances = BalanceRules::after(movements, accounts);
    if (balances)
        return;
    const bool received = m_input.kind == EntryKind::exchange && movements[balances.error().leg].amountMinor > 0;
    refuse(received ? EntryField::targetAmount : EntryField::amount,
           balances.error().reason == BalanceRules::Reason::insufficientFunds ? PostingReason::insufficientFunds
                                                                              : PostingReason::balanceLimit);
}

}

PostingContext PostingRules::contextOf(const TransactionInput& input, const VisibleBooks& books, std::string_view today)
{
    PostingContext context;
    context.member = &books.snapshot().currentMember;
    context.today = today;
    context.start = EntryDays::start(books.snapshot().financialSettings);
    context.source = books.account(given(input.sourceAccountID));
    context.target = input.kind == EntryKind::transfer ? books.destination(given(input.targetAccountID))
                                                       : books.account(given(input.targetAccountID));
    context.category = books.category(given(input.categoryID));
    if (context.source && context.source->isEmployeeFund())
        context.balanceKnown = books.isBalanceKnown(*context.source, input.currency);
    if (input.kind == EntryKind::opening && context.target) {
        const auto& opening = books.opening(context.target->id, input.currency);
        context.openingExists = !opening.activeOpeningIDs.empty();
        context.historyComplete = opening.historyComplete;
    }
    if (input.kind != EntryKind::refund)
        return context;
    if (const auto id = given(input.originalTransactionID); !id.empty())
        context.original = books.entry(id);
    if (context.original) {
        for (const auto& leg : context.original->legs) {
            if (const auto* const account = books.account(leg.accountID))
                context.originalAccounts.push_back(account);
        }
        context.refundedMinor = books.refundedMinor(context.original->id, input.currency);
    }
    if (const auto reference = EntryReference::of(input); !reference.empty())
        context.referenceUsed = books.isReferenceUsed(reference);
    return context;
}

std::vector<PostingRefusal> PostingRules::refusals(const TransactionInput& input, const PostingContext& context)
{
    require(context.member != nullptr, "somebody records");
    return Judgement{input, context}.run();
}

std::optional<PostingRefusal> PostingRules::whyNot(const TransactionInput& input, const PostingContext& context)
{
    const auto all = refusals(input, context);
    return all.empty() ? std::nullopt : std::optional{all.front()};
}

std::vector<LedgerLeg> PostingRules::legs(const TransactionInput& input)
{
    std::vector<LedgerLeg> legs;
    if (const auto source = given(input.sourceAccountID); !source.empty())
        legs.push_back({std::string{source}, input.currency, -input.amountMinor});
    if (const auto target = given(input.targetAccountID); !target.empty())
        legs.push_back({std::string{target}, std::string{targetCurrency(input)},
                        input.targetAmountMinor.value_or(input.amountMinor)});
    return legs;
}

std::int64_t PostingRules::receivedMinor(const LedgerTransaction& income, std::string_view currency)
{
    std::int64_t sum = 0;
    for (const auto& leg : income.legs) {
        if (leg.currency == currency)
            sum = Money::add(sum, leg.amountMinor).value_or(0);
    }
    return sum;
}
