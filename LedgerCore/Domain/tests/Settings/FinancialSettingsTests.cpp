#include <gtest/gtest.h>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Settings/FinancialFeaturePolicy.h"
#include "LedgerCore/Domain/Settings/FinancialSettingsCommand.h"

namespace {

using FinancialSettingsRules::Refusal;

struct TabCase {
    const char* name;
    const char* role;
    std::optional<std::vector<std::string>> permissions;
    bool contributions;
    bool dividends;
    std::vector<CapitalModuleTab> tabs;
};

class CapitalTabs : public testing::TestWithParam<TabCase> {};

constexpr auto overview = CapitalModuleTab::overview;
constexpr auto contributions = CapitalModuleTab::contributions;
constexpr auto dividends = CapitalModuleTab::dividends;

TEST_P(CapitalTabs, FollowRightsAndSwitches)
{
    const auto& given = GetParam();
    LedgerSnapshot snapshot;
    snapshot.currentMember.active = true;
    snapshot.currentMember.role = given.role;
    snapshot.currentMember.permissions = given.permissions;
    snapshot.financialSettings.emplace();
    snapshot.financialSettings->contributionsEnabled = given.contributions;
    snapshot.financialSettings->dividendsEnabled = given.dividends;
    EXPECT_EQ(FinancialFeaturePolicy::activeTabs(snapshot), given.tabs);
    EXPECT_EQ(FinancialFeaturePolicy::showsCapitalNavigation(snapshot), !given.tabs.empty());

    snapshot.currentMember.active = false;
    EXPECT_FALSE(FinancialFeaturePolicy::showsCapitalNavigation(snapshot));
}

using Permissions = std::vector<std::string>;

INSTANTIATE_TEST_SUITE_P(
    Members, CapitalTabs,
    testing::Values(
        TabCase{"OwnerWithoutList", "owner", std::nullopt, true, true, {overview, contributions, dividends}},
        TabCase{"AdminWithoutList", "admin", std::nullopt, true, false, {overview, contributions}},
        TabCase{"StaffWithoutList", "staff", std::nullopt, true, true, {}},
        TabCase{"OwnerWithEmptyList", "owner", Permissions{}, true, true, {}},
        TabCase{"CapitalOnly", "staff", Permissions{"viewCapital"}, true, true, {overview, contributions}},
        TabCase{"DividendsOnly", "staff", Permissions{"viewDividends"}, true, true, {overview, dividends}},
        TabCase{"Manager", "staff", Permissions{"manageCompany"}, true, true, {overview, contributions, dividends}},
        TabCase{"OtherFeatureOff", "staff", Permissions{"viewDividends"}, true, false, {}},
        TabCase{"BothOff", "owner", std::nullopt, false, false, {}}),
    [](const auto& each) { return std::string{each.param.name}; });

TEST(FinancialFeaturePolicy, ListsTheCapitalScreenUnlessEverySectionShownIsKeptOut)
{
    using FinancialFeaturePolicy::isListedInSidebar;
    LedgerSnapshot books;
    books.currentMember.active = true;
    books.currentMember.permissions = Permissions{"viewCapital", "viewDividends"};
    EXPECT_TRUE(isListedInSidebar(books));
    books.capital.emplace().revision = 4;
    EXPECT_TRUE(isListedInSidebar(books)); // for its dividends, which nobody has changed yet
    books.dividends.emplace();
    EXPECT_TRUE(isListedInSidebar(books));
    books.dividends->revision = 1;
    EXPECT_FALSE(isListedInSidebar(books));
    books.capital->showInSidebar = true;
    EXPECT_TRUE(isListedInSidebar(books));
    books.currentMember.permissions = Permissions{"viewDividends"};
    EXPECT_FALSE(isListedInSidebar(books)); // the section that is listed is not this member's
    books.dividends->showInSidebar = true;
    EXPECT_TRUE(isListedInSidebar(books));
    books.currentMember.permissions = Permissions{};
    EXPECT_FALSE(isListedInSidebar(books));
}

TEST(FinancialFeaturePolicy, IsOnWithoutSettingsAndKeepsHistoryReadableWhenOff)
{
    LedgerSnapshot snapshot;
    EXPECT_TRUE(FinancialFeaturePolicy::contributionsEnabled(snapshot));
    EXPECT_TRUE(FinancialFeaturePolicy::dividendsEnabled(snapshot));

    snapshot.financialSettings.emplace();
    EXPECT_FALSE(FinancialFeaturePolicy::contributionsEnabled(snapshot));
    EXPECT_FALSE(FinancialFeaturePolicy::dividendsEnabled(snapshot));
    snapshot.currentMember.active = true;
    snapshot.currentMember.role = "owner";
    snapshot.dividends.emplace();
    EXPECT_FALSE(FinancialFeaturePolicy::showsCapitalNavigation(snapshot));
    snapshot.dividends->movements.emplace_back();
    EXPECT_EQ(FinancialFeaturePolicy::activeTabs(snapshot), (std::vector{overview, dividends}));
}

LedgerSnapshot managed()
{
    LedgerSnapshot snapshot;
    snapshot.currentMember.active = true;
    snapshot.currentMember.permissions = {"manageCompany"};
    snapshot.financialSettings.emplace();
    snapshot.financialSettings->revision = 7;
    snapshot.transactions.emplace_back().date = "2024-03-05";
    return snapshot;
}

TEST(FinancialSettingsCommand, CarriesOnlyTheFieldsOfItsAction)
{
    const auto initialize =
        FinancialSettingsRules::initialize(managed(), "2024-03-11", "2024-03-05", "openingBalances", "key-1");
    ASSERT_TRUE(initialize.has_value());
    EXPECT_EQ(Json::encode(*initialize),
              R"({"action":"initialize","expectedRevision":7,"idempotencyKey":"key-1",)"
              R"("bookkeepingStartDate":"2024-03-05","initializationMode":"openingBalances"})");
    const auto configure =
        FinancialSettingsRules::configure(managed(), {.contributions = true, .dividends = false}, "key-2");
    ASSERT_TRUE(configure.has_value());
    EXPECT_EQ(Json::encode(*configure), R"({"action":"configure","expectedRevision":7,"idempotencyKey":"key-2",)"
                                        R"("contributionsEnabled":true,"dividendsEnabled":false})");
}

TEST(FinancialSettingsCommand, ConfirmsTheStartOnceAndNeitherAfterTheFirstEntryNorAhead)
{
    const auto refusal = [](const LedgerSnapshot& books, const char* day, const char* mode) {
        return FinancialSettingsRules::initialize(books, "2024-03-11", day, mode, "key").error();
    };
    EXPECT_EQ(refusal(managed(), "2024-03-06", "fromZero"), Refusal::startAfterEntries);
    EXPECT_EQ(refusal(managed(), "2024-03-12", "fromZero"), Refusal::startInFuture);
    EXPECT_EQ(refusal(managed(), "2024-02-30", "fromZero"), Refusal::invalidStartDate);
    EXPECT_EQ(refusal(managed(), "0024-03-05", "fromZero"), Refusal::startTooEarly) << "a year that was not finished";
    EXPECT_EQ(refusal(managed(), "1899-12-31", "fromZero"), Refusal::startTooEarly);
    EXPECT_TRUE(FinancialSettingsRules::initialize(managed(), "2024-03-11", "1900-01-01", "fromZero", "key"));
    auto ancient = managed();
    ancient.transactions.front().date = "0024-03-05";
    EXPECT_TRUE(FinancialSettingsRules::initialize(ancient, "2024-03-11", "0024-03-05", "fromZero", "key"))
        << "books that hold such an entry can be started";
    EXPECT_EQ(refusal(managed(), "2024-01-01", ""), Refusal::modeRequired);
    EXPECT_EQ(refusal(managed(), "2024-01-01", "from\nzero"), Refusal::modeUnsound);
    EXPECT_EQ(refusal(managed(), "2024-01-01", std::string(41, 'a').c_str()), Refusal::modeUnsound);

    auto started = managed();
    started.financialSettings->bookkeepingStartDate = "2024-01-01";
    EXPECT_EQ(refusal(started, "2024-01-01", "fromZero"), Refusal::alreadyInitialized);
    auto stranger = managed();
    stranger.currentMember.permissions = {"viewCompany"};
    EXPECT_EQ(refusal(stranger, "2024-01-01", "fromZero"), Refusal::noAuthority);
}

TEST(FinancialSettingsCommand, IsRefusedOnAnotherRevisionOrWithOtherFields)
{
    const auto books = managed();
    FinancialSettingsRules::Ground ground{books.currentMember, books.financialSettings, std::nullopt, "2024-03-11"};
    auto command = *FinancialSettingsRules::configure(books, {}, "key");
    EXPECT_EQ(FinancialSettingsRules::whyNot(command, ground), std::nullopt);
    command.expectedRevision = 6;
    EXPECT_EQ(FinancialSettingsRules::whyNot(command, ground), Refusal::staleRevision);
    command.expectedRevision = ground.settings->revision = FinancialSettingsRules::lastRevision;
    EXPECT_EQ(FinancialSettingsRules::whyNot(command, ground), Refusal::revisionLimit);
    command.bookkeepingStartDate = "2024-01-01";
    EXPECT_EQ(FinancialSettingsRules::whyNot(command, ground), Refusal::foreignField);
    command.bookkeepingStartDate.reset();
    command.dividendsEnabled.reset();
    EXPECT_EQ(FinancialSettingsRules::whyNot(command, ground), Refusal::switchesRequired);
    command.action = "reset";
    EXPECT_EQ(FinancialSettingsRules::whyNot(command, ground), Refusal::unknownAction);
}

TEST(FinancialSettingsCommand, ChangesWhatItsActionIsAbout)
{
    auto books = managed();
    const auto start = *FinancialSettingsRules::initialize(books, "2024-03-11", "2024-01-01", "openingBalances", "key");
    books.financialSettings = FinancialSettingsRules::changed(books.financialSettings, start, "stamp");
    const auto switches = *FinancialSettingsRules::configure(books, {.contributions = true, .dividends = false}, "key");
    const auto after = FinancialSettingsRules::changed(books.financialSettings, switches, "later");
    EXPECT_EQ(after, (FinancialSettings{.revision = 9,
                                        .contributionsEnabled = true,
                                        .dividendsEnabled = false,
                                        .bookkeepingStartDate = "2024-01-01",
                                        .initializationMode = "openingBalances",
                                        .initializedAt = "stamp",
                                        .featuresConfigured = true}));
}

}
