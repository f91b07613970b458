#include <algorithm>
#include <tuple>

#include <QAbstractButton>

#include "LedgerCore/Domain/Entries/EntryWords.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "Tests/EndToEnd/Stage/CapitalCompany.h"
#include "Tests/EndToEnd/Stage/Colleague.h"
#include "Tests/EndToEnd/Stage/Keyboard.h"
#include "Tests/EndToEnd/Stage/LossyLine.h"
#include "Tests/EndToEnd/Story.h"

// Every command on capital and dividends: when its reply is lost after the service has carried it out, the form keeps
// what was sent, and sending it again changes the books once.

namespace {

constexpr CapitalCompany company{"PT Balasan Hilang", "wati@balasan.example", "a secret of Wati"};

struct Trial {
    const char* what;
    const char* tab;
    const char* field; // that is locked once the command was sent
    void (*fill)(const Keyboard& by);
};

constexpr auto allocation = "2026 Q3";

void pickMoney(const Keyboard& by, const char* currency, const char* amount)
{
    by.screen.pick("recordCurrency", currency);
    by.screen.pick("recordAccount", "Operating bank");
    by.write("recordAmount", amount);
}

void chooseLine(const Keyboard& by)
{
    by.choose("batchesTable", allocation);
    by.choose("linesTable", "Budi");
}

void allocate(const Keyboard& by, const char* period)
{
    by.open("allocateButton");
    by.write("recordPeriod", period);
    by.screen.pick("recordCurrency", "IDR");
    by.write("recordAmount", "100000");
}

const Trial trials[] = {
    {"a new owner", "capitalOverview", "recordName",
     [](const Keyboard& by) {
         by.open("ownersButton");
         by.write("recordName", "Budi Santoso");
     }},
    {"shares of the owners", "capitalOverview", "recordRow0",
     [](const Keyboard& by) {
         by.open("ownershipButton");
         by.write("recordRow0", "100");
     }},
    {"historical contributions", "capitalContributions", "recordRow0",
     [](const Keyboard& by) {
         by.open("historyButton");
         by.write("recordRow0", "1000");
         by.press("entryDay");
         by.screen.waitForFocus("dayPopover");
         by.screen.type("31/12/2025");
         by.screen.keys("Return");
         by.screen.waitForFocus("recordForm");
     }},
    {"a contribution", "capitalContributions", "recordAmount",
     [](const Keyboard& by) {
         by.open("contributeButton");
         by.screen.pick("recordPerson", "Budi");
         pickMoney(by, "IDR", "5000000");
     }},
    {"the reversal of a contribution", "capitalContributions", "recordNote",
     [](const Keyboard& by) {
         by.choose("contributionsTable", "5,000,000");
         by.open("reverseContributionButton");
         by.write("recordNote", "It was typed twice");
     }},
    {"a new participant", "capitalDividends", "recordName",
     [](const Keyboard& by) {
         by.open("participantsButton");
         by.write("recordName", "Budi Santoso");
         by.write("recordRatio", "90");
     }},
    {"an allocation", "capitalDividends", "recordAmount",
     [](const Keyboard& by) {
         allocate(by, allocation);
         by.write("recordRow0", "100");
     }},
    {"a payment", "capitalDividends", "recordAmount",
     [](const Keyboard& by) {
         chooseLine(by);
         by.open("payButton");
         by.screen.pick("recordAccount", "Operating bank");
         by.write("recordAmount", "20000");
     }},
    {"an advance", "capitalDividends", "recordAmount",
     [](const Keyboard& by) {
         by.open("payAdvanceButton");
         by.screen.pick("recordPerson", "Budi");
         pickMoney(by, "IDR", "3000");
     }},
    {"an advance that is applied", "capitalDividends", "recordAmount",
     [](const Keyboard& by) {
         chooseLine(by);
         by.open("applyAdvanceButton");
         by.write("recordAmount", "1000");
     }},
    {"an advance that is given back", "capitalDividends", "recordAmount",
     [](const Keyboard& by) {
         by.choose("batchesTable", "Advances");
         by.open("returnAdvanceButton");
         by.screen.pick("recordAccount", "Operating bank");
         by.write("recordAmount", "2000");
     }},
    {"the reversal of a payment", "capitalDividends", "recordNote",
     [](const Keyboard& by) {
         chooseLine(by);
         by.choose("movementsTable", "20,000");
         by.open("reverseMovementButton");
         by.write("recordNote", "The wrong account");
     }},
    {"the reversal of an application", "capitalDividends", "recordNote",
     [](const Keyboard& by) {
         chooseLine(by);
         by.choose("movementsTable", "1,000");
         by.open("reverseMovementButton");
         by.write("recordNote", "The wrong quarter");
     }},
    {"an allocation that is cancelled", "capitalDividends", "recordNote",
     [](const Keyboard& by) {
         allocate(by, "2026 Q4");
         by.write("recordRow0", "100");
         by.confirm();
         by.choose("batchesTable", "2026 Q4");
         by.open("cancelBatchButton");
         by.write("recordNote", "Too early");
     }},
};

/// The books as somebody else finds them, and how many changes they hold.
int changesIn(Colleague& colleague)
{
    auto& store = colleague.store();
    colleague.done(store.refresh(false), "the colleague looks at the books");
    const auto books = store.snapshot();
    return (books->capital ? books->capital->revision : 0) + (books->dividends ? books->dividends->revision : 0);
}

/// What the form says while it is not known what became of it.
std::string retry()
{
    return wordIn("en-US", EntryWords::words(), "retryOriginal").toStdString();
}

/// Sends the form on top, loses the reply, and sends it again: one change, however often it is sent.
void loseAndRetry(Stage& stage, LossyLine& line, Colleague& wati, const Trial& trial, const char* path)
{
    auto& screen = stage.screen;
    const auto before = changesIn(wati);
    line.loseReplyTo(path);
    screen.keys("Ctrl+Return");
    screen.waitForText(retry());
    expect(line.hasLost(), QStringLiteral("the service had answered"));
    expect(!screen.offers(trial.field), QStringLiteral("the form is locked"));
    expect(changesIn(wati) == before + 1, QStringLiteral("the service had carried it out"));
    screen.keys("Ctrl+Return");
    screen.waitUntil("the form says no more of it", [&] { return !screen.says(retry()); });
    expect(changesIn(wati) == before + 1, QStringLiteral("sent again, it changed nothing more"));
}

/// The default ratios are filled in from the form of an allocation, over which a form of its own opens.
void fillRatios(Stage& stage, LossyLine& line, Colleague& wati)
{
    const Keyboard by{stage.screen};
    auto& screen = stage.screen;
    by.turnTo("capitalDividends");
    by.open("allocateButton");
    by.press("fillFromOwnership");
    screen.waitForText("Later ownership changes will not sync automatically.");
    const Trial trial{.what = "ratios", .tab = {}, .field = "recordPeriod", .fill = {}};
    stage.teller.step(QStringLiteral("The reply is lost: ratios filled from the ownership"),
                      [&] { loseAndRetry(stage, line, wati, trial, "v1/dividends/commands"); });
    expect(screen.read("recordRow0") == "100", QStringLiteral("the ratios stand in the allocation"));
    by.press("recordCancel");
    screen.waitUntil("the form is left", [&] {
        if (screen.shows("questionConfirm"))
            screen.press("questionConfirm");
        return !screen.shows("recordForm");
    });
}

/// The service is killed when it has recorded an allocation and nobody has heard of it yet.
void dieBeforeTheReply(Stage& stage, LossyLine& line, Colleague& wati)
{
    constexpr auto period = "2027 Q1";
    const Keyboard by{stage.screen};
    auto& screen = stage.screen;
    by.turnTo("capitalDividends");
    allocate(by, period);
    by.write("recordRow0", "100");
    const auto before = changesIn(wati);
    stage.teller.step(QStringLiteral("The service dies before its reply arrives"), [&] {
        line.loseReplyTo("v1/dividends/commands");
        screen.keys("Ctrl+Return");
        screen.waitUntil("the service has answered", [&] { return line.hasLost(); });
        stage.service.kill();
        screen.waitForText(retry());
        expect(!screen.offers("recordAmount"), QStringLiteral("the form is locked"));
    });
    stage.teller.step(QStringLiteral("Sent again while there is no service"), [&] {
        screen.keys("Ctrl+Return");
        screen.waitUntil("it can be sent again", [&] { return screen.offers("recordConfirm"); });
        expect(screen.says(retry()) && !screen.offers("recordAmount"), QStringLiteral("it is still to be sent again"));
    });
    expect(stage.service.start(), QStringLiteral("the service is back"));
    expect(changesIn(wati) == before + 1, QStringLiteral("what it had recorded outlived it"));
    stage.teller.step(QStringLiteral("Sent again, it is allocated once"), [&] { by.confirm(); });
    expect(changesIn(wati) == before + 1, QStringLiteral("sent again, it changed nothing more"));
    const auto books = wati.store().snapshot();
    expect(std::ranges::count(books->dividends->batches, period, &DividendBatch::period) == 1,
           QStringLiteral("the allocation is in the books once"));
}

/// A switch has no form: what it sent without an answer stands in the list of unconfirmed requests.
void hideFromTheSideBar(Stage& stage, LossyLine& line, Colleague& wati, const char* listing, const char* path)
{
    const Keyboard by{stage.screen};
    auto& screen = stage.screen;
    screen.press("page-company");
    screen.turnTo(listing);
    const auto before = changesIn(wati);
    stage.teller.step(QStringLiteral("The reply is lost: ") + QString::fromUtf8(listing), [&] {
        line.loseReplyTo(path);
        by.press(listing);
        hearOfTheLoss(stage, line);
        expect(changesIn(wati) == before + 1, QStringLiteral("the service had carried it out"));
        by.press("unconfirmedButton");
        screen.waitForFocus("unconfirmedDialog");
        by.press("retry0");
        screen.waitForText("No unconfirmed requests");
        screen.keys("Esc");
        screen.waitUntilGone("unconfirmedDialog");
    });
    expect(changesIn(wati) == before + 1, QStringLiteral("sent again, it changed nothing more"));
    expect(!screen.find<QAbstractButton>(listing).isChecked(), QStringLiteral("the switch says what holds"));
}

}

