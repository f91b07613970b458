#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include <unistd.h>

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "Benchmarks/BookGenerator.h"
#include "Benchmarks/PlainTextJournal.h"
#include "LedgerCore/Domain/Money/CurrencyInfo.h"
#include "LedgerCore/Domain/Reports/ReportBook.h"

using namespace std::chrono_literals;

namespace {

constexpr std::size_t entries = 3000;
constexpr int firstYear = 2021;
constexpr int years = 5;

/// Amounts in minor units by name and month ("2021-01"), without those that are zero.
using Figures = std::map<std::pair<std::string, std::string>, std::int64_t>;

std::vector<ReportRange> months()
{
    return ReportRanges::cut({std::chrono::year{firstYear} / 1 / 1, std::chrono::year{firstYear + years - 1} / 12 / 31},
                             Period::Span::month);
}

std::string nameOf(const ReportRange& month)
{
    const std::chrono::year_month_day first{month.first};
    return fmt::format("{:04}-{:02}", static_cast<int>(first.year()), static_cast<unsigned>(first.month()));
}

/// "-1234.5" in the minor units of a currency that has `scale` digits after the point.
std::int64_t minorOf(std::string text, int scale)
{
    const auto point = text.find('.');
    auto digits = point == std::string::npos ? std::string{} : text.substr(point + 1);
    digits.resize(static_cast<std::size_t>(scale), '0');
    return std::stoll(text.substr(0, point) + digits);
}

std::vector<std::string> fieldsOf(const std::string& line)
{
    std::vector<std::string> fields(1);
    bool isQuoted = false;
    for (const char each : line) {
        if (each == '"')
            isQuoted = !isQuoted;
        else if (each == ',' && !isQuoted)
            fields.emplace_back();
        else if (each != '\r')
            fields.back() += each;
    }
    return fields;
}

/// The same books once here and once in a journal that hledger reads.
class Hledger : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        s_books = new LedgerSnapshot{BookGenerator::books(entries)};
        auto folder = (std::filesystem::temp_directory_path() / "tallyfold-journal-XXXXXX").string();
        s_folder = new std::filesystem::path{mkdtemp(folder.data())};
        std::ofstream{*s_folder / "books.journal", std::ios::binary} << PlainTextJournal::render(*s_books);
    }
    static void TearDownTestSuite()
    {
        std::filesystem::remove_all(*s_folder);
        delete s_folder;
        delete s_books;
    }
    void SetUp() override
    {
        if (std::system("command -v hledger > /dev/null 2>&1") != 0)
            GTEST_SKIP() << "hledger is not installed";
        const auto made = ReportBook::create(*s_books);
        ASSERT_TRUE(made.has_value());
    }

    /// What hledger's balance report says month by month, in one currency.
    static Figures told(const std::string& query, const std::string& currency)
    {
        const auto command =
            fmt::format("LANG=C.UTF-8 hledger -f '{}' balance {} 'cur:{}' -M -b {}-01-01 -e {}-01-01 "
                        "--flat --no-total --layout=bare -O csv",
                        (*s_folder / "books.journal").string(), query, currency, firstYear, firstYear + years);
        std::string text;
        auto* output = popen(command.c_str(), "r");
        std::array<char, 4096> part{};
        while (const auto count = std::fread(part.data(), 1, part.size(), output))
            text.append(part.data(), count);
        EXPECT_EQ(pclose(output), 0) << command;
        std::istringstream lines{text};
        std::string line;
        std::getline(lines, line);
        const auto heads = fieldsOf(line);
        Figures figures;
        while (std::getline(lines, line)) {
            const auto fields = fieldsOf(line);
            for (std::size_t at = 2; at < fields.size(); ++at) {
                if (const auto minor = minorOf(fields[at], CurrencyInfo::scaleOf(currency)); minor != 0)
                    figures[{fields[0], heads[at].substr(0, 7)}] = minor;
            }
        }
        return figures;
    }

    /// The first figures in which the two differ, in words.
    static std::vector<std::string> differences(const Figures& ours, const Figures& theirs)
    {
        auto all = ours;
        all.insert(theirs.begin(), theirs.end());
        const auto in = [](const Figures& figures, const auto& key) {
            const auto found = figures.find(key);
            return found == figures.end() ? 0 : found->second;
        };
        std::vector<std::string> found;
        for (const auto& [key, _] : all) {
            if (in(ours, key) != in(theirs, key) && found.size() < 10)
                found.push_back(
                    fmt::format("{} {}: {} here, {} there", key.first, key.second, in(ours, key), in(theirs, key)));
        }
        return found;
    }

    static Report report(const std::string& currency)
    {
        return *ReportBook::create(*s_books)->report({.currency = currency}, months());
    }

    static const std::vector<std::string>& currencies()
    {
        static const auto all = ReportBook::create(*s_books)->currencies();
        return all;
    }

    static void keep(Figures& figures, const std::string& name, const ReportRange& month, std::int64_t minor)
    {
        if (minor != 0)
            figures[{name, nameOf(month)}] += minor;
    }

    static inline LedgerSnapshot* s_books = nullptr;
    static inline std::filesystem::path* s_folder = nullptr;
};

}

