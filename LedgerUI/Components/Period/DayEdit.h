#pragma once

#include <string>

#include <QWidget>

#include "LedgerUI/Presentation/Period/DayTyping.h"

class DayPopover;
class IconButton;
class QLineEdit;

/// A line in which a day is typed, with a calendar beside it. Up, Down, + and − move the day by one, Alt+Down opens
/// the calendar.
class DayEdit final : public QWidget {
    Q_OBJECT
public:
    explicit DayEdit(QWidget* parent = nullptr);
    ~DayEdit() override;

    /// Leaves what is being typed alone while it names the same day.
    void present(const std::string& day, const DayBounds& bounds);
    /// What readers call the line and the button.
    void setNames(const QString& line, const QString& calendar);
    [[nodiscard]] QLineEdit& line() const { return *m_line; }

Q_SIGNALS:
    /// Empty when what was typed names no day.
    void dayChanged(const std::string& day);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void readTyped();
    void openCalendar();

    std::string m_day;
    std::string m_lastDay; // the last one that was named, which a part of a date is completed by
    DayBounds m_bounds;
    QLineEdit* m_line = nullptr;
    IconButton* m_open = nullptr;
    DayPopover* m_popover = nullptr;
};
