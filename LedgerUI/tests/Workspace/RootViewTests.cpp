#include "LedgerUI/Screens/Root/RootView.h"

#include <algorithm>
#include <array>

#include <QCoro/QCoroTask>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <gtest/gtest.h>

#include "LedgerCore/Domain/Text/AppLanguage.h"
#include "LedgerUI/Components/Dialogs/FormDialog.h"
#include "LedgerUI/Presentation/Keys/KeyHelp.h"
#include "LedgerUI/testing/LabelAudit.h"
#include "LedgerUI/testing/WindowUnderTest.h"

namespace {

constexpr auto closeHint = "Return";

class Root : public testing::Test {
protected:
    std::size_t openAlerts()
    {
        settle(); // an alert opens once nobody has taken its message back
        return static_cast<std::size_t>(std::ranges::count_if(
            visibleWindows(), [](const QWidget* each) { return each->objectName() == QStringLiteral("alertDialog"); }));
    }
    void comeBack() { Q_EMIT qApp->applicationStateChanged(Qt::ApplicationActive); }
    void failToRefresh()
    {
        under.server.replace("GET v1/snapshot", ServerReply::error(500, "internal"));
        std::ignore = resultOf(under.store.refresh(true));
    }

    WindowUnderTest under;
    ScreenDriver& screen = under.screen;
};

/// A form with a field in which something is typed.
struct ChangedForm : FormDialog {
    explicit ChangedForm(QWidget* parent) : FormDialog{parent}
    {
        auto* note = new QLineEdit;
        note->setObjectName(QStringLiteral("formNote"));
        setBody(note, 300);
        setHasChanges([] { return true; });
        open();
    }
};

}

TEST_F(Root, ShowsOneAlertHoweverManyFailuresFollow)
{
    under.server.answer("POST v1/auth/login", ServerReply::error(401, "unauthorized"));
    under.server.answer("POST v1/demo", ServerReply::error(429, "rate_limited"));
    std::ignore = resultOf(under.store.login("a@example.com", "x"));
    EXPECT_EQ(openAlerts(), 1U);
    std::ignore = resultOf(under.store.startDemo("en-US", "owner"));
    EXPECT_EQ(openAlerts(), 1U);
    EXPECT_EQ(screen.read("messageText"), under.store.errorMessage().value_or(""));

    screen.press("messageClose");
    EXPECT_EQ(openAlerts(), 0U);
    EXPECT_FALSE(under.store.errorMessage());
    EXPECT_FALSE(under.store.noticeMessage());
}

TEST_F(Root, TellsOfAPendingApplicationAndClosesTheNotice)
{
    under.server.answer("POST v1/auth/login",
                        ServerReply::json(R"({"status":"pending","applicationID":"a1","companyName":"Harbour",)"
                                          R"("email":"a@example.com"})"));
    std::ignore = resultOf(under.store.login("a@example.com", "x"));
    ASSERT_EQ(openAlerts(), 1U);
    screen.keys("Esc");
    EXPECT_EQ(openAlerts(), 0U);
    EXPECT_FALSE(under.store.noticeMessage());
    EXPECT_TRUE(screen.shows("signInView"));
}

TEST_F(Root, KeepsAnAlertUntilSomebodyHasClosedIt)
{
    under.signIn(SnapshotBuilder{});
    failToRefresh();
    const auto message = screen.read("messageText");
    under.server.replace("GET v1/snapshot", ServerReply::json(SnapshotBuilder{}.companyName("Renamed").json()));
    comeBack();
    waitUntil([&] { return under.store.snapshot()->company.name == "Renamed" && !under.store.isBusy(); });
    ASSERT_TRUE(screen.shows("alertDialog"));
    EXPECT_EQ(screen.read("messageText"), message);
    screen.keys(closeHint);
    EXPECT_FALSE(screen.shows("alertDialog"));
}

TEST_F(Root, KeepsAMessageThatAClosingFormWouldTakeAway)
{
    under.signIn(SnapshotBuilder{});
    ChangedForm form{&under.window};
    screen.waitForFocus("formNote");
    failToRefresh();
    ASSERT_EQ(openAlerts(), 1U);
    form.leave();
    waitUntil([this] { return openAlerts() == 1; });
    screen.press("messageClose");
    EXPECT_FALSE(under.store.errorMessage());
}

/// What waits for the store goes on as soon as it is free, before an alert can open.
TEST_F(Root, ShowsAMessageThatTheNextOperationClearsBeforeAnybodyCouldReadIt)
{
    under.signIn(SnapshotBuilder{});
    QObject::connect(&under.store, &LedgerStore::errorMessageChanged, &under.window, [this] {
        if (!under.store.errorMessage())
            return;
        under.server.replace("GET v1/snapshot", ServerReply::parked());
        QCoro::connect(under.store.refresh(true), &under.window, [](const Result<void>&) {});
    });
    failToRefresh();
    EXPECT_FALSE(under.store.errorMessage());
    ASSERT_EQ(openAlerts(), 1U);
    EXPECT_NE(screen.read("messageText"), "");
}

