#include "LedgerUI/Screens/Ledger/Filters/LedgerFilterRow.h"
#include "LedgerUI/testing/LedgerPage.h"

#include <algorithm>

#include <QToolButton>
#include <gtest/gtest.h>

#include "LedgerUI/testing/ReportSample.h"
#include "LedgerUI/testing/WindowUnderTest.h"

namespace {

/// The buttons of the row that have less room than their text needs, or stand outside of the row or in another one.
std::string cut(const LedgerFilterRow& row)
{
    std::string names;
    const QWidget* before = nullptr;
    auto buttons = row.findChildren<QToolButton*>(Qt::FindDirectChildrenOnly);
    buttons.removeIf([](const auto* each) { return !each->isVisible(); });
    std::ranges::sort(buttons, {}, [](const auto* each) { return each->x(); });
    for (const auto* each : buttons) {
        const bool overlaps = before && before->geometry().right() >= each->x();
        const bool isCut = each->width() < each->sizeHint().width() || each->geometry().right() > row.rect().right();
        if (overlaps || isCut)
            names += each->objectName().toStdString() + " ";
        before = each;
    }
    return names;
}

}

TEST(LedgerFilterRow, FoldsBeforeItCutsAButton)
{
    WindowUnderTest under{ledgerPage()};
    under.openDemonstration(reportSample());
    under.screen.waitFor("ledgerView");
    const auto& row = under.screen.find<LedgerFilterRow>("filterRow");
    bool wasWide = false;
    for (const auto* tag : {"en-US", "id-ID", "vi-VN", "zh-CN"}) {
        under.speak(tag);
        for (int width = 1000; width <= 1300; width += 20) {
            under.window.resize(width, 760);
            settle();
            EXPECT_EQ(cut(row), "") << tag << " at " << width;
            wasWide = wasWide || under.screen.shows("filterKinds");
        }
    }
    EXPECT_TRUE(wasWide) << "it unfolds where there is room";
}
