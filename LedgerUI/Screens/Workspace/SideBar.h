#pragma once

#include <vector>

#include <QFrame>

#include "LedgerUI/Presentation/Workspace/WorkspacePage.h"

class CardButton;
class DemonstrationNotice;
class EntryCompanyDirectoryView;
class LedgerStore;
class MemberButton;
class QButtonGroup;
class QToolButton;
class QVBoxLayout;

/// The left edge of the workspace: company, pages, member. In a narrow window it is a rail of glyphs.
class SideBar final : public QFrame {
    Q_OBJECT
public:
    explicit SideBar(LedgerStore& store, QWidget* parent = nullptr);

    void setPages(const std::vector<WorkspacePage>& pages);
    void choose(WorkspacePage page);
    void setFolded(bool isFolded);
    /// Has Tab come here after `stop`: company, pages, notice, member.
    void comeAfter(QWidget* stop);
    /// Where F6 goes: the chosen page's button.
    [[nodiscard]] QWidget* focusTarget() const;
    void openCompanyMenu();

Q_SIGNALS:
    void pageChosen(WorkspacePage page);
    void settingsWanted();
    /// Something that a person asked for is done: for the status bar.
    void done(const QString& sentence);

protected:
    void changeEvent(QEvent* event) override;

private:
    void buildLayout();
    void present();
    void retranslate();

    LedgerStore& m_store;
    CardButton* m_company = nullptr;
    EntryCompanyDirectoryView* m_companies = nullptr;
    QVBoxLayout* m_pageRows = nullptr;
    QButtonGroup* m_group = nullptr;
    std::vector<QToolButton*> m_buttons;
    DemonstrationNotice* m_notice = nullptr;
    MemberButton* m_member = nullptr;
    bool m_isFolded = false;
};
