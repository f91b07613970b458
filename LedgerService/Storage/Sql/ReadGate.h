#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace LedgerService {

/// What every reader of a database file passes. The log of a SQLite file begins anew only in a moment without readers;
/// where they overlap without end that moment has to be made.
class ReadGate {
public:
    void enter();
    void leave();

    /// Keeps new readers out and waits for those inside. False, with the gate open again, when they stay too long.
    bool close(std::chrono::milliseconds patience);

    /// Opens a closed gate when it is gone.
    class Opening {
    public:
        explicit Opening(ReadGate& gate) : m_gate(gate) {}
        ~Opening() { m_gate.open(); }
        Opening(const Opening&) = delete;
        Opening& operator=(const Opening&) = delete;

    private:
        ReadGate& m_gate;
    };

private:
    void open();

    std::mutex m_guard;
    std::condition_variable m_changed;
    int m_inside = 0;
    bool m_closed = false;
};

}
