#pragma once

#include <string>

#include "LedgerUI/Components/Dialogs/Popover.h"
#include "LedgerUI/Presentation/Period/DayTyping.h"

class FieldError;
class IconButton;
class PeriodGridView;
class QLineEdit;
class QPushButton;
class TextLabel;

/// A calendar for one day, with a line to type it in. There Up, Down, + and − move the day, Page Up and
/// Page Down the month, and Return takes it.
class DayPopover final : public Popover {
    Q_OBJECT
public:
    explicit DayPopover(QWidget* anchor, Edge edge = Edge::above);

    void openOn(const std::string& day, const DayBounds& bounds);

Q_SIGNALS:
    void dayChosen(const std::string& day);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void build();
    void show(const std::string& day);
    void presentMonth();
    void turnPage(int by);
    void readTyped();
    [[nodiscard]] bool takeKey(const class QKeyEvent& key);
    void choose(const std::string& day);

    DayBounds m_bounds;
    std::string m_day;   // what the line names
    std::string m_shown; // a day of the month in the grid
    QLineEdit* m_line = nullptr;
    FieldError* m_error = nullptr;
    TextLabel* m_title = nullptr;
    IconButton* m_earlier = nullptr;
    IconButton* m_later = nullptr;
    PeriodGridView* m_grid = nullptr;
    TextLabel* m_keys = nullptr;
    QPushButton* m_today = nullptr;
};
