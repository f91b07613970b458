#include "LedgerUI/Screens/Ledger/LedgerCommands.h"

#include <algorithm>
#include <utility>

#include <QMenu>

#include "LedgerCore/Client/Store/EntryTemplates.h"
#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerUI/Components/Page/ListDetailPage.h"
#include "LedgerUI/Components/Period/DayPopover.h"
#include "LedgerUI/Components/Period/PeriodNavigator.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Keys/KeyBindings.h"
#include "LedgerUI/Presentation/Ledger/Listing/LedgerBrowser.h"
#include "LedgerUI/Presentation/Ledger/Rows/LedgerSelection.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Exports/LedgerPrinting.h"
#include "LedgerUI/Screens/Ledger/Filters/LedgerFilterRow.h"
#include "LedgerUI/Screens/Ledger/LedgerActions.h"
#include "LedgerUI/Screens/Ledger/LedgerDialogs.h"
#include "LedgerUI/Screens/Ledger/LedgerGuide.h"
#include "LedgerUI/Screens/Ledger/LedgerTable.h"

namespace {

QString text(std::string_view key)
{
    return word(ledgerWords(), key);
}

/// A menu that goes when it is left.
QMenu* menuNamed(const char* name, QWidget* parent)
{
    auto* menu = new QMenu(parent);
    menu->setObjectName(QString::fromLatin1(name));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setToolTipsVisible(true);
    return menu;
}

/// The account that the ledger is narrowed to, where it is a single one.
std::optional<std::string> onlyAccount(const LedgerFilter& filter)
{
    return filter.accountIDs.size() == 1 ? std::optional{*filter.accountIDs.begin()} : std::nullopt;
}

}

LedgerCommands::LedgerCommands(LedgerStore& store, LedgerBrowser& browser, QWidget& page)
    : QObject{&page}, m_store{store}, m_browser{browser}, m_page{page}, m_actions{new ActionSet(&page)},
      m_dialogs{new LedgerDialogs(store, page)}
{
}

void LedgerCommands::present(const LedgerSelection& selection)
{
    m_actions->present(LedgerActions::recording(
        m_store, [this](const EntryForm::Opening& opening) { record(opening); },
        [this] { m_dialogs->showTemplates(); }));
    m_actions->present(exchanging());
    m_actions->present(moving());
    m_actions->present(LedgerActions::sorting(
        {.sort = m_browser.sort(),
         .isByDay = m_browser.isByDay(),
         .sortBy = [this](LedgerSort::Key key) { m_browser.setSort(m_parts.table->sortedBy(key)); },
         .turnGrouping =
             [this] { m_browser.setGrouping(m_browser.isByDay() ? LedgerGrouping::none : LedgerGrouping::byDay); }}));
    presentSelection(selection);
}

void LedgerCommands::presentSelection(const LedgerSelection& selection)
{
    const auto one = selection.one ? selection.entries.front() : LedgerBook::none;
    m_actions->present({LedgerPrinting::entry(m_store, selection.book, one, &m_page,
                                              [this](const QString& what) { Q_EMIT done(what); })});
    m_actions->present(takingOut(selection.entries.size()));
    m_actions->present(
        LedgerActions::onEntries({.book = selection.book,
                                  .entries = selection.entries,
                                  .detail = selection.one,
                                  .isBusy = m_store.isBusy(),
                                  .open = [this] { m_parts.page->openDetail(); },
                                  .copy = [this] { m_parts.table->copySelection(); },
                                  .reverse = [this](const std::string& id) { m_dialogs->reverse(id); },
                                  .reverseSeveral = [this] { m_dialogs->reverse(m_parts.table->selectedIDs()); },
                                  .duplicate = [this](const std::string& id) { m_dialogs->duplicate(id); },
                                  .keepTemplate = templateKeeper(),
                                  .refund = [this](const LedgerRefund& begun) { m_dialogs->refund(begun); },
                                  .share = [this](const std::string& id) { m_dialogs->share(id); },
                                  .showOnly = [this](const std::string& id) { showOnlyAccount(id); }}));
}

/// Nothing while no templates are kept here.
std::function<void(const std::string& entryID)> LedgerCommands::templateKeeper()
{
    if (!m_store.templates().areOffered())
        return {};
    return [this](const std::string& id) { m_dialogs->keepTemplate(id); };
}

void LedgerCommands::presentColumns()
{
    m_actions->present(LedgerActions::columns(*m_parts.table, [this] { presentColumns(); }));
}

/// What brings entries in and takes them out.
std::vector<Action> LedgerCommands::exchanging()
{
    const auto busy = m_store.isBusy() ? text("newEntry.busy") : QString{};
    return {{.id = QStringLiteral("importLedger"),
             .text = word(importWords(), "action"),
             .glyph = QStringLiteral("box-arrow-in-down"),
             .keys = KeyBindings::keys(Command::importRows),
             .whyNot = busy,
             .isOffered = m_store.canViewCompany() && m_store.canRecord(),
             .run = [this] { m_dialogs->importEntries(); }},
            {.id = QStringLiteral("exportLedger"),
             .text = word(exportWords(), "action"),
             .glyph = QStringLiteral("box-arrow-up"),
             .keys = KeyBindings::keys(Command::exportRows),
             .whyNot = busy,
             .isOffered = m_store.canExport(),
             .run = [this] { exportEntries({}); }},
            LedgerPrinting::list(m_store, m_browser, &m_page, [this](const QString& what) { Q_EMIT done(what); })};
}

