#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QTabBar>
#include <QTableView>

#include "LedgerUI/Screens/Company/Access/GrantMatrixView.h"
#include "LedgerUI/Theme/Theme.h"
#include "LedgerUI/testing/CompanyUnderTest.h"

namespace {

struct MembersUnderTest : CompanyUnderTest {
    GrantMatrixView& matrix() { return screen.find<GrantMatrixView>("grantMatrix"); }
    bool isGranted(int row, int column)
    {
        return matrix().model()->index(row, column).data(Qt::CheckStateRole) == Qt::Checked;
    }
    void chooseManager() { screen.pressRow("memberTable", "Hương"); }
};

}

TEST(CompanyMembers, GiveRightsByKeyboardAndSayHowManyChangesWait)
{
    MembersUnderTest under;
    under.chooseManager();
    for (const auto* opening : {"F2", "Return"}) {
        under.screen.find("memberTable").setFocus();
        under.screen.keys(opening);
        EXPECT_EQ(under.screen.focus(), "grantMatrix") << opening;
    }
    under.screen.keys("Down Right Space"); // income on the second account
    EXPECT_TRUE(under.isGranted(1, 1));
    EXPECT_EQ(under.screen.read("statusContext"), "1 unsaved change");
    under.screen.keys("Down Shift+Space"); // every right on the third
    EXPECT_TRUE(under.isGranted(2, 0) && under.isGranted(2, 10));
    EXPECT_EQ(under.screen.read("statusContext"), "12 unsaved changes");
    under.screen.keys("Left Space"); // without its sight nothing is left of it
    EXPECT_FALSE(under.isGranted(2, 5));
    under.screen.keys("Ctrl+Space"); // the sight of all of them
    EXPECT_TRUE(under.isGranted(2, 0) && under.isGranted(3, 0));
    under.screen.press("memberRevert");
    EXPECT_EQ(under.screen.read("statusContext"), "");
    EXPECT_TRUE(under.server.requests("PATCH v1/members/m3").empty());
}

TEST(CompanyMembers, LeadToWhatTheChosenOneHasRecorded)
{
    MembersUnderTest under;
    std::vector<PageLink> links;
    auto& page = under.screen.find<CompanyView>("companyView");
    QObject::connect(&page, &PageView::linkPressed, &page, [&](const PageLink& link) { links.push_back(link); });
    under.chooseManager();
    under.screen.press("memberInLedgerButton");
    ASSERT_EQ(links.size(), 1U);
    EXPECT_EQ(links[0].action, PageAction::showEntries);
    EXPECT_EQ(links[0].entries, LedgerFilter{.memberIDs = {"m3"}});
}

TEST(CompanyMembers, SendTheChangesOnTopOfWhatTheServiceHasNow)
{
    MembersUnderTest under;
    under.chooseManager();
    under.screen.press("permission.viewDividends");
    auto newer = companyBooks().build();
    newer.members[2].permissions = {{"exportData", "viewCapital", "viewCompany"}};
    under.server.replace("GET v1/snapshot", ServerReply::json(Json::encode(newer)));
    under.server.replace("PATCH v1/members/m3", ServerReply::json(Json::encode(newer)));
    under.screen.press("memberSave");
    under.screen.waitUntil("it is said",
                           [&] { return under.screen.read("statusSaid") == "Access of Nguyễn Thị Thanh Hương saved"; });
    EXPECT_EQ(under.server.requests("PATCH v1/members/m3").front().body,
              R"({"permissions":["viewCompany","exportData","viewCapital","viewDividends"]})");
}

TEST(CompanyMembers, AskBeforeChangesAreLeft)
{
    MembersUnderTest under;
    under.chooseManager();
    under.screen.press("permission.viewDividends");
    under.screen.pressRow("memberTable", "Rizky");
    under.screen.waitFor("questionDialog");
    under.screen.press("questionCancel");
    under.screen.waitUntilGone("questionDialog");
    EXPECT_EQ(under.screen.read("memberName"), "Nguyễn Thị Thanh Hương");
    EXPECT_EQ(under.screen.read("statusContext"), "1 unsaved change");
    under.activate();
    under.screen.pressRow("memberTable", "Rizky");
    under.screen.waitFor("questionDialog");
    under.screen.press("questionConfirm");
    under.screen.waitUntil("the other one is shown",
                           [&] { return under.screen.read("memberName") == "Rizky Pratama"; });
    EXPECT_EQ(under.screen.read("statusContext"), "");
}

