#pragma once

#include <chrono>

#include <QObject>
#include <QTimer>

/// Counts seconds down to nothing, for what may not be done again at once.
class Countdown final : public QObject {
    Q_OBJECT
public:
    /// `second` is how long one lasts.
    explicit Countdown(std::chrono::milliseconds second, QObject* parent = nullptr);

    void start(int seconds);
    void stop() { start(0); }
    [[nodiscard]] int left() const { return m_left; }

Q_SIGNALS:
    void changed();

private:
    QTimer m_timer;
    int m_left = 0;
};
