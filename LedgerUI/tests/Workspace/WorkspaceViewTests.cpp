#include "LedgerUI/Screens/Workspace/WorkspaceView.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>
#include <gtest/gtest.h>

#include "LedgerCore/Domain/Text/AppLanguage.h"
#include "LedgerUI/Screens/Workspace/PageView.h"
#include "LedgerUI/testing/LabelAudit.h"
#include "LedgerUI/testing/WindowUnderTest.h"

namespace {

/// A page of two panes, which a test can tell apart by the text typed into it.
class TwoPanePage final : public PageView {
public:
    TwoPanePage(LedgerStore& /*store*/, QWidget* parent) : PageView{parent}
    {
        auto* layout = new QVBoxLayout(this);
        for (auto*& pane : m_panes) {
            pane = new QLineEdit(this);
            layout->addWidget(pane);
        }
        m_panes[0]->setObjectName(QStringLiteral("firstPane"));
        m_panes[1]->setObjectName(QStringLiteral("secondPane"));
    }

    [[nodiscard]] QList<QWidget*> panes() const override { return {m_panes[0], m_panes[1]}; }
    [[nodiscard]] StatusContext statusContext() const override
    {
        return {.text = QStringLiteral("1 selected"), .figure = QStringLiteral("USD 12.00")};
    }

private:
    std::array<QLineEdit*, 2> m_panes{};
};

/// A page whose first pane only tells something; where it has a second, that can be acted on.
template <bool offersSomething>
class TellingPage final : public PageView {
public:
    TellingPage(LedgerStore& /*store*/, QWidget* parent) : PageView{parent}
    {
        auto* layout = new QVBoxLayout(this);
        layout->addWidget(m_told);
        if (offersSomething)
            layout->addWidget(m_offered);
        m_offered->setObjectName(QStringLiteral("offered"));
        m_offered->setVisible(offersSomething);
    }

    [[nodiscard]] QList<QWidget*> panes() const override { return {m_told, m_offered}; }

private:
    QLabel* m_told = new QLabel(QStringLiteral("Nothing is here yet."), this);
    QToolButton* m_offered = new QToolButton(this);
};

/// A page that remembers whether it was seen in the turn in which it was made, and how often it heard that it is.
class RememberingPage final : public PageView {
public:
    RememberingPage(LedgerStore& /*store*/, QWidget* parent) : PageView{parent}
    {
        setObjectName(QStringLiteral("rememberingPage"));
        QTimer::singleShot(0, this, [this] { wasSeenAtOnce = isVisible(); });
        connect(this, &PageView::firstSeen, this, [this] { timesSeenFirst += isVisible() ? 1 : 100; });
    }

    [[nodiscard]] QList<QWidget*> panes() const override { return {}; }

    bool wasSeenAtOnce = true;
    int timesSeenFirst = 0;
};

PageRegistry threePages()
{
    PageRegistry pages;
    pages.add<TwoPanePage>(WorkspacePage::summary);
    pages.add<TwoPanePage>(WorkspacePage::ledger);
    pages.add<TwoPanePage>(WorkspacePage::company);
    return pages;
}

SnapshotBuilder employeeBooks()
{
    return SnapshotBuilder{}.currentMember(SnapshotBuilder::person("m1", "Rizky Pratama"));
}

class Workspace : public testing::Test {
protected:
    std::vector<WorkspacePage> visiblePages() { return screen.find<WorkspaceView>("workspaceView").pages(); }
    bool isChosen(const char* page) { return screen.find<QToolButton>(page).isChecked(); }
    void refreshTo(const SnapshotBuilder& books)
    {
        under.server.replace("GET v1/snapshot", ServerReply::json(books.json()));
        std::ignore = resultOf(under.store.refresh(true));
    }

