#pragma once

#include <QWidget>

class ElidedLabel;
class QAction;
class QBoxLayout;
class QHBoxLayout;

/// The head of a section: its name, a quiet text beside it, and at the right what can be done there.
class RecordHead final : public QWidget {
    Q_OBJECT
public:
    explicit RecordHead(QWidget* parent = nullptr);

    void setTexts(const QString& title, const QString& beside);
    /// Puts the quiet text below the name, where what can be done leaves little room beside it.
    void stackTexts();
    /// A button that follows the action: its text, whether it can be pressed, and why not.
    void addAction(QAction* action, bool isPrimary = false);
    /// Only the glyph of an action, which says its name as a tool tip.
    void addGlyph(QAction* action);

private:
    ElidedLabel* m_title = nullptr; // may be what a person called something
    ElidedLabel* m_beside = nullptr;
    QBoxLayout* m_texts = nullptr;
    QHBoxLayout* m_row = nullptr;
};

/// Has a button say and do what the action says and does.
void followAction(class QAbstractButton& button, QAction& action);
