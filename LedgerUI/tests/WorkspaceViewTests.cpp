#include "LedgerUI/Screens/Workspace/WorkspaceView.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>
#include <QVBoxLayout>
#include <gtest/gtest.h>

#include "LedgerCore/Domain/Text/AppLanguage.h"
#include "LedgerUI/Screens/Workspace/PageView.h"
#include "LedgerUI/testing/LabelAudit.h"
#include "LedgerUI/testing/Settling.h"
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
    std::vector<WorkspacePage> visiblePages() { return under.find<WorkspaceView>("workspaceView")->pages(); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    std::string focused()
    {
        const auto* focus = QApplication::focusWidget();
        return focus ? focus->objectName().toStdString() : "nothing";
    }

    WindowUnderTest under{threePages()};
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
    QTest::mouseClick(under.find("page-ledger"), Qt::LeftButton);
    under.find<QLineEdit>("firstPane")->setText(QStringLiteral("typed"));

    under.server.replace("GET v1/snapshot", ServerReply::json(SnapshotBuilder{}.json()));
    std::ignore = resultOf(under.store.refresh(true));
    EXPECT_EQ(visiblePages(), (std::vector{WorkspacePage::ledger, WorkspacePage::company}));
    EXPECT_TRUE(under.find<QToolButton>("page-ledger")->isChecked());
    EXPECT_EQ(under.find<QLineEdit>("firstPane")->text(), QStringLiteral("typed"));
}

TEST_F(Workspace, OpensTheFirstPageWhenTheChosenOneIsTakenAway)
{
    under.signIn(employeeBooks());
    EXPECT_TRUE(under.find<QToolButton>("page-summary")->isChecked());
    under.server.replace("GET v1/snapshot", ServerReply::json(SnapshotBuilder{}.json()));
    std::ignore = resultOf(under.store.refresh(true));
    EXPECT_TRUE(under.find<QToolButton>("page-ledger")->isChecked());
}

TEST_F(Workspace, IsWalkedByKeyboard)
{
    under.signIn(employeeBooks());
    settle();
    EXPECT_EQ(focused(), "firstPane");
    press(Qt::Key_3, Qt::ControlModifier);
    EXPECT_TRUE(under.find<QToolButton>("page-company")->isChecked());
    under.find("firstPane")->setFocus();

    std::vector<std::string> forward;
    for (int step = 0; step < 4; ++step) {
        press(Qt::Key_F6);
        forward.push_back(focused());
    }
    EXPECT_EQ(forward, (std::vector<std::string>{"secondPane", "refreshButton", "page-company", "firstPane"}));
    press(Qt::Key_F6, Qt::ShiftModifier);
    EXPECT_EQ(focused(), "page-company");
}

TEST_F(Workspace, IsTabbedThroughFromSideBarToStatusBarEvenAfterItsPagesChanged)
{
    under.openDemonstration(employeeBooks());
    under.server.replace("GET v1/snapshot", ServerReply::json(SnapshotBuilder{}.json()));
    std::ignore = resultOf(under.store.refresh(true));
    EXPECT_EQ(tabOrder(*under.find("page-ledger")),
              (std::vector<std::string>{"page-ledger", "copyDemonstrationEmail", "memberButton", "firstPane",
                                        "secondPane", "refreshButton"}));
}

TEST_F(Workspace, RefreshesByKeyOnceAndSaysSo)
{
    under.signIn(employeeBooks());
    auto* refresh = under.find<QToolButton>("refreshButton");
    EXPECT_EQ(refresh->text(), QStringLiteral("Updated 19:00"));

    under.server.replace("GET v1/snapshot", ServerReply::parked());
    press(Qt::Key_F5);
    waitUntil([this] { return under.server.parkedCount() == 1; });
    EXPECT_EQ(refresh->text(), QStringLiteral("Updating the books…"));
    press(Qt::Key_R, Qt::ControlModifier);
    under.server.release(ServerReply::error(500, "internal"));
    waitUntil([this] { return under.shows("alertDialog"); });
    EXPECT_EQ(under.server.requests("GET v1/snapshot").size(), 1U);
    EXPECT_EQ(refresh->text(), QStringLiteral("Not refreshed since 19:00"));
}

TEST_F(Workspace, TellsHowManyEntriesAreVisibleAndWhatThePageSays)
{
    auto books = employeeBooks().account("bank", {"USD"});
    books.income("t1", "2026-11-20", "bank", "USD", 500);
    under.signIn(books);
    EXPECT_EQ(under.find<QLabel>("entryCount")->text(), QStringLiteral("1 entry visible"));
    EXPECT_EQ(under.find<QLabel>("statusContext")->text(), QStringLiteral("1 selected"));
    EXPECT_EQ(under.find<QLabel>("statusFigure")->text(), QStringLiteral("USD 12.00"));
}

TEST_F(Workspace, SaysHowToComeBackToTheDemonstration)
{
    under.signIn(employeeBooks());
    EXPECT_FALSE(under.shows("demonstrationNotice"));
    std::ignore = resultOf(under.store.logout());
    under.openDemonstration(employeeBooks());
    const auto text = under.find<QLabel>("demonstrationCredentials")->text();
    EXPECT_TRUE(text.contains(QStringLiteral("tallyfold-demo"))) << text.toStdString();
    EXPECT_TRUE(under.find("demonstrationNotice")->accessibleName().contains(QStringLiteral("m1@example.com")));
    QTest::mouseClick(under.find("copyDemonstrationEmail"), Qt::LeftButton);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("m1@example.com"));
}

TEST_F(Workspace, KnowsTheDemonstrationAgainAfterAnOrdinarySignIn)
{
    auto sample = employeeBooks().build();
    sample.company.demo = DemoDescriptor{.version = 1, .locale = "en-US"};
    under.server.answer("POST v1/auth/login",
                        ServerReply::json(R"({"token":"token-1","snapshot":)" + Json::encode(sample) + "}"));
    ASSERT_TRUE(resultOf(under.store.login("m1@example.com", "tallyfold-demo")).has_value());
    EXPECT_TRUE(under.shows("demonstrationNotice"));
}

TEST_F(Workspace, SignsOutFromTheMembersMenu)
{
    under.server.answer("POST v1/auth/logout", ServerReply::json("{}"));
    under.signIn(employeeBooks());
    under.window.findChild<QAction*>(QStringLiteral("signOut"))->trigger();
    waitUntil([this] { return under.shows("signInView") && !under.store.isBusy(); });
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
        EXPECT_EQ(under.find("sideBar")->width(), size.width() < 1000 ? 56 : 200);
    }
}
