#include "LedgerService/Access/SnapshotReader.h"

#include <algorithm>
#include <memory>
#include <utility>

#include <fmt/core.h>

#include "LedgerCore/Domain/Access/LedgerEntryAccess.h"
#include "LedgerCore/Domain/Access/MemberRights.h"
#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerService/Access/SnapshotBlocks.h"
#include "LedgerService/Access/SnapshotTag.h"
#include "LedgerService/Access/Visibility.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Rows/Companies/AccountRepository.h"
#include "LedgerService/Storage/Rows/Companies/CategoryRepository.h"
#include "LedgerService/Storage/Rows/Companies/CompanyRepository.h"
#include "LedgerService/Storage/Rows/People/MemberRepository.h"
#include "LedgerService/Storage/Rows/Sections/KnownSections.h"
#include "LedgerService/Storage/Sql/Transaction.h"

namespace LedgerService {

namespace {

using Kind = SnapshotAnswer::Kind;

/// A delta of more changes is no quicker than the whole, and would be held in memory.
constexpr std::int64_t mostChangesOfDelta = 2'000;

/// Everything of a snapshot but its entries and receipts.
LedgerSnapshot smallParts(Connection& connection, KnownSections& sections, std::string_view companyID, Member reader)
{
    LedgerSnapshot snapshot;
    snapshot.company = promised(CompanyRepository::find(connection, companyID), "a member's company exists");
    snapshot.members = Visibility::members(MemberRepository::all(connection, companyID), reader);
    auto accounts = AccountRepository::all(connection, companyID);
    snapshot.transferDestinations = LedgerEntryAccess::transferDestinations(accounts, reader);
    snapshot.accounts = Visibility::accounts(std::move(accounts), reader);
    snapshot.categories = CategoryRepository::all(connection, companyID);
    snapshot.financialSettings = CompanyRepository::settings(connection, companyID);
    if (MemberRights::canSeeDividends(reader))
        snapshot.dividends = *sections.dividends.committed(connection, companyID);
    if (MemberRights::canSeeCapital(reader))
        snapshot.capital = *sections.capital.committed(connection, companyID);
    snapshot.currentMember = std::move(reader);
    return snapshot;
}

/// The text of a snapshot around its two long lists.
struct Frame {
    std::string head; // up to the opening bracket of the entries
    std::string tail; // from the closing bracket of the receipts on

    explicit Frame(const LedgerSnapshot& small)
    {
        constexpr std::string_view entries = R"("transactions":[)";
        constexpr std::string_view lists = R"("transactions":[],"attachments":[])";
        const auto text = Json::encode(small);
        const auto at = text.find(lists); // inside a text its quotation marks would be escaped
        require(at != std::string::npos, "the lists of a snapshot stand side by side");
        head = text.substr(0, at + entries.size());
        tail = text.substr(at + lists.size() - 1);
    }
};

SnapshotScope scopeOf(Connection& connection, std::string_view companyID, const CompanyState& state,
                      const LedgerSnapshot& small)
{
    return {.companyID = std::string{companyID},
            .memberID = small.currentMember.id,
            .state = state,
            .sets = {AccountSetRepository::all(connection, companyID), small.accounts},
            .disclosure = EntryDisclosure{small.currentMember}};
}

SnapshotAnswer wholeOf(Database& database, SnapshotScope scope, Frame frame)
{
    const auto heldBytes = frame.tail.size();
    auto blocks = std::make_shared<SnapshotBlocks>(database, std::move(scope), std::move(frame.tail));
    return {.kind = Kind::whole,
            .tag = {},
            .base = {},
            .text = std::move(frame.head),
            .more = [blocks] { return blocks->next(); },
            .heldBytes = heldBytes};
}

void addEntriesSince(Connection& connection, const SnapshotScope& scope, std::int64_t change, std::string& text)
{
    bool any = false;
    JsonElements elements{text, any};
    const auto add = [&](const EntryFragment& fragment) {
        if (scope.sets.contains(fragment.accountSet))
            elements.add(fragment.text, scope.disclosure);
        return true;
    };
    for (const auto sequence : FragmentRepository::renewedSince(connection, scope.companyID, change))
        FragmentRepository::visit(connection, scope.state, sequence - 1, sequence, 1, add);
    FragmentRepository::visit(connection, scope.state, change, scope.state.lastChange,
                              static_cast<int>(mostChangesOfDelta), add);
}

void addReceiptsSince(Connection& connection, const SnapshotScope& scope, std::int64_t change, std::string& text)
{
    bool any = false;
    JsonElements elements{text, any};
    const auto view = scope.receiptsAfter(change, scope.state.lastChange);
    for (const auto& each : AttachmentRepository::linkedIn(connection, view))
        elements.add(each);
    for (const auto& each : AttachmentRepository::seenIn(connection, view))
        elements.add(each);
}

SnapshotAnswer deltaOf(Connection& connection, const SnapshotScope& scope, const SnapshotTag& base, const Frame& frame)
{
    auto text = frame.head;
    addEntriesSince(connection, scope, base.change(), text);
    text += R"(],"attachments":[)";
    addReceiptsSince(connection, scope, base.change(), text);
    text += frame.tail;
    text.pop_back(); // its closing brace
    const auto loose = AttachmentRepository::looseCount(connection, scope.companyID, scope.memberID);
    text += fmt::format(R"(,"entryCount":{},"attachmentCount":{}}})", scope.sets.entryCount(),
                        scope.sets.receiptCount() + loose);
    return {.kind = Kind::delta, .tag = {}, .base = base.text(), .text = std::move(text), .more = {}};
}

/// The latest of the client's states that a delta can build on.
std::optional<SnapshotTag> baseOf(Connection& connection, std::string_view companyID, const Member& reader,
                                  const CompanyState& state, const SnapshotAsked& asked)
{
    std::optional<SnapshotTag> base;
    for (const auto& text : asked.held) {
        const auto tag = SnapshotTag::earlier(connection, companyID, reader, state, text);
        if (tag && state.lastChange - tag->change() <= mostChangesOfDelta && (!base || tag->change() > base->change()))
            base = tag;
    }
    return base;
}

}

std::optional<SnapshotAnswer> SnapshotReader::answer(Database& database, std::string_view companyID,
                                                     std::string_view memberID, const SnapshotAsked& asked)
{
    const auto loan = database.borrow();
    const Transaction transaction{*loan, Transaction::Mode::reading};
    auto reader = MemberRepository::find(*loan, companyID, memberID);
    const auto state = CompanyHistory::state(*loan, companyID);
    if (!reader || !state)
        return std::nullopt;
    auto tag = SnapshotTag::current(*loan, companyID, *reader, *state).text();
    if (std::ranges::find(asked.held, tag) != asked.held.end())
        return SnapshotAnswer{.kind = Kind::unchanged, .tag = std::move(tag), .base = {}, .text = {}, .more = {}};
    const auto base = asked.delta ? baseOf(*loan, companyID, *reader, *state, asked) : std::nullopt;
    const auto small = smallParts(*loan, database.sections(), companyID, *std::move(reader));
    auto scope = scopeOf(*loan, companyID, *state, small);
    Frame frame{small};
    auto answer = base ? deltaOf(*loan, scope, *base, frame) : wholeOf(database, std::move(scope), std::move(frame));
    answer.tag = std::move(tag);
    return answer;
}

}
