#include "LedgerUI/Screens/SignIn/SignInView.h"

#include <array>

#include <QComboBox>
#include <QLineEdit>
#include <gtest/gtest.h>

#include "LedgerCore/Domain/Text/AppLanguage.h"
#include "LedgerUI/testing/LabelAudit.h"
#include "LedgerUI/testing/WindowUnderTest.h"

namespace {

constexpr auto login = "POST v1/auth/login";

class SignIn : public testing::Test {
protected:
    void fillIn(const char* email, const char* password)
    {
        screen.fill("email", email);
        screen.fill("password", password);
    }
    std::string password() { return screen.find<QLineEdit>("password").text().toStdString(); }
    bool isMarked(const char* field) { return screen.find(field).property("invalid").toBool(); }

    /// Signs in with what is typed and reads the alert that follows.
    std::string alertAfterSubmitting()
    {
        screen.keys("Return");
        screen.waitFor("alertDialog");
        return screen.read("messageText");
    }
    /// Submits a sign-in that the service leaves unanswered.
    void submitIntoSilence()
    {
        const auto before = under.server.parkedCount();
        under.server.replace(login, ServerReply::parked());
        fillIn("mira@example.com", "secret");
        screen.keys("Return");
        waitUntil([&] { return under.server.parkedCount() > before; });
    }

    WindowUnderTest under;
    ScreenDriver& screen = under.screen;
};

}

TEST_F(SignIn, KeepsWhatWasTypedWhenThePasswordIsWrong)
{
    under.server.answer(login, ServerReply::error(401, "unauthorized"));
    const char* const copied = " \u200bmira@exam\u00adple.com\u2060\u00a0"; // with what a page puts around it
    fillIn(copied, "wrong one");

    EXPECT_EQ(alertAfterSubmitting(), under.store.errorMessage().value_or("nothing published"));
    EXPECT_EQ(under.server.requests(login).front().body, R"({"email":"mira@example.com","password":"wrong one"})");
    screen.keys("Esc");
    EXPECT_EQ(screen.read("email"), copied);
    EXPECT_EQ(password(), "wrong one");
    EXPECT_EQ(screen.focus(), "email");
}

TEST_F(SignIn, SaysThatNoServiceAnswersAndKeepsWhatWasTyped)
{
    under.store.setServerURL("http://127.0.0.1:1");
    fillIn("mira@example.com", "secret");
    EXPECT_EQ(alertAfterSubmitting(), "Unable to connect. Check the service address and your network. The current data "
                                      "has not been refreshed.");
    screen.keys("Return");
    EXPECT_EQ(password(), "secret");
    EXPECT_TRUE(screen.offers("signIn"));
}

TEST_F(SignIn, SaysWhereItConnectsAndStopsWhenAsked)
{
    for (const auto* stopping : {"Tab Return", "Esc"}) {
        submitIntoSilence();
        EXPECT_EQ(screen.read("signInProgress"), "Connecting to " + under.store.serverURL() + "…");
        EXPECT_EQ(screen.focus(), "signInWaiting");
        screen.keys("Return"); // as of somebody who pressed it twice
        EXPECT_TRUE(under.store.isBusy());
        for (const auto* name : {"email", "password", "signIn", "demonstration", "addressFold"})
            EXPECT_FALSE(screen.offers(name)) << name;
        EXPECT_TRUE(screen.offers("languageChoice"));

        screen.keys(stopping);
        waitUntil([this] { return !under.store.isBusy(); });
        EXPECT_FALSE(screen.shows("signInStop"));
        EXPECT_FALSE(screen.shows("alertDialog"));
        EXPECT_EQ(password(), "secret");
        EXPECT_EQ(screen.focus(), "password");
    }
}

TEST_F(SignIn, IsReadyAtOnceAfterASignOutThatTheServiceDoesNotAnswer)
{
    under.signIn(SnapshotBuilder{});
    under.server.replace("POST v1/auth/logout", ServerReply::parked());
    screen.choose("memberButton", "signOut");
    waitUntil([this] { return under.server.parkedCount() == 1 && !under.store.isBusy(); });
    EXPECT_FALSE(screen.shows("signInStop"));
    EXPECT_EQ(screen.read("signIn"), "Sign in");
    EXPECT_EQ(screen.read("email"), "m1@example.com");
    EXPECT_EQ(screen.focus(), "password");
    screen.type("secret");
    screen.keys("Return");
    screen.waitFor("workspaceView");
}

