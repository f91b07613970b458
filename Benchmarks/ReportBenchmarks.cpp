#include <benchmark/benchmark.h>

#include "Benchmarks/BooksUnderTest.h"
#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Reports/ReportBook.h"

namespace {

constexpr ReportRange fiveYears{std::chrono::sys_days{std::chrono::year{2021} / 1 / 1},
                                std::chrono::sys_days{std::chrono::year{2025} / 12 / 31}};

std::size_t sizeOf(const benchmark::State& state)
{
    return static_cast<std::size_t>(state.range(0));
}

void sizes(benchmark::internal::Benchmark* benchmark)
{
    benchmark->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
}

/// What the client does once for a snapshot before it shows any report.
void layOutBooks(benchmark::State& state)
{
    const auto& books = BooksUnderTest::books(sizeOf(state));
    for (auto _ : state) {
        const auto book = ReportBook::create(books);
        benchmark::DoNotOptimize(book.has_value());
    }
    BooksUnderTest::count(state, sizeOf(state));
}
BENCHMARK(layOutBooks)->Apply(sizes);

/// Sixty months by category, in one currency, from the snapshot on.
void monthlyReportFromSnapshot(benchmark::State& state)
{
    const auto& books = BooksUnderTest::books(sizeOf(state));
    const auto months = ReportRanges::cut(fiveYears, Period::Span::month);
    for (auto _ : state) {
        const auto report = ReportBook::create(books).value().report({"USD"}, months);
        benchmark::DoNotOptimize(report->periods.back().closingMinor);
    }
    BooksUnderTest::count(state, sizeOf(state));
}
BENCHMARK(monthlyReportFromSnapshot)->Apply(sizes);

/// The same with the books laid out already, as when a person turns a page.
void monthlyReport(benchmark::State& state)
{
    const auto book = ReportBook::create(BooksUnderTest::books(sizeOf(state))).value();
    const auto months = ReportRanges::cut(fiveYears, Period::Span::month);
    for (auto _ : state) {
        const auto report = book.report({"USD"}, months);
        benchmark::DoNotOptimize(report->periods.back().closingMinor);
    }
    BooksUnderTest::count(state, sizeOf(state));
}
BENCHMARK(monthlyReport)->Apply(sizes);

void accountMatrix(benchmark::State& state)
{
    const auto book = ReportBook::create(BooksUnderTest::books(sizeOf(state))).value();
    const auto months = ReportRanges::cut(fiveYears, Period::Span::month);
    for (auto _ : state) {
        const auto matrix = book.matrix({"USD"}, months);
        benchmark::DoNotOptimize(matrix->totals.back().closingMinor);
    }
    BooksUnderTest::count(state, sizeOf(state));
}
BENCHMARK(accountMatrix)->Apply(sizes);

/// Every day's balance of every currency.
void allDailyBalances(benchmark::State& state)
{
    const auto book = ReportBook::create(BooksUnderTest::books(sizeOf(state))).value();
    for (auto _ : state) {
        for (const auto& currency : book.currencies())
            benchmark::DoNotOptimize(book.dailyBalances({currency}, fiveYears)->closingMinor.back());
    }
    BooksUnderTest::count(state, sizeOf(state));
}
BENCHMARK(allDailyBalances)->Apply(sizes);

}
