#pragma once

#include <QWidget>

#include "LedgerUI/Presentation/Period/DayTyping.h"

class DayPopover;
class GlyphLabel;
class QPushButton;
class TextLabel;

/// The day on which something is booked. The button opens a calendar; on it Up, Down, + and − move the day by one.
class DayField final : public QWidget {
    Q_OBJECT
public:
    explicit DayField(QWidget* parent = nullptr);

    void present(const DayContent& content);
    [[nodiscard]] QWidget* control() const;
    /// Whether it says what is wrong with the day.
    [[nodiscard]] bool isWrong() const { return !m_content.message.isEmpty(); }

Q_SIGNALS:
    void dayChosen(const std::string& day);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void openCalendar();

    DayContent m_content;
    GlyphLabel* m_glyph = nullptr;
    QPushButton* m_day = nullptr;
    TextLabel* m_fixed = nullptr; // a day that cannot be changed
    TextLabel* m_hint = nullptr;
    DayPopover* m_popover = nullptr;
};
