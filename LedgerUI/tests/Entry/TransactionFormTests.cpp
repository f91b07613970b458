#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QCompleter>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include "LedgerCore/Client/testing/StoreUnderTest.h"
#include "LedgerCore/Domain/Records/Requests/AccessRecords.h"
#include "LedgerCore/Domain/Records/Requests/TransactionInput.h"
#include "LedgerUI/Components/Fields/FieldError.h"
#include "LedgerUI/Components/Page/Banner.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Screens/Entry/EntryFormBody.h"
#include "LedgerUI/Screens/Entry/TransactionForm.h"
#include "LedgerUI/testing/LabelAudit.h"
#include "LedgerUI/testing/ScreenDriver.h"
#include "LedgerUI/tests/FormUnderTest.h"

TEST(TransactionForm, RecordsAnExpenseByKeyboardAlone)
{
    FormUnderTest under{std::nullopt};
    QSignalSpy recorded{under.form, &TransactionForm::recorded};
    under.answer(ServerReply::json(R"({"id":"e9"})"));
    under.service.server.replace(
        "GET v1/snapshot",
        ServerReply::json(entryBooks().expense("e9", "2026-11-20", "vault", "USD", 1'250, "rent").json()));
    const auto press = [](Qt::Key key, Qt::KeyboardModifiers held = {}) {
        QTest::keyClick(QApplication::focusWidget(), key, held);
    };
    EXPECT_EQ(QApplication::focusWidget()->objectName(), QStringLiteral("entryAccount"));
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), QStringLiteral("entryCurrency"));
    press(Qt::Key_Tab);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("12.5"));
    press(Qt::Key_Tab);
    press(Qt::Key_Right);
    press(Qt::Key_Space);
    while (QApplication::focusWidget()->objectName() != QStringLiteral("entryNote"))
        press(Qt::Key_Tab);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("Gudang"));
    press(Qt::Key_Return, Qt::ControlModifier);
    waitUntil([&] { return recorded.count() == 1; });

    const auto sent = under.posted();
    ASSERT_EQ(sent.size(), 1U);
    EXPECT_EQ(sent.front().sourceAccountID, "vault");
    EXPECT_EQ(sent.front().currency, "USD");
    EXPECT_EQ(sent.front().amountMinor, 1'250);
    EXPECT_EQ(sent.front().categoryID, "rent");
    EXPECT_EQ(sent.front().note, "Gudang");
    EXPECT_EQ(sent.front().date, "2026-11-20");
    EXPECT_EQ(recorded.front().front().toString(), QStringLiteral("e9"));
    waitUntil([&] { return under.form.isNull(); });
}

TEST(TransactionForm, IsTabbedThroughInReadingOrder)
{
    FormUnderTest under;
    EXPECT_EQ(tabOrder(under.control("segment0")),
              (std::vector<std::string>{"segment0", "entryAccount", "entryCurrency", "entryAmount", "entryCategory0",
                                        "entryCategory1", "entryAllCategories", "entryNote", "receiptPhotos",
                                        "receiptFiles", "entryDay", "entryCancel", "entrySaveAndNew", "entrySave"}));
}

TEST(TransactionForm, WaitsForItsCompanyWhileAnotherOneIsOpen)
{
    FormUnderTest under;
    fill(under);
    const auto open = [&](const std::string& id, const std::string& name) {
        AuthResponse opened{.token = "token-" + id, .snapshot = entryBooks().companyName(name).build()};
        opened.snapshot.company.id = id;
        under.service.server.replace("POST v1/me/companies/switch", ServerReply::json(Json::encode(opened)));
        ASSERT_TRUE(resultOf(under.service.store.switchCompany(id)).has_value());
        settle();
    };
    open("c2", "Samudra Kopi");
    EXPECT_TRUE(under.banner().starts_with("This form belongs to Harbour Trading.")) << under.banner();
    EXPECT_FALSE(under.control<>("entryAmount").isEnabled());
    EXPECT_FALSE(under.control<>("entrySave").isEnabled());
    under.click("entrySaveAndNew");
    QTest::keyClick(under.form, Qt::Key_Return, Qt::ControlModifier);
    settle();
    EXPECT_TRUE(under.posted().empty()) << "nothing of one company is sent to another";

    open("c1", "Harbour Trading");
    EXPECT_EQ(under.banner(), "");
    under.answer(ServerReply::json(R"({"id":"e9"})"));
    under.saveAndWait();
    ASSERT_EQ(under.posted().size(), 1U);
    EXPECT_EQ(under.posted().front().amountMinor, 438'520'000);
}

