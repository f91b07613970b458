#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>

#include "LedgerUI/testing/WindowUnderTest.h"
#include "LedgerUI/tests/FormUnderTest.h"

namespace {

constexpr auto preferences = "PATCH v1/me/category-preferences";
constexpr auto creation = "POST v1/categories";
constexpr auto entries = "POST v1/transactions";
constexpr auto books = "GET v1/snapshot";

SnapshotBuilder pinned(SnapshotBuilder builder, std::vector<std::string> ids)
{
    auto member = builder.build().currentMember;
    member.selectedCategoryIDs = std::move(ids);
    return builder.currentMember(std::move(member));
}

void openCategories(FormUnderTest& under, const char* searched = "")
{
    under.click("entryAllCategories");
    QTest::keyClicks(&under.control("entryCategorySearch"), QString::fromUtf8(searched));
}

std::string path(FormUnderTest& under)
{
    return under.control<QLabel>("entryCategoryPath").text().toStdString();
}

SnapshotBuilder withoutOpenings()
{
    return snapshot().account("bank", {"IDR", "USD"}).account("vault", {"USD"}).grantAll();
}

}

TEST(EntryFlow, PinsFromTheListWhichStaysOpenOnTheCategory)
{
    FormUnderTest under;
    openCategories(under, "rent");
    under.service.server.replace(preferences, ServerReply::json(pinned(entryBooks(), {"rent"}).json()));
    under.click("entryCategoryPin");
    waitUntil([&] { return under.control<QPushButton>("entryCategoryPin").text() == QStringLiteral("Unpin"); });
    EXPECT_EQ(under.service.server.requests(preferences).front().body, R"({"categoryID":"rent","selected":true})");
    EXPECT_TRUE(under.control("entryCategoryPopover").isVisible());
    auto& list = under.control<QAbstractItemView>("entryCategoryList");
    const auto row = list.visualRect(list.currentIndex());
    under.service.server.replace(preferences, ServerReply::json(entryBooks().json()));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, {row.right() - 8, row.center().y()});
    waitUntil([&] { return under.control<QPushButton>("entryCategoryPin").text() == QStringLiteral("Pin"); });
    EXPECT_EQ(path(under), "") << "the pin of a row chooses nothing";

    under.service.server.replace(preferences, ServerReply::json(pinned(entryBooks(), {"rent"}).json()));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, {row.right() - 8, row.center().y()});
    waitUntil([&] { return under.control<QPushButton>("entryCategoryPin").text() == QStringLiteral("Unpin"); });
    QTest::keyClick(&under.control("entryCategorySearch"), Qt::Key_Escape);
    EXPECT_EQ(under.control<QAbstractButton>("entryCategory0").text(), QStringLiteral("Rent"));
    EXPECT_FALSE(under.control("entryCategory1").isVisible()) << "with pins, only they are the tiles";
}

TEST(EntryFlow, SaysWhyNoMoreCanBePinned)
{
    auto full = entryBooks();
    std::vector<std::string> ids;
    for (int each = 0; each < 8; ++each) {
        ids.push_back("c" + std::to_string(each));
        full.category(ids.back(), "expense", "Kind " + std::to_string(each));
    }
    FormUnderTest under{"bank", "expense", "en-US", pinned(full, ids)};
    openCategories(under, "rent");
    EXPECT_FALSE(under.control("entryCategoryPin").isEnabled());
    EXPECT_EQ(under.control<QLabel>("entryCategoryHint").text(),
              QStringLiteral("You can pin up to 8 categories of this type. Unpin one before pinning this category."));
}

TEST(EntryFlow, ChoosesACategoryThatWasMadeForTheEntry)
{
    FormUnderTest under;
    under.type("entryAmount", "12");
    openCategories(under, "Parking");
    under.click("entryCategoryNew");
    waitUntil([&] { return under.form->findChild<QDialog*>(QStringLiteral("categoryDialog")); });
    EXPECT_EQ(under.control<QLineEdit>("categoryName.en-US").text(), QStringLiteral("Parking"));
    auto after = entryBooks();
    after.category("parking", "expense", "Parking");
    under.service.server.replace(
        creation, ServerReply::json(R"({"createdCategoryID":"parking","snapshot":)" + after.json() + "}"));
    under.click("formConfirm");
    waitUntil([&] { return !under.form->findChild<QDialog*>(QStringLiteral("categoryDialog")); });
    EXPECT_EQ(path(under), "Parking");
    EXPECT_EQ(under.amount(), "12");
    under.answer(ServerReply::json(R"({"id":"e9"})"));
    under.saveAndWait();
    EXPECT_EQ(under.posted().front().categoryID, "parking");
}

