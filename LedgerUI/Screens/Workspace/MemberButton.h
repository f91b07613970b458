#pragma once

#include <QWidget>

class CardButton;
class LedgerStore;
class QAction;
class QActionGroup;
class QMenu;

/// Who is signed in, with the menu of what concerns only that person: language and signing out.
class MemberButton final : public QWidget {
    Q_OBJECT
public:
    explicit MemberButton(LedgerStore& store, QWidget* parent = nullptr);

    void setFolded(bool isFolded);
    [[nodiscard]] QWidget* tabStop() const;

protected:
    void changeEvent(QEvent* event) override;

private:
    void buildMenu();
    void present();
    void signOut();

    LedgerStore& m_store;
    CardButton* m_button = nullptr;
    QMenu* m_menu = nullptr;
    QMenu* m_languageMenu = nullptr;
    QActionGroup* m_languages = nullptr;
    QAction* m_signOut = nullptr;
};