    /// A person comes back to the program once the last reading is over, and this one is answered by `reply`.
    void comeBackTo(ServerReply reply)
    {
        const auto readings = [this] { return under.server.requests("GET v1/snapshot").size(); };
        const auto before = readings();
        under.server.replace("GET v1/snapshot", std::move(reply));
        waitUntil([&] {
            under.window.findChild<WorkspaceView*>()->refreshOnReturn();
            return readings() > before;
        });
    }

    WindowUnderTest under{threePages()};
    ScreenDriver& screen = under.screen;
};

}

TEST_F(Workspace, ShowsThePagesThatAreBuiltAndAllowed)
{
    under.signIn(employeeBooks());
    EXPECT_EQ(visiblePages(), (std::vector{WorkspacePage::summary, WorkspacePage::ledger, WorkspacePage::company}));
}

TEST_F(Workspace, KeepsTheChosenPageAndItsStateWhenRightsChange)
{
    under.signIn(employeeBooks());
    screen.press("page-ledger");
    screen.fill("firstPane", "typed");
    refreshTo(SnapshotBuilder{});
    EXPECT_EQ(visiblePages(), (std::vector{WorkspacePage::ledger, WorkspacePage::company}));
    EXPECT_TRUE(isChosen("page-ledger"));
    EXPECT_EQ(screen.read("firstPane"), "typed");
}

TEST_F(Workspace, OpensTheFirstPageWhenTheChosenOneIsTakenAway)
{
    under.signIn(employeeBooks());
    EXPECT_TRUE(isChosen("page-summary"));
    refreshTo(SnapshotBuilder{});
    EXPECT_TRUE(isChosen("page-ledger"));
    EXPECT_EQ(screen.focus(), "firstPane");
}

TEST_F(Workspace, KeepsWhatAPageShowedUntilItMayBeSeenAgain)
{
    under.signIn(employeeBooks());
    screen.fill("firstPane", "typed in the summary");
    refreshTo(SnapshotBuilder{});
    EXPECT_FALSE(screen.says("typed in the summary"));
    refreshTo(employeeBooks());
    screen.keys("Ctrl+1");
    EXPECT_TRUE(isChosen("page-summary"));
    EXPECT_EQ(screen.read("firstPane"), "typed in the summary");
}

TEST_F(Workspace, IsWalkedByKeyboard)
{
    under.signIn(employeeBooks());
    EXPECT_EQ(screen.focus(), "firstPane");
    screen.keys("Ctrl+3");
    EXPECT_TRUE(isChosen("page-company"));
    EXPECT_EQ(screen.focus(), "firstPane");

    std::vector<std::string> forward;
    for (int step = 0; step < 4; ++step) {
        screen.keys("F6");
        forward.push_back(screen.focus());
    }
    EXPECT_EQ(forward, (std::vector<std::string>{"secondPane", "refreshButton", "page-company", "firstPane"}));
    screen.keys("Shift+F6");
    EXPECT_EQ(screen.focus(), "page-company");
}

TEST(WorkspacePages, AreMadeInOneTurnShownInTheNextAndTellWhenTheyAreFirstSeen)
{
    PageRegistry pages;
    pages.add<RememberingPage>(WorkspacePage::ledger);
    pages.add<TwoPanePage>(WorkspacePage::company);
    WindowUnderTest under{pages};
    under.signIn(employeeBooks());
    const auto& page = under.screen.find<RememberingPage>("rememberingPage");
    EXPECT_FALSE(page.wasSeenAtOnce);
    under.screen.keys("Ctrl+2");
    under.screen.waitFor("firstPane");
    under.screen.keys("Ctrl+1");
    under.screen.waitFor("rememberingPage");
    EXPECT_EQ(page.timesSeenFirst, 1);
}

TEST(WorkspaceFocus, IsOnWhatAPersonActsOnNextWhereTheFirstPaneOnlyTells)
{
    PageRegistry pages;
    pages.add<TellingPage<true>>(WorkspacePage::ledger);
    WindowUnderTest under{pages};
    under.signIn(SnapshotBuilder{});
    EXPECT_EQ(under.screen.focus(), "offered");
}

