#pragma once

#include <chrono>
#include <string_view>
#include <vector>

/// How long this thread has had a processor.
std::chrono::nanoseconds threadTime();
/// How long all threads of this program have had a processor.
std::chrono::nanoseconds processTime();

/// Repeated measurements of one thing.
class Samples {
public:
    /// Runs `work` and keeps how long it took.
    template <class Work>
    void time(Work&& work)
    {
        const auto started = std::chrono::steady_clock::now();
        work();
        add(std::chrono::steady_clock::now() - started);
    }
    /// The same in processor time of this thread, which other work on the machine does not lengthen.
    template <class Work>
    void timeThread(Work&& work)
    {
        const auto started = threadTime();
        work();
        add(threadTime() - started);
    }
    void add(std::chrono::duration<double, std::milli> took) { m_milliseconds.push_back(took.count()); }

    void add(const Samples& others)
    {
        m_milliseconds.insert(m_milliseconds.end(), others.m_milliseconds.begin(), others.m_milliseconds.end());
    }

    /// The value that this share of the samples does not exceed, in milliseconds; 0.5 is the median.
    [[nodiscard]] double quantile(double share) const;
    [[nodiscard]] std::size_t count() const { return m_milliseconds.size(); }
    /// Writes one line: name, median, longest and how many.
    void print(std::string_view name) const;

private:
    std::vector<double> m_milliseconds;
};
