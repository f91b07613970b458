#include <algorithm>
#include <tuple>

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include "LedgerCore/Domain/Capital/CapitalCommands.h"
#include "LedgerCore/Domain/Dividends/DividendBook.h"
#include "LedgerCore/Domain/Exports/CapitalCSV.h"
#include "LedgerCore/Domain/Exports/DividendCSV.h"
#include "LedgerCore/Domain/Money/BasisPoints.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerUI/Presentation/Records/CapitalRefusalText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "Tallyfold/MainWindow.h"
#include "Tests/EndToEnd/Stage/CapitalCompany.h"
#include "Tests/EndToEnd/Stage/Colleague.h"
#include "Tests/EndToEnd/Stage/Keyboard.h"
#include "Tests/EndToEnd/Story.h"

// A year of capital and dividends in each language: everything is done by keys alone, in its separators and words.

namespace {

constexpr CapitalCompany company{"PT Empat Bahasa", "sari@bahasa.example", "a secret of Sari"};

/// A language, and the owner who joins while it is spoken.
struct Tongue {
    const char* tag;
    const char* owner;
    int bps; // of the first owner, as they agree then
};

constexpr Tongue tongues[] = {{"en-US", "Harriet Cole", 4550},
                              {"zh-CN", "陈思远", 4650},
                              {"id-ID", "Budi Santoso", 4750},
                              {"vi-VN", "Trần Văn Hùng", 4850}};

/// A person who reads and types one language, and somebody else who keeps the same books.
struct Speaker {
    Stage& stage;
    Colleague& colleague;
    Tongue tongue;
    std::string language{tongue.tag};
    Keyboard by{stage.screen};

    /// What the page says of it, as far as it is the same whatever stands in it.
    [[nodiscard]] std::string word(std::string_view key) const
    {
        const auto whole = wordIn(language, capitalWords(), key).toStdString();
        return whole.substr(0, whole.find("%1"));
    }
    [[nodiscard]] std::string percent(int bps) const { return BasisPoints::text(bps, language); }
    /// An amount in US dollars as the language writes it.
    [[nodiscard]] std::string dollars(std::int64_t minor) const { return Money::formatDigits(minor, "USD", language); }
    [[nodiscard]] std::string rupiah(std::int64_t minor) const { return Money::formatDigits(minor, "IDR", language); }
    void send(const char* button, std::int64_t minor) const
    {
        by.open(button);
        type(minor);
        by.confirm();
    }
    void type(std::int64_t minor) const { by.write("recordAmount", dollars(minor).c_str()); }
};

/// What a PDF says.
QString paperOf(const QString& path)
{
    QProcess process;
    process.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), path, QStringLiteral("-")});
    process.waitForFinished();
    return QString::fromUtf8(process.readAllStandardOutput());
}

void addPerson(const Speaker& person, const char* button, const char* name, int bps = -1)
{
    const auto& by = person.by;
    by.open(button);
    by.write("recordName", name);
    if (bps >= 0)
        by.write("recordRatio", person.percent(bps).c_str());
    by.confirm();
}

/// Before the first language: who is there from the beginning.
void gather(const Speaker& person)
{
    for (const auto* name : {"Thanh Huong", "Chen Siyuan"})
        addPerson(person, "ownersButton", name);
    person.by.turnTo("capitalDividends");
    addPerson(person, "participantsButton", "Thanh Huong", 6167);
    addPerson(person, "participantsButton", "Chen Siyuan", 3833);
}

void setUp(const Speaker& person)
{
    auto& screen = person.stage.screen;
    const auto& by = person.by;
    by.turnTo("capitalOverview");
    addPerson(person, "ownersButton", person.tongue.owner);
    screen.waitForText(person.tongue.owner);
    by.turnTo("capitalContributions");
    const bool isFirst = person.language == tongues[0].tag;
    by.open(isFirst ? "historyButton" : "supersedeButton");
    screen.pick("recordCurrency", "USD");
    const auto paid = 100'000'050 + person.tongue.bps;
    by.write("recordRow0", person.dollars(paid).c_str());
    if (isFirst) {
        by.press("entryDay");
        screen.waitForFocus("dayPopover");
        screen.type("31/12/2025");
        screen.keys("Return");
        screen.waitForFocus("recordForm");
    }
    by.confirm();
    by.turnTo("capitalContributions");
    screen.waitForText(person.dollars(paid));
    by.turnTo("capitalDividends");
    addPerson(person, "participantsButton", person.tongue.owner, 0);
    by.open("participantsButton");
    screen.pick("recordPerson", "Chen");
    by.write("recordRatio", person.percent(3833).c_str());
    by.confirm();
}

