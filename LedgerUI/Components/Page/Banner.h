#pragma once

#include <QFrame>

class GlyphLabel;
class QHBoxLayout;
class TextLabel;

/// A message above a form or page. It is announced as an alert when it appears.
class Banner final : public QFrame {
    Q_OBJECT
public:
    enum class Kind { error, warn, info, success };

    explicit Banner(Kind kind, QWidget* parent = nullptr);

    /// Shows `text` as a message of `kind`; an empty text hides the banner.
    void present(Kind kind, const QString& text);
    /// At the right end, for one action.
    void addAction(QWidget* button);
    [[nodiscard]] QString text() const;

protected:
    void changeEvent(QEvent* event) override;

private:
    void build();
    void nameForReaders();

    Kind m_kind;
    GlyphLabel* m_glyph = nullptr;
    TextLabel* m_text = nullptr;
    QHBoxLayout* m_layout = nullptr;
};
