#include "LedgerUI/Presentation/Ledger/LedgerBook.h"

#include <algorithm>
#include <functional>
#include <random>

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "LedgerUI/Presentation/tests/LedgerSample.h"

namespace {

std::string keysOf(const LedgerKeys& keys)
{
    std::vector<std::string> all;
    for (std::uint32_t each = 0; each < keys.size(); ++each)
        all.push_back(keys.id(each) + "=" + keys.shown(each) + "=" + keys.folded(each));
    std::ranges::sort(all);
    return fmt::format("{}", fmt::join(all, ","));
}

/// Everything that a book tells, whatever the numbers are that it tells it by.
std::string dump(const LedgerBook& book)
{
    std::string text;
    for (const auto at : book.order()) {
        const auto& entry = book.entry(at);
        const auto category = entry.category == LedgerBook::none ? "" : book.categories().id(entry.category);
        text += fmt::format("{} {} {} {} {} {} {}{}{} [{}]", book.transaction(at).id, entry.day,
                            book.kinds().id(entry.kind), book.titles().id(entry.title), category,
                            book.members().id(entry.member), entry.hasReceipts, entry.isReversal, entry.isInternal,
                            book.text(at));
        for (const auto& leg : book.legs(at))
            text += fmt::format(" {} {} {}", book.accounts().id(leg.account), book.currencies().id(leg.currency),
                                leg.amountMinor);
        for (const auto refund : book.refundsOf(book.transaction(at).id))
            text += " refunded by " + book.transaction(refund).id;
        text += fmt::format(" {}\n", book.find(book.transaction(at).id) == at);
    }
    for (const auto* keys :
         {&book.kinds(), &book.titles(), &book.categories(), &book.accounts(), &book.members(), &book.currencies()})
        text += keysOf(*keys) + "\n";
    const auto month = Period::containing(Period::Span::month, sampleToday);
    return text + fmt::format("{} {}", book.counts().all(), book.counts().in(month));
}

/// The list without sharing anything with what it was.
void rearrange(EntryList& entries, const std::function<void(std::vector<LedgerTransaction>&)>& change)
{
    auto all = entries.toVector();
    change(all);
    entries = all;
}

/// One thing that may have happened to the books since the last look at them.
void happen(LedgerSnapshot& books, std::mt19937& random, int step)
{
    auto& entries = books.transactions;
    const auto any = [&](std::size_t count) { return random() % std::max<std::size_t>(count, 1); };
    const auto place = any(entries.size());
    auto fresh = entries[place];
    fresh.id = "n" + std::to_string(step);
    fresh.reversedBy.reset();
    fresh.date = fmt::format("2026-{:02}-{:02}", 9 + any(3), 1 + any(28));
    switch (any(20)) {
    case 0:
        rearrange(entries, [&](auto& all) { all.erase(all.begin() + static_cast<std::ptrdiff_t>(place)); });
        break;
    case 1:
        rearrange(entries, [&](auto& all) { std::swap(all[place], all[any(all.size())]); });
        break;
    case 2:
        entries[place].categoryID = any(2) ? std::optional<std::string>{"sales"} : std::nullopt;
        break;
    case 3:
        books.accounts[any(books.accounts.size())].name += "!";
        break;
    case 4:
        rearrange(entries, [&](auto& all) { all.insert(all.begin() + static_cast<std::ptrdiff_t>(place), fresh); });
        break;
    case 5:
    case 6:
        entries[place].attachmentIDs.push_back(fresh.id);
        break;
    case 7:
        fresh.kind = EntryKind::refund;
        fresh.originalTransactionID = any(3) ? entries[any(entries.size())].id : "n" + std::to_string(step + 2);
        entries.push_back(fresh);
        break;
    case 8:
    case 9:
        entries[place].reversedBy = fresh.id;
        fresh.kind = EntryKind::reversal;
        fresh.reversalOf = any(3) ? entries[place].id : "n" + std::to_string(step + 2);
        entries.push_back(fresh);
        break;
    default:
        fresh.legs.front().amountMinor += static_cast<std::int64_t>(any(1000));
        entries.push_back(fresh);
    }
}

class LedgerBookMadeAfterAnother : public testing::TestWithParam<int> {};

TEST_P(LedgerBookMadeAfterAnother, SaysAllThatOneMadeFromTheSnapshotAloneSays)
{
    std::mt19937 random{20261121};
    auto sample = sampleLedger();
    for (int each = 0; each < GetParam(); ++each)
        sample.income(fmt::format("s{}", each), "2026-10-10", "Singapore", "USD", each);
    auto books = sample.build();
    int goneOn = 0;
    auto before = std::make_shared<const LedgerBook>(std::make_shared<const LedgerSnapshot>(books), "en-US");
    for (int step = 0; step < 400; ++step) {
        for (auto things = random() % 3; things > 0 && !books.transactions.empty(); --things)
            happen(books, random, step * 3 + static_cast<int>(things));
        const auto snapshot = std::make_shared<const LedgerSnapshot>(books);
        const std::string locale = step % 50 == 49 ? "vi-VN" : "en-US";
        const auto after = std::make_shared<const LedgerBook>(snapshot, locale, before.get());
        ASSERT_EQ(dump(*after), dump(LedgerBook{snapshot, locale})) << "in step " << step;
        if (after->keepsPlacesOf(*before)) {
            ++goneOn;
            for (std::uint32_t at = 0; at < before->size(); ++at)
                ASSERT_EQ(after->transaction(at).id, before->transaction(at).id) << "in step " << step;
        }
        before = after;
    }
    EXPECT_GT(goneOn, 200) << "most snapshots only add to the one before";
}

INSTANTIATE_TEST_SUITE_P(Sizes, LedgerBookMadeAfterAnother, testing::Values(0, 600)); // within a block, and beyond

}
