#include "LedgerUI/Screens/Ledger/LedgerView.h"

#include <utility>

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTableView>
#include <QTest>
#include <QToolButton>
#include <fmt/format.h>
#include <gtest/gtest.h>

#include "LedgerCore/Client/testing/StoreUnderTest.h"
#include "LedgerUI/Components/Period/PeriodGridView.h"
#include "LedgerUI/Components/Table/PlainTable.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/SelectableText.h"
#include "LedgerUI/Presentation/Ledger/Listing/LedgerBrowser.h"
#include "LedgerUI/Presentation/Ledger/Rows/LedgerTableModel.h"
#include "LedgerUI/Presentation/tests/LedgerSample.h"
#include "LedgerUI/Screens/Entry/ReversalDialog.h"
#include "LedgerUI/Screens/Entry/TransactionForm.h"
#include "LedgerUI/Screens/Ledger/Detail/LedgerBalancesBody.h"
#include "LedgerUI/Screens/Ledger/Detail/LedgerDetailPane.h"
#include "LedgerUI/Screens/Ledger/LedgerDialogs.h"
#include "LedgerUI/Screens/Ledger/LedgerTable.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/Theme.h"
#include "LedgerUI/Theme/TypeScale.h"
#include "LedgerUI/testing/LabelAudit.h"
#include "LedgerUI/testing/ScreenDriver.h"

namespace {

constexpr QSize usual{1160, 734}; // a window without its status bar
constexpr QSize smallest{900, 614};

/// The ledger page of the sample books beside the room of the side bar.
struct OpenedLedger {
    explicit OpenedLedger(const SnapshotBuilder& books = sampleLedger(), QSize size = usual)
    {
        InterfaceLanguage::change("en-US");
        under.signIn(books);
        auto* row = new QHBoxLayout(&window);
        row->setContentsMargins(size == usual ? Space::sideBar : Space::rail, 0, 0, 0);
        view = new LedgerView(under.store, &window);
        row->addWidget(view);
        window.resize(size);
        window.show();
        QApplication::setActiveWindow(&window);
    }
    ~OpenedLedger() { InterfaceLanguage::change("en-US"); }

