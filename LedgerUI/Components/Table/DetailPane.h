#pragma once

#include <QFrame>

#include "LedgerUI/Theme/ThemeColor.h"

class GlyphLabel;
class IconButton;
class QScrollArea;
class QVBoxLayout;
class TextLabel;

/// The pane beside a list, about what is chosen there: a head with its name and a button that closes the pane, a body
/// that scrolls, and a foot for what can be done with it. Tab goes through it from the close button to the foot.
class DetailPane : public QFrame {
    Q_OBJECT
public:
    [[nodiscard]] QWidget* firstStop() const;

Q_SIGNALS:
    void closeWanted();
    /// Esc: the focus wants to go back to where it came from.
    void left();

protected:
    /// Of the parts, for who looks for them.
    struct Names {
        QString pane;
        QString headline;
        QString close;
    };
    DetailPane(const Names& names, QWidget* parent);

    /// What the pane is called, and its button, in the interface language.
    void setSpoken(const QString& pane, const QString& close);
    /// No glyph where `glyph` is empty.
    void setHead(const QString& glyph, const ThemeColor& glyphInk, const QString& headline,
                 const ThemeColor& headlineInk = Token::text);
    /// Takes the filled body in the place of the one before, and shows its beginning. Made as a child of `bodyPlace()`,
    /// since whatever changes its parent is dressed once more with all that it holds.
    void setBody(QWidget* body);
    [[nodiscard]] QWidget* bodyPlace() const;
    [[nodiscard]] QWidget* body() const { return m_body; }
    [[nodiscard]] QFrame& foot() const { return *m_foot; }
    /// Of the head and the body, after which Tab goes to the foot.
    [[nodiscard]] QWidget* lastStop() const { return m_lastStop; }

    void keyPressEvent(QKeyEvent* event) override;

private:
    GlyphLabel* m_glyph = nullptr;
    TextLabel* m_headline = nullptr;
    IconButton* m_close = nullptr;
    QScrollArea* m_scroll = nullptr;
    QVBoxLayout* m_bodyRow = nullptr;
    QWidget* m_body = nullptr;
    QFrame* m_foot = nullptr;
    QWidget* m_lastStop = nullptr;
};
