#pragma once

#include <optional>

#include "LedgerUI/Components/Table/DetailPane.h"
#include "LedgerUI/Presentation/Accounts/AccountDetail.h"

class ActionSet;
class IconButton;
class LedgerDetailBody;
class QAction;
class QPushButton;

/// The pane beside the accounts: one of them in one of its currencies, and below it what can be done with it.
class AccountDetailPane final : public DetailPane {
    Q_OBJECT
public:
    /// `actions` has the actions on the chosen account.
    explicit AccountDetailPane(ActionSet& actions, QWidget* parent = nullptr);

    /// `snapshot` decides the colours of the kinds.
    void present(const AccountDetail& detail, const LedgerSnapshot& snapshot);
    void presentNothing();
    void retranslate();

Q_SIGNALS:
    void menuWanted(QPoint place);
    /// One of the latest movements was pressed.
    void entryWanted(const QString& id);

private:
    void buildFoot();
    /// A button of the foot that does what the action does, and is there while the action is offered.
    QPushButton* footButton(QAction* action, const QString& name);
    void presentFoot();
    void showBody(LedgerDetailBody* body);
    [[nodiscard]] QWidget* ledgerLink() const;
    QWidget* movementRow(const AccountDetail::Movement& movement, const LedgerSnapshot& snapshot);

    ActionSet& m_actions;
    std::optional<AccountDetail> m_shown; // nothing yet, or not in this language
    IconButton* m_more = nullptr;
};
