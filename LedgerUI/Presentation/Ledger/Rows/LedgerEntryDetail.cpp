#include "LedgerUI/Presentation/Ledger/Rows/LedgerEntryDetail.h"

#include <algorithm>

#include <QStringList>

#include "LedgerCore/Domain/Entries/EntryLimits.h"
#include "LedgerCore/Domain/Entries/EntryStanding.h"
#include "LedgerCore/Domain/Entries/ExchangeSides.h"
#include "LedgerCore/Domain/Entries/Posting/ReceiptRules.h"
#include "LedgerCore/Domain/Entries/Reversals/ReversalRules.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerCore/Domain/Settings/FinancialFeaturePolicy.h"
#include "LedgerUI/Presentation/Text/Values/ByteText.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Values/MoneyText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

using ReversalRules::Refusal;
using Detail = LedgerEntryDetail;

/// The rate that the two amounts of an exchange imply; empty for every other entry.
QString rateOf(const LedgerTransaction& transaction, std::string_view locale)
{
    if (transaction.kind != EntryKind::exchange || transaction.legs.size() != 2)
        return {};
    const bool givesFirst = transaction.legs.front().amountMinor < 0;
    const auto& given = givesFirst ? transaction.legs.front() : transaction.legs.back();
    const auto& received = givesFirst ? transaction.legs.back() : transaction.legs.front();
    const auto rate = rateText(-given.amountMinor, given.currency, received.amountMinor, received.currency, locale);
    return wordIn(locale, ledgerWords(), "detail.rateOf", {given.currency, rate.toStdString()});
}

/// The exchange of these two currencies that stood last when this one was recorded.
std::optional<ExchangeSides> exchangeBefore(const LedgerBook& book, std::uint32_t at, std::string_view from,
                                            std::string_view to)
{
    bool isEarlier = false; // the book's order begins with the newest entry
    for (const auto each : book.order()) {
        const auto& entry = book.transaction(each);
        if (isEarlier && entry.kind == EntryKind::exchange && EntryStanding::isInForce(entry)) {
            if (auto sides = ExchangeSides::of(entry, from, to))
                return sides;
        }
        isEarlier = isEarlier || each == at;
    }
    return std::nullopt;
}

/// Says when the amounts of an exchange imply a rate far from that of the one before.
QString cautionOf(const LedgerBook& book, std::uint32_t at)
{
    const auto& entry = book.transaction(at);
    if (entry.kind != EntryKind::exchange || !EntryStanding::isInForce(entry) || entry.legs.size() != 2)
        return {};
    const auto& given = entry.legs.front().amountMinor < 0 ? entry.legs.front() : entry.legs.back();
    const auto& received = &given == &entry.legs.front() ? entry.legs.back() : entry.legs.front();
    const auto before = exchangeBefore(book, at, given.currency, received.currency);
    if (!before || !isFarFrom(*before, -given.amountMinor, received.amountMinor))
        return {};
    const auto& locale = book.locale();
    const auto rate = rateText(before->fromMinor, given.currency, before->toMinor, received.currency, locale);
    return wordIn(locale, ledgerWords(), "detail.rateFar",
                  {rate.toStdString(), DayText::longDay(before->day, locale).toStdString()});
}

std::vector<Detail::Line> linesOf(const LedgerBook& book, const LedgerTransaction& transaction)
{
    const auto& locale = book.locale();
    std::vector<Detail::Line> lines;
    const auto add = [&](std::string_view key, const QString& value) {
        if (!value.isEmpty())
            lines.push_back({wordIn(locale, ledgerWords(), key), value});
    };
    add("detail.date", DayText::weekdayAndDay(transaction.date, locale));
    add("detail.recorded", DayText::moment(transaction.createdAt, locale));
    add("detail.member", QString::fromStdString(book.names().member(transaction.memberID)));
    add("detail.note", QString::fromStdString(transaction.note));
    add("detail.reference", qString(transaction.externalReference.value_or(std::string{})));
    add("detail.rate", rateOf(transaction, locale));
    add("detail.participant", qString(transaction.participantName.value_or(std::string{})));
    return lines;
}

std::vector<Detail::Leg> legsOf(const LedgerBook& book, std::uint32_t at)
{
    std::vector<Detail::Leg> legs;
    for (const auto& leg : book.legs(at)) {
        const auto& currency = book.currencies().id(leg.currency);
        std::optional<MoneyText> after;
        if (const auto balance = balanceAfter(book, at, leg))
            after = balanceText(*balance, currency, book.locale());
        legs.push_back({QString::fromStdString(book.names().account(book.accounts().id(leg.account))),
                        movementText(leg.amountMinor, currency, book.locale()), after});
    }
    return legs;
}

Detail::Link link(const LedgerBook& book, std::string_view key, const std::string& target)
{
    const auto& locale = book.locale();
    const auto at = book.find(target);
    if (at == LedgerBook::none)
        return {wordIn(locale, ledgerWords(), key), wordIn(locale, ledgerWords(), "link.hidden"), {}};
    QStringList parts{DayText::shortDate(book.transaction(at).date, locale),
                      QString::fromStdString(book.titles().id(book.entry(at).title))};
    for (const auto& amount : amountsOf(book, at))
        parts << amount.text();
    return {wordIn(locale, ledgerWords(), key), parts.join(QStringLiteral(" · ")), target};
}

