#include <algorithm>
#include <tuple>

#include "LedgerCore/Domain/Dividends/DividendBook.h"
#include "LedgerCore/Domain/Money/BasisPoints.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerUI/Presentation/Records/CapitalRefusalText.h"
#include "Tests/EndToEnd/Stage/CapitalClerk.h"
#include "Tests/EndToEnd/Stage/CapitalCompany.h"
#include "Tests/EndToEnd/Stage/Colleague.h"
#include "Tests/EndToEnd/Stage/Keyboard.h"
#include "Tests/EndToEnd/Story.h"

// Two people keep the dividends of one company. Whoever sends a form over what the other one has changed is told so,
// keeps what they typed, and records it once, next to what the other one did.

namespace {

constexpr CapitalCompany company{"PT Bagi Hasil", "intan@bagi.example", "a secret of Intan"};
constexpr auto english = "en-US";
constexpr auto currency = "IDR";
constexpr auto quarter = "2026 Q3";
constexpr auto chen = "Chen Siyuan";

using Fields = std::vector<const char*>;

std::vector<std::string> typedIn(const Stage& stage, const Fields& fields)
{
    std::vector<std::string> typed;
    for (const auto* field : fields)
        typed.push_back(stage.screen.read(field));
    return typed;
}

/// Sends the form on top over newer records, and loads these into it.
void sendOverNewer(Stage& stage, const QString& title, const Fields& fields)
{
    auto& screen = stage.screen;
    const auto changed = refusalText(DividendRefusal::staleRevision, english).toStdString();
    const auto typed = typedIn(stage, fields);
    stage.teller.step(title, [&] {
        screen.keys("Ctrl+Return");
        screen.waitForText(changed);
        expect(!screen.offers("recordConfirm"), QStringLiteral("it is not sent as it is"));
        expect(typedIn(stage, fields) == typed, QStringLiteral("what was typed is kept"));
    });
    Keyboard{screen}.press("recordReload");
    screen.waitUntil("the newest records are in the form", [&] { return !screen.says(changed); });
    expect(typedIn(stage, fields) == typed, QStringLiteral("what was typed is still there"));
}

void openPayment(const Stage& stage)
{
    const Keyboard by{stage.screen};
    by.choose("batchesTable", quarter);
    by.choose("linesTable", chen);
    by.open("payButton");
    stage.screen.pick("recordAccount", "Second bank");
}

const DividendBatch& batchOf(const DividendState& state, std::string_view period)
{
    const auto found = std::ranges::find(state.batches, period, &DividendBatch::period);
    expect(found != state.batches.end(), QStringLiteral("the allocation is in the books"));
    return *found;
}

/// How what Chen is to get of the quarter stands.
DividendLineSummary lineOfChen(const LedgerSnapshot& books)
{
    const auto& state = *books.dividends;
    const auto book = DividendBook::create(state, currency, std::nullopt);
    const auto person = std::ranges::find(state.participants, chen, &DividendParticipant::name);
    expect(book && person != state.participants.end(), QStringLiteral("the dividends keep their rules"));
    return book->line(batchOf(state, quarter).id, person->id);
}

/// An allocation is typed while the colleague pays somebody.
void allocateOverAPayment(Stage& stage, CapitalClerk& clerk)
{
    constexpr auto period = "2026 Q4";
    constexpr auto share = "70";
    const Keyboard by{stage.screen};
    by.open("allocateButton");
    by.write("recordPeriod", period);
    stage.screen.pick("recordCurrency", currency);
    by.write("recordAmount", "5000");
    by.write("recordRow0", share);
    by.write("recordRow1", "30");
    clerk.pay({.period = quarter, .person = "Budi Santoso", .account = "Operating bank", .amount = "20000"});
    const auto before = clerk.books();
    sendOverNewer(stage, QStringLiteral("Somebody has paid while an allocation was typed"),
                  {"recordPeriod", "recordAmount", "recordRow0", "recordRow1"});
    by.confirm();
    const auto after = clerk.books();
    expect(after->dividends->revision == before->dividends->revision + 1, QStringLiteral("one change was made"));
    expect(after->dividends->movements == before->dividends->movements,
           QStringLiteral("the colleague's payment is still there"));
    const auto made = batchOf(*after->dividends, period);
    expect(made.lines.front().ratioBps == BasisPoints::parse(share, english), QStringLiteral("it is what was typed"));
    auto others = after->dividends->batches;
    expect(std::erase_if(others, [&](const DividendBatch& each) { return each.period == period; }) == 1,
           QStringLiteral("it is allocated once"));
    expect(others == before->dividends->batches, QStringLiteral("no other allocation has changed"));
}

/// A payment is typed while the colleague pays the same person of the same allocation.
void payOverAPayment(Stage& stage, CapitalClerk& clerk)
{
    constexpr auto amount = "15000";
    constexpr auto note = "The second half";
    const Keyboard by{stage.screen};
    openPayment(stage);
    by.write("recordAmount", amount);
    by.write("recordNote", note);
    clerk.pay({.period = quarter, .person = chen, .account = "Operating bank", .amount = "10000"});
    const auto before = clerk.books();
    sendOverNewer(stage, QStringLiteral("Somebody has paid the same person"),
                  {"recordAmount", "recordNote", "recordAccount"});
    by.confirm();
    const auto after = clerk.books();
    auto movements = after->dividends->movements;
    std::erase_if(movements, [&](const DividendMovement& each) {
        return std::ranges::find(before->dividends->movements, each.id, &DividendMovement::id) !=
               before->dividends->movements.end();
    });
    expect(movements.size() == 1 && after->dividends->movements.size() == before->dividends->movements.size() + 1,
           QStringLiteral("one payment came to those that were there"));
    expect(movements.front().amountMinor == Money::parse(amount, currency, english),
           QStringLiteral("it is what was typed"));
    expect(lineOfChen(*after).paidMinor == lineOfChen(*before).paidMinor + movements.front().amountMinor,
           QStringLiteral("the colleague's payment counts beside it"));
    expect(stage.books.entriesNoted(QString::fromUtf8(note)) == 1, QStringLiteral("the money went out once"));
}

/// The whole rest is about to be paid, and the colleague has paid it.
void payWhatIsSettled(Stage& stage, CapitalClerk& clerk)
{
    auto& screen = stage.screen;
    const Keyboard by{screen};
    openPayment(stage);
    const auto rest = Money::decimalString(lineOfChen(*clerk.books()).unpaidMinor, currency);
    clerk.pay({.period = quarter, .person = chen, .account = "Operating bank", .amount = rest});
    const auto before = clerk.books();
    expect(lineOfChen(*before).unpaidMinor == 0, QStringLiteral("nothing is left to pay"));
    sendOverNewer(stage, QStringLiteral("Somebody has paid all of it"), {"recordAccount"});
    stage.teller.step(QStringLiteral("It is not paid a second time"), [&] {
        screen.keys("Ctrl+Return");
        screen.waitForText(refusalText(DividendRefusal::batchUnavailable, english).toStdString());
    });
    by.press("recordCancel");
    screen.waitUntil("the form is left", [&] {
        if (screen.shows("questionConfirm"))
            screen.press("questionConfirm");
        return !screen.shows("recordForm");
    });
    expect(clerk.books()->dividends == before->dividends, QStringLiteral("the books are as the colleague left them"));
}

}

void tellOfSharedDividends(Stage& stage)
{
    Colleague intan{stage.service.address().toStdString(), stage.screen};
    CapitalClerk clerk{intan};
    company.found(stage, intan);
    clerk.addParticipant("Budi Santoso", "60");
    clerk.addParticipant(chen, "40");
    clerk.allocate(quarter, "100000");
    company.enter(stage, stage.service.address());
    Keyboard{stage.screen}.turnTo("capitalDividends");
    allocateOverAPayment(stage, clerk);
    payOverAPayment(stage, clerk);
    payWhatIsSettled(stage, clerk);
    expect(stage.books.brokenBalances() == 0, QStringLiteral("every balance equals its legs"));
    std::ignore = stage.service.ask({QStringLiteral("verify")}); // stops the story where an invariant is broken
}
