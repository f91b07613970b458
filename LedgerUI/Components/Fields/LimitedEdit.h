#pragma once

#include <cstddef>

#include <QLineEdit>
#include <QPointer>

class TextLabel;

/// A line of text with a limit of characters. Nothing is cut: near the limit a count stands under the line, and beyond
/// it what is too much. Whoever sends the text asks `isWithinLimit` first.
class LimitedEdit final : public QLineEdit {
    Q_OBJECT
public:
    explicit LimitedEdit(std::size_t limit, QWidget* parent = nullptr);

    /// The count belongs under the field.
    [[nodiscard]] QWidget* counter() const;
    [[nodiscard]] bool isWithinLimit() const;

protected:
    void changeEvent(QEvent* event) override;

private:
    void count();

    std::size_t m_limit;
    QPointer<TextLabel> m_counter;
};
