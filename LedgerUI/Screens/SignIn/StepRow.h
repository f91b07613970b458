#pragma once

#include <vector>

#include <QWidget>

class TextLabel;

/// Where a person stands on a way of several steps: those that are done, the one at hand, and those to come.
class StepRow final : public QWidget {
    Q_OBJECT
public:
    explicit StepRow(int steps, QWidget* parent = nullptr);

    /// `spoken` is what readers say of the row as a whole.
    void present(const QStringList& titles, int current, const QString& spoken);

private:
    class Mark;

    std::vector<Mark*> m_marks;
    std::vector<TextLabel*> m_titles;
};