TEST(WorkspaceFocus, IsOnThePageInTheSideBarWhereNothingCanBeDone)
{
    PageRegistry pages;
    pages.add<TellingPage<false>>(WorkspacePage::ledger);
    WindowUnderTest under{pages};
    under.signIn(SnapshotBuilder{});
    EXPECT_EQ(under.screen.focus(), "page-ledger");
}

TEST_F(Workspace, IsTabbedThroughFromSideBarToStatusBarEvenAfterItsPagesChanged)
{
    under.openDemonstration(employeeBooks());
    refreshTo(SnapshotBuilder{});
    EXPECT_EQ(tabOrder(screen.find("page-ledger")),
              (std::vector<std::string>{"page-ledger", "copyDemonstrationEmail", "memberButton", "firstPane",
                                        "secondPane", "refreshButton", "companyButton"}));
}

TEST_F(Workspace, RefreshesByKeyOnceAndSaysSo)
{
    under.signIn(employeeBooks());
    EXPECT_EQ(screen.read("refreshButton"), "Updated 19:00");
    under.server.replace("GET v1/snapshot", ServerReply::parked());
    screen.keys("F5");
    waitUntil([this] { return under.server.parkedCount() == 1; });
    EXPECT_EQ(screen.read("refreshButton"), "Updating the books…");
    screen.keys("Ctrl+R");
    under.server.release(ServerReply::error(500, "internal"));
    screen.waitFor("alertDialog");
    screen.keys("Esc");
    EXPECT_EQ(under.server.requests("GET v1/snapshot").size(), 1U);
    EXPECT_EQ(screen.read("refreshButton"), "Not refreshed since 19:00");
}

TEST_F(Workspace, RefreshesQuietlyOnReturnAndSaysWhatFails)
{
    under.signIn(employeeBooks());
    under.server.replace("GET v1/snapshot", ServerReply::parked());
    Q_EMIT qApp->applicationStateChanged(Qt::ApplicationActive);
    waitUntil([this] { return under.server.parkedCount() == 1; });
    EXPECT_TRUE(screen.offers("refreshButton"));
    EXPECT_EQ(screen.read("refreshButton"), "Updated 19:00");

    under.server.release(ServerReply::error(500, "internal"));
    waitUntil([this] { return under.store.isStale(); });
    screen.waitFor("alertDialog");
    screen.keys("Esc");
    EXPECT_EQ(screen.read("refreshButton"), "Not refreshed since 19:00");

    // Some desktops leave the program for a moment as the alert closes: nobody came back then.
    Q_EMIT qApp->applicationStateChanged(Qt::ApplicationInactive);
    Q_EMIT qApp->applicationStateChanged(Qt::ApplicationActive);
    EXPECT_EQ(under.server.requests("GET v1/snapshot").size(), 1U);

    comeBackTo(ServerReply::dropped());
    comeBackTo(ServerReply::json(employeeBooks().json()));
    waitUntil([this] { return !under.store.isStale(); });
    settle();
    EXPECT_FALSE(screen.shows("alertDialog")) << "once in each outage";
    comeBackTo(ServerReply::dropped());
    screen.waitFor("alertDialog");
}

TEST_F(Workspace, TellsOfAnOutageOnceNoDialogIsInUse)
{
    under.signIn(employeeBooks());
    const auto loseTheService = [this] {
        screen.keys("F1");
        screen.waitFor("keysDialog");
        comeBackTo(ServerReply::dropped());
        waitUntil([this] { return under.store.isStale(); });
        settle();
    };
    loseTheService();
    EXPECT_FALSE(screen.shows("alertDialog"));
    screen.keys("Esc");
    screen.waitFor("alertDialog");
    screen.keys("Esc");
    comeBackTo(ServerReply::json(employeeBooks().json()));
    waitUntil([this] { return !under.store.isStale(); });

    loseTheService();
    comeBackTo(ServerReply::json(employeeBooks().json()));
    waitUntil([this] { return !under.store.isStale(); });
    screen.keys("Esc");
    settle();
    EXPECT_FALSE(screen.shows("alertDialog")) << "it is over";
}

