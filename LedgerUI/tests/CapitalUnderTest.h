#pragma once

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