    template <class Widget>
    Widget* find(const char* name) const
    {
        auto* found = view->findChild<Widget*>(QString::fromLatin1(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        auto* focus = QApplication::focusWidget();
        QTest::keyClick(focus ? focus : view, static_cast<Qt::Key>(key), modifiers);
        settle();
    }
    void type(const QString& text) const { QTest::keyClicks(QApplication::focusWidget(), text); }

    /// The titles in the table, from the top.
    [[nodiscard]] std::string titles() const
    {
        const auto* model = find<QTableView>("ledgerTable")->model();
        QStringList all;
        for (int row = 0; row < model->rowCount(); ++row)
            all << model->index(row, 1).data().toString();
        return all.join(QStringLiteral(", ")).toStdString();
    }
    std::string textOf(const char* name) const { return find<QLabel>(name)->text().toStdString(); }
    [[nodiscard]] std::string period() const { return find<QToolButton>("periodLabel")->text().toStdString(); }

    StoreUnderTest under;
    QWidget window; // in the place of the workspace
    LedgerView* view = nullptr;
    ScreenDriver person;
};

SnapshotBuilder ledgerOfManyCategories()
{
    auto books = sampleLedger();
    for (int each = 0; each < 60; ++each) {
        const auto id = "c" + std::to_string(each);
        books.category(id, "expense", "Kind of spending " + std::to_string(each));
        books.expense("s" + std::to_string(each), "2026-11-03", "Operating bank", "USD", 100 + each, id);
    }
    return books;
}

TEST(LedgerView, CutsNoAmountBesideTheDetailHoweverWideTheWindow)
{
    OpenedLedger page;
    page.under.store.setAppLanguage("vi-VN");
    page.view->findChild<LedgerBrowser*>()->setFilter({});
    settle();
    auto* table = page.find<LedgerTable>("ledgerTable");
    for (const int width : {1004, 1040, 1100, 1160, 1300}) {
        page.window.resize(width, 640);
        settle();
        table->chooseAll({"e1"});
        settle();
        const auto column = LedgerTableModel::amount;
        EXPECT_LE(table->columnViewportPosition(column) + table->columnWidth(column), table->viewport()->width())
            << width;
        EXPECT_EQ(auditLabels(*page.find<QWidget>("totalsStrip")), std::vector<std::string>{}) << width;
    }
}

TEST(LedgerView, ForgetsTheChosenEntryWithTheSession)
{
    OpenedLedger page;
    page.under.server.answer("POST v1/auth/logout", ServerReply::json("{}"));
    page.person.waitFor("ledgerTable");
    page.find<LedgerTable>("ledgerTable")->chooseAll({"e1"});
    settle();
    ASSERT_FALSE(page.view->statusContext().text.isEmpty());
    std::ignore = resultOf(page.under.store.logout());
    EXPECT_TRUE(page.view->statusContext().text.isEmpty());
}

TEST(LedgerView, ListsTheChoicesOfAFilterInsideTheWindowAndChoosesNoneByOpeningThem)
{
    OpenedLedger page{ledgerOfManyCategories(), smallest};
    const auto before = page.titles();
    for (const auto* name : {"filterAll", "filterAll"}) {
        page.person.press(name);
        EXPECT_EQ(page.titles(), before);
        settle();
    }
    page.window.resize(usual);
    settle();
    page.person.press("filterCategories");
    EXPECT_EQ(page.titles(), before);
    const auto* popover = page.window.findChild<QWidget*>(QStringLiteral("filterPopover"));
    EXPECT_TRUE(page.window.rect().contains(popover->geometry()));
    EXPECT_EQ(page.person.focus(), "choiceSearch");
    page.person.type("spending 41");
    page.person.keys("Return");
    EXPECT_EQ(page.titles(), "Kind of spending 41");
    EXPECT_EQ(page.person.read("filterCategories"), "Category 1");
    page.person.keys("Down Space Escape");
    EXPECT_EQ(page.titles(), before);
    EXPECT_EQ(page.person.focus(), "filterCategories");
}

TEST(LedgerView, ClearsSearchFiltersAndPeriodAtOnce)
{
    const OpenedLedger page;
    auto* browser = page.view->findChild<LedgerBrowser*>();
    const auto opened = browser->filter();
    EXPECT_FALSE(page.person.shows("filterClear"));
    browser->setFilter({.text = "huong", .kinds = {"expense"}});
    ASSERT_TRUE(page.person.offers("filterClear"));
    const_cast<OpenedLedger&>(page).person.press("filterClear");
    EXPECT_EQ(browser->filter(), opened);
    EXPECT_EQ(page.find<QLineEdit>("ledgerSearch")->text(), QString{});
    EXPECT_EQ(page.person.focus(), "ledgerTable");
}

TEST(LedgerView, MarksTheHeadThatItIsSortedBy)
{
    OpenedLedger page;
    page.person.waitFor("ledgerTable");
    auto* heads = page.find<QTableView>("ledgerTable")->horizontalHeader();
    const auto marked = [heads] {
        const auto picture = heads->grab().toImage();
        QList<int> sections;
        for (int at = 0; at < picture.width() * picture.height(); ++at) {
            const QPoint place{at % picture.width(), at / picture.width()};
            const int section = heads->logicalIndexAt(place / picture.devicePixelRatio());
            if (picture.pixelColor(place) == Theme::current().color(Token::text) && !sections.contains(section))
                sections << section;
        }
        return sections;
    };
    EXPECT_EQ(marked(), QList<int>{LedgerTableModel::date});
    page.view->findChild<LedgerBrowser*>()->setSort({LedgerSort::Key::amount, LedgerSort::Direction::ascending});
    page.person.waitUntil("the other head is marked", [&] { return marked() == QList<int>{LedgerTableModel::amount}; });
}

TEST(LedgerView, ChoosesWhatItFramesAndTakesItsKeysFromAnywhereInTheWindow)
{
    OpenedLedger page;
    QPushButton outside{&page.window};
    outside.show();
    outside.setFocus();
    auto* table = page.find<LedgerTable>("ledgerTable");
    page.person.keys("Ctrl+F");
    EXPECT_EQ(page.person.focus(), "ledgerSearch");
    page.person.type("utilities");
    page.person.keys("Down");
    EXPECT_EQ(page.person.focus(), "ledgerTable");
    EXPECT_EQ(table->selectedIDs(), (std::vector<std::string>{"v1"}));
    page.person.keys("End");
    EXPECT_EQ(table->selectedIDs(), (std::vector<std::string>{"e2"}));
    page.person.keys("Home Down");
    EXPECT_EQ(table->selectedRows(), (std::vector<int>{1}));
    EXPECT_EQ(table->currentIndex().row(), 1);

    // What hides the chosen row leaves nothing framed either.
    page.view->findChild<LedgerBrowser*>()->setFilter({.kinds = {"transfer"}});
    EXPECT_FALSE(table->currentIndex().isValid());
    page.person.keys("Down");
    EXPECT_EQ(table->selectedIDs(), (std::vector<std::string>{"t1"}));

    outside.setFocus();
    page.person.keys("Ctrl+D");
    EXPECT_FALSE(page.person.shows("detailPane"));
    page.person.keys("Ctrl+D");
    EXPECT_TRUE(page.person.shows("detailPane"));
    page.person.keys("Shift+F8");
    EXPECT_EQ(page.view->findChild<LedgerBrowser*>()->sort(),
              (LedgerSort{LedgerSort::Key::date, LedgerSort::Direction::ascending}));
    page.person.keys("F8");
    EXPECT_EQ(page.view->findChild<LedgerBrowser*>()->sort().key, LedgerSort::Key::entry);
    table->setFocus();
    page.person.keys("Shift+F10");
    EXPECT_TRUE(page.person.shows("entryMenu"));
    page.person.keys("Escape");
}

TEST(LedgerView, RecordsOnTheAccountThatItIsNarrowedTo)
{
    OpenedLedger page;
    page.view->findChild<LedgerBrowser*>()->setFilter({.accountIDs = {"Singapore"}});
    page.person.keys("Ctrl+N");
    EXPECT_EQ(page.window.findChild<QComboBox*>(QStringLiteral("entryAccount"))->currentText(),
              QStringLiteral("Singapore"));
}

TEST(LedgerView, RecordsAnEntryOnceMore)
{
    OpenedLedger page;
    const auto offers = [&](const char* id) {
        page.find<LedgerTable>("ledgerTable")->choose(id);
        return page.find<QAction>("duplicate")->isVisible();
    };
    EXPECT_FALSE(offers("v1"));
    EXPECT_FALSE(offers("r1"));
    ASSERT_TRUE(offers("e1"));
    page.find<QAction>("duplicate")->trigger();
    auto* form = page.window.findChild<TransactionForm*>();
    ASSERT_NE(form, nullptr);
    EXPECT_EQ(form->findChild<QLineEdit*>(QStringLiteral("entryAmount"))->text(), QStringLiteral("438.50"));
    EXPECT_EQ(form->findChild<QComboBox*>(QStringLiteral("entryAccount"))->currentText(),
              QStringLiteral("Operating bank"));
}

TEST(LedgerView, RefundsWhatAnIncomeStillAllows)
{
    OpenedLedger page;
    page.find<LedgerTable>("ledgerTable")->choose("e1");
    EXPECT_FALSE(page.person.shows("refundButton"));
    page.view->findChild<LedgerBrowser*>()->setFilter({});
    page.find<LedgerTable>("ledgerTable")->choose("i1");
    page.person.press("refundButton");
    auto* form = page.window.findChild<TransactionForm*>();
    ASSERT_NE(form, nullptr);
    EXPECT_EQ(form->findChild<QLineEdit*>(QStringLiteral("entryAmount"))->text(), QStringLiteral("2,300.00"));
    EXPECT_EQ(form->findChild<QComboBox*>(QStringLiteral("entryAccount"))->currentText(),
              QStringLiteral("Operating bank"));
    page.under.server.replace("POST v1/transactions", ServerReply::json(R"({"id":"r2"})"));
    form->findChild<QAbstractButton*>(QStringLiteral("entrySave"))->click();
    waitUntil([&] { return page.under.server.requests("POST v1/transactions").size() == 1; });
    const auto sent = page.under.server.requests("POST v1/transactions").front().body;
    EXPECT_NE(sent.find(R"("originalTransactionID":"i1")"), std::string::npos);
    EXPECT_NE(sent.find(R"("amountMinor":230000)"), std::string::npos);
}

TEST(LedgerView, AddsUpWhatIsSelectedByCurrency)
{
    OpenedLedger page;
    auto* table = page.find<LedgerTable>("ledgerTable");
    ASSERT_TRUE(table->chooseAll({"e1", "e2", "r1"}));
    EXPECT_EQ(page.textOf("entryCount"), "3 selected");
    EXPECT_TRUE(page.person.says("−638.50"));
    EXPECT_TRUE(page.person.says("−4,385,200"));
    table->choose("e1");
    EXPECT_NE(page.textOf("entryCount"), "3 selected");
}

TEST(LedgerView, AddsUpOnlyWhatAFigureIsTheSumOf)
{
    auto books = sampleLedger().income("i9", "2026-10-31", "Operating bank", "USD", 4'000, "sales");
    OpenedLedger page{books};
    auto* table = page.find<LedgerTable>("ledgerTable");
    page.view->findChild<LedgerBrowser*>()->setFilter({.figure = ReportFigure{.scope = {.currency = "USD"}}});
    ASSERT_TRUE(table->chooseAll({"i1", "x1"}));
    EXPECT_TRUE(page.person.says("−9,500.00"));
    EXPECT_EQ(page.person.read("totals").find("SGD"), std::string::npos)
        << "the other currency of the exchange is no part of the figure";
}

TEST(LedgerView, GroupsByDayAndNeverChoosesAHead)
{
    OpenedLedger page;
    auto* table = page.find<LedgerTable>("ledgerTable");
    page.person.press("byDayToggle");
    ASSERT_TRUE(page.find<QToolButton>("byDayToggle")->isChecked());
    ASSERT_TRUE(table->entries().isHeadAt(0));
    const auto chosen = [&] {
        std::string all;
        for (const auto& id : table->selectedIDs())
            all += (all.empty() ? "" : " ") + id;
        return all;
    };
    table->setFocus();
    page.person.keys("Home");
    EXPECT_EQ(chosen(), "v1");
    page.person.keys("Up");
    EXPECT_EQ(chosen(), "v1") << "nothing is above the first head";
    page.person.keys("Down Down");
    EXPECT_EQ(chosen(), "r1") << "over the head between two days";
    page.person.keys("Up");
    EXPECT_EQ(chosen(), "e3");
    page.person.keys("PgDown");
    EXPECT_EQ(chosen(), "e2");
    page.person.keys("PgUp");
    EXPECT_EQ(chosen(), "v1");
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, table->visualRect(table->model()->index(0, 1)).center());
    EXPECT_EQ(chosen(), "v1");
    page.person.keys("Shift+Down Shift+Down");
    EXPECT_EQ(chosen(), "v1 e3 r1");
    page.person.keys("Ctrl+A");
    EXPECT_EQ(chosen(), "v1 e3 r1 x1 t1 e1 e2");
    page.person.keys("Ctrl+Shift+G");
    EXPECT_FALSE(table->entries().isHeadAt(0));
    EXPECT_EQ(chosen(), "v1 e3 r1 x1 t1 e1 e2");
    ASSERT_TRUE(table->chooseAll({"e1", "v1", "e3", "r1"}));
    page.person.keys("Ctrl+Shift+G");
    EXPECT_EQ(chosen(), "v1 e3 r1 e1");
}

/// A year of days in a window that holds a fraction of them.
TEST(LedgerView, PagesThroughGroupedDaysAndKeepsTheHeadInSight)
{
    auto books = snapshot().account("bank", {"USD"}).grantAll();
    for (int day = 1; day <= 28; ++day) {
        for (int each = 0; each < 3; ++each)
            books.income(fmt::format("i{}.{}", day, each), fmt::format("2026-11-{:02}", day), "bank", "USD", 100);
    }
    OpenedLedger page{books};
    auto* table = page.find<LedgerTable>("ledgerTable");
    page.view->findChild<LedgerBrowser*>()->setGrouping(LedgerGrouping::byDay);
    table->setFocus();
    page.person.keys("Home");
    int before = -1;
    for (int pages = 0; pages < 20 && table->currentIndex().row() != before; ++pages) {
        before = table->currentIndex().row();
        page.person.keys("PgDown");
    }
    EXPECT_EQ(table->selectedIDs(), (std::vector<std::string>{"i1.2"}));
    ASSERT_TRUE(table->choose("i14.0"));
    const auto head = table->visualRect(table->model()->index(table->currentIndex().row() - 1, 0));
    EXPECT_TRUE(table->viewport()->rect().contains(head.center()));
}

TEST(LedgerView, TellsWhatASingleAccountBeganAndEndedWith)
{
    OpenedLedger page;
    auto* browser = page.view->findChild<LedgerBrowser*>();
    const auto november = Period::containing(Period::Span::month, sampleToday);
    browser->setFilter({.period = november, .accountIDs = {"Operating bank"}, .currencies = {"USD"}});
    for (const auto* said : {"Opening", "12,500.00", "+99.00", "−787.50", "Closing", "11,811.50"})
        EXPECT_TRUE(page.person.says(said)) << said;
    EXPECT_FALSE(page.find<QTableView>("ledgerTable")->isColumnHidden(LedgerTableModel::balance));
    browser->setFilter({.period = november, .kinds = {"expense"}, .accountIDs = {"Operating bank"}});
    EXPECT_FALSE(page.person.says("Opening")) << "what is filtered out would be missing between the two";
}

TEST(LedgerView, ReversesSeveralSelectedTogether)
{
    OpenedLedger page;
    page.find<LedgerTable>("ledgerTable")->chooseAll({"e1", "e2", "v1"});
    auto* reverse = page.find<QAction>("reverseSeveral");
    EXPECT_EQ(page.person.spoken("reverseSeveralButton"), "Reverse 3 entries…");
    EXPECT_TRUE(page.person.shows("exportSelectedButton") && page.person.shows("printSelectedButton"));
    EXPECT_FALSE(page.person.shows("shareButton")) << "that is done with one";
    page.person.press("reverseSeveralButton");
    EXPECT_TRUE(page.person.says("Reverse 2 entries")) << "a reversal itself is left out";
    page.window.findChild<QDialog*>(QStringLiteral("batchReversalDialog"))->close();
    page.find<LedgerTable>("ledgerTable")->choose("e1");
    EXPECT_FALSE(reverse->isVisible());
    page.find<QTableView>("ledgerTable")->clearSelection();
    EXPECT_FALSE(page.person.shows("detailFoot")) << "nothing is chosen that anything could be done with";
}

/// More are chosen than a table shows, and only the last of them still stands.
TEST(LedgerView, GoesOnWithAReversalThatStoppedAfterThousands)
{
    auto books = sampleLedger();
    std::vector<std::string> ids;
    for (int each = 0; each < 10'050; ++each) {
        LedgerTransaction entry;
        entry.id = "b" + std::to_string(each);
        entry.kind = EntryKind::expense;
        entry.date = "2026-11-12";
        entry.createdAt = each == 0 ? "2026-11-12T01:00:00Z" : "2026-11-12T02:00:00Z";
        entry.memberID = "m1";
        entry.categoryID = "power";
        entry.legs = {{"Operating bank", "USD", -100}};
        if (each > 0)
            entry.reversedBy = "undo" + std::to_string(each);
        ids.push_back(entry.id);
        books.entry(entry);
    }
    OpenedLedger page{books};
    auto& table = *page.find<LedgerTable>("ledgerTable");
    page.person.waitUntil("they are listed", [&] { return table.model()->rowCount() > 10'050; });
    ASSERT_TRUE(table.chooseAll(ids));
    auto* reverse = page.find<QAction>("reverseSeveral");
    ASSERT_TRUE(reverse->isVisible()) << "the last of them still stands";
    reverse->trigger();
    page.person.waitForText("Reverse 1 entry");
    auto* dialog = page.window.findChild<QDialog*>(QStringLiteral("batchReversalDialog"));
    const auto state = [dialog](int row) {
        const auto& rows = dialog->findChild<PlainTable*>(QStringLiteral("batchTable"))->rows();
        return rows.index(row, 2).data().toString().toStdString();
    };
    EXPECT_EQ(state(0), "Waiting") << "above thousands that are not sent";
    page.under.server.replace("POST v1/transactions/b0/reverse", ServerReply::parked());
    QTest::keyClicks(dialog->findChild<QLineEdit*>(QStringLiteral("batchReason")), QStringLiteral("Imported twice"));
    dialog->findChild<QPushButton*>(QStringLiteral("batchConfirm"))->click();
    page.person.waitForText("Part 2 of 2");
    EXPECT_EQ(state(49), "Being reversed…");
    page.person.waitUntil("it is sent", [&] { return page.under.server.parkedCount() == 1; });
    page.under.server.release(ServerReply::json(books.json()));
    page.person.waitForText("1 entry reversed.");
    dialog->close();
}

TEST(LedgerView, KeepsTheColumnsThatWereChosenAndTheirWidths)
{
    OpenedLedger page;
    auto* table = page.find<LedgerTable>("ledgerTable");
    const int before = table->columnWidth(LedgerTableModel::account);
    page.find<QAction>("columns.account")->trigger();
    EXPECT_TRUE(table->isColumnHidden(LedgerTableModel::account));
    table->horizontalHeader()->resizeSection(LedgerTableModel::date, 160);
    page.window.resize(page.window.width() + 60, page.window.height());
    auto books = sampleLedger();
    page.under.server.replace("GET v1/snapshot",
                              ServerReply::json(books.expense("n", "2026-11-20", "Singapore", "USD", 5).json()));
    ASSERT_TRUE(resultOf(page.under.store.refresh(true)).has_value());
    EXPECT_TRUE(table->isColumnHidden(LedgerTableModel::account));
    EXPECT_EQ(table->columnWidth(LedgerTableModel::date), 160);
    int whole = 0;
    for (int column = 0; column < table->model()->columnCount(); ++column)
        whole += table->isColumnHidden(column) ? 0 : table->columnWidth(column);
    EXPECT_EQ(whole, table->viewport()->width()) << "the entry takes what the others leave";
    page.find<QAction>("columns.usual")->trigger();
    EXPECT_FALSE(table->isColumnHidden(LedgerTableModel::account));
    EXPECT_GE(table->columnWidth(LedgerTableModel::account), before);
    EXPECT_NE(table->columnWidth(LedgerTableModel::date), 160);
}

TEST(LedgerView, GoesToADayInWhicheverMonth)
{
    OpenedLedger page;
    page.press(Qt::Key_G, Qt::ControlModifier);
    auto* line = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_NE(line, nullptr);
    line->selectAll();
    page.type(QStringLiteral("31/10/2026"));
    page.press(Qt::Key_Return);
    EXPECT_EQ(page.find<LedgerTable>("ledgerTable")->selectedIDs(), (std::vector<std::string>{"i1"}));
    EXPECT_EQ(page.view->findChild<LedgerBrowser*>()->filter().period,
              Period::containing(Period::Span::month, std::chrono::year{2026} / std::chrono::October / 31));
}

TEST(LedgerView, SelectsWhatAnImportRecorded)
{
    OpenedLedger page;
    Q_EMIT page.view->findChild<LedgerDialogs*>()->imported({"i1", "e1"});
    const auto ids = page.find<LedgerTable>("ledgerTable")->selectedIDs();
    EXPECT_EQ(ids, (std::vector<std::string>{"e1", "i1"}));
}

TEST(LedgerView, NarrowsByPersonAndAmount)
{
    OpenedLedger page;
    auto* browser = page.view->findChild<LedgerBrowser*>();
    browser->setFilter({});
    page.find<QToolButton>("filterAll")->click();
    EXPECT_EQ(page.find<QToolButton>("filterAll")->text(), QStringLiteral("More"));
    auto* parts = page.window.findChild<QListWidget*>(QStringLiteral("filterParts"));
    ASSERT_NE(parts, nullptr);
    EXPECT_EQ(parts->currentItem()->text(), QStringLiteral("Recorded by"));
    const auto amounts = parts->findItems(QStringLiteral("Amount range"), Qt::MatchExactly);
    ASSERT_EQ(amounts.size(), 1);
    parts->setCurrentItem(amounts.front());
    auto* least = page.window.findChild<QLineEdit*>(QStringLiteral("amountLeast"));
    least->setFocus();
    QTest::keyClicks(least, QStringLiteral("10,000.01"));
    EXPECT_EQ(browser->filter().amounts, (LedgerFilter::Amounts{.least = 1'000'001}));
    EXPECT_EQ(page.find<QToolButton>("filterAll")->text(), QStringLiteral("More 1"));
    EXPECT_TRUE(page.person.says("Amount range: from 10,000.01"));
    QTest::keyClicks(least, QStringLiteral("x"));
    EXPECT_EQ(browser->filter().amounts, (LedgerFilter::Amounts{.least = 1'000'001}))
        << "what cannot be read changes nothing";
    EXPECT_TRUE(page.person.says("Enter an amount, such as 1,200.50."));
}

TEST(LedgerView, TellsTheRateOfAnExchange)
{
    OpenedLedger page;
    page.find<LedgerTable>("ledgerTable")->choose("x1");
    EXPECT_TRUE(page.person.says("1 USD = SGD 1.340"));
}

/// The form hands over what it recorded; the ledger goes there, or says why it is not to be seen.
TEST(LedgerView, GoesToARecordedEntryAndKeepsWhatNarrowsTheLedger)
{
    OpenedLedger page;
    auto* browser = page.view->findChild<LedgerBrowser*>();
    const auto record = [&](const SnapshotBuilder& books, const QString& id) {
        page.person.keys("Ctrl+N");
        auto* form = page.window.findChild<TransactionForm*>();
        page.under.server.replace("GET v1/snapshot", ServerReply::json(books.json()));
        ASSERT_TRUE(resultOf(page.under.store.refresh(true)).has_value());
        Q_EMIT form->recorded(id);
        delete form;
        page.window.activateWindow();
        settle();
    };
    QStringList done;
    QObject::connect(page.view, &PageView::done, page.view, [&](const QString& sentence) { done << sentence; });
    auto books = sampleLedger();
    record(books.expense("new", "2026-11-20", "Singapore", "USD", 100), QStringLiteral("new"));
    EXPECT_EQ(page.find<LedgerTable>("ledgerTable")->selectedIDs(), (std::vector<std::string>{"new"}));
    EXPECT_EQ(page.person.focus(), "ledgerTable");
    EXPECT_EQ(done, QStringList{QStringLiteral("Entry saved.")});

    auto narrow = browser->filter();
    narrow.text = "huong";
    browser->setFilter(narrow);
    record(books.expense("other", "2026-11-19", "Singapore", "USD", 300), QStringLiteral("other"));
    EXPECT_EQ(browser->filter(), narrow);
    EXPECT_EQ(page.person.focus(), "recordedShow");
    auto stops = tabOrder(*page.find<QToolButton>("detailToggle"));
    stops.resize(3);
    EXPECT_EQ(stops, (std::vector<std::string>{"detailToggle", "recordedShow", "recordedClose"}));
    EXPECT_TRUE(page.person.says("The entry of 19 November 2026 is recorded, but outside"));
    page.person.keys("Tab"); // the round has ended where it began
    EXPECT_EQ(page.person.focus(), "recordedShow");
    page.person.keys("Space");
    EXPECT_EQ(page.find<LedgerTable>("ledgerTable")->selectedIDs(), (std::vector<std::string>{"other"}));
    EXPECT_FALSE(page.person.shows("recordedElsewhere"));
    EXPECT_EQ(page.person.focus(), "ledgerTable");
}

TEST(LedgerView, KeepsWhatNarrowsTheLedgerWhenAnEntryIsReversed)
{
    OpenedLedger page;
    auto* browser = page.view->findChild<LedgerBrowser*>();
    auto narrow = browser->filter();
    narrow.standings = {std::string{LedgerStandings::inForce}};
    browser->setFilter(narrow);
    ASSERT_TRUE(page.find<LedgerTable>("ledgerTable")->choose("e1"));
    settle();
    page.person.press("reverseButton");
    auto* dialog = page.window.findChild<ReversalDialog*>();
    ASSERT_NE(dialog, nullptr);
    auto after = sampleLedger().build();
    constexpr std::size_t at = 2;
    ASSERT_EQ(std::as_const(after).transactions[at].id, "e1");
    after.transactions[at].reversedBy = "v9";
    page.under.server.replace("GET v1/snapshot", ServerReply::json(Json::encode(after)));
    ASSERT_TRUE(resultOf(page.under.store.refresh(true)).has_value());
    Q_EMIT dialog->reversed(QStringLiteral("e1"));
    delete dialog;
    page.window.activateWindow();
    settle();
    EXPECT_EQ(browser->filter(), narrow);
    EXPECT_TRUE(page.person.says("The entry of 2 November 2026 is reversed, but outside"));
    page.person.press("recordedShow");
    EXPECT_EQ(page.find<LedgerTable>("ledgerTable")->selectedIDs(), (std::vector<std::string>{"e1"}));
}

TEST(LedgerView, ShowsTheTotalsOfEveryCurrencyInsideTheSmallestWindow)
{
    auto books = snapshot().account("bank", {"USD"}).grantAll();
    for (int each = 0; each < 40; ++each)
        books.expense("e" + std::to_string(each), "2026-11-03", "bank", fmt::format("X{:02}", each), 123'456'789);
    OpenedLedger page{books, smallest};
    EXPECT_EQ(page.textOf("entryCount"), "40 entries");
    page.person.press("totalsMore");
    const auto* popover = page.window.findChild<QWidget*>(QStringLiteral("totalsPopover"));
    EXPECT_TRUE(page.window.rect().contains(popover->geometry()));
    const auto* scroll = popover->findChild<QScrollArea*>();
    EXPECT_EQ(scroll->viewport()->width(), scroll->widget()->width());
    page.person.keys("PgDown PgDown PgDown PgDown");
    EXPECT_EQ(scroll->verticalScrollBar()->value(), scroll->verticalScrollBar()->maximum());
    EXPECT_GT(scroll->verticalScrollBar()->maximum(), 0);
    page.person.keys("Escape");
    page.view->findChild<LedgerBrowser*>()->setFilter({.text = "X01"});
    EXPECT_EQ(page.textOf("entryCount"), "0 of 40 entries");
}

TEST(LedgerView, FindsOpensAndCopiesAnEntryByKeyboardAlone)
{
    const OpenedLedger page;
    page.press(Qt::Key_F, Qt::ControlModifier);
    ASSERT_EQ(QApplication::focusWidget()->objectName(), QStringLiteral("ledgerSearch"));
    page.type(QStringLiteral("dien"));
    page.press(Qt::Key_Down);
    EXPECT_EQ(page.titles(), "Utilities › Electricity");
    ASSERT_EQ(QApplication::focusWidget()->objectName(), QStringLiteral("ledgerTable"));
    EXPECT_EQ(page.textOf("detailHeadline"), "Expense");
    page.press(Qt::Key_C, Qt::ControlModifier);
    const auto copied = QGuiApplication::clipboard()->text().split(QLatin1Char('\n'));
    EXPECT_TRUE(copied.at(0).startsWith(QStringLiteral("Date\tEntry\tNote\t")));
    EXPECT_TRUE(copied.at(1).startsWith(QStringLiteral("2026-11-02\tUtilities › Electricity\t")));
    page.press(Qt::Key_Return);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), QStringLiteral("detailClose"));
    page.press(Qt::Key_Escape);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), QStringLiteral("ledgerTable"));
    page.press(Qt::Key_F, Qt::ControlModifier);
    page.press(Qt::Key_Escape);
    EXPECT_EQ(page.find<QLineEdit>("ledgerSearch")->text(), QString{});
    EXPECT_EQ(page.find<QTableView>("ledgerTable")->model()->rowCount(), 7);
    page.press(Qt::Key_Escape);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), QStringLiteral("ledgerTable"));
}

