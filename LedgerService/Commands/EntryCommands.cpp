#include "LedgerService/Commands/EntryCommands.h"

#include <algorithm>

#include "LedgerService/Books/PostingContext.h"
#include "LedgerService/Books/ReversalContext.h"
#include "LedgerService/Random.h"
#include "LedgerService/Storage/Rows/AccountRepository.h"
#include "LedgerService/Storage/Rows/AttachmentRepository.h"
#include "LedgerService/Storage/Rows/CategoryRepository.h"
#include "LedgerService/Storage/Rows/CompanyRepository.h"
#include "LedgerService/Storage/Rows/EntryRepository.h"

namespace LedgerService {

namespace {

using EntryCommands::Act;

/// The books refuse commands with more receipts unseen, so that no more are looked up.
constexpr std::size_t maximumReceiptsRead = 32;

std::optional<Account> accountOf(const Act& act, const std::optional<std::string>& id)
{
    return id ? AccountRepository::find(act.connection, act.companyID, *id) : std::nullopt;
}

/// The accounts of the entry's legs, each once.
std::vector<Account> accountsOf(const Act& act, const LedgerTransaction& entry)
{
    std::vector<Account> accounts;
    for (const auto& leg : entry.legs) {
        if (std::ranges::find(accounts, leg.accountID, &Account::id) != accounts.end())
            continue;
        if (auto account = AccountRepository::find(act.connection, act.companyID, leg.accountID))
            accounts.push_back(*std::move(account));
    }
    return accounts;
}

std::optional<RefundOriginal> originalOf(const Act& act, const std::optional<std::string>& id)
{
    if (!id)
        return std::nullopt;
    auto entry = EntryRepository::find(act.connection, act.companyID, *id);
    if (!entry)
        return std::nullopt;
    auto accounts = accountsOf(act, *entry);
    return RefundOriginal{.entry = *std::move(entry),
                          .accounts = std::move(accounts),
                          .refunded = EntryRepository::refunded(act.connection, act.companyID, *id)};
}

std::vector<Attachment> attachmentsOf(const Act& act, const std::vector<std::string>& ids)
{
    std::vector<Attachment> attachments;
    for (const auto& id : ids) {
        if (attachments.size() == maximumReceiptsRead)
            break;
        if (auto attachment = AttachmentRepository::find(act.connection, act.companyID, id))
            attachments.push_back(*std::move(attachment));
    }
    return attachments;
}

PostingContext contextOf(const Act& act, const TransactionInput& input)
{
    PostingContext context;
    context.entryID = Random::identifier();
    context.today = act.today;
    context.now = act.now;
    context.member = act.member;
    context.settings = CompanyRepository::settings(act.connection, act.companyID);
    context.source = accountOf(act, input.sourceAccountID);
    context.target = accountOf(act, input.targetAccountID);
    if (input.categoryID)
        context.category = CategoryRepository::find(act.connection, act.companyID, *input.categoryID);
    context.original = originalOf(act, input.originalTransactionID);
    if (const auto reference = refundReference(input); !reference.empty())
        context.referenceUsed = EntryRepository::isReferenceUsed(act.connection, act.companyID, reference);
    if (input.kind == EntryKind::opening && context.target)
        context.activeOpeningIDs =
            EntryRepository::activeOpeningIDs(act.connection, act.companyID, context.target->id, input.currency);
    context.attachments = attachmentsOf(act, input.attachmentIDs);
    return context;
}

ReversalContext contextOf(const Act& act, std::string_view originalID)
{
    ReversalContext context;
    context.entryID = Random::identifier();
    context.today = act.today;
    context.now = act.now;
    context.member = act.member;
    context.settings = CompanyRepository::settings(act.connection, act.companyID);
    context.original = EntryRepository::find(act.connection, act.companyID, originalID);
    if (context.original)
        context.accounts = accountsOf(act, *context.original);
    context.refundsExist = EntryRepository::hasOpenRefunds(act.connection, act.companyID, originalID);
    return context;
}

std::expected<LedgerTransaction, Refusal> apply(const Act& act, std::expected<EntryChange, Refusal> change)
{
    if (!change)
        return std::unexpected(std::move(change.error()));
    EntryRepository::append(act.connection, act.companyID, change->entry);
    for (const auto& each : change->balances)
        AccountRepository::writeBalance(act.connection, act.companyID, each.accountID, each.currency,
                                        each.balanceMinor);
    return std::move(change->entry);
}

}

std::expected<LedgerTransaction, Refusal> EntryCommands::post(const Act& act, const TransactionInput& input)
{
    return apply(act, decide(input, contextOf(act, input)));
}

std::expected<LedgerTransaction, Refusal> EntryCommands::reverse(const Act& act, std::string_view originalID,
                                                                 const Reversal& command)
{
    return apply(act, decide(command, contextOf(act, originalID)));
}

}