/// Somebody else sets 60 and 40 per cent while the form is open: nothing that either of them set is lost unseen.
void agreeOnOwnership(const Speaker& person)
{
    auto& screen = person.stage.screen;
    const auto& by = person.by;
    by.turnTo("capitalOverview");
    by.open("ownershipButton");
    const auto first = person.percent(person.tongue.bps);
    by.write("recordRow0", first.c_str());
    by.write("recordRow1", person.percent(BasisPoints::whole - person.tongue.bps).c_str());
    auto& store = person.colleague.store();
    person.colleague.done(store.refresh(false), "the colleague looks at the books");
    const auto context = CapitalContext::of(*store.snapshot());
    std::vector<CapitalCommands::OwnerText> shares;
    for (const auto& each : context.state.participants)
        shares.push_back({each.id, shares.empty() ? "60" : shares.size() == 1 ? "40" : "0"});
    auto command = CapitalCommands::setOwnership(context, {store.today(), store.newIdentifier()}, shares, "en-US");
    expect(command.has_value(), QStringLiteral("the colleague may set the shares"));
    person.colleague.done(store.submitCapital(*std::move(command), false), "the colleague sets other shares");
    screen.keys("Ctrl+Return");
    screen.waitForText(refusalText(CapitalRefusal::staleRevision, person.language).toStdString());
    by.press("recordReload");
    screen.waitForText(wordIn(person.language, capitalFormWords(), "newest", {"60"}).toStdString());
    expect(screen.read("recordRow0") == first, QStringLiteral("what was typed is kept"));
    by.confirm();
    screen.waitForText(first);
}

