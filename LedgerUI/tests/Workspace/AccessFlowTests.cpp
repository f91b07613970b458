#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <gtest/gtest.h>

#include "LedgerUI/Components/Table/ChoiceField.h"
#include "LedgerUI/testing/WindowUnderTest.h"

// The ways to sign in that go by more than a password: applying for a company, activating an invitation, resetting.

namespace {

constexpr auto registering = "POST v1/auth/register";
constexpr auto start = "POST v1/auth/access/start";
constexpr auto verify = "POST v1/auth/access/verify";
constexpr auto complete = "POST v1/auth/access/complete";
constexpr auto mailed = R"({"challengeID":"c1"})";

std::string verified(bool isKnown)
{
    return std::string{R"({"ticket":"t1","existingAccount":)"} + (isKnown ? "true" : "false") +
           R"(,"companyName":"PT Lentera","email":"rizky@x.id"})";
}

class AccessFlows : public testing::Test {
protected:
    void fillInTheApplication()
    {
        screen.press("mode-register");
        screen.fill("companyName", "Hạ Long Xanh");
        screen.find("countries").setFocus();
        screen.keys("Space");
        screen.waitForFocus("countriesPopover");
        screen.type("viet");
        screen.keys("Return Esc");
        screen.fill("personName", "Hương");
        screen.fill("email", "huong@x.vn");
        screen.fill("password", "12345678");
    }
    void askForACode(const char* mode)
    {
        under.server.replace(start, ServerReply::json(mailed));
        screen.press(mode);
        screen.fill("email", "rizky@x.id");
        if (screen.shows("invitationCode"))
            screen.fill("invitationCode", "ABCD-EFGH");
        screen.keys("Return");
        screen.waitForFocus("verificationCode");
    }
    void handInTheCode(bool isKnown)
    {
        under.server.replace(verify, ServerReply::json(verified(isKnown)));
        screen.type("481516");
        screen.keys("Return");
        screen.waitFor("confirmAccess");
    }
    std::string bodyOf(const char* route)
    {
        const auto sent = under.server.requests(route);
        return sent.empty() ? "nothing sent" : sent.back().body;
    }
    std::string field(const char* name) { return screen.find<QLineEdit>(name).text().toStdString(); }

    WindowUnderTest under;
    ScreenDriver& screen = under.screen;
};

}

TEST_F(AccessFlows, SendAnApplicationAndSayThatItAwaitsReview)
{
    under.server.answer(registering, ServerReply::json(R"({"status":"pending","applicationID":"a1",)"
                                                       R"("companyName":"Hạ Long Xanh","email":"huong@x.vn"})"));
    fillInTheApplication();
    EXPECT_EQ(screen.read("countries"), "Vietnam");
    screen.press("register");
    screen.waitFor("alertDialog");
    EXPECT_EQ(bodyOf(registering), R"({"name":"Hương","email":"huong@x.vn","password":"12345678",)"
                                   R"("companyName":"Hạ Long Xanh","countries":["VN"]})");
    screen.keys("Return");
    const std::string pending =
        "The application of Hạ Long Xanh awaits the platform's review. Sign in with huong@x.vn once it is approved.";
    EXPECT_EQ(screen.read("signInBanner"), pending);
    EXPECT_EQ(field("companyName"), "Hạ Long Xanh");
    screen.press("mode-login");
    EXPECT_EQ(screen.read("signInBanner"), pending) << "it stays above every form";
    EXPECT_EQ(field("email"), "huong@x.vn");
    EXPECT_EQ(field("password"), "");
}

TEST_F(AccessFlows, OpenTheNewCompanyAtOnceWhereNobodyReviewsIt)
{
    under.server.answer(registering, ServerReply::json(SnapshotBuilder{}.companyName("Hạ Long Xanh").signInJson()));
    fillInTheApplication();
    screen.press("register");
    screen.waitFor("workspaceView");
    EXPECT_FALSE(screen.shows("alertDialog")) << "nothing awaits a review";
    EXPECT_EQ(under.store.snapshot()->company.name, "Hạ Long Xanh");
    EXPECT_EQ(under.credentials.sessions.begin()->second.token, "token-1");
}

TEST_F(AccessFlows, SendNoApplicationThatCannotBeRight)
{
    screen.press("mode-register");
    screen.press("register");
    EXPECT_EQ(screen.focus(), "companyName");
    EXPECT_EQ(screen.spoken("companyName"), "Company name: Enter the company's name.");
    screen.fill("invitationCode", "ABCD");
    screen.press("register");
    EXPECT_EQ(screen.spoken("companyName"), "Company name") << "an invitation founds no company";
    EXPECT_EQ(screen.focus(), "personName");
    EXPECT_TRUE(under.server.requests().empty());
}

