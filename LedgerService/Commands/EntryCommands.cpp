#include "LedgerService/Commands/EntryCommands.h"

#include <algorithm>

#include "LedgerCore/Domain/Entries/EntryReference.h"
#include "LedgerCore/Domain/Imports/ImportRowIdentity.h"
#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerService/Books/PostingRows.h"
#include "LedgerService/Books/ReversalRows.h"
#include "LedgerService/Commands/NamedRows.h"
#include "LedgerService/Commands/TemplateCommands.h"
#include "LedgerService/Random.h"
#include "LedgerService/Storage/Rows/Companies/AccountRepository.h"
#include "LedgerService/Storage/Rows/Companies/CategoryRepository.h"
#include "LedgerService/Storage/Rows/Companies/CompanyRepository.h"
#include "LedgerService/Storage/Rows/Companies/DraftRepository.h"
#include "LedgerService/Storage/Rows/Entries/EntryRepository.h"

namespace LedgerService {

namespace {

using EntryCommands::Act;

std::optional<Account> accountOf(const Act& act, const std::optional<std::string>& id)
{
    return id ? AccountRepository::find(act.connection, act.companyID, *id) : std::nullopt;
}

std::optional<RefundOriginal> originalOf(const Act& act, const std::optional<std::string>& id)
{
    if (!id)
        return std::nullopt;
    auto entry = EntryRepository::find(act.connection, act.companyID, *id);
    if (!entry)
        return std::nullopt;
    auto accounts = NamedRows::accountsOf(act, *entry);
    return RefundOriginal{.entry = *std::move(entry),
                          .accounts = std::move(accounts),
                          .refunded = EntryRepository::refunded(act.connection, act.companyID, *id)};
}

PostingRows rowsOf(const Act& act, const TransactionInput& input)
{
    PostingRows rows;
    rows.entryID = Random::identifier();
    rows.today = act.today;
    rows.now = act.now;
    rows.member = act.member;
    rows.settings = CompanyRepository::settings(act.connection, act.companyID);
    rows.source = accountOf(act, input.sourceAccountID);
    rows.target = accountOf(act, input.targetAccountID);
    if (input.categoryID)
        rows.category = CategoryRepository::find(act.connection, act.companyID, *input.categoryID);
    rows.original = originalOf(act, input.originalTransactionID);
    if (const auto reference = EntryReference::of(input); !reference.empty())
        rows.referenceUsed =
            std::ranges::any_of(EntryRepository::accountsWithReference(act.connection, act.companyID, reference),
                                [&](const std::string& accountID) {
                                    return mayKnowOfReference(act.member, accountID, input.sourceAccountID);
                                });
    if (input.kind == EntryKind::opening && rows.target)
        rows.activeOpeningIDs =
            EntryRepository::activeOpeningIDs(act.connection, act.companyID, rows.target->id, input.currency);
    rows.attachments = NamedRows::attachmentsOf(act, input.attachmentIDs);
    return rows;
}

ReversalRows rowsOf(const Act& act, std::string_view originalID)
{
    ReversalRows rows;
    rows.entryID = Random::identifier();
    rows.today = act.today;
    rows.now = act.now;
    rows.member = act.member;
    rows.settings = CompanyRepository::settings(act.connection, act.companyID);
    rows.original = EntryRepository::find(act.connection, act.companyID, originalID);
    if (rows.original)
        rows.accounts = NamedRows::accountsOf(act, *rows.original);
    rows.refundsExist = EntryRepository::hasOpenRefunds(act.connection, act.companyID, originalID);
    return rows;
}

std::expected<LedgerTransaction, Refusal> apply(const Act& act, std::expected<EntryChange, Refusal> change)
{
    if (!change)
        return std::unexpected(std::move(change.error()));
    NamedRows::write(act, *change);
    return std::move(change->entry);
}

/// What the entry of a due day answers to a command that would record one for the day again.
std::expected<LedgerTransaction, Refusal> recordedBefore(const Act& act, std::string_view entryID,
                                                         const TransactionInput& input, const PostingRows& rows)
{
    auto recorded = EntryRepository::find(act.connection, act.companyID, entryID);
    if (!recorded || !isRecordOf(*recorded, input, rows))
        return std::unexpected(
            Refusal::of(ServiceCode::idempotencyConflict, "Another entry is recorded for this due day."));
    act.note.isRepetition = true;
    return *std::move(recorded);
}

}

std::expected<LedgerTransaction, Refusal> EntryCommands::post(const Act& act, const TransactionInput& input)
{
    auto rows = rowsOf(act, input);
    if (ImportRowIdentity::isIdentifier(input.idempotencyKey)) {
        auto recorded = EntryRepository::find(act.connection, act.companyID, input.idempotencyKey);
        if (recorded && isRecordOf(*recorded, input, rows)) {
            act.note.isRepetition = true;
            return *std::move(recorded);
        }
        if (!recorded)
            rows.entryID = input.idempotencyKey;
    }
    const auto due = TemplateCommands::dueDay(act, input.idempotencyKey);
    if (due && due->settled && due->settled->entryID) {
        auto recorded = recordedBefore(act, *due->settled->entryID, input, rows);
        if (recorded)
            DraftRepository::remove(act.connection, {act.companyID, act.member.id}, input.idempotencyKey);
        return recorded;
    }
    auto posted = apply(act, decide(input, rows));
    if (posted)
        DraftRepository::remove(act.connection, {act.companyID, act.member.id}, input.idempotencyKey);
    if (posted && due && due->maySettle)
        TemplateCommands::keepRecorded(act, due->occurrence, *posted);
    return posted;
}

std::optional<std::string> EntryCommands::standingFor(const Act& act, const TransactionInput& input)
{
    const auto due = TemplateCommands::dueDay(act, input.idempotencyKey);
    if (!due || !due->settled || !due->settled->entryID)
        return std::nullopt;
    const auto recorded = recordedBefore(act, *due->settled->entryID, input, rowsOf(act, input));
    return recorded ? due->settled->entryID : std::nullopt;
}

std::expected<LedgerTransaction, Refusal> EntryCommands::reverse(const Act& act, std::string_view originalID,
                                                                 const Reversal& command)
{
    return apply(act, decide(command, rowsOf(act, originalID)));
}

}
