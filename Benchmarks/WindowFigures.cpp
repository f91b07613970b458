#include <cstdio>
#include <fstream>
#include <functional>
#include <iostream>

#include <CLI/CLI.hpp>
#include <QApplication>
#include <QCoro/QCoroTask>
#include <QKeyEvent>
#include <fmt/core.h>

#include "Benchmarks/LoopHold.h"
#include "Benchmarks/Samples.h"
#include "Benchmarks/ServedBooks.h"
#include "Benchmarks/StepFigures.h"
#include "Benchmarks/StoreFigures.h"
#include "LedgerCore/Client/Session/Clock.h"
#include "LedgerCore/Client/Session/IdentifierSource.h"
#include "LedgerCore/Client/Session/LanguageDefaults.h"
#include "LedgerCore/Client/Session/SessionMemory.h"
#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Contract.h"
#include "LedgerService/testing/ServiceProcess.h"
#include "LedgerUI/Presentation/Ledger/Listing/LedgerBrowser.h"
#include "LedgerUI/Screens/Ledger/LedgerTable.h"
#include "LedgerUI/Screens/Ledger/LedgerView.h"
#include "LedgerUI/Screens/Root/RootView.h"
#include "LedgerUI/Screens/Workspace/PageRegistry.h"
#include "LedgerUI/Theme/Theme.h"
#include "Tallyfold/MainWindow.h"
#include "Tallyfold/Process.h"

using namespace LedgerService;

namespace {

struct Options {
    std::string program;
    std::string database;
    int repetitions = 9;
};

PageRegistry ledgerPage()
{
    PageRegistry pages;
    pages.add<LedgerView>(WorkspacePage::ledger);
    return pages;
}

/// The real window on a real service, driven from outside.
struct Window {
    explicit Window(std::uint16_t port)
        : store{fmt::format("http://127.0.0.1:{}", port),
                {.credentials = credentials, .languageDefaults = defaults, .clock = clock, .identifiers = identifiers}},
          pages{ledgerPage()}, window{store, new RootView(store, pages)}
    {
        window.show();
        waitFor([this] { return !store.isBusy(); });
    }

    /// Lays out and paints at once what the loop would lay out and paint next.
    void paint()
    {
        QCoreApplication::sendPostedEvents();
        QEvent frame{QEvent::UpdateRequest};
        QCoreApplication::sendEvent(&window, &frame);
    }

    /// An operation of the store, until the ledger shows its outcome.
    template <class Value>
    void carryOut(QCoro::Task<Result<Value>> operation)
    {
        bool isDone = false;
        QCoro::connect(std::move(operation), &window, [&](const Result<Value>& outcome) {
            require(outcome.has_value(), "the service does what it is asked");
            isDone = true;
        });
        waitFor([&] { return isDone && window.findChild<LedgerTable*>(); });
        browser = window.findChild<LedgerBrowser*>();
        table = window.findChild<LedgerTable*>();
        require(browser, "the ledger is open");
        waitFor([&] { return browser->book() && !browser->isPreparing() && table->isVisible(); });
        paint();
    }

    /// What a person asks of the ledger, until the answer is painted.
    void ask(const std::function<void()>& question)
    {
        question();
        waitFor([this] { return !browser->isPreparing(); });
        paint();
    }

    SessionMemory credentials;
    LanguageMemory defaults;
    SystemClock clock;
    RandomIdentifiers identifiers;
    LedgerStore store;
    PageRegistry pages;
    MainWindow window;
    LedgerBrowser* browser = nullptr;
    LedgerTable* table = nullptr;
};

/// Resident memory of this process, now and at most.
void printMemory(std::string_view when)
{
    std::ifstream status{"/proc/self/status"};
    std::string line;
    std::string now;
    std::string peak;
    while (std::getline(status, line)) {
        if (line.starts_with("VmRSS:"))
            now = line.substr(6);
        else if (line.starts_with("VmHWM:"))
            peak = line.substr(6);
    }
    fmt::print("memory {:<37} {} now, {} at most\n", when, now, peak);
}

/// Prints how long an operation took and how long it kept the window from answering.
void printHold(std::string_view name, int times, const std::function<void()>& work)
{
    Samples whole;
    Samples held;
    for (int each = 0; each < times; ++each) {
        const LoopHold hold;
        whole.time(work);
        held.add(hold.longest());
    }
    whole.print(name);
    held.print("  longest without answering");
}

class Figures {
public:
    Figures(Window& window, int repetitions) : m_window{window}, m_repetitions{repetitions} {}

