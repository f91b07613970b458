#pragma once

#include <QWidget>

class TextLabel;

/// The foot of the entry form: the day on which the entry is booked, and why it is that one.
class EntryDayNote final : public QWidget {
    Q_OBJECT
public:
    explicit EntryDayNote(QWidget* parent = nullptr);

    void present(const QString& day, const QString& hint);

private:
    TextLabel* m_day = nullptr;
    TextLabel* m_hint = nullptr;
};
