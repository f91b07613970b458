#include "LedgerUI/Presentation/Exports/LedgerExportForm.h"

#include <gtest/gtest.h>

#include "LedgerCore/Domain/testing/SnapshotBuilder.h"
#include "LedgerUI/Presentation/Ledger/LedgerBook.h"

namespace {

struct Days {
    std::string first;
    std::string last;

    bool operator==(const Days&) const = default;
};

void PrintTo(const Days& days, std::ostream* out)
{
    *out << days.first << " to " << days.last;
}

/// The days of a form that is opened on all time.
Days allTime(const SnapshotPointer& shown, LedgerBookPointer book, const std::string& today)
{
    const auto form = LedgerExport::opened({.filter = {}, .book = std::move(book), .today = today}, *shown);
    return {form.firstDay, form.lastDay};
}

TEST(LedgerExportForm, OpensAllTimeFromTheFirstEntryToTheLastOrToday)
{
    auto builder = snapshot().account("bank", {"USD"}).grantAll();
    const auto empty = std::make_shared<const LedgerSnapshot>(builder.build());
    builder.income("b", "2026-03-02", "bank", "USD", 1).income("a", "2025-12-31", "bank", "USD", 1);
    builder.income("c", "2026-11-21", "bank", "USD", 1);
    const auto filled = std::make_shared<const LedgerSnapshot>(builder.build());
    auto damaged = builder.build();
    damaged.transactions.push_back(damaged.transactions.front());
    damaged.transactions.back().date = "1 March";
    const auto undated = std::make_shared<const LedgerSnapshot>(std::move(damaged));

    for (const auto& shown : {empty, filled, undated}) {
        const auto book = std::make_shared<const LedgerBook>(shown, "en-US");
        for (const auto* today : {"2026-11-20", "2026-11-22"})
            EXPECT_EQ(allTime(shown, book, today), allTime(shown, nullptr, today));
    }
    const auto book = std::make_shared<const LedgerBook>(filled, "en-US");
    EXPECT_EQ(allTime(filled, book, "2026-11-20"), (Days{"2025-12-31", "2026-11-21"}));
    EXPECT_EQ(allTime(filled, book, "2026-11-22"), (Days{"2025-12-31", "2026-11-22"}));
    EXPECT_EQ(allTime(empty, book, "2026-11-20"), (Days{"2026-11-20", "2026-11-20"})) << "the book is of other entries";
}

}
