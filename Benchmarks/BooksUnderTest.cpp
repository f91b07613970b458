#include "Benchmarks/BooksUnderTest.h"

#include <sys/resource.h>

#include "Benchmarks/BookGenerator.h"
#include "LedgerCore/Domain/Json/Json.h"

const LedgerSnapshot& BooksUnderTest::books(std::size_t entryCount)
{
    static LedgerSnapshot kept;
    if (kept.transactions.size() != entryCount) {
        kept = {};
        kept = BookGenerator::books(entryCount);
    }
    return kept;
}

const std::string& BooksUnderTest::json(std::size_t entryCount)
{
    static std::string kept;
    static std::size_t keptCount = 0;
    if (keptCount != entryCount) {
        kept = Json::encode(BookGenerator::books(entryCount));
        keptCount = entryCount;
    }
    return kept;
}

void BooksUnderTest::count(benchmark::State& state, std::size_t entryCount)
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    state.counters["entries"] =
        benchmark::Counter(static_cast<double>(entryCount), benchmark::Counter::kIsIterationInvariantRate);
    state.counters["peak_MiB"] = static_cast<double>(usage.ru_maxrss) / 1024;
}
