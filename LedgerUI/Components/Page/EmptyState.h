#pragma once

#include <QWidget>

class QHBoxLayout;
class QVBoxLayout;
class TextLabel;

/// What a page shows instead of an empty table: a glyph, one line, one sentence, at most two buttons, and below them
/// whatever steps the page offers.
class EmptyState final : public QWidget {
    Q_OBJECT
public:
    explicit EmptyState(const QString& glyph, QWidget* parent = nullptr);

    void setTexts(const QString& headline, const QString& sentence);
    void addButton(QWidget* button);
    void addStep(QWidget* step);

private:
    TextLabel* m_headline = nullptr;
    TextLabel* m_sentence = nullptr;
    QHBoxLayout* m_buttons = nullptr;
    QVBoxLayout* m_steps = nullptr;
};
