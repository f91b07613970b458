#pragma once

#include <QWidget>

class CardButton;
class LedgerStore;
class QAction;
class QMenu;

/// Who is signed in, with the menu of what concerns only that person: settings and signing out.
class MemberButton final : public QWidget {
    Q_OBJECT
public:
    explicit MemberButton(LedgerStore& store, QWidget* parent = nullptr);

    void setFolded(bool isFolded);
    [[nodiscard]] QWidget* tabStop() const;

Q_SIGNALS:
    void settingsWanted();

protected:
    void changeEvent(QEvent* event) override;

private:
    void buildMenu();
    void present();
    void signOut();

    LedgerStore& m_store;
    CardButton* m_button = nullptr;
    QMenu* m_menu = nullptr;
    QAction* m_settings = nullptr;
    QAction* m_signOut = nullptr;
};