TEST_F(Root, RefreshesOnReturnOnlyWhileSignedInAndIdle)
{
    comeBack();
    EXPECT_FALSE(under.store.isBusy());

    under.signIn(SnapshotBuilder{});
    under.server.replace("GET v1/snapshot", ServerReply::parked());
    comeBack();
    waitUntil([this] { return under.server.parkedCount() == 1; });
    comeBack();
    under.server.release(ServerReply::json(SnapshotBuilder{}.companyName("Renamed Trading").json()));
    waitUntil([this] { return under.store.snapshot()->company.name == "Renamed Trading"; });
    EXPECT_EQ(under.server.requests("GET v1/snapshot").size(), 1U);
    EXPECT_FALSE(under.store.errorMessage());
}

TEST_F(Root, GoesBackToSignInWhenTheSessionIsOver)
{
    under.signIn(SnapshotBuilder{});
    EXPECT_TRUE(screen.shows("workspaceView"));
    under.server.replace("GET v1/snapshot", ServerReply::error(401, "unauthorized"));
    std::ignore = resultOf(under.store.refresh(true));
    screen.press("messageClose");
    EXPECT_TRUE(screen.shows("signInView"));
    EXPECT_FALSE(screen.shows("workspaceView"));
}

TEST_F(Root, LetsEnterPressTheFocusedButtonAndNoOther)
{
    screen.find("passwordEye").setFocus();
    screen.keys("Return");
    EXPECT_EQ(screen.find<QLineEdit>("password").echoMode(), QLineEdit::Normal);
    screen.keys("Enter");
    EXPECT_EQ(screen.find<QLineEdit>("password").echoMode(), QLineEdit::Password);
    EXPECT_TRUE(under.server.requests().empty());

    under.signIn(SnapshotBuilder{});
    ChangedForm form{&under.window};
    screen.waitForFocus("formNote");
    screen.keys("Esc");
    screen.waitForFocus("questionCancel");
    screen.keys("Tab Return");
    EXPECT_FALSE(form.isVisible());
}

TEST_F(Root, ShowsAllKeysAnywhereAndGivesTheFocusBack)
{
    under.signIn(SnapshotBuilder{});
    ChangedForm form{&under.window};
    screen.waitForFocus("formNote");
    screen.keys("F1 F1");
    for (const auto& section : keyHelp("en-US")) {
        for (const auto& line : section.lines)
            EXPECT_TRUE(screen.says(line.text.toStdString())) << line.text.toStdString();
    }
    EXPECT_EQ(screen.find("keysClose").toolTip().toStdString(), closeHint);
    screen.keys(closeHint);
    EXPECT_FALSE(screen.shows("keysDialog"));
    EXPECT_EQ(screen.focus(), "formNote");
    form.leave();
}

TEST_F(Root, CutsNoneOfTheKeysInAnyLanguage)
{
    under.window.resize(900, 640);
    for (const auto tag : AppLanguage::supportedLocales) {
        under.speak(std::string{tag});
        screen.keys("F1");
        auto& dialog = screen.find("keysDialog");
        EXPECT_EQ(auditLabels(dialog), std::vector<std::string>{}) << tag;
        EXPECT_LE(dialog.height(), 640) << tag;
        screen.keys("Esc");
    }
}

TEST_F(Root, ScrollsThroughAllKeysByKeysAloneInAnyLanguage)
{
    under.window.resize(900, 640);
    for (const auto tag : AppLanguage::supportedLocales) {
        under.speak(std::string{tag});
        screen.keys("F1");
        const auto& list = screen.find<QScrollArea>("keysScroll");
        auto unseen = list.widget()->findChildren<QLabel*>();
        ASSERT_FALSE(unseen.isEmpty());
        auto* const first = unseen.first();
        const auto isWhole = [](const QLabel* each) { return each->visibleRegion().boundingRect() == each->rect(); };
        for (int before = -1; before != list.verticalScrollBar()->value();) {
            before = list.verticalScrollBar()->value();
            unseen.removeIf(isWhole);
            screen.keys("Down");
        }
        for (const auto* each : std::as_const(unseen))
            ADD_FAILURE() << tag << ": out of reach: " << each->text().toStdString();
        EXPECT_FALSE(isWhole(first)) << "the window is too large to try it";

        // The keys of a list, also from the button below it.
        screen.keys("Home");
        EXPECT_TRUE(isWhole(first)) << tag;
        screen.keys("Tab End");
        EXPECT_EQ(list.verticalScrollBar()->value(), list.verticalScrollBar()->maximum()) << tag;
        screen.keys("PgUp PgUp");
        EXPECT_TRUE(isWhole(first)) << tag;
        screen.keys("Esc");
    }
}
