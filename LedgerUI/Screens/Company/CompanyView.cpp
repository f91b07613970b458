#include "LedgerUI/Screens/Company/CompanyView.h"

#include <QAction>
#include <QEvent>
#include <QTabBar>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Page/PageHeader.h"
#include "LedgerUI/Components/Page/PageTabs.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Company/CompanyTabs.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Company/AccessTab.h"
#include "LedgerUI/Screens/Company/AuditTab.h"
#include "LedgerUI/Screens/Company/CategoriesTab.h"
#include "LedgerUI/Screens/Company/FinancialSettingsView.h"
#include "LedgerUI/Screens/Company/InvitationsTab.h"
#include "LedgerUI/Screens/Company/MembersTab.h"
#include "LedgerUI/Screens/Company/ProfileTab.h"
#include "LedgerUI/Theme/Space.h"

namespace {

using Maker = CompanyTab* (*)(LedgerStore&, QWidget*);

template <class Tab>
CompanyTab* made(LedgerStore& store, QWidget* parent)
{
    return new Tab(store, parent);
}

const std::map<std::string_view, Maker>& makers()
{
    static const std::map<std::string_view, Maker> all{
        {CompanyTabs::members, made<MembersTab>},       {CompanyTabs::invitations, made<InvitationsTab>},
        {CompanyTabs::categories, made<CategoriesTab>}, {CompanyTabs::bookkeeping, made<FinancialSettingsView>},
        {CompanyTabs::profile, made<ProfileTab>},       {CompanyTabs::access, made<AccessTab>},
        {CompanyTabs::audit, made<AuditTab>},
    };
    return all;
}

}

CompanyView::CompanyView(LedgerStore& store, QWidget* parent) : PageView{parent}, m_store{store}
{
    setObjectName(QStringLiteral("companyView"));
    m_actions = new ActionSet(this);
    buildLayout();
    connect(m_tabs, &PageTabs::chosenChanged, this, [this] {
        presentActions();
        Q_EMIT statusContextChanged();
    });
    connect(&m_store, &LedgerStore::snapshotChanged, this, &CompanyView::presentTabs);
    presentTabs();
}

void CompanyView::buildLayout()
{
    m_header = new PageHeader(this);
    m_primary = new PrimaryButton(m_header);
    m_primary->setObjectName(QStringLiteral("companyPrimary"));
    m_primary->setIconSize({Space::iconBeforeText, Space::icon});
    connect(m_primary, &QPushButton::clicked, this, [this] {
        if (!m_primaryAction.isEmpty())
            (*m_actions)[m_primaryAction]->trigger();
    });
    m_header->setPrimary(m_primary);
    m_tabs = new PageTabs(QStringLiteral("companyTabs"), this);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(m_header);
    rows->addWidget(m_tabs, 1);
}

QList<QWidget*> CompanyView::panes() const
{
    QList<QWidget*> all{&m_tabs->row()};
    if (const auto* tab = current())
        all += tab->panes();
    all.append(m_header);
    return all;
}

PageView::StatusContext CompanyView::statusContext() const
{
    const auto* tab = current();
    return tab ? tab->statusContext() : StatusContext{};
}

void CompanyView::follow(const PageLink& link)
{
    if (link.action == PageAction::setStartDate)
        m_tabs->choose(QStringLiteral("bookkeeping"));
    else if (link.action == PageAction::showCategories)
        m_tabs->choose(QStringLiteral("categories"));
    else if (link.action == PageAction::showInvitations)
        m_tabs->choose(qString(CompanyTabs::invitations));
}

void CompanyView::adoptInvitations(const std::vector<PendingInvitation>& invitations)
{
    if (auto* tab = findChild<InvitationsTab*>())
        tab->adopt(invitations);
}

std::size_t CompanyView::unsavedChanges() const
{
    std::size_t all = 0;
    for (const auto& [id, tab] : m_made)
        all += tab->unsavedChanges();
    return all;
}

void CompanyView::discardChanges()
{
    for (const auto& [id, tab] : m_made)
        tab->discardChanges();
}

void CompanyView::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        presentTabs();
    PageView::changeEvent(event);
}

void CompanyView::presentTabs()
{
    const auto snapshot = m_store.snapshot();
    if (!snapshot)
        return;
    m_header->setTitle(word(companyWords(), "title"));
    m_tabs->setName(word(companyWords(), "tabs"));
    std::vector<PageTabs::Tab> tabs;
    for (const auto id : CompanyTabs::of(*snapshot)) {
        auto& tab = m_made[qString(id)];
        if (!tab)
            tab = make(qString(id));
        tabs.push_back(
            {.id = qString(id), .text = word(companyWords(), "tab." + std::string{id}), .count = tab->count()});
    }
    m_tabs->present(tabs);
    presentActions();
}

CompanyTab* CompanyView::make(const QString& id)
{
    auto* tab = makers().at(id.toStdString())(m_store, m_tabs->place());
    tab->setObjectName(id + QStringLiteral("Tab"));
    m_tabs->setContents(id, tab);
    connect(tab, &CompanyTab::done, this, &PageView::done);
    connect(tab, &CompanyTab::linkPressed, this, &PageView::linkPressed);
    connect(tab, &CompanyTab::standingChanged, this, [this] {
        if (m_made.size() > 1)
            presentTabs();
        Q_EMIT statusContextChanged();
    });
    return tab;
}

CompanyTab* CompanyView::current() const
{
    const auto found = m_made.find(m_tabs->chosen());
    return found == m_made.end() ? nullptr : found->second;
}

void CompanyView::presentActions()
{
    auto* tab = current();
    auto actions = tab ? tab->actions() : std::vector<Action>{};
    m_primary->setVisible(!actions.empty());
    m_primaryAction = actions.empty() ? QString{} : actions.back().id;
    for (auto& [id, isOffered] : m_offered)
        isOffered = false;
    std::vector<QString> fresh;
    for (std::size_t at = 0; at + 1 < actions.size(); ++at) {
        if (m_offered.insert_or_assign(actions[at].id, true).second)
            fresh.push_back(actions[at].id);
    }
    m_actions->present(std::move(actions));
    for (const auto& id : fresh)
        m_header->addSecondary((*m_actions)[id]);
    for (const auto& [id, isOffered] : m_offered)
        (*m_actions)[id]->setVisible(isOffered);
    if (m_primaryAction.isEmpty())
        return;
    const auto* shown = (*m_actions)[m_primaryAction];
    m_primary->setText(shown->text());
    m_primary->setIcon(shown->icon());
    m_primary->setEnabled(shown->isEnabled());
    m_primary->setToolTip(shown->toolTip());
}
