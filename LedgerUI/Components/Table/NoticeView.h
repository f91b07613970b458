#pragma once

#include <QWidget>

class EmptyState;

/// What stands in the place of a table that is empty: one state at a time, which says why and offers what helps. The
/// focus follows from the state before to the first thing that can be done in the next.
class NoticeView : public QWidget {
    Q_OBJECT
public:
    /// While what belongs here is being made ready.
    void presentWaiting(const QString& text);

protected:
    explicit NoticeView(const QString& name, QWidget* parent);

    /// A state to be filled and then shown.
    EmptyState* madeState(const QString& glyph, const QString& headline, const QString& sentence);
    void replaceBy(EmptyState* state);

private:
    EmptyState* m_state = nullptr;
};
