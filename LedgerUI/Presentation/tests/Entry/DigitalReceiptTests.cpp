#include "LedgerUI/Presentation/Exports/DigitalReceipt.h"

#include <algorithm>
#include <array>

#include <gtest/gtest.h>

#include "LedgerUI/Presentation/tests/LedgerSample.h"

namespace {

constexpr auto today = "2026-11-20";

DigitalReceipt receiptOf(const std::string& id, const DigitalReceiptChoice& choice = {.locale = "en-US"})
{
    const auto snapshot = sampleLedger().share();
    const auto entry = std::ranges::find(snapshot->transactions, id, &LedgerTransaction::id);
    return DigitalReceipts::of(*entry, *snapshot, choice, today);
}

/// "Date=2 November 2026 | Note=…", without what every receipt ends with: when it was recorded, and its number.
std::string linesOf(const DigitalReceipt& receipt)
{
    std::string all;
    for (std::size_t at = 0; at + 2 < receipt.lines.size(); ++at)
        all +=
            (at > 0 ? " | " : "") + receipt.lines[at].label.toStdString() + "=" + receipt.lines[at].value.toStdString();
    return all;
}

std::string amountsOf(const DigitalReceipt& receipt)
{
    std::string all;
    for (const auto& amount : receipt.amounts)
        all += (all.empty() ? "" : " | ") + amount.currency.toStdString() + " " + amount.figure().toStdString();
    return all;
}

}

TEST(DigitalReceipt, SaysWhatTheEntryIsInEveryLanguage)
{
    struct Said {
        const char* locale;
        const char* title;
        const char* kind;
        const char* amount;
        const char* lines;
        const char* foot;
    };
    const std::array cases{
        Said{"zh-CN", "电子票据", "支出", "IDR −4,385,200",
             "记账日期=2026年11月2日 | 付款账户=Operating bank | 备注=Listrik kantor | 记录人=Mira Owner",
             "根据公司账本于 2026年11月20日 生成。并非税务发票。"},
        Said{"id-ID", "Bukti digital", "Pengeluaran", "IDR −4.385.200",
             "Tanggal=2 November 2026 | Rekening pembayaran=Operating bank | Keterangan=Listrik kantor | "
             "Dicatat oleh=Mira Owner",
             "Dibuat dari buku besar perusahaan pada 20 November 2026. Bukan faktur pajak."},
        Said{"vi-VN", "Biên nhận điện tử", "Chi", "IDR −4.385.200",
             "Ngày ghi sổ=2 tháng 11, 2026 | Tài khoản chi=Operating bank | Ghi chú=Listrik kantor | "
             "Người ghi=Mira Owner",
             "Lập từ sổ cái của công ty ngày 20 tháng 11, 2026. Không phải hóa đơn thuế."},
        Said{"en-US", "Digital receipt", "Expense", "IDR −4,385,200",
             "Date=2 November 2026 | Payment account=Operating bank | Note=Listrik kantor | Recorded by=Mira Owner",
             "Made from the company ledger on 20 November 2026. Not a tax invoice."}};
    for (const auto& said : cases) {
        const auto receipt = receiptOf("e2", {.locale = said.locale});
        EXPECT_EQ(receipt.title.toStdString(), said.title);
        EXPECT_EQ(receipt.kindTitle.toStdString(), said.kind);
        EXPECT_EQ(amountsOf(receipt), said.amount);
        EXPECT_EQ(linesOf(receipt), said.lines);
        EXPECT_EQ(receipt.foot.toStdString(), said.foot);
        EXPECT_EQ(receipt.lines.back().value, QStringLiteral("e2"));
    }
}

TEST(DigitalReceipt, HoldsNothingThatWasNotChosen)
{
    const auto all = receiptOf("e2");
    EXPECT_EQ(DigitalReceipts::text(all).contains(QStringLiteral("Operating bank")), true);
    const auto bare =
        receiptOf("e2", {.locale = "en-US", .showsAccount = false, .showsNote = false, .showsRecorder = false});
    EXPECT_EQ(linesOf(bare), "Date=2 November 2026");
    for (const auto* hidden : {"Operating bank", "Listrik kantor", "Mira Owner"})
        EXPECT_FALSE(DigitalReceipts::text(bare).contains(QString::fromUtf8(hidden))) << hidden;
}

TEST(DigitalReceipt, NeverShowsABalanceOrAnEmailAddress)
{
    const auto snapshot = sampleLedger().share();
    for (const auto& entry : snapshot->transactions) {
        const auto text = DigitalReceipts::text(DigitalReceipts::of(entry, *snapshot, {.locale = "en-US"}, today));
        EXPECT_FALSE(text.contains(QLatin1Char('@'))) << text.toStdString();
        EXPECT_FALSE(text.contains(QStringLiteral("11,811.50"))) << "what is on the bank: " << text.toStdString();
    }
    EXPECT_EQ(snapshot->account("Operating bank")->balance("USD"), 1'181'150) << "the balance looked for above";
}

TEST(DigitalReceipt, NamesBothSidesOfMoneyThatMoves)
{
    const auto transfer = receiptOf("t1");
    EXPECT_EQ(amountsOf(transfer), "USD 50.00");
    EXPECT_EQ(linesOf(transfer), "Date=5 November 2026 | Payment account=Operating bank | "
                                 "Receiving account=Rizky float | Recorded by=Mira Owner");
    const auto exchange = receiptOf("x1");
    EXPECT_EQ(amountsOf(exchange), "USD −12,000.00 | SGD +16,074.00");
    EXPECT_EQ(linesOf(exchange), "Date=6 November 2026 | Payment account=Singapore | Receiving account=Singapore | "
                                 "Recorded by=Mira Owner");
    const auto refund = receiptOf("r1");
    EXPECT_EQ(linesOf(refund), "Date=7 November 2026 | Payment account=Operating bank | Reference=RF-77 | "
                               "Recorded by=Nguyễn Thị Hương");
}

TEST(DigitalReceipt, SaysThatAnEntryWasTakenBack)
{
    EXPECT_EQ(receiptOf("e3").kindTitle.toStdString(), "Expense (reversed)");
    EXPECT_TRUE(receiptOf("e3").isReversed);
    EXPECT_EQ(receiptOf("v1").kindTitle.toStdString(), "Reversal");
    EXPECT_FALSE(receiptOf("v1").isReversed);
}
