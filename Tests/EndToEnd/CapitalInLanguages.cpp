#include "Tests/EndToEnd/CapitalInLanguages.h"

#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerUI/Presentation/Records/CapitalWords.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "Tests/EndToEnd/Keyboard.h"
#include "Tests/EndToEnd/Story.h"

namespace {

/// A person who reads and types one language.
struct Speaker {
    Stage& stage;
    std::string language;
    Keyboard by{stage.screen};

    /// What the page says of it, as far as it is the same whatever stands in it.
    [[nodiscard]] std::string word(std::string_view key) const
    {
        const auto whole = wordIn(language, capitalWords(), key).toStdString();
        return whole.substr(0, whole.find("%1"));
    }
    /// An amount in US dollars as the language writes it.
    [[nodiscard]] std::string dollars(std::int64_t minor) const { return Money::formatDigits(minor, "USD", language); }
    void send(const char* button, std::int64_t minor) const
    {
        by.open(button);
        type(minor);
        by.confirm();
    }
    void type(std::int64_t minor) const { by.write("recordAmount", dollars(minor).c_str()); }
};

void payIn(const Speaker& person)
{
    auto& screen = person.stage.screen;
    const auto& by = person.by;
    by.turnTo("capitalContributions");
    by.open("contributeButton");
    screen.pick("recordPerson", "Thanh Huong");
    screen.pick("recordCurrency", "USD");
    person.type(123'456);
    by.confirm();
    by.choose("contributionsTable", person.dollars(123'456).c_str());
    by.open("reverseContributionButton");
    by.confirm();
    screen.waitForText(person.word("contribution.reversedOn"));
}

void allocate(const Speaker& person, const std::string& period, std::int64_t minor)
{
    const auto& by = person.by;
    by.open("allocateButton");
    by.write("recordPeriod", period.c_str());
    person.stage.screen.pick("recordCurrency", "USD");
    person.type(minor);
    expect(person.stage.screen.read("recordAmountTotal") == person.dollars(minor),
           QStringLiteral("the parts add up to the total"));
    by.confirm();
    by.choose("batchesTable", period.c_str());
}

void payOut(const Speaker& person)
{
    auto& screen = person.stage.screen;
    const auto& by = person.by;
    by.turnTo("capitalDividends");
    allocate(person, "2026 " + person.language, 10'001);
    by.choose("linesTable", "Chen");
    person.send("payButton", 1'000);
    by.choose("movementsTable", person.dollars(1'000).c_str());
    by.open("reverseMovementButton");
    by.confirm();
    screen.waitForText(person.word("reversal.payment"));
}

void settleAnAdvance(const Speaker& person)
{
    auto& screen = person.stage.screen;
    const auto& by = person.by;
    by.open("payAdvanceButton");
    screen.pick("recordPerson", "Chen");
    screen.pick("recordCurrency", "USD");
    person.type(5'000);
    by.confirm();
    by.choose("batchesTable", ("2026 " + person.language).c_str());
    by.choose("linesTable", "Chen");
    person.send("applyAdvanceButton", 2'000);
    screen.waitForText(person.word("movement.application"));
    by.choose("batchesTable", person.word("advances.title").c_str());
    person.send("returnAdvanceButton", 3'000);
    screen.waitForText(person.word("movement.return"));
}

void cancelOne(const Speaker& person)
{
    allocate(person, "2027 " + person.language, 700);
    person.by.open("cancelBatchButton");
    person.by.confirm();
    const auto head = wordIn(person.language, capitalWords(), "batch.headCancelled").toStdString();
    person.stage.screen.waitForText(head.substr(head.find("%2") + 2)); // behind the amount and the day
}

}

void liveACapitalYearIn(Stage& stage, const std::string& language)
{
    stage.screen.keys("Ctrl+,");
    stage.screen.press("interfaceLanguage-" + language);
    stage.screen.keys("Esc");
    stage.screen.waitUntilGone("settingsDialog");
    const Speaker person{stage, language};
    const auto tell = [&](const char* what, void (*act)(const Speaker&)) {
        stage.teller.step(QString::fromLatin1(what) + QStringLiteral(" in ") + qString(language), [&] { act(person); });
    };
    tell("A contribution and its reversal", payIn);
    tell("An allocation, a payment and its reversal", payOut);
    tell("An advance, applied and given back", settleAnAdvance);
    tell("An allocation that is cancelled", cancelOne);
    stage.teller.step(QStringLiteral("Where everybody stands, in ") + qString(language),
                      [&] { person.by.turnTo("capitalOverview"); });
}