TEST(EntryFlow, LeavesTheCategoriesToThoseWhoManageThem)
{
    auto bookkeeper = entryBooks();
    bookkeeper.currentMember(SnapshotBuilder::person("m1", "Dewi", "finance")).permissions({"viewCompany"}).grantAll();
    FormUnderTest under{"bank", "expense", "en-US", bookkeeper};
    openCategories(under);
    EXPECT_FALSE(under.control("entryCategoryNew").isVisible());
    EXPECT_FALSE(under.control("entryCategoryEdit").isVisible());
    EXPECT_TRUE(under.control("entryCategoryPin").isEnabled()) << "pins are everybody's own";
    EXPECT_EQ(under.control<QLabel>("entryCategoryHint").text(),
              QStringLiteral("Company categories are maintained by your company administrator."));
}

TEST(EntryFlow, HelpsWithWithdrawalsOnIncomeOnly)
{
    FormUnderTest under{"bank", "income"};
    EXPECT_FALSE(under.control("entryHelpText").isVisible());
    under.click("entryHelp");
    EXPECT_TRUE(under.control("entryHelpText").isVisible());
    under.click("segment0");
    EXPECT_FALSE(under.control("entryHelp").isVisible());
    EXPECT_FALSE(under.control("entryHelpText").isVisible());
}

TEST(EntryFlow, SavesAndGoesOnWithKindAccountAndCategory)
{
    FormUnderTest under;
    QSignalSpy recorded{under.form, &TransactionForm::recorded};
    fill(under);
    under.type("entryNote", "first");
    under.answer(ServerReply::json(R"({"id":"e1"})"));
    QTest::keyClick(under.form, Qt::Key_Return, Qt::ControlModifier | Qt::ShiftModifier);
    waitUntil([&] { return recorded.count() == 1 && !under.service.store.isBusy(); });
    EXPECT_EQ(under.banner(), "Saved. Enter the next one.");
    EXPECT_EQ(under.amount(), "");
    EXPECT_EQ(under.control<QLineEdit>("entryNote").text(), QString{});
    EXPECT_EQ(path(under), "Electricity");
    EXPECT_EQ(QApplication::focusWidget()->objectName(), QStringLiteral("entryAmount"));

    under.type("entryAmount", "100");
    EXPECT_EQ(under.banner(), "");
    under.answer(ServerReply::json(R"({"id":"e2"})"));
    under.click("entrySave");
    waitUntil([&] { return under.form.isNull(); });
    const auto sent = under.posted();
    ASSERT_EQ(sent.size(), 2U);
    EXPECT_NE(sent[0].idempotencyKey, sent[1].idempotencyKey);
    EXPECT_EQ(sent[1].sourceAccountID, "bank");
    EXPECT_EQ(sent[1].categoryID, "power");
    EXPECT_EQ(sent[1].note, "");
}

TEST(EntryFlow, AsksNothingWhenAnEmptyNextEntryIsLeft)
{
    FormUnderTest under;
    fill(under);
    under.answer(ServerReply::json(R"({"id":"e1"})"));
    under.click("entrySaveAndNew");
    waitUntil([&] { return under.amount().empty() && !under.service.store.isBusy(); });
    QTest::keyClick(under.form, Qt::Key_Escape);
    EXPECT_EQ(under.question("messageConfirm"), nullptr);
    waitUntil([&] { return under.form.isNull(); });
}

