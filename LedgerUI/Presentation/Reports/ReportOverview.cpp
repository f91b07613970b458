#include "LedgerUI/Presentation/Reports/ReportOverview.h"

#include <algorithm>
#include <ranges>

#include "LedgerCore/Domain/Categories/CategoryDirectory.h"
#include "LedgerCore/Domain/Entries/EntryWords.h"
#include "LedgerCore/Domain/Money/CurrencyInfo.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

using std::chrono::year_month;
using std::chrono::year_month_day;

namespace {

constexpr int monthsShown = 12;
constexpr std::size_t categoriesShown = 6;

__extension__ using Wide = __int128;

ReportRange rangeOf(const std::vector<year_month>& months)
{
    return {year_month_day{months.front() / 1}, year_month_day{months.back() / std::chrono::last}};
}

/// In the order in which pickers list them, the unknown ones last by code.
std::vector<std::string> inPickerOrder(std::vector<std::string> codes)
{
    const auto rank = [](const std::string& code) {
        const auto supported = CurrencyInfo::supported();
        return std::pair{std::ranges::find(supported, code, &CurrencyInfo::code) - supported.begin(), code};
    };
    std::ranges::sort(codes, {}, rank);
    return codes;
}

class Overview {
public:
    Overview(const ReportBook& book, const LedgerSnapshot& snapshot, const ReportOverviews::Question& question,
             std::string_view locale)
        : m_book(book), m_snapshot(snapshot), m_question(question), m_locale(locale),
          m_months(ReportOverviews::chartMonths(question.period, question.today))
    {
    }

    std::expected<ReportOverview, ReportError> made() &&
    {
        const auto codes = inPickerOrder(m_book.currencies());
        if (std::ranges::find(codes, m_question.currency) != codes.end())
            m_overview.currency = m_question.currency;
        else if (!codes.empty())
            m_overview.currency = codes.front();
        m_overview.months = m_months;
        for (const auto& code : codes) {
            if (const auto failed = addCurrency(code))
                return std::unexpected(*failed);
        }
        return std::move(m_overview);
    }

private:
    std::optional<ReportError> addCurrency(const std::string& code)
    {
        const ReportScope scope{.currency = code, .accountIDs = m_question.accountIDs};
        const auto chosen = m_book.report(scope, {ReportRanges::of(m_question.period)});
        if (!chosen)
            return chosen.error();
        const auto monthly = m_book.report(scope, ReportRanges::cut(rangeOf(m_months), Period::Span::month));
        if (!monthly)
            return monthly.error();
        const auto& period = chosen->periods.front();
        auto& row = m_overview.currencies.emplace_back(rowOf(period, code));
        for (const auto& month : monthly->periods)
            row.monthEnds.push_back(month.closingMinor);
        if (code == m_overview.currency) {
            m_overview.chart = chartOf(*monthly);
            m_overview.monthly = *monthly;
            m_overview.largestExpenses = largestOf(period, Movement::expense, code);
            m_overview.largestIncome = largestOf(period, Movement::income, code);
        }
        return std::nullopt;
    }

    [[nodiscard]] CurrencyOverview rowOf(const ReportPeriod& period, const std::string& code) const
    {
        const auto& moved = period.movements;
        const auto income = moved.incomeMinor();
        const auto expense = moved.expenseMinor();
        return {.currency = code,
                .name = qString(EntryWords::currency(code, m_locale)),
                .opening = balanceText(period.openingMinor, code, m_locale),
                .income = movementText(income, code, m_locale),
                .expense = movementText(expense, code, m_locale),
                .net = movementText(income + expense, code, m_locale),
                .other = movementText(moved.otherMinor(), code, m_locale),
                .closing = balanceText(period.closingMinor, code, m_locale),
                .monthEnds = {}};
    }

    [[nodiscard]] ChartData chartOf(const Report& monthly) const
    {
        ChartData chart{.currency = monthly.scope.currency, .places = {}, .series = {}, .chosen = {}};
        ChartSeries income{word("income"), ChartMark::bar, ChartRole::income, {}};
        ChartSeries expense{word("expense"), ChartMark::bar, ChartRole::expense, {}};
        ChartSeries net{word("net"), ChartMark::line, ChartRole::net, {}};
        for (std::size_t at = 0; at < monthly.periods.size(); ++at) {
            const auto& moved = monthly.periods[at].movements;
            chart.places.push_back(
                {DayText::shortMonth(m_months[at].month(), m_locale), DayText::month(m_months[at], m_locale)});
            income.values.push_back(moved.incomeMinor());
            expense.values.push_back(moved.expenseMinor());
            net.values.push_back(moved.incomeMinor() + moved.expenseMinor());
            if (m_question.period == Period::containing(Period::Span::month, m_months[at] / 1))
                chart.chosen = at;
        }
        chart.series = {std::move(income), std::move(expense), std::move(net)};
        return chart;
    }