TEST(CompanyMembers, KeepTheDraftWhenTheServiceRefusesOrIsLost)
{
    MembersUnderTest under;
    under.chooseManager();
    under.screen.press("permission.viewDividends");
    for (const auto& reply : {ServerReply::error(403, "forbidden"), ServerReply::dropped()}) {
        under.server.replace("PATCH v1/members/m3", reply);
        under.screen.press("memberSave");
        under.leaveAlert();
        EXPECT_EQ(under.screen.read("statusContext"), "1 unsaved change");
    }
}

TEST(CompanyMembers, ProtectTheLastOwnerAndSayWhy)
{
    MembersUnderTest under;
    under.screen.pressRow("memberTable", "Budi");
    EXPECT_FALSE(under.screen.offers("memberActive"));
    EXPECT_EQ(under.screen.find("memberActive").toolTip(),
              QStringLiteral("At least one owner has to keep this right."));
    under.screen.keys("Return Space");
    EXPECT_TRUE(under.isGranted(0, 0));
    EXPECT_EQ(under.screen.read("grantHint"), "At least one owner has to keep this right.");
}

TEST(CompanyMembers, AreDeactivatedAfterAQuestion)
{
    MembersUnderTest under;
    under.screen.pressRow("memberTable", "Rizky");
    auto after = companyBooks().build();
    after.members[3].active = false;
    under.server.replace("PATCH v1/members/m4", ServerReply::json(Json::encode(after)));
    under.screen.press("memberActive");
    under.screen.waitFor("questionDialog");
    under.screen.press("questionConfirm");
    under.screen.waitUntil("it can be undone", [&] { return under.screen.read("memberActive") == "Reactivate"; });
    EXPECT_EQ(under.server.requests("PATCH v1/members/m4").front().body, R"({"active":false})");
}

TEST(CompanyInvitations, ShowTheCodeOnceAndCopyIt)
{
    CompanyUnderTest under;
    under.screen.press("companyPrimary");
    under.screen.waitForFocus("inviteName");
    under.screen.keys("Ctrl+Return");
    EXPECT_TRUE(under.screen.says("Enter a name."));
    under.screen.fill("inviteName", "Rini");
    under.screen.fill("inviteEmail", "rini@example.com");
    under.screen.press("permission.exportData");
    const auto groundOfARight = [&under] {
        auto& matrix = under.screen.find<GrantMatrixView>("grantMatrix");
        const auto picture = matrix.viewport()->grab().toImage();
        const auto middle = matrix.visualRect(matrix.model()->index(0, 0)).center();
        return picture.pixelColor(middle * picture.devicePixelRatio());
    };
    EXPECT_EQ(groundOfARight(), Theme::current().color(Token::field));
    under.server.replace("POST v1/invites", ServerReply::dropped());
    under.screen.keys("Ctrl+Return");
    under.screen.waitUntil("nobody knows the outcome", [&] { return under.screen.says("Retry original request"); });
    EXPECT_EQ(groundOfARight(), Theme::current().color(Token::fieldOff)) << "what was sent is settled";
    under.server.replace("POST v1/invites", ServerReply::json(R"({"code":"K7QF-2M9D-XR4T"})"));
    under.screen.press("inviteConfirm");
    under.screen.waitFor("invitationCodeDialog");
    EXPECT_EQ(under.screen.read("invitationCode"), "K7QF-2M9D-XR4T");
    under.screen.keys("Esc");
    under.screen.waitFor("questionDialog");
    EXPECT_TRUE(under.screen.says("The code has not been copied"));
    under.screen.press("questionCancel");
    under.screen.waitUntilGone("questionDialog");
    EXPECT_TRUE(under.screen.shows("invitationCodeDialog"));
    under.screen.press("invitationCopy");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("K7QF-2M9D-XR4T"));
    under.screen.keys("Esc");
    under.screen.waitUntilGone("invitationCodeDialog");
    const auto sent = under.server.requests("POST v1/invites");
    ASSERT_EQ(sent.size(), 2U);
    EXPECT_EQ(sent[0].body, sent[1].body);
    EXPECT_EQ(sent[0].body, R"({"name":"Rini","email":"rini@example.com","role":"employee","accountIDs":[],)"
                            R"("permissions":["exportData"],"accountGrants":[]})");
}

