#include <gtest/gtest.h>

#include "LedgerCore/Client/testing/WaitFor.h"
#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerUI/Presentation/SignIn/AccessFlow.h"
#include "LedgerUI/Presentation/SignIn/Countdown.h"
#include "LedgerUI/Presentation/SignIn/SignInProblem.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

SignInDraft application()
{
    return {.companyName = "Hạ Long Xanh",
            .countries = {"VN"},
            .name = "Nguyễn Thị Thanh Hương",
            .email = "huong@halongxanh.vn",
            .password = "eight ch"};
}

std::string keys(const std::vector<SignInProblem>& problems)
{
    std::string joined;
    for (const auto& each : problems)
        joined += (joined.empty() ? "" : " ") + std::string{each.key};
    return joined;
}

struct RefusalCase {
    const char* name;
    SignInPage page;
    APIError error;
    std::optional<SignInField> field;
    const char* text; // null where the alert says it
};

class Refusal : public testing::TestWithParam<RefusalCase> {};

}

TEST(SignInDraft, LosesWhatCopyingBringsAlongButKeepsThePassword)
{
    const auto sent = cleaned({.companyName = "  PT Lentera ",
                               .email = "\u200bdewi@exam\u00adple.com\u00a0",
                               .password = " my secret ",
                               .invitationCode = "ABCD-EFGH \u2060IJKL\n",
                               .verificationCode = "\t481 516\u200b "});
    EXPECT_EQ(sent, (SignInDraft{.companyName = "PT Lentera",
                                 .email = "dewi@example.com",
                                 .password = " my secret ",
                                 .invitationCode = "ABCD-EFGHIJKL",
                                 .verificationCode = "481516"}));
}

TEST(SignInProblems, NameWhatIsMissingOrCannotBeRight)
{
    const auto of = [](SignInPage page, const SignInDraft& draft) { return keys(SignInProblems::of(page, draft)); };
    EXPECT_EQ(of(SignInPage::registration, {}),
              "companyNameRequired countriesRequired nameRequired emailRequired newPasswordRequired");
    EXPECT_EQ(of(SignInPage::registration, application()), "");

    auto invited = application();
    invited.companyName.clear();
    invited.countries.clear();
    invited.invitationCode = "CODE";
    EXPECT_EQ(of(SignInPage::registration, invited), "") << "whoever is invited founds no company";

    auto wrong = application();
    wrong.companyName = "two\nlines";
    wrong.email = "huong";
    wrong.password = "seven c";
    EXPECT_EQ(of(SignInPage::registration, wrong), "companyNameMisfit emailMisfit passwordShort");
    wrong.password = std::string(1025, 'a');
    EXPECT_EQ(of(SignInPage::newPassword, wrong), "passwordLong");
    EXPECT_EQ(of(SignInPage::login, {.email = "a@b.c", .password = "old"}), "") << "an old password may be short";
    EXPECT_EQ(of(SignInPage::invitation, {.email = "a@b.c"}), "activationCodeRequired");
}

TEST_P(Refusal, IsSaidWhereItCanBePutRight)
{
    const auto& each = GetParam();
    const auto problem = SignInProblems::of(each.page, {}, each.error);
    ASSERT_EQ(problem.has_value(), each.text != nullptr);
    if (!problem)
        return;
    EXPECT_EQ(problem->field, each.field);
    EXPECT_EQ(problem->text("en-US").toStdString(), each.text);
    EXPECT_NE(problem->text("vi-VN"), problem->text("en-US"));
}

