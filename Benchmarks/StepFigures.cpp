#include "Benchmarks/StepFigures.h"

#include <cstdio>

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <fmt/core.h>

#include "Benchmarks/LoopHold.h"
#include "Benchmarks/Samples.h"

void waitFor(const std::function<bool()>& condition)
{
    // With a time limit Qt never sleeps, and a window that spins takes a processor from the workers and the service.
    QTimer look;
    look.setTimerType(Qt::PreciseTimer);
    look.start(std::chrono::milliseconds{1});
    while (!condition())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void printStep(std::string_view name, int repetitions, const std::function<void()>& home,
               const std::function<void()>& step)
{
    Samples whole;
    Samples computed;
    Samples held;
    for (int each = 0; each < repetitions; ++each) {
        home();
        const LoopHold hold;
        const auto before = processTime();
        whole.time(step);
        computed.add(processTime() - before);
        held.add(hold.longest());
    }
    const auto both = [](const Samples& samples) {
        return fmt::format("{:>8.1f} {:>8.1f}", samples.quantile(0), samples.quantile(0.5));
    };
    fmt::print("{:<44} {} ms  computed {} ms  held {} ms\n", name, both(whole), both(computed), both(held));
    std::fflush(stdout);
}
