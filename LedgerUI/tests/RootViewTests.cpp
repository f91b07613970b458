#include "LedgerUI/Screens/Root/RootView.h"

#include <QDialog>
#include <QLabel>
#include <gtest/gtest.h>

#include "LedgerUI/Components/Dialogs/FormDialog.h"
#include "LedgerUI/testing/WindowUnderTest.h"

namespace {

std::size_t openAlerts()
{
    const auto windows = QApplication::topLevelWidgets();
    return static_cast<std::size_t>(std::ranges::count_if(windows, [](const QWidget* each) {
        return each->isVisible() && each->objectName() == QStringLiteral("alertDialog");
    }));
}

void comeBack()
{
    Q_EMIT qApp->applicationStateChanged(Qt::ApplicationActive);
}

}

TEST(RootView, ShowsOneAlertHoweverManyFailuresFollow)
{
    WindowUnderTest under;
    under.server.answer("POST v1/auth/login", ServerReply::error(401, "unauthorized"));
    under.server.answer("POST v1/demo", ServerReply::error(429, "rate_limited"));
    std::ignore = resultOf(under.store.login("a@example.com", "x"));
    EXPECT_EQ(openAlerts(), 1U);
    std::ignore = resultOf(under.store.startDemo("en-US", "owner"));
    EXPECT_EQ(openAlerts(), 1U);
    EXPECT_EQ(under.find<QLabel>("messageText")->text(), qString(under.store.errorMessage().value_or("")));

    QTest::mouseClick(under.find("messageClose"), Qt::LeftButton);
    EXPECT_EQ(openAlerts(), 0U);
    EXPECT_FALSE(under.store.errorMessage());
    EXPECT_FALSE(under.store.noticeMessage());
}

TEST(RootView, TellsOfAPendingApplicationAndClosesTheNotice)
{
    WindowUnderTest under;
    under.server.answer("POST v1/auth/login",
                        ServerReply::json(R"({"status":"pending","applicationID":"a1","companyName":"Harbour",)"
                                          R"("email":"a@example.com"})"));
    std::ignore = resultOf(under.store.login("a@example.com", "x"));
    ASSERT_EQ(openAlerts(), 1U);
    QTest::keyClick(under.find("alertDialog"), Qt::Key_Escape);
    EXPECT_FALSE(under.store.noticeMessage());
    EXPECT_TRUE(under.shows("signInView"));
}

TEST(RootView, KeepsAMessageThatAClosingFormWouldTakeAway)
{
    WindowUnderTest under;
    under.signIn(SnapshotBuilder{});
    FormDialog form{&under.window};
    form.open();
    waitUntil([&] { return QApplication::activeModalWidget() == &form; });
    under.server.replace("GET v1/snapshot", ServerReply::error(500, "internal"));
    std::ignore = resultOf(under.store.refresh(true));
    ASSERT_EQ(openAlerts(), 1U);

    form.leave();
    EXPECT_EQ(openAlerts(), 0U);
    waitUntil([] { return openAlerts() == 1; });
    EXPECT_TRUE(under.store.errorMessage());
    QTest::mouseClick(under.find("messageClose"), Qt::LeftButton);
    EXPECT_FALSE(under.store.errorMessage());
}

TEST(RootView, RefreshesOnReturnOnlyWhileSignedInAndIdle)
{
    WindowUnderTest under;
    comeBack();
    EXPECT_FALSE(under.store.isBusy());

    under.signIn(SnapshotBuilder{});
    under.server.replace("GET v1/snapshot", ServerReply::parked());
    comeBack();
    waitUntil([&] { return under.server.parkedCount() == 1; });
    comeBack();
    under.server.release(ServerReply::json(SnapshotBuilder{}.companyName("Renamed Trading").json()));
    waitUntil([&] { return !under.store.isBusy(); });
    EXPECT_EQ(under.server.requests("GET v1/snapshot").size(), 1U);
    EXPECT_FALSE(under.store.errorMessage());
    EXPECT_EQ(under.store.snapshot()->company.name, "Renamed Trading");
}

TEST(RootView, GoesBackToSignInWhenTheSessionIsOver)
{
    WindowUnderTest under;
    under.signIn(SnapshotBuilder{});
    EXPECT_TRUE(under.shows("workspaceView"));
    under.server.replace("GET v1/snapshot", ServerReply::error(401, "unauthorized"));
    std::ignore = resultOf(under.store.refresh(true));
    EXPECT_TRUE(under.shows("signInView"));
    EXPECT_FALSE(under.shows("workspaceView"));
}
