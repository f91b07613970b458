#pragma once

#include <QTimer>
#include <QWidget>

/// Three pixels that move while something runs; a request that ends within 300 ms never shows it.
class BusyBar final : public QWidget {
    Q_OBJECT
public:
    explicit BusyBar(QWidget* parent = nullptr);

    void setBusy(bool isBusy);
    /// Lies `top` pixels below the upper edge of `host`, taking no room, as wide as it.
    void overlay(QWidget* host, int top);

protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QTimer m_delay;
    QTimer m_step;
    double m_phase = 0.0; // 0 at the left end, 1 past the right
    QWidget* m_host = nullptr;
    int m_top = 0;
};
