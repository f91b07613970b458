#pragma once

#include <QFrame>

class TextLabel;
class QPushButton;

/// The file that a form works on: its name with what is known of it, and a button for another one.
class ImportFileCard final : public QFrame {
    Q_OBJECT
public:
    explicit ImportFileCard(QWidget* parent = nullptr);

    /// `name` is bold; without a file it is empty and `text` stands alone.
    void present(const QString& name, const QString& text, const QString& button);
    [[nodiscard]] QPushButton& button() const { return *m_choose; }

private:
    TextLabel* m_name = nullptr;
    TextLabel* m_text = nullptr;
    QPushButton* m_choose = nullptr;
};