    void filtering()
    {
        const auto month = m_window.browser->filter();
        LedgerFilter all;
        m_window.ask([&] { m_window.browser->setFilter(all); });
        const auto before = std::exchange(m_home, month);
        filter("fill the table with all entries", all);
        m_home = all;
        filter("month, from all entries", month);
        LedgerFilter figure{.period = month.period};
        figure.figure = ReportFigure{.scope = {.currency = "USD"}, .movements = ReportFigure::netMovements()};
        filter("the entries behind a figure", figure);
        auto typed = all;
        typed.text = "harbour 12";
        filter("search, two words", typed);
        typed.text = "5";
        filter("search, one digit", typed);
        typed.text = "nothing has this";
        filter("search that finds nothing", typed);
        auto kind = all;
        kind.kinds = {"expense"};
        filter("one kind", kind);
        m_home = month;
        auto earlier = month;
        earlier.period = month.period.previous().value_or(month.period);
        filter("next month", earlier);
        m_home = before;
    }

    void sorting()
    {
        m_window.ask([&] { m_window.browser->setFilter({}); });
        sort("sort by amount", {LedgerSort::Key::amount, LedgerSort::Direction::descending});
        sort("sort by entry", {LedgerSort::Key::entry, LedgerSort::Direction::ascending});
        sort("oldest first", {LedgerSort::Key::date, LedgerSort::Direction::ascending});
    }

    /// The same steps with a head for each day.
    void grouping()
    {
        const auto group = [this](LedgerGrouping wanted) {
            m_window.ask([this, wanted] { m_window.browser->setGrouping(wanted); });
        };
        m_window.ask([&] { m_window.browser->setFilter({}); });
        printStep(
            "group all entries by day", m_repetitions, [&] { group(LedgerGrouping::none); },
            [&] { group(LedgerGrouping::byDay); });
        const auto before = std::exchange(m_home, {});
        filter("one kind by day", {.kinds = {"expense"}});
        filter("search by day, one digit", {.text = "5"});
        sort("oldest day first", {LedgerSort::Key::date, LedgerSort::Direction::ascending});
        scrolling("page down by day");
        m_home = before;
        group(LedgerGrouping::none);
    }

    void scrolling(std::string_view name = "page down")
    {
        Samples pages;
        m_window.table->chooseFirst();
        for (int each = 0; each < m_repetitions; ++each) {
            pages.timeThread([&] {
                press(Qt::Key_PageDown);
                m_window.paint();
            });
        }
        pages.print(name);
    }

    void selecting()
    {
        Samples all;
        Samples sorting;
        Samples held;
        for (int each = 0; each < m_repetitions; ++each) {
            m_window.table->clearSelection();
            m_window.ask([&] { m_window.browser->setSort({}); });
            all.timeThread([&] {
                m_window.table->selectAll();
                m_window.paint();
            });
            const LoopHold hold;
            sorting.time([&] {
                m_window.ask(
                    [&] { m_window.browser->setSort({LedgerSort::Key::amount, LedgerSort::Direction::descending}); });
            });
            held.add(hold.longest());
        }
        all.print("select all");
        sorting.print("sort by amount with all selected");
        held.print("  longest without answering");
        m_window.table->clearSelection();
        m_window.ask([&] { m_window.browser->setSort({}); });
    }

    /// What the filter does without the window, beside a loop that asks each entry the one question.
    void bare() const
    {
        const auto& book = *m_window.browser->book();
        Samples kinds;
        Samples bareKinds;
        Samples search;
        Samples bareSearch;
        std::size_t found = 0;
        for (int each = 0; each < m_repetitions; ++each) {
            kinds.timeThread([&] { found += matching(book, {.kinds = {"expense"}}).size(); });
            bareKinds.timeThread([&] { found += passing(book, [&](auto at) { return isExpense(book, at); }).size(); });
            search.timeThread([&] { found += matching(book, {.text = "harbour"}).size(); });
            bareSearch.timeThread([&] {
                found += passing(book, [&](auto at) {
                             return book.text(at).find("harbour") != std::string_view::npos;
                         }).size();
            });
        }
        require(found > 0, "the filters find something");
        kinds.print("one kind, filter alone");
        bareKinds.print("  bare pass over the same rows");
        search.print("search, filter alone");
        bareSearch.print("  bare pass over the same texts");
    }

private:
    void filter(std::string_view name, const LedgerFilter& wanted)
    {
        measure(name, [&] { m_window.browser->setFilter(m_home); }, [&] { m_window.browser->setFilter(wanted); });
    }

