#include "LedgerCLI/ExportCommand.h"

#include <gtest/gtest.h>

#include "LedgerCore/Domain/testing/SnapshotBuilder.h"

namespace LedgerCLI {

namespace {

using Export = CommandResult (*)(const LedgerSnapshot&, const ExportCommand::Target&, std::string_view);

struct RightCase {
    const char* name;
    Export exported;
    std::vector<std::string> permissions;
    bool isWritten;
};

class ExportRight : public testing::TestWithParam<RightCase> {};

TEST_P(ExportRight, IsThatOfTheWindow)
{
    auto books = snapshot().permissions(GetParam().permissions).build();
    books.capital.emplace();
    books.dividends.emplace();
    const auto done = GetParam().exported(books, {.path = "-", .today = "2026-11-20"}, "en-US");
    EXPECT_EQ(done.has_value(), GetParam().isWritten);
    if (!done) {
        EXPECT_EQ(done.error().code, ExitCode::refused);
        EXPECT_EQ(done.error().message, "This member may not export.");
    }
}

INSTANTIATE_TEST_SUITE_P(
    Members, ExportRight,
    testing::Values(RightCase{"Capital", ExportCommand::capital, {"exportCapital"}, true},
                    RightCase{"CapitalSeen", ExportCommand::capital, {"viewCapital", "manageCompany"}, false},
                    RightCase{"CapitalByTheLedgersRight", ExportCommand::capital, {"exportData"}, false},
                    RightCase{"Dividends", ExportCommand::dividends, {"exportData", "viewDividends"}, true},
                    RightCase{"DividendsSeen", ExportCommand::dividends, {"viewDividends", "postDividends"}, false},
                    RightCase{"DividendsUnseen", ExportCommand::dividends, {"exportData"}, false}),
    [](const auto& each) { return std::string{each.param.name}; });

}

}