void payIn(const Speaker& person)
{
    auto& screen = person.stage.screen;
    const auto& by = person.by;
    by.turnTo("capitalContributions");
    by.open("contributeButton");
    screen.pick("recordPerson", "Thanh Huong");
    screen.pick("recordCurrency", "USD");
    person.type(123'456);
    const auto note = "Round of " + person.language;
    by.write("recordNote", note.c_str());
    pastePhoto(by.screen);
    by.confirm();
    expect(person.stage.books.receiptsOn(qString(note)) == 1, QStringLiteral("the contribution carries its receipt"));
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

LedgerSnapshot booksOf(const Speaker& person)
{
    auto& store = person.colleague.store();
    person.colleague.done(store.refresh(false), "the colleague looks at the books");
    return *store.snapshot();
}

std::int64_t heldOn(const LedgerSnapshot& books, const char* account)
{
    const auto found = std::ranges::find(books.accounts, account, &Account::name);
    expect(found != books.accounts.end(), QStringLiteral("the account is there"));
    return found->balance("IDR");
}

/// What Chen is to get of this period, and what of it is still unpaid.
DividendLineSummary lineOfChen(const LedgerSnapshot& books, const std::string& period)
{
    const auto& state = *books.dividends;
    const auto book = DividendBook::create(state, "IDR", std::nullopt);
    const auto batch = std::ranges::find(state.batches, period, &DividendBatch::period);
    const auto chen = std::ranges::find(state.participants, "Chen Siyuan", &DividendParticipant::name);
    expect(book && batch != state.batches.end() && chen != state.participants.end(),
           QStringLiteral("the allocation is in the books"));
    return book->line(batch->id, chen->id);
}

void payFrom(const Speaker& person, const char* account, std::int64_t minor)
{
    const auto& by = person.by;
    by.open("payButton");
    person.stage.screen.pick("recordAccount", account);
    by.write("recordAmount", person.rupiah(minor).c_str());
    by.confirm();
}

/// A part of one dividend is taken from one account, and the rest of it from another one.
void payFromTwoAccounts(const Speaker& person)
{
    const auto& by = person.by;
    constexpr std::int64_t part = 1'234'500;
    const auto period = "2026 H1 " + person.language;
    by.open("allocateButton");
    by.write("recordPeriod", period.c_str());
    person.stage.screen.pick("recordCurrency", "IDR");
    by.write("recordAmount", person.rupiah(10'000'000).c_str());
    by.confirm();
    const auto before = booksOf(person);
    const auto rest = lineOfChen(before, period).unpaidMinor - part;
    by.choose("batchesTable", period.c_str());
    by.choose("linesTable", "Chen");
    payFrom(person, "Operating bank", part);
    by.choose("linesTable", "Chen");
    payFrom(person, "Second bank", rest);
    const auto after = booksOf(person);
    expect(rest > 0 && heldOn(after, "Operating bank") == heldOn(before, "Operating bank") - part,
           QStringLiteral("the part is taken from the one account"));
    expect(heldOn(after, "Second bank") == heldOn(before, "Second bank") - rest,
           QStringLiteral("the rest is taken from the other one"));
    expect(lineOfChen(after, period).unpaidMinor == 0, QStringLiteral("both together settle the dividend"));
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

/// Saves through the file dialog of this name, which is open by now.
QString saveIn(const Speaker& person, const QTemporaryDir& folder, const char* dialog, const char* file)
{
    auto& screen = person.stage.screen;
    const auto path = folder.filePath(QString::fromUtf8(file));
    screen.waitForFocus(dialog);
    person.by.write("fileNameEdit", path.toUtf8().constData());
    screen.keys("Return");
    screen.waitUntilGone(dialog);
    return path;
}

/// What is on the paper that the dialog previews.
QString printed(const Speaker& person, const QTemporaryDir& folder, const char* file)
{
    auto& screen = person.stage.screen;
    screen.waitForFocus("printDialog");
    person.by.press("printSave");
    const auto path = saveIn(person, folder, "printFileDialog", file);
    screen.waitUntilGone("printDialog");
    person.stage.window.activateWindow();
    return paperOf(path);
}

void print(const Speaker& person)
{
    const QTemporaryDir folder;
    const auto& by = person.by;
    const auto holds = [&](const QString& paper, const std::string& text) {
        expect(paper.contains(QString::fromStdString(text)),
               QStringLiteral("the paper says %1").arg(QString::fromStdString(text)));
    };
    by.turnTo("capitalOverview");
    person.stage.screen.keys("Ctrl+P");
    const auto overview = printed(person, folder, "overview.pdf");
    holds(overview, person.word("ownership.title"));
    holds(overview, person.tongue.owner);
    by.turnTo("capitalDividends");
    by.choose("batchesTable", ("2026 " + person.language).c_str());
    by.choose("linesTable", "Chen");
    by.press("printStatementButton");
    const auto statement = printed(person, folder, "statement.pdf");
    holds(statement, person.word("statement"));
    holds(statement, person.dollars(1'833)); // of 38.33, which is the part of 100.01, 20.00 are set off
}

/// What was written, once the page says so: the books are asked anew after the place was chosen.
QByteArray tableOf(const Speaker& person, const QString& path)
{
    QFile file{path};
    person.stage.screen.waitForText(
        wordIn(person.language, exportWords(), "done", {QFileInfo{path}.fileName().toStdString()}).toStdString());
    expect(file.open(QIODevice::ReadOnly), QStringLiteral("%1 was saved").arg(path));
    return file.readAll();
}

void exportBoth(const Speaker& person)
{
    const QTemporaryDir folder;
    const auto books = booksOf(person);
    person.by.turnTo("capitalContributions");
    person.by.press("exportCapitalButton");
    const auto capital = tableOf(person, saveIn(person, folder, "exportFileDialog", "capital.csv"));
    expect(capital.toStdString() == CapitalCSV::render(*books.capital), QStringLiteral("all of the capital is there"));
    person.by.turnTo("capitalDividends");
    person.by.press("exportDividendsButton");
    const auto dividends = tableOf(person, saveIn(person, folder, "exportFileDialog", "dividends.csv"));
    expect(dividends.toStdString() == DividendCSV::render(*books.dividends, person.language),
           QStringLiteral("all of the dividends are there"));
}

void speak(Stage& stage, const std::string& language)
{
    stage.screen.keys("Ctrl+,");
    stage.screen.press("interfaceLanguage-" + language);
    stage.screen.keys("Esc");
    stage.screen.waitUntilGone("settingsDialog");
}

void liveAYear(const Speaker& person)
{
    const auto tell = [&](const char* what, void (*act)(const Speaker&)) {
        person.stage.teller.step(QString::fromLatin1(what) + QStringLiteral(" in ") + qString(person.language),
                                 [&] { act(person); });
    };
    tell("Owners, participants and their history", setUp);
    tell("Two owners set shares at once", agreeOnOwnership);
    tell("A contribution and its reversal", payIn);
    tell("An allocation, a payment and its reversal", payOut);
    tell("A dividend that is paid from two accounts", payFromTwoAccounts);
    tell("An advance, applied and given back", settleAnAdvance);
    tell("An allocation that is cancelled", cancelOne);
    tell("The page and a statement on paper", print);
    tell("Both sections as tables", exportBoth);
    person.stage.teller.step(QStringLiteral("Where everybody stands, in ") + qString(person.language),
                             [&] { person.by.turnTo("capitalOverview"); });
}

}

void tellOfCapitalInLanguages(Stage& stage)
{
    Colleague sari{stage.service.address().toStdString(), stage.screen};
    company.found(stage, sari);
    company.enter(stage, stage.service.address());
    gather({stage, sari, tongues[0]});
    for (const auto& tongue : tongues) {
        speak(stage, tongue.tag);
        liveAYear({stage, sari, tongue});
    }
    expect(stage.books.brokenBalances() == 0, QStringLiteral("every balance equals its legs"));
    std::ignore = stage.service.ask({QStringLiteral("verify")}); // stops the story where an invariant is broken
}