    /// What was spent on or earned by, most first. Categories in which more was taken back than booked are no part of
    /// the whole.
    [[nodiscard]] std::vector<ShareRow> largestOf(const ReportPeriod& period, Movement side,
                                                  const std::string& code) const
    {
        const std::int64_t sign = side == Movement::expense ? -1 : 1;
        std::vector<std::pair<std::int64_t, std::string>> sums;
        std::int64_t whole = 0;
        for (const auto& line : period.categories) {
            const auto sum = sign * line.netMinor(); // within what the book has found to fit
            if (line.side != side || sum <= 0)
                continue;
            sums.emplace_back(sum, line.categoryID);
            whole += sum;
        }
        std::ranges::sort(sums, {}, [](const auto& each) { return std::pair{-each.first, each.second}; });
        const CategoryDirectory directory{m_snapshot.categories};
        std::vector<ShareRow> rows;
        std::int64_t named = 0;
        for (const auto& [sum, id] : sums | std::views::take(categoriesShown)) {
            named += sum;
            rows.push_back(shareRow(id, nameOf(directory, id), sum, whole, code));
        }
        if (sums.size() > categoriesShown) {
            rows.push_back(shareRow(std::nullopt, word("otherCategories"), whole - named, whole, code));
            for (const auto& [sum, id] : sums | std::views::drop(categoriesShown))
                rows.back().rest.insert(id);
        }
        double most = 0;
        for (const auto& row : rows)
            most = std::max(most, row.fraction);
        for (auto& row : rows)
            row.fraction /= most;
        return rows;
    }

    [[nodiscard]] ShareRow shareRow(std::optional<std::string> id, QString name, std::int64_t sum, std::int64_t whole,
                                    const std::string& code) const
    {
        return {.categoryID = std::move(id),
                .name = std::move(name),
                .amount = balanceText(sum, code, m_locale),
                .share = ReportOverviews::shareText(sum, whole, m_locale),
                .fraction = static_cast<double>(sum) / static_cast<double>(whole)};
    }

    [[nodiscard]] QString nameOf(const CategoryDirectory& directory, const std::string& id) const
    {
        const auto* category = directory.find(id);
        return category == nullptr ? word("noCategory") : qString(directory.fullPathName(*category, m_locale));
    }

    [[nodiscard]] QString word(std::string_view key) const { return wordIn(m_locale, reportWords(), key); }

    const ReportBook& m_book;
    const LedgerSnapshot& m_snapshot;
    const ReportOverviews::Question& m_question;
    std::string_view m_locale;
    std::vector<year_month> m_months;
    ReportOverview m_overview;
};

}

std::vector<year_month> ReportOverviews::chartMonths(const Period& period, year_month_day today)
{
    const auto end = period.isAllTime() ? today : std::min(period.lastDay(), std::max(today, period.firstDay()));
    std::vector<year_month> months;
    for (int back = monthsShown - 1; back >= 0; --back)
        months.push_back(year_month{end.year(), end.month()} - std::chrono::months{back});
    return months;
}

std::expected<ReportOverview, ReportError> ReportOverviews::overview(const ReportBook& book,
                                                                     const LedgerSnapshot& snapshot,
                                                                     const Question& question, std::string_view locale)
{
    return Overview{book, snapshot, question, locale}.made();
}

QString ReportOverviews::shareText(std::int64_t part, std::int64_t whole, std::string_view locale)
{
    if (whole == 0)
        return QStringLiteral("–");
    const auto tenths = (Wide{part} * 2000 / whole + 1) / 2; // both have one sign: the quotient is no less than zero
    const auto text = std::to_string(static_cast<std::int64_t>(tenths / 10)) + Money::separators(locale).decimal +
                      std::to_string(static_cast<std::int64_t>(tenths % 10));
    return wordIn(locale, reportWords(), "percent", {text});
}
