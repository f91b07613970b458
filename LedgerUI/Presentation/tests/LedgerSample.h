#pragma once

#include "LedgerCore/Domain/testing/SnapshotBuilder.h"
#include "LedgerUI/Presentation/Ledger/LedgerBook.h"

/// A small trading company's books with one entry of every kind, seen by its owner on 20 November 2026.
inline SnapshotBuilder sampleLedger()
{
    auto books = snapshot();
    books.member(SnapshotBuilder::person("m2", "Nguyễn Thị Hương"));
    books.account("Operating bank", {"USD", "IDR"}).account("Singapore", {"USD", "SGD"});
    books.employeeAccount("Rizky float", {"USD"}, "m2").grantAll();
    books.category("utilities", "expense", "Utilities").category("power", "expense", "Electricity", "utilities");
    books.category("sales", "income", "Sales");

    books.entry("o1", EntryKind::opening, "2026-09-01", {{"Operating bank", "USD", 1000000}});
    books.income("i1", "2026-10-31", "Operating bank", "USD", 250000, "sales").note("INV-048 Cahaya Abadi");
    books.expense("e1", "2026-11-02", "Operating bank", "USD", 43850, "power").note("Điện văn phòng");
    books.expense("e2", "2026-11-02", "Operating bank", "IDR", 438520000, "utilities").note("Listrik kantor");
    books.transfer("t1", "2026-11-05", "Operating bank", "Rizky float", "USD", 5000, "funding");
    books.entry("x1", EntryKind::exchange, "2026-11-06",
                {{"Singapore", "USD", -1200000}, {"Singapore", "SGD", 1607400}});

    LedgerTransaction refund;
    refund.id = "r1";
    refund.kind = EntryKind::refund;
    refund.date = "2026-11-07";
    refund.createdAt = "2026-11-07T03:00:00Z";
    refund.memberID = "m2";
    refund.originalTransactionID = "i1";
    refund.externalReference = "RF-77";
    refund.legs = {{"Operating bank", "USD", -20000}};
    books.entry(refund);

    auto wrong = refund;
    wrong.id = "e3";
    wrong.kind = EntryKind::expense;
    wrong.date = "2026-11-09";
    wrong.createdAt = "2026-11-09T09:00:00Z";
    wrong.categoryID = "power";
    wrong.attachmentIDs = {"a1", "a2"};
    wrong.originalTransactionID.reset();
    wrong.externalReference.reset();
    wrong.legs = {{"Operating bank", "USD", -9900}};
    wrong.reversedBy = "v1";
    books.entry(wrong);

    auto undo = wrong;
    undo.id = "v1";
    undo.kind = EntryKind::reversal;
    undo.createdAt = "2026-11-09T10:00:00Z";
    undo.note = "Typed twice";
    undo.attachmentIDs = {};
    undo.legs = {{"Operating bank", "USD", 9900}};
    undo.reversedBy.reset();
    undo.reversalOf = "e3";
    books.entry(undo);
    return books;
}

inline constexpr std::chrono::year_month_day sampleToday{std::chrono::year{2026}, std::chrono::November,
                                                         std::chrono::day{20}};

inline LedgerBook bookOf(const SnapshotBuilder& books, std::string locale = "en-US")
{
    return LedgerBook{books.share(), std::move(locale)};
}

/// The identifiers of these entries, in their order.
inline std::string idsOf(const LedgerBook& book, const std::vector<std::uint32_t>& rows)
{
    std::string ids;
    for (const auto at : rows)
        ids += (ids.empty() ? "" : " ") + book.transaction(at).id;
    return ids;
}
