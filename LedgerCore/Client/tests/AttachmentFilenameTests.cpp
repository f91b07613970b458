#include <array>

#include <QString>
#include <gtest/gtest.h>

#include "LedgerCore/Client/Receipts/AttachmentFilename.h"

TEST(AttachmentFilename, KeepsWhatAPersonWroteAndNothingThatHarms)
{
    struct Case {
        const char* name;
        const char* mime;
        const char* safe;
    };
    for (const auto& [name, mime, safe] : std::to_array<Case>({
             {"Lunch 20 Nov.jpg", "image/jpeg", "Lunch 20 Nov.jpg"},
             {"Hóa đơn tháng 11.PDF", "application/pdf", "Hóa đơn tháng 11.pdf"},
             {"发票.jpeg", "image/jpeg", "发票.jpeg"},
             {"IMG_1.HEIC", "image/jpeg", "IMG_1.jpg"},
             {"scan.v2", "image/png", "scan.v2.png"},
             {"../../etc/passwd", "application/pdf", "passwd.pdf"},
             {"C:\\Users\\a\\bill.png", "image/png", "bill.png"},
             {"a\x01\tb\r\n.pdf", "application/pdf", "ab.pdf"},
             {"invoice\u202Efdp.jpg", "image/jpeg", "invoicefdp.jpg"},
             {".hidden", "image/png", "hidden.png"},
             {"trailing. . .", "image/png", "trailing.png"},
             {"a<b>:c|d?.png", "image/png", "abcd.png"},
             {"con.pdf", "application/pdf", "_con.pdf"},
             {"LPT1.png", "image/png", "_LPT1.png"},
             {"conference.pdf", "application/pdf", "conference.pdf"},
             {"bad\xff\xfe.png", "image/png", "bad.png"},
         })) {
        EXPECT_EQ(AttachmentFilename::safe(name, mime, "en-US"), safe) << name;
    }
}

TEST(AttachmentFilename, CallsAFileWithoutANameAReceipt)
{
    EXPECT_EQ(AttachmentFilename::safe("...", "image/png", "en-US"), "Receipt.png");
    EXPECT_EQ(AttachmentFilename::safe("", "application/pdf", "zh-CN"), "票据.pdf");
    EXPECT_EQ(AttachmentFilename::safe(".jpg", "image/jpeg", "id-ID"), "jpg.jpg");
    EXPECT_EQ(AttachmentFilename::safe("\u202E", "image/jpeg", "vi-VN"), "Chứng từ.jpg");
}

TEST(AttachmentFilename, CutsLongNamesBetweenCharacters)
{
    for (const auto* character : {"x", "账", "\U0001F9FE"}) {
        std::string name;
        for (int i = 0; i < 300; ++i)
            name += character;
        const auto safe = AttachmentFilename::safe(name + ".pdf", "application/pdf", "en-US");
        EXPECT_LE(safe.size(), 200U);
        EXPECT_GT(safe.size(), 190U);
        EXPECT_TRUE(safe.ends_with(".pdf"));
        EXPECT_FALSE(QString::fromStdString(safe).contains(QChar::ReplacementCharacter)) << character;
    }
}
