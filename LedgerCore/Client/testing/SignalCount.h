#pragma once

#include <QObject>

/// Counts how often an object announces a change.
class SignalCount final : public QObject {
public:
    template <class Sender>
    SignalCount(const Sender& sender, void (Sender::*signal)())
    {
        connect(&sender, signal, this, [this] { ++m_count; });
    }

    [[nodiscard]] int count() const { return m_count; }

private:
    int m_count = 0;
};
