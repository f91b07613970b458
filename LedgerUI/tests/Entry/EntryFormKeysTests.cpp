#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QToolButton>

#include "LedgerUI/tests/FormUnderTest.h"

namespace {

std::string focus()
{
    const auto* widget = QApplication::focusWidget();
    return widget ? widget->objectName().toStdString() : std::string{};
}

void press(Qt::Key key, Qt::KeyboardModifiers held = {})
{
    QTest::keyClick(QApplication::focusWidget(), key, held);
}

void type(const char* keys)
{
    QTest::keyClicks(QApplication::focusWidget(), QString::fromUtf8(keys));
}

QAccessibleInterface& spoken(QWidget& widget)
{
    return *QAccessible::queryAccessibleInterface(&widget);
}

}

TEST(EntryFormKeys, ChooseInTheOpenCategoryListBeforeTheySave)
{
    FormUnderTest under;
    fill(under);
    under.control("entryCategory0").setFocus();
    type("r");
    type("en");
    ASSERT_EQ(focus(), "entryCategorySearch");
    press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_TRUE(under.posted().empty());
    EXPECT_EQ(under.control<QLabel>("entryCategoryPath").text(), QStringLiteral("Rent"));
    EXPECT_EQ(focus(), "entryNote") << "what a person fills in next";

    under.control("entryCategory0").setFocus();
    type("x");
    type("yz");
    press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_FALSE(under.control("entryCategoryPopover").isVisible());
    EXPECT_TRUE(under.posted().empty());
    EXPECT_EQ(focus(), "entryCategory0");
}

TEST(EntryFormKeys, GiveTheFocusBackToWhatOpenedTheCategoryList)
{
    FormUnderTest under;
    under.click("entryAllCategories");
    press(Qt::Key_Escape);
    EXPECT_EQ(focus(), "entryAllCategories");
}

TEST(EntryFormKeys, BeginOnWhatMustBeChosenNext)
{
    FormUnderTest transfer{"bank", "transfer"};
    EXPECT_EQ(focus(), "entryDestination");
}

TEST(EntryFormKeys, PressTheButtonInFocus)
{
    FormUnderTest under;
    fill(under);
    under.control("entryCategory1").setFocus();
    press(Qt::Key_Return);
    EXPECT_TRUE(under.control<QAbstractButton>("entryCategory1").isChecked());
    under.control("entryCancel").setFocus();
    press(Qt::Key_Return);
    auto* discard = under.question("questionConfirm");
    ASSERT_NE(discard, nullptr);
    discard->window()->activateWindow();
    waitUntil([&] { return discard->window()->isActiveWindow(); });
    discard->setFocus();
    QTest::keyClick(discard, Qt::Key_Enter);
    waitUntil([&] { return under.form.isNull(); });
    EXPECT_TRUE(under.posted().empty());
}

TEST(EntryFormKeys, AreNamedByTheButtonThatTheyPress)
{
    FormUnderTest under;
    EXPECT_TRUE(under.control("entrySave").toolTip().contains(QStringLiteral("Ctrl+Return")))
        << under.control("entrySave").toolTip().toStdString();
}