std::vector<Detail::Link> linksOf(const LedgerBook& book, const LedgerTransaction& transaction)
{
    std::vector<Detail::Link> links;
    if (transaction.reversedBy)
        links.push_back(link(book, "link.reversedBy", *transaction.reversedBy));
    if (transaction.reversalOf)
        links.push_back(link(book, "link.reverses", *transaction.reversalOf));
    if (transaction.originalTransactionID)
        links.push_back(link(book, "link.refunds", *transaction.originalTransactionID));
    for (const auto refund : book.refundsOf(transaction.id))
        links.push_back(link(book, "link.refundedBy", book.transaction(refund).id));
    return links;
}

std::vector<Detail::Receipt> receiptsOf(const LedgerBook& book, const LedgerTransaction& transaction)
{
    std::vector<Detail::Receipt> receipts;
    const auto& attachments = book.snapshot().attachments;
    for (const auto& id : transaction.attachmentIDs) {
        const auto found = std::ranges::find(attachments, id, &Attachment::id);
        if (found != attachments.end())
            receipts.push_back({id, QString::fromStdString(found->name), byteText(found->byteCount, book.locale()),
                                found->mime.starts_with("image/")});
    }
    return receipts;
}

/// What keeps the member from undoing the entry, as far as these books tell.
std::optional<Refusal> whyNotReverse(const LedgerBook& book, const LedgerTransaction& transaction)
{
    const bool hasRefunds = std::ranges::any_of(
        book.refundsOf(transaction.id), [&](std::uint32_t refund) { return !book.transaction(refund).reversedBy; });
    return ReversalRules::whyNot(ReversalRules::contextOf(transaction, book.snapshot(), hasRefunds, {}));
}

/// Without the right nothing is said: the member has no use for an action that is somebody else's.
bool isSaid(Refusal refusal)
{
    return refusal != Refusal::notPermitted && refusal != Refusal::notFound && refusal != Refusal::inactiveMember;
}

void addCorrection(Detail& detail, const LedgerBook& book, const LedgerTransaction& transaction)
{
    const auto refusal = whyNotReverse(book, transaction);
    detail.offersReversal = !refusal;
    if (refusal && isSaid(*refusal))
        detail.correction = qString(ReversalRules::text(*refusal, book.locale()));
}

/// Where the contribution or the movement of dividends stands that the entry books, while its page is shown.
std::optional<PageLink> recordOf(const LedgerTransaction& transaction, const LedgerSnapshot& snapshot)
{
    if (!FinancialFeaturePolicy::isListedInSidebar(snapshot))
        return std::nullopt;
    const auto link = [](const char* action, const std::string& id) {
        return PageLink{.page = WorkspacePage::dividends, .action = action, .subject = id};
    };
    if (transaction.capitalContributionID)
        return link(PageAction::showContribution, *transaction.capitalContributionID);
    if (transaction.dividendMovementID)
        return link(PageAction::showMovement, *transaction.dividendMovementID);
    return std::nullopt;
}

}

LedgerEntryDetail detailOf(const LedgerBook& book, std::uint32_t at)
{
    const auto& transaction = book.transaction(at);
    Detail detail;
    detail.id = transaction.id;
    detail.kind = book.kinds().id(book.entry(at).kind);
    detail.kindTitle = QString::fromStdString(book.names().kind(transaction));
    if (transaction.categoryID)
        detail.title = QString::fromStdString(book.names().category(*transaction.categoryID));
    detail.isReversed = transaction.reversedBy.has_value();
    detail.amounts = amountsOf(book, at);
    detail.lines = linesOf(book, transaction);
    detail.caution = cautionOf(book, at);
    detail.legs = legsOf(book, at);
    detail.links = linksOf(book, transaction);
    detail.receipts = receiptsOf(book, transaction);
    detail.takesReceipts = transaction.attachmentIDs.size() < EntryLimits::receipts &&
                           ReceiptRules::mayLink(transaction, book.snapshot().currentMember);
    addCorrection(detail, book, transaction);
    detail.record = recordOf(transaction, book.snapshot());
    return detail;
}

std::optional<std::int64_t> balanceAfter(const LedgerBook& book, std::uint32_t at, const LedgerBook::Leg& leg)
{
    const auto* account = book.snapshot().account(book.accounts().id(leg.account));
    if (!account)
        return std::nullopt;
    std::optional<std::int64_t> until = 0;
    std::optional<std::int64_t> all = 0;
    bool isLater = true; // the book's order begins with the newest entry
    for (const auto each : book.order()) {
        isLater = isLater && each != at;
        for (const auto& other : book.legs(each)) {
            if (other.account != leg.account || other.currency != leg.currency)
                continue;
            all = all ? Money::add(*all, other.amountMinor) : all;
            if (!isLater)
                until = until ? Money::add(*until, other.amountMinor) : until;
        }
    }
    const bool isComplete = all == account->balance(book.currencies().id(leg.currency));
    return isComplete ? until : std::nullopt;
}