TEST(LedgerView, MovesThroughPeriodsByKeyAndStopsAtTheOneThatHoldsToday)
{
    const OpenedLedger page;
    page.find<QTableView>("ledgerTable")->setFocus();
    EXPECT_FALSE(page.find<QToolButton>("periodNext")->isEnabled());
    page.press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(page.period(), "October 2026");
    EXPECT_EQ(page.titles(), "Sales");
    page.press(Qt::Key_Right, Qt::AltModifier);
    page.press(Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(page.period(), "November 2026");

    page.press(Qt::Key_Down, Qt::AltModifier);
    ASSERT_EQ(QApplication::focusWidget()->objectName(), QStringLiteral("periodGrid"));
    page.press(Qt::Key_Left);
    page.press(Qt::Key_Left);
    page.press(Qt::Key_Return);
    EXPECT_EQ(page.period(), "September 2026");
    page.press(Qt::Key_Down, Qt::AltModifier);
    page.press(Qt::Key_Escape);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), QStringLiteral("periodLabel"));
    EXPECT_EQ(page.period(), "September 2026");
}

TEST(LedgerView, TellsReadersOfEachPeriodInTheGrid)
{
    OpenedLedger page;
    page.person.keys("Alt+Down");
    auto* grid = page.window.findChild<PeriodGridView*>();
    auto* list = QAccessible::queryAccessibleInterface(grid);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->role(), QAccessible::List);
    ASSERT_EQ(list->childCount(), 12);
    EXPECT_EQ(list->child(9)->text(QAccessible::Name), QStringLiteral("October 2026, 1 entry"));
    EXPECT_TRUE(list->child(10)->state().selected);
    EXPECT_TRUE(list->child(11)->state().disabled);
    page.person.keys("Left");
    EXPECT_EQ(list->focusChild(), list->child(9));
    EXPECT_EQ(list->indexOfChild(list->focusChild()), 9);
    EXPECT_EQ(list->childAt(list->child(3)->rect().center().x(), list->child(3)->rect().center().y()), list->child(3));
}

