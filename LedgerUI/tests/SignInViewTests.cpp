#include "LedgerUI/Screens/SignIn/SignInView.h"

#include <QAction>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>
#include <gtest/gtest.h>

#include "LedgerCore/Domain/Text/AppLanguage.h"
#include "LedgerUI/testing/LabelAudit.h"
#include "LedgerUI/testing/Settling.h"
#include "LedgerUI/testing/WindowUnderTest.h"

namespace {

class SignIn : public testing::Test {
protected:
    void type(const char* field, const char* text) { under.find<QLineEdit>(field)->setText(QString::fromUtf8(text)); }
    QString typed(const char* field) { return under.find<QLineEdit>(field)->text(); }

    void press(const char* field, Qt::Key key) { QTest::keyClick(under.find(field), key); }

    /// Signs in with what is typed and reads the alert that follows.
    QString alertAfterSubmitting()
    {
        press("password", Qt::Key_Return);
        waitUntil([this] { return under.shows("alertDialog"); });
        return under.find<QLabel>("messageText")->text();
    }

    WindowUnderTest under;
};

}

TEST_F(SignIn, KeepsWhatWasTypedWhenThePasswordIsWrong)
{
    under.server.answer("POST v1/auth/login", ServerReply::error(401, "unauthorized"));
    const char* const copied = " \u200bmira@exam\u00adple.com\u2060\u00a0"; // with what a page puts around it
    type("email", copied);
    type("password", "wrong one");

    EXPECT_EQ(alertAfterSubmitting(), qString(under.store.errorMessage().value_or("nothing published")));
    EXPECT_EQ(under.server.requests("POST v1/auth/login").front().body,
              R"({"email":"mira@example.com","password":"wrong one"})");
    QTest::keyClick(under.find("alertDialog"), Qt::Key_Escape);
    under.activate();
    EXPECT_EQ(typed("email"), QString::fromUtf8(copied));
    EXPECT_EQ(typed("password"), QStringLiteral("wrong one"));
    EXPECT_TRUE(under.find("email")->hasFocus());
}

TEST_F(SignIn, SaysThatNoServiceAnswersAndKeepsWhatWasTyped)
{
    under.store.setServerURL("http://127.0.0.1:1");
    type("email", "mira@example.com");
    type("password", "secret");

    EXPECT_EQ(alertAfterSubmitting(), QStringLiteral("Unable to connect. Check the service address and your network. "
                                                     "The current data has not been refreshed."));
    EXPECT_EQ(typed("password"), QStringLiteral("secret"));
    EXPECT_TRUE(under.find("signIn")->isEnabled());
}

TEST_F(SignIn, NamesTheEmptyFieldsAndSendsNothing)
{
    press("email", Qt::Key_Return);
    EXPECT_TRUE(under.find("email")->property("invalid").toBool());
    EXPECT_TRUE(under.find("password")->property("invalid").toBool());
    EXPECT_TRUE(under.find("email")->hasFocus());
    EXPECT_EQ(under.find("email")->accessibleDescription(), QStringLiteral("Enter your work e-mail."));

    QTest::keyClicks(under.find("email"), QStringLiteral("mira@example.com"));
    EXPECT_FALSE(under.find("email")->property("invalid").toBool());
    press("email", Qt::Key_Return);
    EXPECT_TRUE(under.find("password")->hasFocus());
    EXPECT_TRUE(under.server.requests().empty());
}

TEST_F(SignIn, SendsOneRequestHoweverOftenTheButtonIsPressed)
{
    under.server.answer("POST v1/auth/login", ServerReply::parked());
    type("email", "mira@example.com");
    type("password", "secret");
    press("password", Qt::Key_Return);
    waitUntil([this] { return under.server.parkedCount() == 1; });
    for (const auto* name : {"email", "password", "signIn", "demonstration", "addressFold"})
        EXPECT_FALSE(under.find(name)->isEnabled()) << name;
    EXPECT_TRUE(under.find("languageChoice")->isEnabled());

    QTest::mouseClick(under.find("signIn"), Qt::LeftButton);
    under.server.release(ServerReply::json(SnapshotBuilder{}.signInJson()));
    waitUntil([this] { return under.shows("workspaceView"); });
    EXPECT_EQ(under.server.requests("POST v1/auth/login").size(), 1U);
}