TEST_F(Workspace, TellsHowManyEntriesAreVisibleAndWhatThePageSays)
{
    auto books = employeeBooks().account("bank", {"USD"});
    books.income("t1", "2026-11-20", "bank", "USD", 500);
    under.signIn(books);
    EXPECT_EQ(screen.read("entryCount"), "1 entry visible");
    EXPECT_EQ(screen.read("statusContext"), "1 selected");
    EXPECT_EQ(screen.read("statusFigure"), "USD 12.00");
}

TEST_F(Workspace, SaysHowToComeBackToTheDemonstration)
{
    under.signIn(employeeBooks());
    EXPECT_FALSE(screen.shows("demonstrationNotice"));
    std::ignore = resultOf(under.store.logout());
    under.openDemonstration(employeeBooks());
    EXPECT_TRUE(screen.read("demonstrationCredentials").ends_with("\ntallyfold-demo"));
    EXPECT_EQ(screen.spoken("demonstrationNotice"),
              "Demonstration company. Sign in again: m1@example.com, password tallyfold-demo");
    screen.press("copyDemonstrationEmail");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("m1@example.com"));
}

TEST_F(Workspace, KnowsTheDemonstrationAgainAfterAnOrdinarySignIn)
{
    auto sample = employeeBooks().build();
    sample.company.demo = DemoDescriptor{.version = 1, .locale = "en-US"};
    under.server.answer("POST v1/auth/login",
                        ServerReply::json(R"({"token":"token-1","snapshot":)" + Json::encode(sample) + "}"));
    ASSERT_TRUE(resultOf(under.store.login("m1@example.com", "tallyfold-demo")).has_value());
    EXPECT_TRUE(screen.shows("demonstrationNotice"));
}

TEST_F(Workspace, SignsOutFromTheMembersMenu)
{
    under.server.answer("POST v1/auth/logout", ServerReply::json("{}"));
    under.signIn(employeeBooks());
    screen.choose("memberButton", "signOut");
    waitUntil([this] { return screen.shows("signInView") && !under.store.isBusy(); });
    waitUntil([this] { return under.server.requests("POST v1/auth/logout").size() == 1; });
}

TEST_F(Workspace, CutsNoTextInAnyLanguageWideOrNarrow)
{
    auto person = SnapshotBuilder::person("m1", "Dewi Anggraini", "finance");
    person.email = "dewi.anggraini@en.demo.tallyfold.example";
    under.openDemonstration(SnapshotBuilder{}.currentMember(person));
    for (const auto size : {QSize{1160, 760}, QSize{900, 640}}) {
        under.window.resize(size);
        for (const auto tag : AppLanguage::supportedLocales) {
            under.speak(std::string{tag});
            EXPECT_EQ(auditLabels(under.window), std::vector<std::string>{}) << tag << ' ' << size.width();
        }
        EXPECT_EQ(screen.find("sideBar").width(), size.width() < 1000 ? 56 : 200);
    }
}

TEST_F(Workspace, SaysWhatIsDoneUntilAnotherPageOpens)
{
    under.signIn(employeeBooks());
    Q_EMIT qobject_cast<PageView*>(screen.find("firstPane").parentWidget())->done(QStringLiteral("Entry saved."));
    EXPECT_EQ(screen.read("statusSaid"), "Entry saved.");
    EXPECT_TRUE(screen.spoken("statusBar").starts_with("Entry saved., ")) << screen.spoken("statusBar");
    screen.keys("Ctrl+2");
    EXPECT_FALSE(screen.shows("statusSaid"));
}
