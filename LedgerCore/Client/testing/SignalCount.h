#pragma once

#include <type_traits>

#include <QObject>

/// Counts how often an object announces a change.
class SignalCount final : public QObject {
public:
    template <class Announcer>
    SignalCount(const std::type_identity_t<Announcer>& sender, void (Announcer::*signal)())
    {
        connect(&sender, signal, this, [this] { ++m_count; });
    }

    [[nodiscard]] int count() const { return m_count; }

private:
    int m_count = 0;
};
