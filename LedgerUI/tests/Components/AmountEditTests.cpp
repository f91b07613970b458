#include "LedgerUI/Components/Fields/AmountEdit.h"

#include <QApplication>
#include <QClipboard>
#include <QSignalSpy>
#include <gtest/gtest.h>

#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include <QTest>

namespace {

class Amount : public testing::Test {
protected:
    Amount()
    {
        InterfaceLanguage::change("en-US");
        edit.setCurrency("IDR");
        edit.show();
        edit.setFocus();
    }
    std::string text() { return edit.text().toStdString(); }
    void paste(const char* clipboard)
    {
        QApplication::clipboard()->setText(QString::fromUtf8(clipboard));
        QTest::keySequence(&edit, QKeySequence::Paste);
    }
    void undo() { QTest::keySequence(&edit, QKeySequence::Undo); }
    void redo() { QTest::keySequence(&edit, QKeySequence::Redo); }

    AmountEdit edit;
    QSignalSpy refused{&edit, &AmountEdit::pasteRefused};
};

}

TEST_F(Amount, StaysAsItWasWhenSeveralCellsArePasted)
{
    QTest::keyClicks(&edit, QStringLiteral("75"));
    for (const auto* cells : {"100\n200", "100\t200", "0812 3456 7890", "USD 5"})
        paste(cells);
    EXPECT_EQ(text(), "75");
    EXPECT_EQ(refused.count(), 4);
    edit.clear();
    paste("Rp 1.250.000");
    EXPECT_EQ(text(), "1,250,000");
}

TEST_F(Amount, UndoesRunsOfKeysPastesAndDeletions)
{
    QTest::keyClicks(&edit, QStringLiteral("1500"));
    QTest::keyClick(&edit, Qt::Key_Backspace);
    EXPECT_EQ(text(), "150");
    undo();
    EXPECT_EQ(text(), "1,500");
    undo();
    EXPECT_EQ(text(), "");
    redo();
    redo();
    EXPECT_EQ(text(), "150");
    paste("2 000");
    EXPECT_EQ(text(), "150") << "what it would make is no amount";
    edit.selectAll();
    paste("2 000");
    EXPECT_EQ(text(), "2,000");
    undo();
    EXPECT_EQ(text(), "150");
}

TEST_F(Amount, TakesAPasteIntoArithmetic)
{
    QTest::keyClicks(&edit, QStringLiteral("3*"));
    paste("1,250,000");
    EXPECT_EQ(text(), "3*1,250,000");
    QTest::keyClicks(&edit, QStringLiteral("="));
    EXPECT_EQ(text(), "3,750,000");
    undo();
    undo();
    EXPECT_EQ(text(), "3*");
    for (const auto* other : {"12,50", "rent", "7\n8"})
        paste(other);
    EXPECT_EQ(text(), "3*");
    EXPECT_EQ(refused.count(), 3);
    edit.selectAll();
    paste("2026-01-31");
    EXPECT_EQ(text(), "3*") << "a day is no amount";
}

TEST_F(Amount, BringsNoAmountOfAnotherCurrencyBack)
{
    QTest::keyClicks(&edit, QStringLiteral("1500"));
    edit.setAmount({});
    edit.setCurrency("JPY");
    undo();
    EXPECT_EQ(text(), "");
}
