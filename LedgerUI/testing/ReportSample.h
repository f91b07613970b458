#pragma once

#include "LedgerCore/Domain/testing/SnapshotBuilder.h"

/// A trading company's year up to 20 November 2026 with something of every report in it: three currencies, parents and
/// children among the categories, transfers, exchanges, refunds, reversals, openings and a float that ran out.
inline SnapshotBuilder reportSample()
{
    auto books = SnapshotBuilder{};
    books.companyName("PT Lentera Niaga Nusantara");
    books.account("Operating bank", {"IDR", "USD"}).account("Singapore account", {"USD", "SGD"});
    books.employeeAccount("Kas kecil – Rizky", {"IDR"}, "m1").grantAll();
    books.category("sales", "income", "Sales").category("service", "income", "Service");
    books.category("payroll", "expense", "Payroll").category("premises", "expense", "Premises");
    books.category("rent", "expense", "Warehouse rent", "premises");
    books.category("power", "expense", "Electricity", "premises");
    books.category("packaging", "expense", "Packaging");

    books.entry("open1", EntryKind::opening, "2025-12-01", {{"Operating bank", "IDR", 150'000'000'000}});
    books.entry("open2", EntryKind::opening, "2025-12-01", {{"Singapore account", "USD", 6'000'000}});
    const std::array months{"2025-12", "2026-01", "2026-02", "2026-03", "2026-04", "2026-05",
                            "2026-06", "2026-07", "2026-08", "2026-09", "2026-10", "2026-11"};
    std::int64_t wave = 0;
    for (const std::string month : months) {
        wave = (wave + 37) % 100;
        const auto id = [&](const char* stem) { return stem + month; };
        books.income(id("i"), month + "-03", "Operating bank", "IDR", 30'000'000'000 + wave * 90'000'000, "sales");
        books.income(id("s"), month + "-06", "Operating bank", "IDR", 1'250'000'000, "service");
        books.income(id("u"), month + "-09", "Singapore account", "USD", 1'200'000 + wave * 1'000, "sales");
        books.expense(id("p"), month + "-10", "Operating bank", "IDR", 11'264'000'000, "payroll");
        books.expense(id("r"), month + "-11", "Operating bank", "IDR", 5'400'000'000, "rent");
        books.expense(id("e"), month + "-12", "Operating bank", "IDR", 1'238'520'000 + wave * 3'000'000, "power");
        books.expense(id("k"), month + "-14", "Operating bank", "IDR", 3'824'000'000 - wave * 9'000'000, "packaging");
    }
    books.transfer("t1", "2026-11-04", "Operating bank", "Kas kecil – Rizky", "IDR", 500'000'000, "funding");
    books.expense("c1", "2026-11-08", "Kas kecil – Rizky", "IDR", 500'000'000, "packaging");
    books.entry("x1", EntryKind::exchange, "2026-11-05",
                {{"Singapore account", "USD", -1'200'000}, {"Singapore account", "SGD", 1'607'400}});

    LedgerTransaction refund;
    refund.id = "refund1";
    refund.kind = EntryKind::refund;
    refund.date = "2026-11-13";
    refund.createdAt = "2026-11-13T03:00:00Z";
    refund.memberID = "m1";
    refund.originalTransactionID = "u2026-10";
    refund.legs = {{"Singapore account", "USD", -150'000}};
    books.entry(refund);
    return books;
}
