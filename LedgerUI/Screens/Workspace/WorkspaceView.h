#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <QTimer>
#include <QWidget>

#include "LedgerCore/Client/Errors/Failure.h"
#include "LedgerUI/Presentation/Ledger/Listing/PageLink.h"

class BusyBar;
class LedgerStore;
class PageRegistry;
class PageView;
class QStackedWidget;
class SideBar;
class StatusBar;

/// The signed-in shell: side bar, the pages that the member may see, and the status bar.
class WorkspaceView final : public QWidget {
    Q_OBJECT
public:
    WorkspaceView(LedgerStore& store, const PageRegistry& registry, QWidget* parent = nullptr);

    /// The visible pages in the order of the side bar: those that the rule allows and that are built.
    [[nodiscard]] const std::vector<WorkspacePage>& pages() const { return m_pages; }
    void open(WorkspacePage page);
    /// Opens a page as a person asks for it: what is unsaved on the one before is asked about.
    void turnTo(WorkspacePage page);
    /// Opens the page of a link and has it do what the link asks for.
    void follow(const PageLink& link);
    /// Pages take the height that there is: a long text on one never makes the whole window scroll.
    [[nodiscard]] bool hasHeightForWidth() const override { return false; }
    /// Brings in what changed elsewhere while the person was away, pending invitations included; does nothing while
    /// something runs.
    void refreshOnReturn();

Q_SIGNALS:
    void settingsWanted();
    /// The list of the requests that were not confirmed.
    void unconfirmedWanted();

protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    enum class Step { next, previous };

    void buildLayout();
    void bindKeys();
    void presentPages();
    PageView* made(WorkspacePage page);
    void openFirstPage();
    [[nodiscard]] WorkspacePage firstPage() const;
    void showKeptEntry();
    void focusStart();
    void presentStatus();
    void followDay();
    void presentContext();
    void refresh();
    void readInvitations();
    /// The books could not be read anew, for the first time since they last were: said once no dialog is in use, unless
    /// they have been read by then. What the status bar says, and offers, does not wait.
    void tellOutage(const Failure& failure);
    void movePane(Step step);
    [[nodiscard]] PageView* currentPage() const;
    [[nodiscard]] std::optional<WorkspacePage> shownPage() const;
    /// Goes on with `proceed` once the page shown may be left for `page`.
    void leaveFor(WorkspacePage page, std::function<void()> proceed);
    [[nodiscard]] QList<QWidget*> panes() const;

    LedgerStore& m_store;
    const PageRegistry& m_registry;
    SideBar* m_sideBar = nullptr;
    QStackedWidget* m_stack = nullptr;
    StatusBar* m_status = nullptr;
    BusyBar* m_busy = nullptr;
    QTimer m_firstPage;
    std::string m_today; // as the pages know it
    std::vector<WorkspacePage> m_pages;
    std::map<WorkspacePage, PageView*> m_views; // made when first wanted; what they show is kept while they are away
};
