#include "LedgerCore/Client/Store/EntryTemplates.h"

#include <algorithm>

#include <QCoro/QCoroTask>

#include "LedgerCore/Client/Store/LedgerStore.h"

EntryTemplates::EntryTemplates(LedgerStore& store) : m_store{store}
{
    connect(&store, &LedgerStore::snapshotChanged, this, &EntryTemplates::adoptSnapshot);
    connect(&store, &LedgerStore::lastRefreshChanged, this, &EntryTemplates::reload);
    connect(&store, &LedgerStore::isBusyChanged, this, [this] {
        if (m_isWanted)
            reload();
    });
    adoptSnapshot();
}

const std::vector<EntryTemplate>& EntryTemplates::all() const
{
    static const std::vector<EntryTemplate> none;
    return m_list ? m_list->templates : none;
}

const EntryTemplate* EntryTemplates::find(std::string_view id) const
{
    const auto found = std::ranges::find(all(), id, &EntryTemplate::id);
    return found == all().end() ? nullptr : &*found;
}

std::vector<TemplateProposal> EntryTemplates::proposals() const
{
    const auto snapshot = m_store.snapshot();
    return snapshot ? TemplateProposals::open(all(), *snapshot, m_store.today()) : std::vector<TemplateProposal>{};
}

std::optional<EntryTemplates::Owner> EntryTemplates::owner() const
{
    const auto snapshot = m_store.snapshot();
    return snapshot ? std::optional{Owner{snapshot->company.id, snapshot->currentMember.id}} : std::nullopt;
}

void EntryTemplates::adoptSnapshot()
{
    auto now = owner();
    if (now == m_owner)
        return;
    m_owner = std::move(now);
    hold(std::nullopt);
    reload();
}

void EntryTemplates::reload()
{
    m_isWanted = m_store.keepsMoreThanBooks();
    // Whatever ends just now may begin something else: that goes first.
    if (m_isWanted)
        QMetaObject::invokeMethod(this, &EntryTemplates::load, Qt::QueuedConnection);
}

void EntryTemplates::load()
{
    if (!m_isWanted || !m_store.keepsMoreThanBooks() || m_store.isBusy())
        return;
    m_isWanted = false;
    QCoro::connect(m_store.loadTemplatesQuietly(), this,
                   [this, asked = m_owner](const Result<EntryTemplateList>& loaded) { finish(asked, loaded); });
}

void EntryTemplates::finish(const std::optional<Owner>& asked, const Result<EntryTemplateList>& loaded)
{
    if (asked != m_owner)
        return;
    if (loaded)
        hold(*loaded);
    else if (std::holds_alternative<Cancelled>(loaded.error()))
        reload(); // an operation began: once it is over
}

void EntryTemplates::adopt(EntryTemplateList list)
{
    m_isWanted = false;
    hold(std::move(list));
}

void EntryTemplates::hold(std::optional<EntryTemplateList> list)
{
    if (list == m_list)
        return;
    m_list = std::move(list);
    Q_EMIT changed();
}