TEST_F(SignIn, NamesTheEmptyFieldsAndSendsNothing)
{
    screen.press("email");
    screen.keys("Return");
    EXPECT_TRUE(isMarked("email"));
    EXPECT_TRUE(isMarked("password"));
    EXPECT_EQ(screen.focus(), "email");
    EXPECT_EQ(screen.spoken("email"), "Work e-mail: Enter your work e-mail.");

    screen.type("mira@example.com");
    EXPECT_FALSE(isMarked("email"));
    screen.keys("Return");
    EXPECT_EQ(screen.focus(), "password");
    EXPECT_TRUE(under.server.requests().empty());
}

TEST_F(SignIn, ChangesEveryTextAtOnceAndKeepsTheDraft)
{
    screen.fill("email", "mira@example.com");
    const std::array<std::array<const char*, 3>, 4> rows{{{"简体中文", "zh-CN", "登录"},
                                                          {"English", "en-US", "Sign in"},
                                                          {"Bahasa Indonesia", "id-ID", "Masuk"},
                                                          {"Tiếng Việt", "vi-VN", "Đăng nhập"}}};
    EXPECT_EQ(screen.find<QComboBox>("languageChoice").count(), 4);
    for (const auto& [name, tag, title] : rows) {
        screen.pick("languageChoice", name);
        EXPECT_EQ(screen.read("signIn"), title);
        EXPECT_EQ(under.language.chosenLanguage(), tag);
        EXPECT_EQ(screen.read("email"), "mira@example.com");
    }
}

TEST_F(SignIn, OpensTheAddressByItselfWhenItIsRefused)
{
    const auto usual = under.store.serverURL();
    EXPECT_FALSE(screen.shows("serviceAddress"));
    screen.press("addressFold");
    screen.fill("serviceAddress", "http://192.168.1.10:48731");
    screen.press("addressFold");
    fillIn("mira@example.com", "secret");

    const auto message = alertAfterSubmitting();
    screen.keys("Esc");
    EXPECT_EQ(screen.spoken("serviceAddress"), "Address of the ledger service: " + message);
    EXPECT_TRUE(isMarked("serviceAddress"));

    screen.press("defaultAddress");
    EXPECT_EQ(under.store.serverURL(), usual);
    EXPECT_EQ(screen.read("serviceAddress"), usual);
    EXPECT_FALSE(isMarked("serviceAddress"));
}

TEST_F(SignIn, OpensTheDemonstrationAsTheChosenProfile)
{
    under.server.answer("POST v1/demo", ServerReply::json(SnapshotBuilder{}.signInJson()));
    screen.choose("demonstration", "profile-finance");
    screen.waitFor("workspaceView");
    EXPECT_EQ(under.server.requests("POST v1/demo").front().body, R"({"locale":"en-US","profile":"finance"})");
}

TEST_F(SignIn, ShowsThePasswordOnlyWhileTheEyeIsOn)
{
    screen.press("passwordEye");
    EXPECT_EQ(screen.find<QLineEdit>("password").echoMode(), QLineEdit::Normal);
    EXPECT_EQ(screen.spoken("passwordEye"), "Hide password");
    screen.press("passwordEye");
    EXPECT_EQ(screen.find<QLineEdit>("password").echoMode(), QLineEdit::Password);
}

TEST_F(SignIn, IsReachedByTabInReadingOrder)
{
    screen.press("addressFold");
    screen.fill("serviceAddress", "https://ledger.example.com");
    screen.keys("Tab");
    EXPECT_EQ(tabOrder(screen.find("languageChoice")),
              (std::vector<std::string>{"languageChoice", "mode-login", "email", "password", "passwordEye", "signIn",
                                        "forgotPassword", "addressFold", "serviceAddress", "defaultAddress",
                                        "demonstration"}));
}

TEST_F(SignIn, CutsNoTextInAnyLanguageAtTheSmallestSize)
{
    under.window.resize(900, 640);
    screen.press("addressFold");
    for (const auto tag : AppLanguage::supportedLocales) {
        under.speak(std::string{tag});
        screen.press("signIn");
        EXPECT_EQ(auditLabels(under.window), std::vector<std::string>{}) << tag;
        EXPECT_EQ(auditControls(under.window), std::vector<std::string>{}) << tag;
    }
}
