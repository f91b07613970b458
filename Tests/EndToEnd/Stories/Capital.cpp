#include <tuple>

#include <QAbstractItemView>

#include "LedgerCore/Domain/Capital/CapitalCommands.h"
#include "LedgerUI/Theme/Theme.h"
#include "Tests/EndToEnd/Stage/CapitalCompany.h"
#include "Tests/EndToEnd/Stage/Colleague.h"
#include "Tests/EndToEnd/Stage/Keyboard.h"
#include "Tests/EndToEnd/Stage/LossyLine.h"
#include "Tests/EndToEnd/Story.h"

namespace {

constexpr CapitalCompany company{"PT Modal Bersama", "dewi@modal.example", "a secret of Dewi"};

void addOwner(const Stage& stage, const char* name)
{
    const Keyboard by{stage.screen};
    by.open("ownersButton");
    by.write("recordName", name);
    by.confirm();
}

void setUpOwners(Stage& stage)
{
    const Keyboard by{stage.screen};
    stage.teller.step(QStringLiteral("Three owners"), [&] {
        for (const auto* name : {"Budi Santoso", "Chen Siyuan", "Thanh Huong"})
            addOwner(stage, name);
        stage.screen.waitForText("Thanh Huong");
    });
    stage.teller.step(QStringLiteral("What they had paid in before these books"), [&] {
        by.open("historyButton");
        by.write("recordRow0", "1050000000");
        by.write("recordRow1", "800000000");
        by.press("entryDay");
        stage.screen.waitForFocus("dayPopover");
        stage.screen.type("31/12/2025");
        stage.screen.keys("Return");
        stage.screen.waitForFocus("recordForm");
    });
    by.confirm();
    stage.screen.waitForText("1,050,000,000");
}

/// Two owners at once: nothing that either of them set is lost unseen.
void agreeOnOwnership(Stage& stage, Colleague& dewi)
{
    auto& screen = stage.screen;
    const Keyboard by{screen};
    by.open("ownershipButton");
    by.write("recordRow0", "45");
    by.write("recordRow1", "38.33");
    by.write("recordRow2", "16.67");
    auto& store = dewi.store();
    dewi.done(store.refresh(false), "the colleague looks at the books");
    const auto context = CapitalContext::of(*store.snapshot());
    std::vector<CapitalCommands::OwnerText> shares;
    for (const auto& each : context.state.participants)
        shares.push_back({each.id, shares.empty() ? "60" : "20"});
    auto command = CapitalCommands::setOwnership(context, {store.today(), store.newIdentifier()}, shares, "en-US");
    expect(command.has_value(), QStringLiteral("the colleague may set the shares"));
    dewi.done(store.submitCapital(*std::move(command), false), "the colleague sets other shares");
    stage.teller.step(QStringLiteral("Somebody else was faster"), [&] {
        screen.keys("Ctrl+Return");
        screen.waitForText("Capital records have changed.");
        by.press("recordReload");
        screen.waitForText("Newest: 60");
        expect(screen.read("recordRow0") == "45", QStringLiteral("what was typed is kept"));
    });
    by.confirm();
    screen.waitForText("38.33");
}

struct Paid {
    const char* owner;
    const char* currency;
    const char* account;
    const char* amount;
    const char* note;
    bool hasReceipt = false;
};

void contribute(Stage& stage, const Paid& paid)
{
    const Keyboard by{stage.screen};
    by.open("contributeButton");
    stage.screen.pick("recordPerson", paid.owner);
    stage.screen.pick("recordCurrency", paid.currency);
    stage.screen.pick("recordAccount", paid.account);
    by.write("recordAmount", paid.amount);
    by.write("recordNote", paid.note);
    if (paid.hasReceipt)
        pastePhoto(by.screen);
    by.confirm();
}

void payIn(Stage& stage)
{
    auto& screen = stage.screen;
    const Keyboard by{screen};
    by.turnTo("capitalContributions");
    stage.teller.step(QStringLiteral("Contributions on two accounts, in two currencies"), [&] {
        contribute(stage, {"Thanh Huong", "USD", "Operating bank", "50000", "First round"});
        contribute(stage, {"Chen", "IDR", "Second bank", "100000000", "First round"});
        contribute(stage, {"Budi", "IDR", "Operating bank", "500000000", "Second round", true});
        contribute(stage, {"Budi", "IDR", "Operating bank", "500000000", "Typed twice"});
    });
    stage.teller.step(QStringLiteral("One was typed twice"), [&] {
        by.choose("contributionsTable", "500,000,000");
        by.open("reverseContributionButton");
        by.write("recordNote", "It was typed twice");
        by.confirm();
        screen.waitForText("Reversed on");
    });
}

void addParticipants(Stage& stage)
{
    const Keyboard by{stage.screen};
    by.turnTo("capitalDividends");
    constexpr std::pair<const char*, const char*> all[] = {
        {"Budi Santoso", "45"}, {"Chen Siyuan", "38.33"}, {"Thanh Huong", "16.67"}};
    for (const auto& [name, ratio] : all) {
        by.open("participantsButton");
        by.write("recordName", name);
        by.write("recordRatio", ratio);
        by.confirm();
    }
}

void allocate(Stage& stage, const char* period, const char* currency, const char* amount)
{
    const Keyboard by{stage.screen};
    by.open("allocateButton");
    by.write("recordPeriod", period);
    stage.screen.pick("recordCurrency", currency);
    by.write("recordAmount", amount);
}

void pay(Stage& stage, const char* person, const char* account, const char* amount)
{
    const Keyboard by{stage.screen};
    by.choose("linesTable", person);
    by.open("payButton");
    stage.screen.pick("recordAccount", account);
    by.write("recordAmount", amount);
}

void payOut(Stage& stage, LossyLine& line)
{
    auto& screen = stage.screen;
    const Keyboard by{screen};
    stage.teller.step(QStringLiteral("A quarter's dividend, to the last minor unit"), [&] {
        allocate(stage, "2026 Q3", "IDR", "100000.01");
        screen.waitForText("38,330");
    });
    by.confirm();
    pay(stage, "Budi", "Operating bank", "20000");
    by.confirm();
    pay(stage, "Chen", "Second bank", "38330");
    stage.teller.step(QStringLiteral("The reply to a payment is lost"), [&] {
        line.loseReplyTo("v1/dividends/commands");
        screen.keys("Ctrl+Return");
        screen.waitForText("Retry original request");
        expect(line.hasLost(), QStringLiteral("the service had answered"));
    });
    stage.teller.step(QStringLiteral("Sent again, it is paid once"), [&] {
        by.confirm();
        screen.waitForText("Dividend payment");
        expect(screen.find<QAbstractItemView>("movementsTable").model()->rowCount() == 1,
               QStringLiteral("one payment is recorded"));
    });
    stage.teller.step(QStringLiteral("A payment is reversed"), [&] {
        by.choose("linesTable", "Budi");
        by.choose("movementsTable", "20,000");
        by.open("reverseMovementButton");
        by.confirm();
        screen.waitForText("Reversed payment");
    });
}

void settleAnAdvance(Stage& stage)
{
    auto& screen = stage.screen;
    const Keyboard by{screen};
    by.press("segment1");
    by.open("payAdvanceButton");
    screen.pick("recordPerson", "Chen");
    screen.pick("recordCurrency", "USD");
    by.write("recordAmount", "600");
    stage.teller.step(QStringLiteral("The service is killed before an advance is sent"), [&] {
        stage.service.kill();
        screen.keys("Ctrl+Return");
        screen.waitForText("Retry original request");
    });
    expect(stage.service.start(), QStringLiteral("the service is back"));
    by.confirm();
    allocate(stage, "2026 Q3 abroad", "USD", "1000");
    by.confirm();
    stage.teller.step(QStringLiteral("Part of the advance is set against an allocation"), [&] {
        by.choose("batchesTable", "2026 Q3 abroad");
        by.choose("linesTable", "Chen");
        by.open("applyAdvanceButton");
        by.write("recordAmount", "383.30");
    });
    by.confirm();
    stage.teller.step(QStringLiteral("The rest is given back"), [&] {
        by.choose("batchesTable", "Advances");
        by.open("returnAdvanceButton");
        by.write("recordAmount", "216.70");
        by.confirm();
        screen.waitForText("216.70");
    });
    stage.teller.step(QStringLiteral("An allocation that was never paid is cancelled"), [&] {
        allocate(stage, "2026 Q4", "USD", "70");
        by.confirm();
        by.choose("batchesTable", "2026 Q4");
        by.open("cancelBatchButton");
        by.confirm();
        screen.waitForText(", cancelled");
    });
}

void followTheLinks(Stage& stage)
{
    auto& screen = stage.screen;
    const Keyboard by{screen};
    by.choose("batchesTable", "Advances");
    stage.teller.step(QStringLiteral("The ledger shows the entry that booked it"), [&] {
        by.choose("movementsTable", "216.70");
        by.press("openMovementButton");
        screen.waitFor("ledgerTable");
        screen.waitFor("entryLink");
    });
    stage.teller.step(QStringLiteral("And leads back, in the dark"), [&] {
        Theme::current().install(ColorScheme::dark);
        by.press("entryLink");
        screen.waitFor("movementsTable");
        screen.waitForText("216.70");
    });
    Theme::current().install(ColorScheme::light);
}

}

void tellOfCapital(Stage& stage)
{
    LossyLine line{stage.service.address()};
    Colleague dewi{stage.service.address().toStdString(), stage.screen};
    company.found(stage, dewi);
    company.enter(stage, line.address());
    setUpOwners(stage);
    agreeOnOwnership(stage, dewi);
    payIn(stage);
    addParticipants(stage);
    payOut(stage, line);
    settleAnAdvance(stage);
    followTheLinks(stage);
    expect(stage.books.receiptsOn(QStringLiteral("Second round")) == 1,
           QStringLiteral("the contribution carries its receipt"));
    expect(stage.books.entriesNoted(QStringLiteral("It was typed twice")) == 1,
           QStringLiteral("the reversal is in the books once"));
    expect(stage.books.brokenBalances() == 0, QStringLiteral("every balance equals its legs"));
    std::ignore = stage.service.ask({QStringLiteral("verify")}); // stops the story where an invariant is broken
}
