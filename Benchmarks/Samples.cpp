#include "Benchmarks/Samples.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include <fmt/core.h>
#include <time.h>

#include "LedgerCore/Domain/Contract.h"

namespace {

std::chrono::nanoseconds timeBy(clockid_t clock)
{
    timespec used{};
    require(clock_gettime(clock, &used) == 0, "the system tells processor time");
    return std::chrono::seconds{used.tv_sec} + std::chrono::nanoseconds{used.tv_nsec};
}

}

std::chrono::nanoseconds threadTime()
{
    return timeBy(CLOCK_THREAD_CPUTIME_ID);
}

std::chrono::nanoseconds processTime()
{
    return timeBy(CLOCK_PROCESS_CPUTIME_ID);
}

double Samples::quantile(double share) const
{
    require(!m_milliseconds.empty(), "something was measured");
    auto sorted = m_milliseconds;
    std::ranges::sort(sorted);
    const auto place = std::ceil(share * static_cast<double>(sorted.size())) - 1;
    return sorted[static_cast<std::size_t>(std::max(place, 0.0))];
}

void Samples::print(std::string_view name) const
{
    fmt::print("{:<44} {:>9.2f} ms  longest {:>9.2f} ms  of {}\n", name, quantile(0.5), quantile(1), count());
    std::fflush(stdout);
}