TEST(TransactionForm, SendsNothingOnASecondClick)
{
    FormUnderTest under;
    fill(under);
    under.answer(ServerReply::parked());
    under.click("entrySave");
    waitUntil([&] { return under.service.server.parkedCount() == 1; });
    under.click("entrySave");
    QTest::keyClick(under.form, Qt::Key_Return, Qt::ControlModifier);
    QTest::keyClick(under.form, Qt::Key_Escape);
    EXPECT_TRUE(under.form->isVisible());
    under.service.server.release(ServerReply::json("{}"));
    waitUntil([&] { return under.form.isNull(); });
    EXPECT_EQ(under.posted().size(), 1U);
}

TEST(TransactionForm, RetriesAnUnconfirmedSaveWithTheSameRequest)
{
    FormUnderTest under;
    fill(under);
    under.answer(ServerReply::dropped());
    under.saveAndWait();
    EXPECT_TRUE(under.banner().starts_with("The save result is unconfirmed. Content is locked."));
    EXPECT_FALSE(under.control("entryAmount").isEnabled());
    EXPECT_EQ(under.amount(), "4,385,200");
    EXPECT_EQ(under.control<QAbstractButton>("entrySave").text(), QStringLiteral("Retry original request"));

    under.service.clock.advance(std::chrono::hours{30});
    under.answer(ServerReply::error(429, "rate_limited"));
    under.saveAndWait();
    EXPECT_FALSE(under.control("entryAmount").isEnabled());
    under.answer(ServerReply::json("{}"));
    under.click("entrySave");
    waitUntil([&] { return under.form.isNull(); });
    const auto sent = under.posted();
    ASSERT_EQ(sent.size(), 3U);
    EXPECT_EQ(sent[1], sent[0]);
    EXPECT_EQ(sent[2], sent[0]);
}

TEST(TransactionForm, SaysWhatHelpsWhereTheServiceHasNoRoom)
{
    const auto saysSo = [](FormUnderTest& under) { return under.banner().find("no room left") != std::string::npos; };
    FormUnderTest under;
    fill(under);
    under.answer(ServerReply::error(507, "insufficient_storage"));
    under.saveAndWait();
    EXPECT_TRUE(under.banner().starts_with("The save result is unconfirmed."));
    EXPECT_TRUE(saysSo(under)) << under.banner();
    under.answer(ServerReply::parked());
    under.click("entrySave");
    waitUntil([&] { return under.service.server.parkedCount() == 1; });
    EXPECT_EQ(under.banner(), "") << "there may be room by now";
    under.service.server.release(ServerReply::error(503, "service_unavailable"));
    waitUntil([&] { return !under.service.store.isBusy(); });
    settle();
    EXPECT_FALSE(saysSo(under)) << under.banner();
}

TEST(TransactionForm, WarnsBeforeClosingAnUnconfirmedSave)
{
    FormUnderTest under;
    fill(under);
    under.answer(ServerReply::dropped());
    under.saveAndWait();
    under.click("entryCancel");
    auto* stay = under.question("questionCancel");
    ASSERT_NE(stay, nullptr);
    EXPECT_EQ(under.control<QLabel>("messageText").text(),
              QStringLiteral("The entry may already have been saved. Close and refresh the ledger to check before "
                             "entering the same transaction again."));
    stay->click();
    EXPECT_TRUE(under.form->isVisible());
}

TEST(TransactionForm, KeepsEverythingWhenTheServiceRefuses)
{
    FormUnderTest under;
    fill(under);
    under.type("entryNote", "Listrik");
    under.answer(ServerReply::error(409, "balance_limit"));
    under.saveAndWait();
    EXPECT_EQ(under.banner(), "The resulting account balance exceeds the supported range.");
    EXPECT_EQ(under.amount(), "4,385,200");
    EXPECT_EQ(under.control<QLineEdit>("entryNote").text(), QStringLiteral("Listrik"));
    EXPECT_TRUE(under.control("entryAmount").isEnabled());
    under.control<QLineEdit>("entryAmount").clear();
    under.type("entryAmount", "100");
    EXPECT_EQ(under.banner(), "");
    under.saveAndWait();
    EXPECT_NE(under.posted()[1].idempotencyKey, under.posted()[0].idempotencyKey);
}

