#pragma once

#include <QPointer>
#include <QWidget>

class GlyphLabel;
class TextLabel;

/// The message under a field. While it shows one, the field has its red border and the message as its description.
class FieldError final : public QWidget {
    Q_OBJECT
public:
    explicit FieldError(QWidget* field, QWidget* parent = nullptr);

    /// An empty message takes the error back.
    void present(const QString& message);
    [[nodiscard]] QString message() const;
    [[nodiscard]] bool isShown() const { return !message().isEmpty(); }
    [[nodiscard]] QWidget* field() const { return m_field; }

private:
    void build();

    QPointer<QWidget> m_field;
    TextLabel* m_text = nullptr;
};
