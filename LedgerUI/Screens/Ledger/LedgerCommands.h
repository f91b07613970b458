#pragma once

#include <functional>
#include <string>
#include <vector>

#include <QObject>
#include <QPointer>

#include "LedgerCore/Domain/Records/SharedList.h"
#include "LedgerUI/Components/Page/Action.h"
#include "LedgerUI/Presentation/Entry/EntryFormState.h"
#include "LedgerUI/Screens/Ledger/Detail/LedgerDetailPane.h"

class DayPopover;
class LedgerBrowser;
class LedgerDialogs;
class LedgerFilterRow;
class LedgerGuide;
class LedgerStore;
class LedgerTable;
class ListDetailPage;
class PeriodNavigator;
class QMenu;
class QPoint;
struct LedgerSelection;

/// Everything that a person can do on the ledger page, with its menus: each is an action, and is carried out here.
class LedgerCommands final : public QObject {
    Q_OBJECT
public:
    LedgerCommands(LedgerStore& store, LedgerBrowser& browser, QWidget& page);

    /// The parts of the page that commands act on. The header shows some of the commands before those are made.
    struct Parts {
        PeriodNavigator* period = nullptr;
        LedgerFilterRow* filters = nullptr;
        LedgerTable* table = nullptr;
        ListDetailPage* page = nullptr;
        LedgerGuide* guide = nullptr;
    };
    void act(const Parts& parts) { m_parts = parts; }

    /// Makes every command say what it says now.
    void present(const LedgerSelection& selection);
    void presentSelection(const LedgerSelection& selection);
    void presentColumns();
    [[nodiscard]] QAction* operator[](const QString& id) const { return (*m_actions)[id]; }
    void fillRecordingMenu(QMenu& menu) const;
    /// What the pane beside the table offers of one entry, or of several.
    [[nodiscard]] LedgerDetailPane::Offered onChosen() const;
    /// The menus of an entry and of the columns, in places of the screen.
    void openEntryMenu(QPoint place);
    void openColumnsMenu(QPoint place);

    void record(EntryForm::Opening opening);
    void showOnlyAccount(const std::string& id);
    [[nodiscard]] LedgerDialogs& dialogs() const { return *m_dialogs; }

Q_SIGNALS:
    /// Something was done, said in a sentence.
    void done(const QString& text);

private:
    [[nodiscard]] std::vector<Action> moving();
    [[nodiscard]] std::vector<Action> exchanging();
    [[nodiscard]] std::vector<Action> takingOut(std::size_t selected);
    void exportEntries(SharedList<std::string> selectedIDs);
    [[nodiscard]] SharedList<std::string> selectedIDs() const;
    [[nodiscard]] std::function<void(const std::string& entryID)> templateKeeper();
    void openDays();

    LedgerStore& m_store;
    LedgerBrowser& m_browser;
    QWidget& m_page;
    ActionSet* m_actions = nullptr;
    LedgerDialogs* m_dialogs = nullptr;
    Parts m_parts;
    QPointer<DayPopover> m_days; // made when it is first wanted
};
