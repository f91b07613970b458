#include <array>
#include <chrono>
#include <stdexcept>

#include <fmt/core.h>

#include "LedgerCore/Domain/Entries/Posting/ReceiptRules.h"
#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerService/Access/ReceiptAccess.h"
#include "LedgerService/Books/BookRefusal.h"
#include "LedgerService/Commands/ReceiptCommands.h"
#include "LedgerService/Http/Routes/ActOf.h"
#include "LedgerService/Http/Routes/RouteFamilies.h"
#include "LedgerService/Http/Routes/RouteKit.h"
#include "LedgerService/Identity/Token.h"
#include "LedgerService/Log.h"
#include "LedgerService/Receipts/ReceivedReceipt.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Rows/Entries/ReceiptSpace.h"
#include "LedgerService/Storage/Rows/People/SessionRepository.h"
#include "LedgerService/Storage/Sql/Anew.h"
#include "LedgerService/Storage/Sql/Transaction.h"

namespace LedgerService {

namespace {

/// A folder that is gone while receipts are in it was on a disk that is gone. It is not made anew: what came into that
/// one would be missing once the disk is back.
std::optional<Refusal> whyNoFolder(Connection& connection, const ReceiptFolder& folder)
{
    if (folder.isThere() || !ReceiptSpace::isUsed(connection))
        return std::nullopt;
    Log::failure("(receipts)", fmt::format("the folder {} is missing", folder.path().string()));
    return Refusal::of(ServiceCode::serviceUnavailable, "The place where receipts are kept is missing; try again.",
                       std::chrono::minutes{1});
}

/// What is known before the file is written.
std::optional<Refusal> whyNotTake(const OpenCall& opened, std::size_t bytes)
{
    const auto loan = opened.service.database.borrow();
    return Anew::onConflict([&]() -> std::optional<Refusal> {
        const Transaction transaction{*loan, Transaction::Mode::reading};
        const auto owner = SessionRepository::find(*loan, Token::hash(opened.request.token), opened.now);
        if (!owner)
            return Authentication::unauthorized();
        if (auto refusal = whyNoFolder(*loan, opened.service.receipts))
            return refusal;
        return ReceiptCommands::whyNotTake(*loan, *owner, opened.service.receipts.room(),
                                           static_cast<std::int64_t>(bytes));
    });
}

/// The file is on the disk before anybody waits for the database: a row never names a file that is not there.
Prepared upload(const OpenCall& opened)
{
    const auto received = ReceivedReceipt::from(std::exchange(opened.request.body, {}));
    if (!received)
        return std::unexpected(received.error());
    if (auto refusal = whyNotTake(opened, received->content().size()))
        return std::unexpected(*std::move(refusal));
    auto digest = opened.service.receipts.keep(received->content());
    if (!digest)
        return std::unexpected(std::move(digest.error()));
    Attachment receipt;
    receipt.name = received->name();
    receipt.mime = received->mediaType();
    receipt.byteCount = static_cast<std::int64_t>(received->content().size());
    return [receipt = std::move(receipt), digest = *std::move(digest)](const MemberCall& call) -> Outcome {
        const auto added = ReceiptCommands::add(actOf(call), call.service.receipts, receipt, digest);
        if (!added)
            return std::unexpected(added.error());
        call.note.record = added->id;
        call.note.after = Json::encode(*added);
        return Reply{.body = Json::encode(*added)};
    };
}

std::optional<Refusal> whyNotShaped(const AttachmentLink& body)
{
    const auto refused = ReceiptRules::whyNotShaped(body.attachmentIDs);
    return refused ? std::optional{BookRefusal::of(*refused)} : std::nullopt;
}

std::expected<NewSnapshot, Refusal> link(const MemberCall& call, const AttachmentLink& body)
{
    const auto linked = ReceiptCommands::link(actOf(call), call.parameters.front(), body.attachmentIDs);
    if (!linked)
        return std::unexpected(linked.error());
    call.note.isRepetition = *linked == ReceiptCommands::Linked::before;
    return NewSnapshot{};
}

Outcome sendContent(const MemberCall& call)
{
    const auto receipt = ReceiptAccess::find(call.connection, call.companyID, call.member, call.parameters.front());
    if (!receipt)
        return std::unexpected(Refusal::of(ServiceCode::notFound, "There is no such receipt."));
    if (!receipt->contentDigest)
        throw std::runtime_error("a receipt has no file");
    auto blocks = call.service.receipts.read(*receipt->contentDigest, receipt->attachment.byteCount);
    auto first = blocks();
    return Reply{.body = std::move(first),
                 .headers = {{"Content-Disposition", "attachment"}},
                 .more = std::move(blocks),
                 .contentType = receipt->attachment.mime};
}

Prepared download(const OpenCall&)
{
    return sendContent;
}

constexpr std::array routes{
    Route{"POST", "/v1/attachments", Writing{upload}, Lane::files, ReceivedReceipt::maximumBody},
    Route{"GET", "/v1/attachments/{id}", Reading{download}},
    Route{"POST", "/v1/transactions/{id}/attachments", writing<&link, &whyNotShaped>},
};

}

std::span<const Route> RouteFamilies::attachments()
{
    return routes;
}

}
