#pragma once

#include <functional>

#include <QDialog>

class GlyphLabel;
class QHBoxLayout;
class QLabel;
class TextLabel;

/// A sentence with a glyph and one or two buttons, modal to its window. Opens without a loop of its own.
class MessageDialog final : public QDialog {
    Q_OBJECT
public:
    enum class Kind { error, info, question };

    /// What a question asks and what its buttons say.
    struct Question {
        QString title;
        QString text;
        QString confirm;
        QString cancel;
    };

    /// An alert with a single button that closes it.
    MessageDialog(Kind kind, const QString& text, QWidget* parent);

    /// Asks, and calls `confirmed` when the answer is yes. The dialog deletes itself.
    static MessageDialog* ask(const Question& question, QWidget* parent, std::function<void()> confirmed);

    void setText(Kind kind, const QString& text);

protected:
    void changeEvent(QEvent* event) override;

private:
    void build();
    void fit();
    void retranslate();

    Kind m_kind;
    GlyphLabel* m_glyph = nullptr;
    TextLabel* m_title = nullptr;
    TextLabel* m_text = nullptr;
    QHBoxLayout* m_buttons = nullptr;
    class PrimaryButton* m_close = nullptr;
};