/// The same for the selected entries alone.
std::vector<Action> LedgerCommands::takingOut(std::size_t selected)
{
    const auto count = groupedNumber(selected, InterfaceLanguage::tag());
    return {{.id = QStringLiteral("exportSelected"),
             .text = word(exportWords(), "selected.export", {count}),
             .glyph = QStringLiteral("box-arrow-up"),
             .whyNot = m_store.isBusy() ? text("newEntry.busy") : QString{},
             .isOffered = m_store.canExport() && selected > 1,
             .run =
                 [this] {
                     if (auto ids = selectedIDs(); !ids.empty())
                         exportEntries(std::move(ids));
                 }},
            LedgerPrinting::selection(m_store, m_browser, {.count = selected, .ids = [this] { return selectedIDs(); }},
                                      &m_page, [this](const QString& what) { Q_EMIT done(what); })};
}

void LedgerCommands::exportEntries(SharedList<std::string> selectedIDs)
{
    m_dialogs->exportEntries({.filter = m_browser.filter(),
                              .book = m_browser.book(),
                              .selectedIDs = std::move(selectedIDs),
                              .today = m_store.today()});
}

/// Asked for when something is done with them: a whole ledger can be selected.
SharedList<std::string> LedgerCommands::selectedIDs() const
{
    return m_parts.table->selectedIDs();
}

/// What leads about the page and changes nothing but what is shown.
std::vector<Action> LedgerCommands::moving()
{
    return {keyedAction("search", Command::search, [this] { m_parts.filters->focusSearch(); }),
            keyedAction("previousPeriod", Command::previousPeriod, [this] { m_parts.period->goBack(); }),
            keyedAction("nextPeriod", Command::nextPeriod, [this] { m_parts.period->goForward(); }),
            keyedAction("openPeriod", Command::openPeriod,
                        [this] {
                            if (!m_parts.filters->openFocused())
                                m_parts.period->openPopover();
                        }),
            {.id = QStringLiteral("jumpToDay"),
             .text = text("action.jump"),
             .glyph = QStringLiteral("calendar-event"),
             .keys = KeyBindings::keys(Command::jumpToDay),
             .run = [this] { openDays(); }},
            keyedAction("toggleDetail", Command::toggleDetail, [this] { m_parts.page->toggleDetail(); }),
            keyedAction("sortNext", Command::sortNext, [this] { m_browser.setSort(m_parts.table->sortedByNext()); }),
            keyedAction("clearFilters", Command::clearFilters, [this] {
                m_browser.setFilter(m_browser.clearedFilter());
                m_parts.page->focusContent();
            })};
}

void LedgerCommands::fillRecordingMenu(QMenu& menu) const
{
    m_actions->fill(menu, LedgerActions::recordingMenu());
}

LedgerDetailPane::Offered LedgerCommands::onChosen() const
{
    const auto of = [this](const QList<QString>& ids) {
        QList<QAction*> actions;
        for (const auto& id : ids)
            actions.append((*m_actions)[id]);
        return actions;
    };
    return {.main = of({QStringLiteral("reverse"), QStringLiteral("reverseSeveral")}),
            .others = of({QStringLiteral("refund"), QStringLiteral("duplicate"), QStringLiteral("share"),
                          QStringLiteral("exportSelected"), QStringLiteral("printSelected")})};
}

void LedgerCommands::openEntryMenu(QPoint place)
{
    auto* menu = menuNamed("entryMenu", m_parts.table);
    m_actions->fill(*menu, LedgerActions::entryMenu()
                               << QStringLiteral("printEntry") << QStringLiteral("exportSelected")
                               << QStringLiteral("printSelected"));
    m_actions->fill(*menu->addMenu(text("action.sort")), LedgerActions::sortingMenu());
    m_actions->fill(*menu->addMenu(text("columns")), LedgerActions::columnsMenu());
    m_actions->fill(*menu, {QStringLiteral("jumpToDay")});
    menu->popup(place);
}

void LedgerCommands::openColumnsMenu(QPoint place)
{
    auto* menu = menuNamed("columnsMenu", m_parts.table);
    m_actions->fill(*menu, LedgerActions::columnsMenu() << QString{} << QStringLiteral("groupByDay"));
    menu->popup(place);
}

void LedgerCommands::record(EntryForm::Opening opening)
{
    if (!opening.prefilled)
        opening.accountID = onlyAccount(m_browser.filter());
    m_dialogs->record(opening);
}

void LedgerCommands::showOnlyAccount(const std::string& id)
{
    auto filter = m_browser.filter();
    filter.accountIDs = {id};
    m_browser.setFilter(filter);
}

void LedgerCommands::openDays()
{
    const auto today = LedgerDay::format(m_browser.today());
    if (!m_days) {
        m_days = new DayPopover(m_parts.period, Popover::Edge::below);
        connect(m_days, &DayPopover::dayChosen, m_parts.guide, &LedgerGuide::goToDay);
    }
    const auto last = LedgerDay::format(m_browser.counts().horizon(m_browser.today()));
    m_days->openOn(today, {.earliest = {}, .latest = std::max(today, last), .today = today});
}