TEST(LedgerView, KeepsTheSelectionThroughARefresh)
{
    OpenedLedger page;
    auto* table = page.find<QTableView>("ledgerTable");
    table->selectRow(3);
    const auto before = table->currentIndex().data().toString() + page.find<QLabel>("detailAmount")->text();
    auto fresh = sampleLedger();
    fresh.expense("new", "2026-11-20", "Singapore", "USD", 100);
    page.under.server.replace("GET v1/snapshot", ServerReply::json(fresh.json()));
    ASSERT_TRUE(resultOf(page.under.store.refresh(true)).has_value());
    ASSERT_EQ(table->model()->rowCount(), 8);
    EXPECT_EQ(table->currentIndex().row(), 4);
    EXPECT_EQ(table->currentIndex().data().toString() + page.find<QLabel>("detailAmount")->text(), before);
}

/// Filtering by account resets the table, sorting lays it out anew, and a refresh brings another book.
TEST(LedgerView, KeepsTheSameEntriesSelectedWhateverMovesOrHidesTheOthers)
{
    OpenedLedger page;
    auto* table = page.find<LedgerTable>("ledgerTable");
    auto* browser = page.view->findChild<LedgerBrowser*>();
    ASSERT_TRUE(table->choose("e2"));
    for (const auto* id : {"e1", "x1"})
        table->selectionModel()->select(table->model()->index(table->entries().rowOf(id), 0),
                                        QItemSelectionModel::Select | QItemSelectionModel::Rows);
    const auto selected = [&] {
        auto ids = table->selectedIDs();
        std::ranges::sort(ids);
        return ids;
    };
    const std::vector<std::string> chosen{"e1", "e2", "x1"};
    ASSERT_EQ(selected(), chosen);
    browser->setSort({LedgerSort::Key::amount, LedgerSort::Direction::ascending});
    EXPECT_EQ(selected(), chosen);
    browser->setFilter({});
    EXPECT_EQ(selected(), chosen);
    auto fresh = sampleLedger();
    fresh.expense("new", "2026-11-20", "Singapore", "USD", 100);
    page.under.server.replace("GET v1/snapshot", ServerReply::json(fresh.json()));
    ASSERT_TRUE(resultOf(page.under.store.refresh(true)).has_value());
    EXPECT_EQ(selected(), chosen);
    browser->setFilter({.kinds = {"expense"}});
    EXPECT_EQ(selected(), (std::vector<std::string>{"e1", "e2"}));
    table->selectAll();
    browser->setSort({});
    EXPECT_EQ(table->selectedIDs().size(), static_cast<std::size_t>(table->model()->rowCount()));
}