INSTANTIATE_TEST_SUITE_P(
    Codes, Refusal,
    testing::Values(
        RefusalCase{"WrongCode",
                    SignInPage::verification,
                    {400, "invalid_verification", ""},
                    SignInField::verificationCode,
                    "The code is wrong or has expired. Check the latest e-mail, or have a new one sent."},
        RefusalCase{"UsedTicket",
                    SignInPage::newPassword,
                    {400, "invalid_verification", ""},
                    {},
                    "This verification was used already or has expired. Try to sign in with your password, or have a "
                    "new code sent."},
        RefusalCase{"NoMail",
                    SignInPage::forgotten,
                    {503, "mail_unavailable", ""},
                    {},
                    "The code could not be mailed. Try again later, or contact whoever runs the service."},
        RefusalCase{"WrongActivationCode",
                    SignInPage::invitation,
                    {400, "invalid_invitation", ""},
                    SignInField::invitationCode,
                    "The activation code is invalid, expired, or does not match your email."},
        RefusalCase{"KnownEmail",
                    SignInPage::registration,
                    {409, "email_exists", ""},
                    SignInField::email,
                    "This email is already registered. Please sign in."},
        RefusalCase{"Closed",
                    SignInPage::registration,
                    {403, "forbidden", ""},
                    {},
                    "This service takes no applications for new companies. Enter an invitation code, or contact "
                    "whoever runs the service."},
        RefusalCase{"WrongPasswordOfAnInvited",
                    SignInPage::existingAccount,
                    {401, "unauthorized", ""},
                    SignInField::password,
                    "The password is wrong."},
        RefusalCase{"WrongPassword", SignInPage::login, {401, "unauthorized", ""}, {}, nullptr},
        RefusalCase{"Pending", SignInPage::login, {403, "company_pending", ""}, {}, nullptr},
        RefusalCase{"NoAnswer", SignInPage::invitation, {0, "NETWORK", ""}, {}, nullptr}),
    [](const auto& each) { return std::string{each.param.name}; });

TEST(AccessFlow, GoesThroughItsStepsAndDropsWhatItHeldWithEach)
{
    AccessFlow flow{AccessFlow::Purpose::join};
    EXPECT_EQ(flow.page(), SignInPage::invitation);
    flow.chooseToJoin(true);
    EXPECT_EQ(flow.page(), SignInPage::joining);
    flow.codeSent({.email = "rizky@x.id", .invitationCode = "CODE"}, {.challengeID = "c1"});
    EXPECT_EQ(flow.page(), SignInPage::verification);
    EXPECT_EQ(flow.lead("en-US").name, QStringLiteral("rizky@x.id"));
    flow.verified({.ticket = "t1", .existingAccount = true, .companyName = "PT Lentera", .email = "rizky@x.id"});
    EXPECT_EQ(flow.page(), SignInPage::existingAccount);
    EXPECT_EQ(flow.lead("en-US").name, QStringLiteral("PT Lentera"));
    EXPECT_EQ(flow.challengeID() + flow.ticket(), "c1t1");

    flow.restart();
    EXPECT_EQ(flow.step(), AccessFlow::Step::invitation);
    EXPECT_EQ(flow.challengeID() + flow.ticket() + flow.email(), "");
}

TEST(AccessFlow, EndsWithWhatThePersonStillHasToSay)
{
    const auto pageAfter = [](AccessFlow::Purpose purpose, bool existing) {
        AccessFlow flow{purpose};
        flow.codeSent({.email = "a@b.c"}, {.challengeID = "c"});
        flow.verified({.ticket = "t", .existingAccount = existing, .companyName = {}, .email = "a@b.c"});
        return flow.page();
    };
    EXPECT_EQ(pageAfter(AccessFlow::Purpose::join, false), SignInPage::newAccount);
    EXPECT_EQ(pageAfter(AccessFlow::Purpose::join, true), SignInPage::existingAccount);
    EXPECT_EQ(pageAfter(AccessFlow::Purpose::reset, true), SignInPage::newPassword);
}

TEST(Countdown, TellsEverySecondAndEndsAtNothing)
{
    Countdown countdown{std::chrono::milliseconds{1}};
    std::vector<int> told;
    QObject::connect(&countdown, &Countdown::changed, [&] { told.push_back(countdown.left()); });
    countdown.start(3);
    waitUntil([&] { return countdown.left() == 0; });
    EXPECT_EQ(told, (std::vector{3, 2, 1, 0}));
    countdown.start(2);
    countdown.stop();
    EXPECT_EQ(countdown.left(), 0);
}