TEST_F(Hledger, ClosesEveryMonthOfEveryAccountWithTheSameBalance)
{
    for (const auto& currency : currencies()) {
        Figures ours;
        const auto matrix = ReportBook::create(*s_books)->matrix({.currency = currency}, months());
        ASSERT_TRUE(matrix.has_value());
        for (const auto& row : matrix->rows) {
            const auto name = "assets:" + s_books->account(row.accountID)->name;
            for (std::size_t at = 0; at < row.cells.size(); ++at)
                keep(ours, name, matrix->ranges[at], row.cells[at].closingMinor);
        }
        EXPECT_GT(ours.size(), 50U) << currency;
        EXPECT_EQ(differences(ours, told("assets: --historical", currency)), std::vector<std::string>{}) << currency;
    }
}

TEST_F(Hledger, ClosesTheMonthsOfAllAccountsTogetherWithTheSameBalance)
{
    for (const auto& currency : currencies()) {
        Figures ours;
        for (const auto& month : report(currency).periods)
            keep(ours, "assets", month.days, month.closingMinor);
        EXPECT_GT(ours.size(), 50U) << currency;
        EXPECT_EQ(differences(ours, told("assets: --historical --depth 1", currency)), std::vector<std::string>{})
            << currency;
    }
}

/// What is income or an expense here is the other way round there; refunds stand with the category of their income.
TEST_F(Hledger, FindsTheSameIncomeAndExpenseInEveryCategory)
{
    std::map<std::string, std::string> names; // of categories as the journal has them
    for (const auto& category : s_books->categories) {
        const auto own = [&](const std::string& id) {
            return std::ranges::find(s_books->categories, id, &Category::id)->names.at("en-US");
        };
        const auto parent = category.parentID ? own(*category.parentID) + ':' : std::string{};
        names[category.id] = category.kind + ':' + parent + own(category.id);
    }
    for (const auto& currency : currencies()) {
        Figures ours;
        for (const auto& month : report(currency).periods) {
            for (const auto& line : month.categories)
                keep(ours, line.categoryID.empty() ? "income:Refunds" : names.at(line.categoryID), month.days,
                     -line.netMinor());
        }
        EXPECT_GT(ours.size(), 100U) << currency;
        EXPECT_EQ(differences(ours, told("income: expense:", currency)), std::vector<std::string>{}) << currency;
    }
}

TEST_F(Hledger, FindsTheSameOpeningsCapitalAndDividends)
{
    std::size_t compared = 0;
    for (const auto& currency : currencies()) {
        Figures ours;
        for (const auto& month : report(currency).periods) {
            for (const auto movement : {Movement::opening, Movement::capital, Movement::dividend})
                keep(ours,
                     movement == Movement::opening   ? "equity:opening"
                     : movement == Movement::capital ? "equity:capital"
                                                     : "equity:dividend",
                     month.days, -month.movements[movement].netMinor());
        }
        compared += ours.size();
        EXPECT_EQ(differences(ours, told("equity:", currency)), std::vector<std::string>{}) << currency;
    }
    EXPECT_GT(compared, 10U);
}