TEST(EntryFlow, OffersOpeningsOneAfterAnotherUntilAllAreEntered)
{
    FormUnderTest under{"bank", "opening", "en-US", withoutOpenings()};
    auto after = withoutOpenings();
    const auto enter = [&](const char* id, const char* account, const char* currency, const char* button) {
        after.entry(id, EntryKind::opening, "2026-11-20", {{account, currency, 100}});
        under.service.server.replace(entries, ServerReply::json(std::string{R"({"id":")"} + id + R"("})"));
        under.service.server.replace(books, ServerReply::json(after.json()));
        under.type("entryAmount", "1");
        under.click(button);
        waitUntil([&] { return !under.form || (under.amount().empty() && !under.service.store.isBusy()); });
    };
    const auto next = [&] { return under.control<QPushButton>("entrySaveAndNew").text().toStdString(); };
    EXPECT_EQ(next(), "Save and next (2 left)");
    enter("o1", "bank", "IDR", "entrySaveAndNew");
    EXPECT_EQ(next(), "Save and next (1 left)");
    enter("o2", "bank", "USD", "entrySaveAndNew");
    EXPECT_FALSE(under.control("entrySaveAndNew").isVisible()) << "this is the last one";
    enter("o3", "vault", "USD", "entrySave");
    EXPECT_TRUE(under.form.isNull());
    const auto sent = under.posted();
    ASSERT_EQ(sent.size(), 3U);
    EXPECT_EQ(sent[1].targetAccountID, "bank");
    EXPECT_EQ(sent[1].currency, "USD");
    EXPECT_EQ(sent[2].targetAccountID, "vault");
}

TEST(EntryFlow, WorksOutWhatIsTypedAndSavesTheResult)
{
    FormUnderTest under;
    const auto result = [&] { return under.control<QLabel>("entryResult").text().toStdString(); };
    under.type("entryAmount", "(1200+300)/2");
    EXPECT_EQ(result(), "= IDR 750");
    QTest::keyClick(&under.control("entryAmount"), Qt::Key_Return);
    EXPECT_EQ(under.amount(), "750");
    EXPECT_FALSE(under.control("entryResult").isVisible());
    QTest::keySequence(&under.control("entryAmount"), QKeySequence::Undo);
    EXPECT_EQ(under.amount(), "(1200+300)/2");
    under.click("entryCategory0");
    QTest::keyClick(under.form, Qt::Key_Return, Qt::ControlModifier);
    waitUntil([&] { return under.posted().size() == 1; });
    EXPECT_EQ(under.posted().front().amountMinor, 75'000);
}

TEST(EntryFlow, RefusesArithmeticThatDoesNotComeOut)
{
    FormUnderTest under;
    under.control<QLineEdit>("entryAmount").setFocus();
    under.type("entryAmount", "100/3");
    under.click("entryCategory0");
    under.click("entrySave");
    EXPECT_EQ(under.message("entryAmountError"),
              "The result has a fraction below the smallest unit of IDR. Round the amount yourself.");
    EXPECT_EQ(under.amount(), "100/3");
    EXPECT_TRUE(under.posted().empty());
}

/// What is known of the earlier entry unfolds in the form, whose input stays.
TEST(EntryFlow, ShowsTheEntryThatALikelyDoubleRepeats)
{
    auto kept = entryBooks();
    kept.expense("e1", "2026-11-20", "bank", "IDR", 5'000, "rent").note("Room 4");
    FormUnderTest under{"bank", "expense", "en-US", kept};
    EXPECT_FALSE(under.control("entryLook").isVisible());
    under.type("entryAmount", "50");
    under.click("entryCategory0");
    EXPECT_TRUE(under.control("entryLook").isVisible());
    EXPECT_FALSE(under.control("entryEarlier").isVisible()) << "before somebody wants to see it";
    under.click("entryLook");
    EXPECT_TRUE(under.control("entryEarlier").isVisible());
    const auto facts = under.control<QLabel>("entryEarlier").text().replace(QChar::Nbsp, QLatin1Char{' '});
    EXPECT_TRUE(facts.contains(QStringLiteral("bank: IDR −50\nNote: Room 4\n"))) << facts.toStdString();
    EXPECT_EQ(under.amount(), "50");
    under.type("entryAmount", "1");
    EXPECT_FALSE(under.control("entryLook").isVisible()) << "another amount repeats nothing";
    EXPECT_FALSE(under.control("entryEarlier").isVisible());
}

TEST(EntryFlow, WarnsOfALikelyDoubleAndSavesItAllTheSame)
{
    auto kept = entryBooks();
    kept.expense("e1", "2026-11-20", "bank", "IDR", 5'000, "rent");
    FormUnderTest under{"bank", "expense", "en-US", kept};
    under.type("entryAmount", "50");
    under.click("entryCategory0");
    EXPECT_EQ(under.control<QLabel>("entryCaution").text(),
              QStringLiteral("There is an entry of the same day, account and amount already: Expense, Rent."));
    under.click("entrySave");
    waitUntil([&] { return under.posted().size() == 1; });
}