TEST_F(SignIn, ChangesEveryTextAtOnceAndKeepsTheDraft)
{
    type("email", "mira@example.com");
    auto* choice = under.find<QComboBox>("languageChoice");
    const std::array<const char*, 4> titles{"登录", "Sign in", "Masuk", "Đăng nhập"};
    ASSERT_EQ(choice->count(), 4);
    for (int index = 0; index < choice->count(); ++index) {
        choice->setCurrentIndex(index);
        Q_EMIT choice->activated(index);
        EXPECT_EQ(under.find<QPushButton>("signIn")->text(),
                  QString::fromUtf8(titles[static_cast<std::size_t>(index)]));
        EXPECT_EQ(under.language.chosenLanguage(), AppLanguage::supportedLocales[static_cast<std::size_t>(index)]);
        EXPECT_EQ(typed("email"), QStringLiteral("mira@example.com"));
    }
}

TEST_F(SignIn, OpensTheAddressByItselfWhenItIsRefused)
{
    const auto usual = under.store.serverURL();
    EXPECT_FALSE(under.shows("serviceAddress"));
    QTest::mouseClick(under.find("addressFold"), Qt::LeftButton);
    type("serviceAddress", "http://192.168.1.10:48731");
    QTest::mouseClick(under.find("addressFold"), Qt::LeftButton);
    type("email", "mira@example.com");
    type("password", "secret");

    const auto message = alertAfterSubmitting();
    QTest::keyClick(under.find("alertDialog"), Qt::Key_Escape);
    EXPECT_EQ(under.find("serviceAddress")->accessibleDescription(), message);
    EXPECT_TRUE(under.find("serviceAddress")->property("invalid").toBool());

    QTest::mouseClick(under.find("defaultAddress"), Qt::LeftButton);
    EXPECT_EQ(under.store.serverURL(), usual);
    EXPECT_EQ(typed("serviceAddress"), qString(usual));
    EXPECT_FALSE(under.find("serviceAddress")->property("invalid").toBool());
}

TEST_F(SignIn, OpensTheDemonstrationAsTheChosenProfile)
{
    under.server.answer("POST v1/demo", ServerReply::json(SnapshotBuilder{}.signInJson()));
    under.window.findChild<QAction*>(QStringLiteral("profile-finance"))->trigger();
    waitUntil([this] { return under.shows("workspaceView"); });
    EXPECT_EQ(under.server.requests("POST v1/demo").front().body, R"({"locale":"en-US","profile":"finance"})");
}

TEST_F(SignIn, ShowsThePasswordOnlyWhileTheEyeIsOn)
{
    auto* password = under.find<QLineEdit>("password");
    QTest::mouseClick(under.find("passwordEye"), Qt::LeftButton);
    EXPECT_EQ(password->echoMode(), QLineEdit::Normal);
    EXPECT_EQ(under.find("passwordEye")->accessibleName(), QStringLiteral("Hide password"));
    QTest::mouseClick(under.find("passwordEye"), Qt::LeftButton);
    EXPECT_EQ(password->echoMode(), QLineEdit::Password);
}

TEST_F(SignIn, IsReachedByTabInReadingOrder)
{
    QTest::mouseClick(under.find("addressFold"), Qt::LeftButton);
    type("serviceAddress", "https://ledger.example.com");
    under.store.setServerURL("https://ledger.example.com");
    EXPECT_EQ(tabOrder(*under.find("languageChoice")),
              (std::vector<std::string>{"languageChoice", "mode-login", "email", "password", "passwordEye", "signIn",
                                        "addressFold", "serviceAddress", "defaultAddress", "demonstration"}));
}

TEST_F(SignIn, CutsNoTextInAnyLanguageAtTheSmallestSize)
{
    under.window.resize(900, 640);
    QTest::mouseClick(under.find("addressFold"), Qt::LeftButton);
    for (const auto tag : AppLanguage::supportedLocales) {
        under.speak(std::string{tag});
        QTest::mouseClick(under.find("signIn"), Qt::LeftButton);
        settle();
        EXPECT_EQ(auditLabels(under.window), std::vector<std::string>{}) << tag;
        EXPECT_EQ(auditControls(under.window), std::vector<std::string>{}) << tag;
    }
}
