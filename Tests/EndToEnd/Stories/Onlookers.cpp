#include <tuple>

#include <QAbstractItemView>

#include "LedgerCore/Domain/Capital/CapitalSummary.h"
#include "LedgerCore/Domain/Dividends/DividendSummary.h"
#include "LedgerUI/Presentation/Records/CapitalRefusalText.h"
#include "LedgerUI/Presentation/Records/RecordText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "Tests/EndToEnd/Stage/CapitalClerk.h"
#include "Tests/EndToEnd/Stage/CapitalCompany.h"
#include "Tests/EndToEnd/Stage/Colleague.h"
#include "Tests/EndToEnd/Stage/Keyboard.h"
#include "Tests/EndToEnd/Story.h"

// Two partners are invited, each with one account to look at: one of them may look at capital and dividends as well.
// That one sees what the owner's books say and can change nothing; for the other there is no such page.

namespace {

constexpr CapitalCompany company{"PT Mitra Pengamat", "ratna@mitra.example", "a secret of Ratna"};
constexpr auto english = "en-US";
constexpr auto currency = "IDR";
constexpr auto quarter = "2026 Q3";

/// An invited partner, and the one account that they may see.
struct Partner {
    const char* name;
    const char* email;
    const char* password;
    const char* account;
    std::vector<std::string> permissions;
};

/// What the owner keeps, so that no figure is the same as another and each account has its contribution.
void keepBooks(CapitalClerk& clerk)
{
    for (const auto* name : {"Budi Santoso", "Chen Siyuan"})
        clerk.addOwner(name);
    clerk.setShares({"61.67", "38.33"});
    clerk.contribute({.owner = "Chen Siyuan", .account = "Second bank", .amount = "300000"});
    clerk.contribute({.owner = "Budi Santoso", .account = "Operating bank", .amount = "700000"});
    clerk.addParticipant("Budi Santoso", "60");
    clerk.addParticipant("Chen Siyuan", "40");
    clerk.allocate(quarter, "100000");
    clerk.pay({.period = quarter, .person = "Budi Santoso", .account = "Operating bank", .amount = "21000"});
    clerk.pay({.period = quarter, .person = "Chen Siyuan", .account = "Second bank", .amount = "13000"});
    clerk.pay({.person = "Budi Santoso", .account = "Operating bank", .amount = "5000"});
}

std::string invite(Colleague& ratna, CapitalClerk& clerk, const Partner& partner)
{
    const AccountGrant grant{.accountID = clerk.accountID(partner.account),
                             .actions = {std::string{AccountAction::view}}};
    return ratna.invite({.name = partner.name,
                         .email = partner.email,
                         .role = std::string{MemberRole::partner},
                         .accountIDs = {},
                         .permissions = partner.permissions,
                         .accountGrants = {grant}});
}

void join(Stage& stage, const Partner& partner, const std::string& code)
{
    auto& screen = stage.screen;
    const int before = stage.mail.codesTo(partner.email);
    screen.press("mode-join");
    screen.fill("email", partner.email);
    screen.fill("invitationCode", code);
    screen.keys("Return");
    screen.waitForFocus("verificationCode");
    screen.waitUntil("a letter with a code comes", [&] { return stage.mail.codesTo(partner.email) > before; });
    screen.type(stage.mail.latestCode(partner.email));
    screen.keys("Return");
    screen.waitForFocus("personName");
    screen.type(partner.name);
    screen.keys("Tab");
    screen.type(partner.password);
    screen.keys("Return");
    screen.waitFor("workspaceView");
}

void signIn(Stage& stage, const Partner& partner)
{
    auto& screen = stage.screen;
    screen.fill("email", partner.email);
    screen.fill("password", partner.password);
    screen.keys("Return");
    screen.waitFor("page-accounts");
}

/// What stands in the row of a person below the head of this word.
QString figureOf(const Stage& stage, const std::string& person, std::string_view head)
{
    const auto& model = *stage.screen.find<QAbstractItemView>("ownersTable").model();
    const auto wanted = wordIn(english, capitalWords(), head);
    for (int column = 0; column < model.columnCount(); ++column) {
        for (int row = 0; row < model.rowCount(); ++row) {
            if (model.headerData(column, Qt::Horizontal).toString() == wanted &&
                model.index(row, 0).data().toString() == qString(person))
                return model.index(row, column).data().toString();
        }
    }
    return {};
}

void expectFigure(const Stage& stage, const std::string& person, std::string_view head, const RecordCell& inTheBooks)
{
    const auto shown = figureOf(stage, person, head);
    expect(shown == inTheBooks.text, QStringLiteral("of %1 it says %2 as the owner's books do, not \"%3\"")
                                         .arg(qString(person), inTheBooks.text, shown));
}

/// The summaries are made of what the owner's client was sent, not of what this window was.
void compareWithTheBooks(const Stage& stage, const LedgerSnapshot& owners)
{
    const auto amount = [](std::int64_t minor) { return RecordText::amount(minor, currency, english); };
    const auto capital = CapitalSummary::create(*owners.capital, currency, std::nullopt, std::nullopt);
    const auto dividends = DividendSummary::create(*owners.dividends, currency, std::nullopt, std::nullopt);
    expect(capital && capital->participants.size() == 2 && dividends && dividends->participants.size() == 2,
           QStringLiteral("the owner's books say something of both people"));
    for (const auto& each : capital->participants) {
        expectFigure(stage, each.name, "column.recorded", amount(each.recordedMinor));
        expectFigure(stage, each.name, "column.ownership", RecordText::percentCell(*each.ownershipBps, english));
    }
    for (const auto& each : dividends->participants) {
        expectFigure(stage, each.name, "column.netPaid", amount(each.netPaidMinor));
        expectFigure(stage, each.name, "column.settled", amount(each.settledMinor));
        expectFigure(stage, each.name, "column.unpaid", amount(each.unpaidMinor));
        expectFigure(stage, each.name, "column.advances", amount(each.advanceMinor));
    }
}

/// Each of the buttons is there, cannot be pressed, and says why.
void expectUntouchable(const Stage& stage, std::initializer_list<const char*> buttons)
{
    const auto& screen = stage.screen;
    const auto reason = refusalText(CapitalRefusal::noAuthority, english);
    for (const auto* button : buttons) {
        const auto& shown = screen.find(button);
        screen.waitUntil(std::string{button} + " says why", [&] { return shown.toolTip() == reason; });
        expect(!shown.isEnabled(), QStringLiteral("%1 cannot be pressed").arg(QString::fromUtf8(button)));
    }
    for (const auto* button : {"exportCapitalButton", "exportDividendsButton"})
        expect(!screen.shows(button), QStringLiteral("%1 is not offered").arg(QString::fromUtf8(button)));
}

void lookAtContributions(Stage& stage)
{
    const Keyboard by{stage.screen};
    by.turnTo("capitalContributions");
    by.choose("contributionsTable", "Budi Santoso");
    expectUntouchable(stage, {"contributeButton", "supersedeButton", "reverseContributionButton"});
    const auto unseen = wordIn(english, capitalWords(), "account.unseen").toStdString();
    by.choose("contributionsTable", unseen.c_str());
    expect(!stage.screen.says("Second bank"), QStringLiteral("what they may not see has no name"));
}

void lookAtDividends(Stage& stage)
{
    const Keyboard by{stage.screen};
    by.turnTo("capitalDividends");
    by.choose("batchesTable", quarter);
    by.choose("linesTable", "Budi Santoso");
    by.choose("movementsTable", wordIn(english, capitalWords(), "movement.payment").toUtf8().constData());
    expectUntouchable(stage, {"allocateButton", "payAdvanceButton", "participantsButton", "cancelBatchButton",
                              "payButton", "applyAdvanceButton", "reverseMovementButton"});
    by.choose("linesTable", "Chen Siyuan");
    const auto& movements = *stage.screen.find<QAbstractItemView>("movementsTable").model();
    const auto unseen = wordIn(english, capitalWords(), "account.unseen");
    stage.screen.waitUntil("the account of what was paid to Chen has no name", [&] {
        return movements.rowCount() == 1 &&
               movements.index(0, 1).data(Qt::AccessibleTextRole).toString().contains(unseen); // in its second line
    });
    by.choose("batchesTable", wordIn(english, capitalWords(), "advances.title").toUtf8().constData());
    expectUntouchable(stage, {"returnAdvanceButton"});
}

void lookAtAccounts(Stage& stage, const Partner& partner, const char* other)
{
    stage.screen.press("page-accounts");
    stage.screen.waitForText(partner.account);
    expect(!stage.screen.says(other), QStringLiteral("no other account is listed"));
}

void lookOn(Stage& stage, CapitalClerk& clerk, const Partner& partner)
{
    auto& screen = stage.screen;
    const Keyboard by{screen};
    const auto before = clerk.books();
    stage.teller.step(QStringLiteral("What a partner sees of the owners"), [&] {
        by.press("page-dividends");
        screen.waitFor("ownersTable");
        screen.waitForText("Chen Siyuan");
        compareWithTheBooks(stage, *before);
        expectUntouchable(stage, {"contributeButton", "ownersButton", "ownershipButton", "historyButton"});
    });
    stage.teller.step(QStringLiteral("Contributions, but not into which other account"),
                      [&] { lookAtContributions(stage); });
    stage.teller.step(QStringLiteral("Dividends, and nothing to do about them"), [&] { lookAtDividends(stage); });
    stage.teller.step(QStringLiteral("Only the account that was opened to them"),
                      [&] { lookAtAccounts(stage, partner, "Second bank"); });
    expect(!screen.shows("page-reports"), QStringLiteral("what is of the whole company is not there"));
    const auto after = clerk.books();
    expect(after->capital == before->capital && after->dividends == before->dividends,
           QStringLiteral("looking has changed nothing"));
}

/// Not even the program is told what they may not see.
void expectUntold(Stage& stage, const Partner& partner)
{
    Colleague elsewhere{stage.service.address().toStdString(), stage.screen};
    elsewhere.signIn(partner.email, partner.password);
    const auto told = elsewhere.store().snapshot();
    expect(!told->capital && !told->dividends, QStringLiteral("the service tells neither section"));
    expect(told->accounts.size() == 1 && told->accounts.front().name == partner.account,
           QStringLiteral("the service tells of their account only"));
}

void findNothing(Stage& stage, const Partner& partner)
{
    auto& screen = stage.screen;
    stage.teller.step(QStringLiteral("For another partner there is no such page"), [&] {
        lookAtAccounts(stage, partner, "Operating bank");
        expect(screen.shows("page-company"), QStringLiteral("the pages stand in the side bar"));
        expect(!screen.shows("page-dividends"), QStringLiteral("capital and dividends do not"));
    });
    expectUntold(stage, partner);
}

}

void tellOfOnlookers(Stage& stage)
{
    Colleague ratna{stage.service.address().toStdString(), stage.screen};
    CapitalClerk clerk{ratna};
    company.found(stage, ratna);
    keepBooks(clerk);
    stage.findTheService();
    const Partner onlooker{
        .name = "Made Suryani",
        .email = "made@mitra.example",
        .password = "a secret of Made",
        .account = "Operating bank",
        .permissions = {std::string{Permission::viewCapital}, std::string{Permission::viewDividends}}};
    const Partner stranger{.name = "Rizky Pratama",
                           .email = "rizky@mitra.example",
                           .password = "a secret of Rizky",
                           .account = "Second bank",
                           .permissions = {}};
    for (const auto* partner : {&onlooker, &stranger}) {
        stage.teller.step(QStringLiteral("%1 joins").arg(QString::fromUtf8(partner->name)),
                          [&] { join(stage, *partner, invite(ratna, clerk, *partner)); });
        stage.signOut();
    }
    signIn(stage, onlooker);
    lookOn(stage, clerk, onlooker);
    stage.signOut();
    signIn(stage, stranger);
    findNothing(stage, stranger);
    std::ignore = stage.service.ask({QStringLiteral("verify")}); // stops the story where an invariant is broken
}
