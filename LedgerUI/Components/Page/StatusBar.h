#pragma once

#include <QFrame>

class QToolButton;
class TextLabel;

/// The bottom strip of the workspace: when the data was last refreshed (a click refreshes), how much is visible, and at
/// the right what the page wants to say.
class StatusBar final : public QFrame {
    Q_OBJECT
public:
    enum class Freshness { fresh, stale };

    explicit StatusBar(QWidget* parent = nullptr);

    void setRefreshText(const QString& text, Freshness freshness);
    void setRefreshHint(const QString& hint);
    void setRefreshEnabled(bool isEnabled);
    void setCount(const QString& text);
    /// A button with this text, for as long as it is not empty.
    void setUnconfirmed(const QString& text);
    /// `figure` follows in bold.
    void setContext(const QString& text, const QString& figure);
    /// Says what has just been done, aloud too; an empty sentence takes it back.
    void say(const QString& sentence);
    [[nodiscard]] QWidget* tabStop() const;

Q_SIGNALS:
    void refreshRequested();
    void unconfirmedRequested();

private:
    void announce();

    QToolButton* m_refresh = nullptr;
    TextLabel* m_count = nullptr;
    QToolButton* m_unconfirmed = nullptr;
    TextLabel* m_said = nullptr;
    TextLabel* m_context = nullptr;
    TextLabel* m_figure = nullptr;
};
