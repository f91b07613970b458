#include <malloc.h>

#include <memory>

#include <benchmark/benchmark.h>
#include <simdjson.h>

#include "Benchmarks/BooksUnderTest.h"
#include "LedgerCore/Domain/Json/Json.h"

namespace {

namespace ondemand = simdjson::ondemand;

/// Visits every value and reads every text and number, but keeps nothing: what any reader has to pay.
std::size_t walk(ondemand::value value)
{
    std::size_t seen = 0;
    switch (value.type().value()) {
    case ondemand::json_type::object:
        for (auto field : value.get_object()) {
            seen += field.unescaped_key().value().size();
            seen += walk(field.value());
        }
        break;
    case ondemand::json_type::array:
        for (auto element : value.get_array())
            seen += walk(element.value());
        break;
    case ondemand::json_type::string:
        seen += value.get_string().value().size();
        break;
    case ondemand::json_type::number:
        seen += static_cast<std::size_t>(value.get_int64().value());
        break;
    case ondemand::json_type::boolean:
        seen += value.get_bool().value() ? 1 : 0;
        break;
    case ondemand::json_type::null:
        break;
    }
    return seen;
}

std::size_t sizeOf(const benchmark::State& state)
{
    return static_cast<std::size_t>(state.range(0));
}

void bareWalk(benchmark::State& state)
{
    const auto& text = BooksUnderTest::json(sizeOf(state));
    for (auto _ : state) {
        ondemand::parser parser;
        const simdjson::padded_string padded{text};
        auto document = parser.iterate(padded);
        benchmark::DoNotOptimize(walk(document.get_value()));
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
    BooksUnderTest::count(state, sizeOf(state));
}
BENCHMARK(bareWalk)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

void decodeSnapshot(benchmark::State& state)
{
    const auto& text = BooksUnderTest::json(sizeOf(state));
    for (auto _ : state) {
        auto decoded =
            std::make_unique<std::expected<LedgerSnapshot, Json::DecodeError>>(Json::decode<LedgerSnapshot>(text));
        benchmark::DoNotOptimize(decoded->has_value());
        state.PauseTiming();
        decoded.reset();
        state.ResumeTiming();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
    BooksUnderTest::count(state, sizeOf(state));
}
BENCHMARK(decodeSnapshot)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

void encodeSnapshot(benchmark::State& state)
{
    const auto& books = BooksUnderTest::books(sizeOf(state));
    std::size_t bytes = 0;
    for (auto _ : state) {
        const auto text = Json::encode(books);
        bytes = text.size();
        benchmark::DoNotOptimize(text.data());
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
    BooksUnderTest::count(state, sizeOf(state));
}
BENCHMARK(encodeSnapshot)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

/// Heap held by a decoded snapshot, an entry. The time is of no interest.
void memoryOfSnapshot(benchmark::State& state)
{
    const auto& text = BooksUnderTest::json(sizeOf(state));
    double held = 0;
    for (auto _ : state) {
        const auto before = mallinfo2();
        const auto decoded = Json::decode<LedgerSnapshot>(text);
        const auto after = mallinfo2();
        held =
            static_cast<double>(after.uordblks + after.hblkhd) - static_cast<double>(before.uordblks + before.hblkhd);
        benchmark::DoNotOptimize(decoded.has_value());
    }
    state.counters["bytes_per_entry"] = held / static_cast<double>(sizeOf(state));
    state.counters["json_bytes_per_entry"] = static_cast<double>(text.size()) / static_cast<double>(sizeOf(state));
}
BENCHMARK(memoryOfSnapshot)->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Iterations(1)->Unit(benchmark::kMillisecond);

}
