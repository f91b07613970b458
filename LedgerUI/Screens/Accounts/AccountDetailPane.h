#pragma once

#include <optional>

#include <QFrame>

#include "LedgerUI/Presentation/Accounts/AccountDetail.h"

class ActionSet;
class GlyphLabel;
class IconButton;
class LedgerDetailBody;
class QAction;
class QPushButton;
class QScrollArea;
class TextLabel;

/// The pane beside the accounts: one of them in one of its currencies, and below it what can be done with it.
class AccountDetailPane final : public QFrame {
    Q_OBJECT
public:
    /// `actions` has the actions on the chosen account.
    explicit AccountDetailPane(ActionSet& actions, QWidget* parent = nullptr);

    /// `snapshot` decides the colours of the kinds.
    void present(const AccountDetail& detail, const LedgerSnapshot& snapshot);
    void presentNothing();
    void retranslate();

    [[nodiscard]] QWidget* firstStop() const;

Q_SIGNALS:
    void closeWanted();
    /// Esc: the focus wants to go back to where it came from.
    void left();
    void menuWanted(QPoint place);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void buildFoot();
    /// A button of the foot that does what the action does, and is there while the action is offered.
    QPushButton* footButton(QAction* action, const QString& name);
    void presentFoot();
    void showBody(LedgerDetailBody* body);
    [[nodiscard]] QWidget* ledgerLink() const;
    QWidget* movementRow(const AccountDetail::Movement& movement, const LedgerSnapshot& snapshot) const;

    ActionSet& m_actions;
    std::optional<AccountDetail> m_shown; // nothing yet, or not in this language
    GlyphLabel* m_glyph = nullptr;
    TextLabel* m_headline = nullptr;
    IconButton* m_close = nullptr;
    QScrollArea* m_scroll = nullptr;
    QFrame* m_foot = nullptr;
    IconButton* m_more = nullptr;
};
