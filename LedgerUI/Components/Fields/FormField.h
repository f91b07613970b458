#pragma once

#include <QWidget>

class FieldError;
class TextLabel;

/// A label, its field and the field's message or count, one below the other. The label names the field to readers.
class FormField final : public QWidget {
    Q_OBJECT
public:
    explicit FormField(QWidget* field, QWidget* parent = nullptr);

    void setLabel(const QString& label);
    /// A label that is longer than the field goes on in a second line.
    void wrapLabel();
    [[nodiscard]] FieldError& error() const { return *m_error; }

private:
    QWidget* m_field = nullptr;
    TextLabel* m_label = nullptr;
    FieldError* m_error = nullptr;
};
