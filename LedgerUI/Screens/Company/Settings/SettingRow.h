#pragma once

#include <QWidget>

class QHBoxLayout;
class TextLabel;

/// One setting: its name and what it means at the left, its control at the right, a line below.
class SettingRow final : public QWidget {
    Q_OBJECT
public:
    explicit SettingRow(QWidget* parent = nullptr);

    void present(const QString& title, const QString& text, const QString& note = {});
    void addControl(QWidget* control);

private:
    TextLabel* m_title = nullptr;
    TextLabel* m_text = nullptr;
    TextLabel* m_note = nullptr; // what waits to be saved
    QHBoxLayout* m_controls = nullptr;
};
