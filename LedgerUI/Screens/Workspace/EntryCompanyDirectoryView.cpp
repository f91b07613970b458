#include "LedgerUI/Screens/Workspace/EntryCompanyDirectoryView.h"

#include <algorithm>

#include <QCoro/QCoroTask>
#include <QEvent>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Presentation/Workspace/CompanyDirectory.h"
#include "LedgerUI/Screens/Workspace/UnsavedChanges.h"
#include "LedgerUI/Theme/Icon.h"

EntryCompanyDirectoryView::EntryCompanyDirectoryView(LedgerStore& store, QWidget* parent)
    : QMenu{parent}, m_store{store}
{
    setObjectName(QStringLiteral("companyMenu"));
    connect(this, &QMenu::aboutToShow, this, &EntryCompanyDirectoryView::load);
    connect(&m_store, &LedgerStore::isBusyChanged, this, [this] {
        if (isVisible() && m_isLoadWanted)
            load();
        else if (isVisible())
            present();
    });
}

void EntryCompanyDirectoryView::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        present();
    QMenu::changeEvent(event);
}

void EntryCompanyDirectoryView::load()
{
    m_isLoadWanted = m_store.isBusy();
    if (m_isLoadWanted)
        return present();
    m_isLoading = true;
    QCoro::connect(m_store.listCompanies(), this, [this](const Result<CompanyChoices>& listed) {
        m_isLoading = false;
        if (listed)
            m_choices = *listed;
        else
            hide(); // the alert says why
        present();
    });
    present();
}

void EntryCompanyDirectoryView::present()
{
    if (!m_store.snapshot())
        return;
    setAccessibleName(word(companyAccessWords(), "yourCompanies"));
    const auto active = activeAction() ? activeAction()->objectName() : QString{};
    clear();
    auto* head = addAction(word(companyAccessWords(), "yourCompanies"));
    head->setEnabled(false);
    addCompanies();
    addSeparator();
    addWays();
    const auto all = actions();
    const auto again = std::ranges::find(all, active, &QAction::objectName);
    if (!active.isEmpty() && again != all.end())
        setActiveAction(*again); // the list came under the keys of a person
}

void EntryCompanyDirectoryView::addCompanies()
{
    const auto pending = m_store.pendingCompanyRegistration();
    const auto directory =
        CompanyDirectory::of(*m_store.snapshot(), m_choices, pending.get(), InterfaceLanguage::tag());
    for (const auto& row : directory.rows) {
        auto* action = addAction(row.name);
        action->setObjectName(QStringLiteral("company-") + qString(row.id));
        action->setIcon(Icon::of(row.isOpen ? QStringLiteral("check-lg") : QStringLiteral("building")));
        action->setEnabled(row.isOpen || !m_store.isBusy());
        if (!row.isOpen) {
            connect(action, &QAction::triggered, this, [this, id = row.id] {
                // The root screen makes a workspace of its own for the company as soon as it is open.
                UnsavedChanges::ask(*parentWidget(), [this, id] {
                    QCoro::connect(m_store.switchCompany(id), this, [](const Result<void>&) {});
                });
            });
        }
    }
    if (m_isLoading || m_isLoadWanted) {
        auto* busy = addAction(word(companyAccessWords(), "loading"));
        busy->setObjectName(QStringLiteral("companiesLoading"));
        busy->setIcon(Icon::of(QStringLiteral("hourglass-split")));
        busy->setEnabled(false);
    }
    if (directory.pending.isEmpty())
        return;
    auto* waiting = addAction(directory.pending);
    waiting->setIcon(Icon::of(QStringLiteral("clock")));
    waiting->setEnabled(false);
}

void EntryCompanyDirectoryView::addWays()
{
    auto* join = addAction(word(companyAccessWords(), "join"));
    join->setObjectName(QStringLiteral("joinCompany"));
    join->setIcon(Icon::of(QStringLiteral("envelope-open")));
    connect(join, &QAction::triggered, this, &EntryCompanyDirectoryView::joinWanted);
    auto* apply = addAction(word(companyAccessWords(), "apply"));
    apply->setObjectName(QStringLiteral("applyForCompany"));
    apply->setIcon(Icon::of(QStringLiteral("building-add")));
    connect(apply, &QAction::triggered, this, &EntryCompanyDirectoryView::applicationWanted);
}