TEST(EntryFormKeys, ChooseADayByTypingItAndByMovingIt)
{
    FormUnderTest under;
    fill(under);
    auto& day = under.control<QAbstractButton>("entryDay");
    EXPECT_EQ(under.control<QLabel>("entryDayHint").text(), QStringLiteral("Date and time are recorded automatically"));
    day.setFocus();
    press(Qt::Key_Minus);
    EXPECT_EQ(day.text(), QStringLiteral("19 November 2026"));
    day.click();
    ASSERT_EQ(focus(), "dayLine");
    press(Qt::Key_Up);
    press(Qt::Key_Plus);
    press(Qt::Key_Plus);
    EXPECT_EQ(under.control<QLineEdit>("dayLine").text(), QStringLiteral("21/11/2026")) << "tomorrow at the latest";
    under.control<QLineEdit>("dayLine").selectAll();
    type("2026-12-24");
    press(Qt::Key_Return);
    EXPECT_EQ(under.message("dayError"), "The date cannot be after 21 November 2026.");
    under.control<QLineEdit>("dayLine").selectAll();
    type("5/11");
    press(Qt::Key_Return);
    EXPECT_EQ(day.text(), QStringLiteral("5 November 2026"));
    EXPECT_EQ(focus(), "entryDay");
    day.click();
    under.control<QLineEdit>("dayLine").selectAll();
    type("4/11");
    press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(day.text(), QStringLiteral("4 November 2026"));
    EXPECT_TRUE(under.posted().empty()) << "the day is chosen first, then the entry is saved";
    day.click();
    under.control("dayToday").setFocus();
    press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_FALSE(under.control("dayPopover").isVisible());
    EXPECT_TRUE(under.posted().empty());
    EXPECT_EQ(day.text(), QStringLiteral("4 November 2026"));

    under.answer(ServerReply::dropped());
    under.saveAndWait();
    EXPECT_EQ(under.control<QLabel>("entryFixedDay").text(), QStringLiteral("4 November 2026"));
    EXPECT_EQ(under.control<QLabel>("entryDayHint").text(),
              QStringLiteral("Retries keep the original bookkeeping date"));
    EXPECT_EQ(under.posted().front().date, "2026-11-04");
}

TEST(EntryFormKeys, RefuseWhatIsNoAmountWhenItIsPastedAndWhenTheFieldIsLeft)
{
    FormUnderTest under;
    under.type("entryAmount", "12,50");
    EXPECT_EQ(under.message("entryAmountError"), "");
    press(Qt::Key_Tab);
    EXPECT_EQ(under.message("entryAmountError"),
              "Invalid amount format. Use the decimal and thousands separators for the current language.");
    under.control("entryAmount").setFocus();
    QApplication::clipboard()->setText(QStringLiteral("100\n200"));
    QTest::keySequence(&under.control("entryAmount"), QKeySequence::Paste);
    EXPECT_EQ(under.amount(), "12,50");
    EXPECT_EQ(under.message("entryAmountError"),
              "The clipboard holds several lines or cells. Nothing was pasted; copy a single amount.");
}

TEST(EntryFormKeys, CutNothingOffANoteAndSendNoneThatIsTooLong)
{
    FormUnderTest under;
    fill(under);
    auto& note = under.control<QLineEdit>("entryNote");
    note.setFocus();
    QApplication::clipboard()->setText(QString(2'010, QLatin1Char{'x'}));
    QTest::keySequence(&note, QKeySequence::Paste);
    EXPECT_EQ(note.text().size(), 2'010);
    under.control("entryAmount").setFocus();
    under.click("entrySave");
    EXPECT_TRUE(under.posted().empty());
    EXPECT_EQ(focus(), "entryNote");
    EXPECT_TRUE(note.accessibleDescription().contains(QStringLiteral("Shorten it by 10")));
    press(Qt::Key_End);
    for (int each = 0; each < 10; ++each)
        press(Qt::Key_Backspace);
    EXPECT_EQ(note.accessibleDescription(), QStringLiteral("2,000 of 2,000 characters"));
}

TEST(EntryFormKeys, GiveBackTheHeightThatMessagesTook)
{
    FormUnderTest under;
    const int before = under.form->height();
    under.click("entrySave");
    settle();
    EXPECT_GT(under.form->height(), before);
    fill(under);
    settle();
    EXPECT_LE(under.form->height(), before + 24) << "the path of the category has come";
}

TEST(EntryFormReaders, HearOneOfSeveralChoicesAndItsMessage)
{
    FormUnderTest under;
    EXPECT_EQ(spoken(under.control("segment0")).role(), QAccessible::RadioButton);
    EXPECT_TRUE(spoken(under.control("segment0")).state().checked);
    auto& tile = under.control("entryCategory0");
    EXPECT_EQ(spoken(tile).role(), QAccessible::RadioButton);
    EXPECT_FALSE(spoken(tile).state().checked);
    under.click("entrySave");
    EXPECT_EQ(tile.accessibleDescription(), QStringLiteral("Select a purpose category"));
    EXPECT_EQ(under.control("entryCurrency").accessibleName(), QStringLiteral("Currency, Amount"));
}