void tellOfLostCapitalReplies(Stage& stage)
{
    LossyLine line{stage.service.address()};
    Colleague wati{stage.service.address().toStdString(), stage.screen};
    company.found(stage, wati);
    company.enter(stage, line.address());
    const Keyboard by{stage.screen};
    for (const auto& trial : trials) {
        by.turnTo(trial.tab);
        trial.fill(by);
        const bool isCapital = std::string_view{trial.tab} != "capitalDividends";
        stage.teller.step(QStringLiteral("The reply is lost: ") + QString::fromUtf8(trial.what), [&] {
            loseAndRetry(stage, line, wati, trial, isCapital ? "v1/capital/commands" : "v1/dividends/commands");
            stage.screen.waitUntilGone("recordForm");
        });
    }
    fillRatios(stage, line, wati);
    dieBeforeTheReply(stage, line, wati);
    hideFromTheSideBar(stage, line, wati, "listDividends", "v1/dividends/commands");
    hideFromTheSideBar(stage, line, wati, "listContributions", "v1/capital/commands");
    const auto books = wati.store().snapshot();
    expect(books->capital->contributions.size() == 2, QStringLiteral("one contribution and its reversal"));
    expect(books->dividends->movements.size() == 6, QStringLiteral("each movement of dividends is recorded once"));
    expect(stage.books.entriesNoted(QStringLiteral("The wrong account")) == 1,
           QStringLiteral("the reversal is in the books once"));
    expect(stage.books.brokenBalances() == 0, QStringLiteral("every balance equals its legs"));
    std::ignore = stage.service.ask({QStringLiteral("verify")}); // stops the story where an invariant is broken
}