TEST_F(AccessFlows, ShowWhatARefusalIsAboutAtItsFieldAndNoAlert)
{
    under.server.answer(registering, ServerReply::error(409, "email_exists"));
    fillInTheApplication();
    screen.press("register");
    screen.waitForFocus("email");
    EXPECT_EQ(screen.spoken("email"), "Work e-mail: This email is already registered. Please sign in.");
    EXPECT_FALSE(screen.shows("alertDialog"));
    EXPECT_EQ(field("password"), "12345678");
    under.speak("id-ID");
    EXPECT_TRUE(screen.spoken("email").starts_with("Email kerja: ")) << screen.spoken("email");
    EXPECT_FALSE(screen.says("This email is already registered."));
}

TEST_F(AccessFlows, ActivateAnInvitationInThreeSteps)
{
    askForACode("mode-join");
    EXPECT_EQ(bodyOf(start),
              R"({"email":"rizky@x.id","invitationCode":"ABCD-EFGH","purpose":"join","locale":"en-US"})");
    EXPECT_TRUE(screen.says("rizky@x.id"));
    QGuiApplication::clipboard()->setText(QStringLiteral(" 481 516\u200b\n"));
    screen.keys("Ctrl+V");
    under.server.answer(verify, ServerReply::json(verified(false)));
    screen.keys("Return");
    screen.waitForFocus("personName");
    EXPECT_EQ(bodyOf(verify), R"({"challengeID":"c1","code":"481516"})");
    EXPECT_TRUE(screen.says("PT Lentera"));

    under.server.answer(complete, ServerReply::json(SnapshotBuilder{}.signInJson()));
    screen.type("Rizky Pratama");
    screen.keys("Tab");
    screen.type("a new secret");
    screen.keys("Return");
    screen.waitFor("workspaceView");
    EXPECT_EQ(bodyOf(complete), R"({"challengeID":"c1","ticket":"t1","name":"Rizky Pratama",)"
                                R"("password":"a new secret","locale":"en-US"})");
    EXPECT_EQ(under.credentials.sessions.size(), 1U);
}

TEST_F(AccessFlows, LeadWhoeverAppliesWithAnInvitationThroughTheMailedCode)
{
    under.server.answer(start, ServerReply::json(mailed));
    screen.press("mode-register");
    screen.fill("personName", "Rizky Pratama");
    screen.fill("email", "rizky@x.id");
    screen.fill("password", "12345678");
    screen.fill("invitationCode", "ABCD-EFGH");
    screen.press("register");
    screen.waitForFocus("verificationCode");
    EXPECT_EQ(bodyOf(start),
              R"({"email":"rizky@x.id","invitationCode":"ABCD-EFGH","purpose":"join","locale":"en-US"})");
    EXPECT_TRUE(under.server.requests(registering).empty()) << "nobody founds a company";
    handInTheCode(false);
    EXPECT_EQ(field("personName"), "Rizky Pratama") << "as it was typed before";
    EXPECT_EQ(field("password"), "");
}

TEST_F(AccessFlows, AskAPersonWhoHasAPasswordForNothingElse)
{
    askForACode("mode-join");
    handInTheCode(true);
    EXPECT_FALSE(screen.shows("personName"));
    under.server.answer(complete, ServerReply::error(401, "unauthorized"));
    screen.type("wrong");
    screen.keys("Return");
    screen.waitUntil("the field says it", [&] { return screen.says("The password is wrong."); });
    EXPECT_FALSE(screen.shows("alertDialog"));
    EXPECT_EQ(screen.focus(), "password");
    under.server.replace(complete, ServerReply::json(SnapshotBuilder{}.signInJson()));
    screen.fill("password", "right");
    screen.keys("Return");
    screen.waitFor("workspaceView");
    EXPECT_EQ(bodyOf(complete), R"({"challengeID":"c1","ticket":"t1","name":"","password":"right","locale":"en-US"})");
}

TEST_F(AccessFlows, SayThatACodeIsWrongAtItsField)
{
    askForACode("mode-reset");
    under.server.answer(verify, ServerReply::error(400, "invalid_verification"));
    screen.type("000000");
    screen.keys("Return");
    screen.waitUntil("the field says it", [&] { return screen.says("The code is wrong or has expired."); });
    EXPECT_FALSE(screen.shows("alertDialog"));
    EXPECT_EQ(screen.focus(), "verificationCode");
    EXPECT_EQ(field("verificationCode"), "000000");
}

