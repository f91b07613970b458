#pragma once

#include "LedgerCore/Domain/Records/Requests/CapitalCommand.h"
#include "LedgerCore/Domain/Records/Requests/DividendCommand.h"
#include "LedgerUI/Presentation/tests/CapitalSample.h"
#include "LedgerUI/Screens/Capital/CapitalView.h"
#include "LedgerUI/testing/WindowUnderTest.h"

/// The window with nothing but the page of capital and dividends.
inline PageRegistry capitalPages()
{
    PageRegistry pages;
    pages.add<CapitalView>(WorkspacePage::dividends);
    return pages;
}

/// Lets the scripted service have these books from now on.
inline void serveBooks(WindowUnderTest& under, const CapitalSample& sample)
{
    under.server.replace("GET v1/snapshot", ServerReply::json(sample.json()));
}

/// Opens the books as their demonstration.
inline void openBooks(WindowUnderTest& under, const CapitalSample& sample)
{
    under.server.replace("POST v1/demo", ServerReply::json(R"({"token":"token-1","snapshot":)" + sample.json() + "}"));
    serveBooks(under, sample);
    require(resultOf(under.store.startDemo("en-US", "owner")).has_value(), "the scripted demonstration opens");
    under.screen.waitFor("capitalTabs");
}

/// The page of capital and dividends over a scripted service, with what was sent to it.
struct CapitalPageUnderTest : WindowUnderTest {
    explicit CapitalPageUnderTest(const CapitalSample& sample = capitalSample()) : WindowUnderTest{capitalPages()}
    {
        openBooks(*this, sample);
    }

    template <class Command>
    std::vector<Command> sent(const std::string& route)
    {
        std::vector<Command> commands;
        for (const auto& request : server.requests(route)) {
            const auto command = Json::decode<Command>(request.body);
            require(command.has_value(), "what the program sends is a command");
            commands.push_back(*command);
        }
        return commands;
    }
    std::vector<CapitalCommand> capitalSent() { return sent<CapitalCommand>("POST v1/capital/commands"); }
    std::vector<DividendCommand> dividendsSent() { return sent<DividendCommand>("POST v1/dividends/commands"); }

    void openContribution()
    {
        screen.press("contributeButton");
        screen.waitForFocus("recordForm");
        screen.pick("recordPerson", "Budi");
        screen.fill("recordAmount", "250000");
    }
    void openDividends()
    {
        screen.keys("Ctrl+Tab Ctrl+Tab");
        screen.waitFor("batchesTable");
    }
};

/// A company as it begins.
inline CapitalSample withoutAccounts()
{
    CapitalSample sample{capitalGround()};
    sample.books().accounts.clear();
    return sample;
}

/// As an administrator has it whose role opens the page and who has no right to its records: the service sends neither.
inline CapitalSample withoutTheRight()
{
    CapitalSample sample{capitalGround()};
    sample.books().currentMember.role = "admin";
    sample.books().currentMember.permissions.reset();
    sample.books().capital.reset();
    sample.books().dividends.reset();
    return sample;
}

/// Everything is called as long as the service allows, in words of nine letters or in one.
inline CapitalSample withLongNames(const char* between = " ")
{
    const auto named = [between](std::string name) {
        while (name.size() < 110)
            name += between + std::string(9, 'm');
        return name;
    };
    CapitalSample sample{capitalGround()};
    sample.owner(named("B")).owner(named("C"));
    sample.baseline("2026-01-02", "IDR", "2025-12-31", {{"c1", "90,000,000"}, {"c2", "0"}});
    sample.ownership("2026-01-01", {{"c1", "60"}, {"c2", "40"}});
    sample.contribute("2026-11-13", "c1", "IDR", "150,000,000", "Operating bank");
    sample.participant(named("B"), "60").participant(named("C"), "40");
    sample.allocate("2026-10-31", named("P"), "IDR", "64,500,000", {{"d1", "60"}, {"d2", "40"}});
    sample.pay("2026-11-01", "d3", "d1", "5,000,000", "Operating bank");
    return sample;
}
