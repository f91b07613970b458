#include <array>
#include <stdexcept>

#include "LedgerCore/Domain/Entries/Posting/PostingShape.h"
#include "LedgerCore/Domain/Records/Requests/TransactionInput.h"
#include "LedgerService/Books/BookRefusal.h"
#include "LedgerService/Commands/EntryCommands.h"
#include "LedgerService/Http/Routes/ActOf.h"
#include "LedgerService/Http/Routes/RouteFamilies.h"
#include "LedgerService/Http/Routes/RouteKit.h"
#include "LedgerService/Storage/Rows/Entries/EntryRepository.h"

namespace LedgerService {

/// Replied as the recorded entry alone, so that the reply does not grow with the ledger. Of the entry only the id is
/// kept: what was recorded stands in the books.
template <>
struct Answer<LedgerTransaction> {
    static constexpr std::string_view mark = "entry:";

    static Outcome reply(const MemberCall&, const LedgerTransaction& entry)
    {
        return Reply{.body = Json::encode(entry)};
    }
    static std::string kept(const LedgerTransaction& entry) { return std::string{mark} + entry.id; }
    static Outcome repeated(const MemberCall& call, std::string_view kept)
    {
        if (!kept.starts_with(mark))
            throw std::runtime_error("the outcome of a recorded entry names none");
        const auto id = kept.substr(mark.size());
        return Reply{.body = EntryRepository::textAsRecorded(call.connection, call.companyID, id)};
    }
};

template <>
std::string commandName<TransactionInput>(const MemberCall&)
{
    return "entry";
}

template <>
inline constexpr bool isToldByEntries<TransactionInput> = true;
template <>
inline constexpr bool isToldByEntries<Reversal> = true;

template <>
std::string commandName<Reversal>(const MemberCall& call)
{
    return "reversal\n" + call.parameters.front();
}

namespace {

std::optional<Refusal> whyNotShaped(const TransactionInput& input)
{
    std::vector<PostingRefusal> refusals;
    PostingShape::judge(input, refusals);
    return refusals.empty() ? std::nullopt : std::optional{BookRefusal::of(refusals.front().reason)};
}

std::expected<LedgerTransaction, Refusal> post(const MemberCall& call, const TransactionInput& input)
{
    return EntryCommands::post(actOf(call), input);
}

std::expected<NewSnapshot, Refusal> reverse(const MemberCall& call, const Reversal& command)
{
    const auto reversal = EntryCommands::reverse(actOf(call), call.parameters.front(), command);
    if (!reversal)
        return std::unexpected(reversal.error());
    return NewSnapshot{};
}

constexpr std::array routes{
    Route{"POST", "/v1/transactions", writing<&post, &whyNotShaped>},
    Route{"POST", "/v1/transactions/{id}/reverse", writing<&reverse>},
};

}

std::span<const Route> RouteFamilies::transactions()
{
    return routes;
}

}