TEST_F(AccessFlows, ResendOnlyAfterAWhileAndChangeTheEmailAtOnce)
{
    askForACode("mode-join");
    EXPECT_FALSE(screen.offers("resendCode"));
    EXPECT_TRUE(screen.read("resendCode").starts_with("Resend in ")) << screen.read("resendCode");
    screen.press("changeEmail");
    EXPECT_EQ(field("email"), "rizky@x.id");
    EXPECT_EQ(field("invitationCode"), "ABCD-EFGH");
    under.server.replace(start, ServerReply::error(503, "mail_unavailable"));
    screen.press("sendCode");
    screen.waitUntil("the banner says it", [&] { return screen.shows("signInBanner"); });
    EXPECT_EQ(screen.read("signInBanner"),
              "The code could not be mailed. Try again later, or contact whoever runs the service.");
    EXPECT_FALSE(screen.shows("alertDialog"));
}

TEST_F(AccessFlows, GoBackToTheStartWhenTheVerificationIsUsedUp)
{
    askForACode("mode-reset");
    handInTheCode(true);
    under.server.answer(complete, ServerReply::dropped());
    screen.type("my new password");
    screen.keys("Return");
    screen.waitFor("alertDialog");
    screen.keys("Return");
    EXPECT_EQ(field("password"), "my new password");
    under.server.replace(complete, ServerReply::error(400, "invalid_verification"));
    screen.press("confirmAccess");
    screen.waitFor("sendCode");
    EXPECT_TRUE(screen.says("Try to sign in with your password"));
    EXPECT_EQ(field("email"), "rizky@x.id");
}

TEST_F(AccessFlows, GoToTheSignInWhenTheNewPasswordOpensNoCompanyYet)
{
    askForACode("mode-reset");
    handInTheCode(true);
    under.server.answer(complete, ServerReply::error(403, "company_pending"));
    screen.type("my new password");
    screen.keys("Return");
    screen.waitFor("alertDialog");
    screen.keys("Return");
    EXPECT_TRUE(screen.shows("signIn"));
    EXPECT_EQ(field("email"), "rizky@x.id");
    EXPECT_EQ(field("password"), "");
}

/// A sign-out goes to the service beside whatever comes next, so nothing waits for it and it is awaited in the end.
TEST_F(AccessFlows, SignInWithTheAcceptanceAndOutAgainWhenItFails)
{
    constexpr auto logout = "POST v1/auth/logout";
    under.server.answer("POST v1/auth/login", ServerReply::json(SnapshotBuilder{}.signInJson("refused")));
    under.server.answer("POST v1/auth/login", ServerReply::json(SnapshotBuilder{}.signInJson("left")));
    under.server.answer("POST v1/invites/accept", ServerReply::error(400, "invalid_invitation"));
    under.server.answer("POST v1/invites/accept", ServerReply::json(SnapshotBuilder{}.signInJson("joined")));
    under.server.answer(logout, ServerReply::parked());
    screen.press("mode-join");
    screen.fill("email", "rizky@x.id");
    screen.fill("invitationCode", "ABCD-EFGH");
    screen.press("hasPassword");
    EXPECT_EQ(field("invitationCode"), "ABCD-EFGH");
    EXPECT_EQ(screen.focus(), "password");
    screen.type("secret");
    screen.keys("Return");
    screen.waitForFocus("invitationCode");
    EXPECT_TRUE(screen.says("does not match your email."));
    EXPECT_EQ(field("password"), "secret");

    screen.press("signInAndJoin");
    screen.waitFor("workspaceView");
    waitUntil([&] { return under.server.requests(logout).size() == 2; });
    EXPECT_EQ(under.server.requests(logout).front().header("authorization"), "Bearer refused");
    EXPECT_EQ(under.server.requests(logout).back().header("authorization"), "Bearer left");
    EXPECT_EQ(under.credentials.sessions.begin()->second.token, "joined");
}

TEST_F(AccessFlows, DropWhatTheyHeldWhenAnotherWayIsTaken)
{
    askForACode("mode-reset");
    screen.press("mode-login");
    EXPECT_EQ(field("email"), "rizky@x.id");
    screen.press("mode-reset");
    EXPECT_TRUE(screen.shows("sendCode"));
    EXPECT_EQ(field("email"), "rizky@x.id");
}

TEST_F(AccessFlows, AreChosenByArrowsAmongTheWays)
{
    screen.find("mode-login").setFocus();
    screen.keys("Down Space");
    EXPECT_EQ(screen.read("signInTitle"), "Apply for a company");
    screen.press("mode-login");
    screen.press("forgotPassword");
    EXPECT_EQ(screen.read("signInTitle"), "Reset password");
}

TEST_F(AccessFlows, SendEachPageOnce)
{
    under.server.answer(start, ServerReply::parked());
    screen.press("mode-reset");
    screen.fill("email", "rizky@x.id");
    screen.keys("Return Return");
    waitUntil([&] { return under.server.parkedCount() > 0; });
    EXPECT_FALSE(screen.offers("sendCode"));
    EXPECT_EQ(under.server.requests(start).size(), 1U);
    under.store.cancel();
    waitUntil([&] { return !under.store.isBusy(); });
    EXPECT_EQ(field("email"), "rizky@x.id");
}