TEST(TransactionForm, NamesEachProblemUnderItsFieldAndGoesToTheFirst)
{
    FormUnderTest under;
    under.control("entryNote").setFocus();
    under.click("entrySave");
    EXPECT_EQ(under.message("entryAmountError"), "Enter an amount greater than zero.");
    EXPECT_EQ(under.message("entryCategoryError"), "Select a purpose category");
    EXPECT_EQ(QApplication::focusWidget()->objectName(), QStringLiteral("entryAmount"));
    under.type("entryAmount", "12,50");
    EXPECT_EQ(under.message("entryAmountError"), "");
    under.click("entrySave");
    EXPECT_EQ(under.message("entryAmountError"),
              "Invalid amount format. Use the decimal and thousands separators for the current language.");
    EXPECT_EQ(under.amount(), "12,50");
    EXPECT_TRUE(under.posted().empty());
}

TEST(TransactionForm, RefusesPettyCashThatIsNotThere)
{
    FormUnderTest under{"float"};
    under.type("entryAmount", "6250000");
    under.click("entryCategory0");
    under.click("entrySave");
    EXPECT_EQ(under.message("entryAmountError"),
              "Insufficient petty cash. Available balance in this currency: IDR 5,363,150");
    EXPECT_TRUE(under.posted().empty());
}

TEST(TransactionForm, AsksBeforeDiscardingADraftAndOnlyThen)
{
    {
        FormUnderTest untouched;
        untouched.click("entryCancel");
        waitUntil([&] { return untouched.form.isNull(); });
    }
    FormUnderTest under;
    under.type("entryNote", "Listrik");
    under.click("entryCancel");
    EXPECT_EQ(under.control<QLabel>("messageText").text(),
              QStringLiteral("Unsaved content will be lost. Uploaded receipts are not deleted automatically."));
    under.question("questionConfirm")->click();
    waitUntil([&] { return under.form.isNull(); });
}

TEST(TransactionForm, ChangesItsLanguageInPlaceAndKeepsTheDraft)
{
    FormUnderTest under;
    fill(under);
    InterfaceLanguage::change("id-ID");
    settle();
    EXPECT_EQ(under.amount(), "4.385.200");
    EXPECT_EQ(under.control<QAbstractButton>("entrySave").text(), QStringLiteral("Simpan pengeluaran"));
    under.answer(ServerReply::error(409, "balance_limit"));
    under.saveAndWait();
    EXPECT_EQ(under.posted().back().amountMinor, 438'520'000);
}

TEST(TransactionForm, FindsACategoryByTypingInTheTiles)
{
    FormUnderTest under;
    under.type("entryAmount", "5");
    under.control("entryCategory0").setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_R);
    ASSERT_EQ(QApplication::focusWidget()->objectName(), QStringLiteral("entryCategorySearch"));
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("ent"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_FALSE(under.control("entryCategoryPopover").isVisible());
    EXPECT_EQ(under.control<QLabel>("entryCategoryPath").text(), QStringLiteral("Rent"));
}

TEST(TransactionForm, FindsAnIncomeWithoutItsDiacritics)
{
    auto books = entryBooks();
    books.category("goods", "income", "Bán hàng").income("i1", "2026-11-02", "bank", "IDR", 3'000'000, "goods");
    books.income("i2", "2026-11-03", "bank", "IDR", 4'000'000, "sales");
    FormUnderTest under{"bank", "refund", "vi-VN", books};
    auto& original = under.control<QComboBox>("entryOriginal");
    ASSERT_EQ(original.count(), 3);
    original.setFocus();
    original.lineEdit()->selectAll();
    QTest::keyClicks(original.lineEdit(), QStringLiteral("BAN HANG"));
    auto* const list = original.completer()->popup();
    waitUntil([&] { return list->isVisible(); });
    EXPECT_EQ(list->model()->rowCount(), 1);
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_TRUE(original.currentText().contains(QStringLiteral("Bán hàng"))) << original.currentText().toStdString();
}