TEST(CompanyInvitations, AreReadAnewOnReturnWhateverIsShown)
{
    CompanyUnderTest under;
    const auto shown = [&] {
        const auto* tabs = under.screen.find<QTabBar>("companyTabs").tabButton(1, QTabBar::RightSide);
        const auto* count = tabs ? tabs->findChild<QLabel*>() : nullptr;
        return count ? count->text() : QString{};
    };
    EXPECT_NE(shown(), QString{});
    under.server.replace("GET v1/invites", ServerReply::json(R"({"invitations":[]})"));
    Q_EMIT qApp->applicationStateChanged(Qt::ApplicationActive);
    under.screen.waitUntil("nobody is waited for", [&] { return shown().isEmpty(); });
    EXPECT_TRUE(under.screen.shows("memberTable")) << "of the tab of members";
}

TEST(CompanyInvitations, AreRevokedFromTheList)
{
    CompanyUnderTest under;
    under.openTab("invitationsTab");
    under.server.replace("POST v1/invites/i2/revoke", ServerReply::json(R"({"invitations":[]})"));
    under.screen.pressRow("invitationTable", "Andi");
    under.screen.keys("Return");
    under.screen.waitFor("questionDialog");
    under.screen.press("questionConfirm");
    under.screen.waitForText("No pending invitations");
    EXPECT_EQ(under.screen.read("statusSaid"), "Invitation to Andi Wijaya revoked");
}

TEST(CompanyProfileTab, ChoosesCountriesByTheirNames)
{
    auto books = companyBooks().build();
    books.company.countries = {"VN", "ID"};
    CompanyUnderTest under;
    under.hold(books);
    under.screen.keys("F5");
    under.openTab("profileTab");
    under.screen.waitFor("country-ID");
    under.screen.find<QComboBox>("companyCountries").setFocus();
    under.screen.keys("Space");
    under.screen.waitForFocus("companyCountriesPopover");
    under.screen.type("singa");
    under.screen.keys("Return Esc");
    EXPECT_EQ(under.screen.spoken("country-SG"), "Remove Singapore");
    under.screen.press("country-VN");
    under.screen.waitUntilGone("country-VN");
    EXPECT_EQ(under.screen.read("statusContext"), "1 unsaved change");
    books.company.countries = {"ID", "SG"};
    under.server.replace("PATCH v1/settings", ServerReply::json(Json::encode(books)));
    under.screen.press("profileSave");
    under.screen.waitForText("Company profile saved");
    EXPECT_EQ(under.server.requests("PATCH v1/settings").front().body, R"({"countries":["ID","SG"]})");
}

TEST(CompanyProfileTab, KeepsWhatIsTypedThroughARefreshAndARefusal)
{
    CompanyUnderTest under;
    under.openTab("profileTab");
    under.screen.fill("companyName", "PT Baru");
    auto newer = companyBooks().build();
    newer.company.countries = {"ID", "VN"};
    under.server.replace("GET v1/snapshot", ServerReply::json(Json::encode(newer)));
    under.screen.keys("F5");
    under.screen.waitUntil("the other change is there", [&] { return under.screen.shows("country-VN"); });
    EXPECT_EQ(under.screen.read("companyName"), "PT Baru");
    under.server.replace("PATCH v1/settings", ServerReply::error(403, "forbidden"));
    under.screen.press("profileSave");
    under.leaveAlert();
    EXPECT_EQ(under.screen.read("companyName"), "PT Baru");
    EXPECT_EQ(under.server.requests("PATCH v1/settings").front().body, R"({"name":"PT Baru"})");
}
