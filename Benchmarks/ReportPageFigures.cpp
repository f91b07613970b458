#include "Benchmarks/StoreFigures.h"

#include <memory>
#include <string>

#include "Benchmarks/StepFigures.h"
#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Components/Page/PageTabs.h"
#include "LedgerUI/Presentation/Reports/Sheets/ReportBrowser.h"
#include "LedgerUI/Presentation/Reports/Sheets/ReportPart.h"
#include "LedgerUI/Screens/Reports/ReportsView.h"

namespace {

constexpr QSize pageSize{960, 734};

/// The reports page by itself, of the size that it has in the window.
struct Page {
    explicit Page(LedgerStore& store) : view{std::make_unique<ReportsView>(store)}
    {
        browser = view->findChild<ReportBrowser*>();
        tabs = view->findChild<PageTabs*>();
        view->resize(pageSize);
        view->show();
        settle();
    }

    /// Until what was asked for is painted.
    void settle() const
    {
        waitFor([this] { return browser->sheet() && browser->sheet()->query == browser->query(); });
        view->grab();
    }

    void ask(const ReportQuery& query) const
    {
        browser->ask(query);
        settle();
    }
    void choose(ReportPart part) const
    {
        tabs->choose(QString::fromUtf8(ReportParts::idOf(part).data()));
        settle();
    }

    std::unique_ptr<ReportsView> view;
    ReportBrowser* browser = nullptr;
    PageTabs* tabs = nullptr;
};

}

void printReportPageFigures(LedgerStore& store, int repetitions)
{
    std::unique_ptr<Page> page;
    printStep(
        "reports page made and shown", repetitions, [&] { page.reset(); },
        [&] { page = std::make_unique<Page>(store); });
    for (const auto part : ReportParts::all) {
        const auto name = std::string{ReportParts::idOf(part)};
        const auto other = part == ReportPart::overview ? ReportPart::income : ReportPart::overview;
        printStep("reports, " + name, repetitions, [&] { page->choose(other); }, [&] { page->choose(part); });
        page->choose(part);
        const auto home = page->browser->query();
        auto year = home;
        year.period = Period::containing(Period::Span::year, home.period.firstDay());
        auto all = home;
        all.period = Period::allTime();
        for (const auto& [span, query] : {std::pair{"year", year}, std::pair{"all time", all}})
            printStep(
                "  from the month to " + std::string{span}, repetitions, [&] { page->ask(home); },
                [&] { page->ask(query); });
        page->ask(home);
    }
}
