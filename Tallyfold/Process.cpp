#include "Tallyfold/Process.h"

#include <malloc.h>

#ifdef __linux__
#include <fstream>
#include <sstream>
#include <string>

#include <time.h>
#include <unistd.h>
#endif

std::optional<std::chrono::milliseconds> processAge()
{
#ifdef __linux__
    // Field 22 of the process's line is its start in clock ticks since boot. The second field may hold blanks, so the
    // count begins behind its closing bracket, at field 3.
    std::ifstream file{"/proc/self/stat"};
    std::string line;
    std::getline(file, line);
    const auto bracket = line.rfind(')');
    if (bracket == std::string::npos)
        return std::nullopt;
    std::istringstream fields{line.substr(bracket + 1)};
    std::string skipped;
    for (int field = 3; field < 22; ++field)
        fields >> skipped;
    long long ticks = 0;
    timespec sinceBoot{};
    if (!(fields >> ticks) || clock_gettime(CLOCK_BOOTTIME, &sinceBoot) != 0)
        return std::nullopt;
    const auto started = std::chrono::milliseconds{ticks * 1000 / sysconf(_SC_CLK_TCK)};
    const auto now = std::chrono::seconds{sinceBoot.tv_sec} + std::chrono::nanoseconds{sinceBoot.tv_nsec};
    return std::chrono::duration_cast<std::chrono::milliseconds>(now) - started;
#else
    return std::nullopt;
#endif
}

void giveBackLargeBlocks()
{
    // Set once, it also keeps the allocator from raising the limit by itself after the first large block.
    constexpr int largeBlock = 1 << 20;
    mallopt(M_MMAP_THRESHOLD, largeBlock);
}