/// Whoever reads down the balances keeps the place while the ledger beside them is filtered, refreshed and added to.
TEST(LedgerView, BuildsTheBalancesAnewOnlyForOtherAccountsOrAnotherLanguage)
{
    OpenedLedger page;
    const auto body = [&] { return page.view->findChild<LedgerBalancesBody*>(); };
    const auto says = [&](const QString& text) {
        return std::ranges::any_of(body()->findChildren<QLabel*>(),
                                   [&](const QLabel* each) { return each->text() == text; });
    };
    const auto serve = [&](const SnapshotBuilder& books) {
        page.under.server.replace("GET v1/snapshot", ServerReply::json(books.json()));
        ASSERT_TRUE(resultOf(page.under.store.refresh(true)).has_value());
        settle();
    };
    const QPointer<QWidget> first = body();
    ASSERT_TRUE(first);
    page.view->findChild<LedgerBrowser*>()->setFilter({.text = "dien"});
    auto fresh = sampleLedger();
    fresh.balance("Operating bank", "USD", 77'700);
    EXPECT_FALSE(says(QStringLiteral("777.00")));
    serve(fresh);
    EXPECT_EQ(body(), first);
    EXPECT_TRUE(says(QStringLiteral("777.00")));
    fresh.account("Reserve", {"USD"}).grantAll().balance("Reserve", "USD", 12'300);
    serve(fresh);
    EXPECT_FALSE(first);
    EXPECT_TRUE(says(QStringLiteral("123.00")));
    InterfaceLanguage::change("id-ID");
    settle();
    EXPECT_EQ(page.textOf("detailHeadline"), "Saldo rekening");
}

TEST(LedgerView, ShowsBalancesUntilAnEntryIsChosenAndLeadsToOneAccount)
{
    const OpenedLedger page;
    EXPECT_EQ(page.textOf("detailHeadline"), "Account balances");
    const auto accounts = page.view->findChildren<QPushButton*>(QStringLiteral("balanceAccount"));
    ASSERT_EQ(accounts.size(), 3);
    accounts[2]->click();
    EXPECT_EQ(page.titles(), "Funding");
    page.find<QTableView>("ledgerTable")->selectRow(0);
    EXPECT_EQ(page.textOf("detailHeadline"), "Funding");
    page.find<QTableView>("ledgerTable")->clearSelection();
    EXPECT_EQ(page.textOf("detailHeadline"), "Account balances");
}

TEST(LedgerView, IsTabbedThroughInReadingOrderWhateverTheDetailShows)
{
    const OpenedLedger page{
        snapshot().account("bank", {"USD"}).grantAll().expense("e", "2026-11-19", "bank", "USD", 100)};
    auto* table = page.find<QTableView>("ledgerTable");
    const auto upToDetail = [&] {
        auto stops = tabOrder(*table);
        stops.resize(7);
        return stops;
    };
    EXPECT_EQ(upToDetail()[3], "balanceAccount");
    table->selectRow(0);
    settle();
    EXPECT_EQ(upToDetail(), (std::vector<std::string>{"ledgerTable", "totalsMore", "detailClose", "addReceiptsButton",
                                                      "reverseButton", "duplicateButton", "shareButton"}));
}

TEST(LedgerView, OpensTheDetailOverTheTableWithItsTextsInPlace)
{
    const OpenedLedger page{sampleLedger(), smallest};
    page.find<QTableView>("ledgerTable")->selectRow(2);
    page.find<QTableView>("ledgerTable")->setFocus();
    page.press(Qt::Key_Return);
    settle();
    const auto* headline = page.find<QLabel>("detailHeadline");
    EXPECT_EQ(headline->palette().color(QPalette::WindowText), QColor(0x85, 0x56, 0x00)); // a refund's ochre
    for (const auto* label : page.find<LedgerDetailPane>("detailPane")->findChildren<QLabel*>()) {
        const int lines = label->wordWrap()
                              ? label->fontMetrics()
                                    .boundingRect(QRect{0, 0, label->width(), 1000}, Qt::TextWordWrap, label->text())
                                    .height()
                              : 0;
        if (lines > 0)
            EXPECT_EQ(label->height(), std::max(lines, label->minimumHeight())) << label->text().toStdString();
    }
}

TEST(LedgerView, FollowsALinkToAnEntryOfAnotherPeriod)
{
    const OpenedLedger page;
    auto* table = page.find<QTableView>("ledgerTable");
    table->selectRow(2);
    ASSERT_EQ(page.textOf("detailHeadline"), "Refund");
    page.find<QPushButton>("entryLink")->click();
    settle();
    EXPECT_EQ(page.period(), "October 2026");
    EXPECT_EQ(page.textOf("detailHeadline"), "Income");
}

TEST(LedgerView, OffersTheWayOutOfAnEmptyView)
{
    const OpenedLedger page;
    page.press(Qt::Key_F, Qt::ControlModifier);
    page.type(QStringLiteral("cahaya"));
    page.press(Qt::Key_Return);
    const auto offers = page.view->findChildren<QPushButton*>(QStringLiteral("noticeChangeFilter"));
    ASSERT_EQ(offers.size(), 2);
    EXPECT_EQ(offers[1]->text(), QStringLiteral("Search all periods"));
    offers[1]->click();
    EXPECT_EQ(page.titles(), "Sales");
    EXPECT_EQ(page.period(), "All time");
}

TEST(LedgerView, OpensTheDetailOverTheTableInANarrowWindow)
{
    const OpenedLedger page{sampleLedger(), smallest};
    auto* pane = page.find<LedgerDetailPane>("detailPane");
    EXPECT_FALSE(pane->isVisible());
    page.find<QTableView>("ledgerTable")->selectRow(0);
    page.find<QTableView>("ledgerTable")->setFocus();
    page.press(Qt::Key_Return);
    EXPECT_TRUE(pane->isVisible());
    EXPECT_EQ(pane->geometry().right(), page.view->width() - 1);
    page.press(Qt::Key_Escape);
    EXPECT_FALSE(pane->isVisible());
    EXPECT_EQ(QApplication::focusWidget()->objectName(), QStringLiteral("ledgerTable"));
}

TEST(LedgerView, SaysWhichMonthItShowsWhenThisOneIsEmpty)
{
    const OpenedLedger page{
        snapshot().account("bank", {"USD"}).grantAll().income("i", "2026-08-09", "bank", "USD", 100)};
    EXPECT_EQ(page.period(), "August 2026");
    EXPECT_TRUE(page.find<QLabel>("periodHint")->isVisible());
    page.find<QToolButton>("periodNext")->click();
    EXPECT_FALSE(page.find<QLabel>("periodHint")->isVisible());
    EXPECT_EQ(page.find<QPushButton>("noticeChangeFilter")->text(), QStringLiteral("Go to August 2026"));
}

TEST(LedgerView, OffersOnlyWhatTheMemberMayRecord)
{
    const OpenedLedger reader{snapshot().account("bank", {"USD"}).grant("bank", {"view"})};
    EXPECT_FALSE(reader.find<QWidget>("newEntry")->isVisible());

    const OpenedLedger earner{snapshot().account("bank", {"USD"}).grant("bank", {"view", "income"})};
    earner.press(Qt::Key_N, Qt::ControlModifier);
    const auto forms = earner.window.findChildren<TransactionForm*>();
    ASSERT_EQ(forms.size(), 1);
    EXPECT_TRUE(forms.front()->isVisible());
}

struct Fit {
    std::string_view name;
    std::string_view locale;
    QSize size;
};

void PrintTo(const Fit& each, std::ostream* out)
{
    *out << each.name;
}

class LedgerViewFits : public testing::TestWithParam<Fit> {};

TEST(LedgerView, KeepsThePaneInItsWidthWhateverANoteHolds)
{
    auto books = sampleLedger();
    books.expense("linked", "2026-11-12", "Operating bank", "USD", 100).note(std::string(2000, 'W'));
    OpenedLedger page{books};
    page.view->findChild<LedgerTable*>()->choose("linked");
    settle();
    const auto* scroll = page.find<QScrollArea>("detailScroll");
    EXPECT_EQ(scroll->widget()->width(), scroll->viewport()->width());
    for (const auto* text : scroll->findChildren<SelectableText*>())
        EXPECT_LE(text->document()->idealWidth(), text->width()) << text->toPlainText().left(20).toStdString();
    EXPECT_EQ(page.textOf("detailAmount"), "−1.00");
}

TEST_P(LedgerViewFits, DaysOfEveryYear)
{
    auto books = sampleLedger();
    books.expense("old", "2025-12-22", "Operating bank", "USD", 100)
        .expense("older", "2024-05-28", "Singapore", "USD", 1);
    OpenedLedger page{books, GetParam().size};
    InterfaceLanguage::change(std::string{GetParam().locale});
    page.view->findChild<LedgerBrowser*>()->setFilter({});
    settle();
    const auto* table = page.find<QTableView>("ledgerTable");
    const QFontMetrics metrics{TypeScale::font(TypeStep::body)};
    for (int row = 0; row < table->model()->rowCount(); ++row) {
        const auto day = page.view->findChild<LedgerTable*>()->entries().row(row).day;
        const int room = RowDelegate::contentsOf(table->visualRect(table->model()->index(row, 0)), 0, 5).width();
        EXPECT_EQ(metrics.elidedText(day, Qt::ElideRight, room), day);
    }
}

TEST_P(LedgerViewFits, AndNamesEveryControl)
{
    OpenedLedger page{sampleLedger(), GetParam().size};
    InterfaceLanguage::change(std::string{GetParam().locale});
    settle();
    EXPECT_EQ(auditLabels(*page.view), std::vector<std::string>{});
    EXPECT_EQ(auditControls(*page.view), std::vector<std::string>{});
    page.find<QTableView>("ledgerTable")->selectRow(4);
    settle();
    EXPECT_EQ(auditLabels(*page.view), std::vector<std::string>{});
    page.find<LedgerTable>("ledgerTable")->chooseAll({"e1", "e2"});
    settle();
    EXPECT_EQ(auditLabels(*page.view), std::vector<std::string>{});
    EXPECT_EQ(auditControls(*page.view), std::vector<std::string>{});
}

INSTANTIATE_TEST_SUITE_P(Languages, LedgerViewFits,
                         testing::Values(Fit{"ChineseUsual", "zh-CN", usual}, Fit{"IndonesianUsual", "id-ID", usual},
                                         Fit{"VietnameseUsual", "vi-VN", usual}, Fit{"EnglishUsual", "en-US", usual},
                                         Fit{"ChineseSmall", "zh-CN", smallest},
                                         Fit{"IndonesianSmall", "id-ID", smallest},
                                         Fit{"VietnameseSmall", "vi-VN", smallest},
                                         Fit{"EnglishSmall", "en-US", smallest}),
                         [](const auto& each) { return std::string{each.param.name}; });

}
