#pragma once

#include <stdexcept>

namespace LedgerService {

/// Thrown where work gives way to a signal that asks the program to end.
struct Interrupted : std::runtime_error {
    Interrupted() : std::runtime_error("it was told to end") {}
};

/// The wish of a signal that a command ends: heeded where it leaves nothing unfinished behind. Without `watch` signals
/// end the program at once.
namespace Interruption {

/// From now on SIGTERM, SIGINT and SIGHUP are wishes that the work heeds; a second one ends the program at once.
void watch();
[[nodiscard]] bool isWatched();

/// The signal that came; 0 for none.
[[nodiscard]] int signal();

/// Whether the work under way is to end.
[[nodiscard]] bool isDue();

/// Throws `Interrupted` when the work under way is to end.
void heed();

/// While there is one, the work goes on: it has to come to its end, or tidies up after a wish that was heeded.
class Shield {
public:
    Shield();
    ~Shield();
    Shield(const Shield&) = delete;
    Shield& operator=(const Shield&) = delete;
};

}

}
