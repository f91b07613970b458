#pragma once

#include <cstddef>

#include <QWidget>

class TextLabel;
class QProgressBar;
class QTimer;

/// How far the recording of a file has come.
class ImportProgress final : public QWidget {
    Q_OBJECT
public:
    explicit ImportProgress(QWidget* parent);

    void present(std::size_t confirmed, std::size_t all);
    /// One more is recorded. They may follow each other faster than anybody reads: it is shown at the next glance.
    void advance(std::size_t confirmed);

private:
    void glance();

    std::size_t m_confirmed = 0;
    std::size_t m_all = 0;
    TextLabel* m_text = nullptr;
    TextLabel* m_share = nullptr;
    QProgressBar* m_bar = nullptr;
    TextLabel* m_hint = nullptr;
    QTimer* m_timer = nullptr; // until it is shown once more
};