    void sort(std::string_view name, LedgerSort wanted)
    {
        measure(name, [&] { m_window.browser->setSort({}); }, [&] { m_window.browser->setSort(wanted); });
    }

    /// How long the answer to a question takes, and how long the window stands still for it.
    void measure(std::string_view name, const std::function<void()>& home, const std::function<void()>& question)
    {
        Samples samples;
        Samples held;
        for (int each = 0; each < m_repetitions; ++each) {
            m_window.ask(home);
            const LoopHold hold;
            samples.time([&] { m_window.ask(question); });
            held.add(hold.longest());
        }
        m_window.ask(home);
        samples.print(name);
        held.print("  longest without answering");
    }

    void press(Qt::Key key)
    {
        QKeyEvent event{QEvent::KeyPress, key, Qt::NoModifier};
        QCoreApplication::sendEvent(m_window.table, &event);
    }

    static bool isExpense(const LedgerBook& book, std::uint32_t at)
    {
        return book.transaction(at).kind == EntryKind::expense;
    }

    template <class Accepts>
    static std::vector<std::uint32_t> passing(const LedgerBook& book, Accepts&& accepts)
    {
        std::vector<std::uint32_t> passed;
        for (const auto at : book.order()) {
            if (accepts(at))
                passed.push_back(at);
        }
        return passed;
    }

    Window& m_window;
    int m_repetitions;
    LedgerFilter m_home;
};

TransactionInput incomeFor(LedgerStore& store)
{
    const auto& account = store.snapshot()->accounts.front();
    TransactionInput input;
    input.kind = EntryKind::income;
    input.date = store.today();
    input.categoryID = store.entryCategories(EntryKind::income).front()->id;
    input.targetAccountID = account.id;
    input.currency = account.currencies.front();
    input.amountMinor = 12'345;
    input.idempotencyKey = store.newIdentifier();
    return input;
}

void measure(const Options& options)
{
    const ServiceProcess service{options.program, options.database};
    Window window{service.port()};
    printMemory("before signing in");
    printHold("sign in, until the ledger is filled", 1,
              [&] { window.carryOut(window.store.login(ServedBooks::email, ServedBooks::password)); });
    printMemory(fmt::format("with {} entries", window.browser->book()->size()));
    // Before anything else is looked at, which would keep room of its own.
    constexpr int reloads = 20;
    printHold("refresh, nothing new", reloads, [&] { window.carryOut(window.store.refresh(true)); });
    printHold("record an entry, until it is shown", reloads,
              [&] { window.carryOut(window.store.postTransaction(incomeFor(window.store), true)); });
    printMemory(fmt::format("after {} entries recorded", reloads));
    Figures figures{window, options.repetitions};
    figures.filtering();
    figures.sorting();
    figures.scrolling();
    figures.grouping();
    figures.selecting();
    figures.bare();
    printMemory("after looking at it in every way");
    printReportPageFigures(window.store, options.repetitions);
    printMemory("after the reports");
    printExportFigures(window.store, options.repetitions);
    printMemory("after paper and files");
    printImportFigures(window.store, service.port());
    printMemory("after the imports");
}

}

/// The figures of the window: the real pages on a real service, painted into memory or on a display.
int main(int argc, char** argv)
{
    Options options;
    CLI::App app{"Measures the window on a large ledger; a frame at 60 a second is 16.7 ms."};
    app.add_option("--program", options.program, "The service's program")->required();
    app.add_option("--database", options.database, "A database of tallyfold-served-books; entries are added to it")
        ->required();
    app.add_option("--repetitions", options.repetitions, "How often each step is taken")->capture_default_str();
    CLI11_PARSE(app, argc, argv);
    giveBackLargeBlocks();
    QApplication application{argc, argv};
    Theme::current().followDesktop();
    measure(options);
    return 0;
}
