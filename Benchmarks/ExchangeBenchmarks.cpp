#include <algorithm>
#include <cstdlib>
#include <iterator>

#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include "Benchmarks/BooksUnderTest.h"
#include "LedgerCore/Domain/Entries/Drafts/EntryRules.h"
#include "LedgerCore/Domain/Exports/LedgerCSV.h"
#include "LedgerCore/Domain/Imports/ImportDryRun.h"
#include "LedgerCore/Domain/Imports/LedgerImportCSV.h"
#include "LedgerCore/Domain/Money/Money.h"

namespace {

std::size_t sizeOf(const benchmark::State& state)
{
    return static_cast<std::size_t>(state.range(0));
}

void exportLedger(benchmark::State& state)
{
    const auto& books = BooksUnderTest::books(sizeOf(state));
    std::size_t bytes = 0;
    for (auto _ : state) {
        const auto text = LedgerCSV::render(books, "en-US", {.includesReceiptIndex = true});
        bytes = text.size();
        benchmark::DoNotOptimize(text.data());
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
    BooksUnderTest::count(state, sizeOf(state));
}
BENCHMARK(exportLedger)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

/// The incomes and expenses of the books as a file in the import template's columns.
std::string importFile(const LedgerSnapshot& books, std::size_t rows)
{
    std::string text = LedgerImportCSV::templateText();
    for (const auto& entry : books.transactions) {
        const auto& leg = entry.legs.front();
        const auto* account = books.account(leg.accountID);
        if ((entry.kind != EntryKind::income && entry.kind != EntryKind::expense) || account->purpose)
            continue;
        const auto category = std::ranges::find(books.categories, entry.categoryID, &Category::id);
        fmt::format_to(std::back_inserter(text), "{},{},{},{},{},{},{},,,\r\n", entry.date, entry.kind, account->name,
                       leg.currency, Money::decimalString(std::abs(leg.amountMinor), leg.currency),
                       category->names.at("en-US"), entry.note);
        if (--rows == 0)
            break;
    }
    return text;
}

/// The largest accepted file, of 5 MB, holds some 60,000 rows of this kind; the books beside it grow.
void planImport(benchmark::State& state)
{
    const auto& books = BooksUnderTest::books(sizeOf(state));
    const auto text = importFile(books, std::min<std::size_t>(sizeOf(state) / 2, 60'000));
    std::size_t inputs = 0;
    for (auto _ : state) {
        const auto plan = LedgerImportCSV::plan(text, books);
        if (plan.malformed || !plan.issues.empty())
            state.SkipWithError(plan.malformed ? "malformed" : plan.issues.front().message.c_str());
        inputs = plan.inputs.size();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
    BooksUnderTest::count(state, inputs);
}
BENCHMARK(planImport)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

/// Whether the books would take that plan, each time asked anew.
void tryImport(benchmark::State& state)
{
    const auto& books = BooksUnderTest::books(sizeOf(state));
    const auto plan = LedgerImportCSV::plan(importFile(books, std::min<std::size_t>(sizeOf(state) / 2, 60'000)), books);
    std::size_t refused = 0;
    for (auto _ : state) {
        const VisibleBooks visible{books};
        refused = ImportDryRun::run(plan, visible, "2030-01-01").size();
        benchmark::DoNotOptimize(refused);
    }
    state.counters["refused"] = static_cast<double>(refused);
    BooksUnderTest::count(state, plan.inputs.size());
}
BENCHMARK(tryImport)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

/// One key typed in the entry form: the command of the draft, and everything that speaks against it.
void judgeDraft(benchmark::State& state)
{
    const auto& books = BooksUnderTest::books(sizeOf(state));
    const auto income = std::ranges::find(books.transactions, EntryKind::income, &LedgerTransaction::kind);
    TransactionDraft draft;
    draft.kind = EntryKind::refund;
    draft.date = income->date;
    draft.source = income->legs.front().accountID;
    draft.currency = income->legs.front().currency;
    draft.amount = "1";
    draft.originalIncomeID = income->id;
    draft.refundReference = "R-1";
    draft.idempotencyKey = "key";
    const VisibleBooks visible{books};
    benchmark::DoNotOptimize(EntryRules::input(draft, visible, draft.date, "en-US"));
    for (auto _ : state)
        benchmark::DoNotOptimize(EntryRules::input(draft, visible, draft.date, "en-US"));
}
BENCHMARK(judgeDraft)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);

/// The first question about refunds and the entry they name, for which the entries are passed over.
void judgeFirstDraft(benchmark::State& state)
{
    const auto& books = BooksUnderTest::books(sizeOf(state));
    for (auto _ : state) {
        const VisibleBooks visible{books};
        benchmark::DoNotOptimize(visible.entry("none"));
        benchmark::DoNotOptimize(visible.hasRefunds("none"));
    }
}
BENCHMARK(judgeFirstDraft)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

}