TEST(TransactionForm, LeavesNoSearchStandingThatChoseNoIncome)
{
    FormUnderTest under{"bank", "refund"};
    auto& original = under.control<QComboBox>("entryOriginal");
    const auto none = original.currentText();
    original.setFocus();
    original.lineEdit()->selectAll();
    QTest::keyClicks(original.lineEdit(), QStringLiteral("INV-77"));
    under.control("entryReference").setFocus();
    EXPECT_EQ(original.currentText().toStdString(), none.toStdString());
}

/// A program that ends takes its windows away; the field in use is left only then.
TEST(TransactionForm, GoesWithItsWindowWhileAnAmountIsBeingTyped)
{
    StoreUnderTest service;
    InterfaceLanguage::change("en-US");
    service.signIn(entryBooks());
    auto window = std::make_unique<QMainWindow>();
    window->show();
    const QPointer<TransactionForm> form = new TransactionForm(
        service.store, EntryForm::Opening{.kind = "expense", .accountID = "bank", .prefilled = {}}, window.get());
    form->open();
    form->activateWindow();
    waitUntil([&] { return form->isActiveWindow(); });
    auto* amount = form->findChild<QLineEdit*>(QStringLiteral("entryAmount"));
    amount->setFocus();
    QTest::keyClicks(amount, QStringLiteral("438"));
    bool isFormTold = false;
    QObject::connect(form->findChild<EntryFormBody*>(), &EntryFormBody::edited, amount, [&] { isFormTold = true; });
    window.reset();
    EXPECT_TRUE(form.isNull());
    EXPECT_FALSE(isFormTold) << "there is no form any more to be told";
}

TEST(TransactionForm, ClosesThePopoverBeforeTheForm)
{
    FormUnderTest under;
    under.click("entryAllCategories");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    EXPECT_FALSE(under.control("entryCategoryPopover").isVisible());
    EXPECT_TRUE(under.form->isVisible());
}

TEST(TransactionForm, FundsAFloatAndExchangesCurrencies)
{
    {
        FormUnderTest transfer{"bank", "transfer"};
        QTest::keyClick(&transfer.control("entryDestination"), Qt::Key_Down);
        transfer.type("entryAmount", "500000");
        EXPECT_EQ(transfer.control<QAbstractButton>("entrySave").text(), QStringLiteral("Confirm funding"));
        transfer.answer(ServerReply::json("{}"));
        transfer.click("entrySave");
        waitUntil([&] { return transfer.form.isNull(); });
        EXPECT_EQ(transfer.posted().front().targetAccountID, "float");
        EXPECT_EQ(transfer.posted().front().transferPurpose, "funding");
    }
    FormUnderTest exchange{"bank", "exchange"};
    exchange.type("entryAmount", "1600000");
    QTest::keyClick(&exchange.control("entryDestination"), Qt::Key_Down);
    QTest::keyClick(&exchange.control("entryDestination"), Qt::Key_Down);
    exchange.type("entryTargetAmount", "100");
    exchange.answer(ServerReply::json("{}"));
    exchange.click("entrySave");
    waitUntil([&] { return exchange.form.isNull(); });
    EXPECT_EQ(exchange.posted().front().targetCurrency, "USD");
    EXPECT_EQ(exchange.posted().front().targetAmountMinor, 10'000);
}

class TransactionFormLanguages : public testing::TestWithParam<std::tuple<std::string, std::string>> {};

TEST_P(TransactionFormLanguages, CutsNoTextAndNamesEveryControl)
{
    const auto& [language, kind] = GetParam();
    FormUnderTest under{"bank", kind, language};
    QTest::keyClicks(&under.control("entryAmount"), QStringLiteral("5"));
    under.click("entrySave");
    settle();
    EXPECT_EQ(auditLabels(*under.form), std::vector<std::string>{});
    EXPECT_EQ(auditControls(*under.form), std::vector<std::string>{});
    EXPECT_TRUE(under.window.frameGeometry().contains(under.form->frameGeometry()));
}

INSTANTIATE_TEST_SUITE_P(All, TransactionFormLanguages,
                         testing::Combine(testing::Values("zh-CN", "id-ID", "vi-VN", "en-US"),
                                          testing::Values("expense", "transfer", "exchange", "refund", "opening")));
