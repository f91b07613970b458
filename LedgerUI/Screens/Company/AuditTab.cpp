#include "LedgerUI/Screens/Company/AuditTab.h"

#include <algorithm>
#include <utility>

#include <QAbstractItemView>
#include <QComboBox>
#include <QCoro/QCoroTask>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSplitter>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Components/Buttons/ComboBoxLists.h"
#include "LedgerUI/Components/Page/EmptyState.h"
#include "LedgerUI/Components/Page/WrapLayout.h"
#include "LedgerUI/Components/Period/DayEdit.h"
#include "LedgerUI/Components/Table/PlainTable.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Audit/AuditRows.h"
#include "LedgerUI/Presentation/Ledger/Listing/PageLink.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int kindColumn = 2;
constexpr int afterColumn = 2;
constexpr int filterWidth = 210;
constexpr int dayWidth = 140;
constexpr int leastTable = 120;

QString text(std::string_view key)
{
    return word(auditWords(), key);
}

/// Whether the record is an entry that the member sees.
bool isEntry(const LedgerSnapshot& snapshot, const std::string& id)
{
    return std::ranges::any_of(snapshot.transactions, [&id](const auto& entry) { return entry.id == id; });
}

/// Offers the choices behind one for all of them; what was chosen stays chosen.
void fill(QComboBox& box, const QString& all, const std::vector<std::pair<std::string, QString>>& choices,
          const std::string& chosen)
{
    if (box.view()->isVisible())
        return; // a person is choosing
    box.clear();
    box.addItem(all, QString{});
    for (const auto& [id, name] : choices)
        box.addItem(name, qString(id));
    box.setCurrentIndex(std::max(0, box.findData(qString(chosen))));
}

}

AuditTab::AuditTab(LedgerStore& store, QWidget* parent) : CompanyTab{store, parent}
{
    buildLayout();
    bind();
}

void AuditTab::buildLayout()
{
    m_splitter = new QSplitter(Qt::Vertical, this);
    m_splitter->setChildrenCollapsible(false);
    m_splitter->setHandleWidth(1);
    m_splitter->addWidget(buildList());
    m_splitter->addWidget(buildDetail());
    m_splitter->setStretchFactor(0, 3);
    m_splitter->setStretchFactor(1, 2);
    m_none = new EmptyState(QStringLiteral("clock-history"), this);
    m_again = new QPushButton(m_none);
    m_again->setObjectName(QStringLiteral("auditAgain"));
    m_none->addButton(m_again);
    m_stack = new QStackedWidget(this);
    m_stack->addWidget(m_splitter);
    m_stack->addWidget(m_none);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(buildFilters());
    rows->addWidget(m_stack, 1);
    setTabOrder(m_clear, m_table);
}

QWidget* AuditTab::buildFilters()
{
    m_filters = new QWidget(this);
    m_person = new QComboBox(m_filters);
    m_person->setObjectName(QStringLiteral("auditPerson"));
    m_kind = new QComboBox(m_filters);
    m_kind->setObjectName(QStringLiteral("auditKind"));
    for (auto* box : {m_person, m_kind}) {
        box->setFixedWidth(filterWidth);
        dressComboBox(*box);
    }
    m_dayLabel = new TextLabel(TypeStep::small, Token::text2, m_filters);
    m_day = new DayEdit(m_filters);
    m_day->setFixedWidth(dayWidth);
    m_day->line().setObjectName(QStringLiteral("auditDay"));
    m_dayLabel->setBuddy(&m_day->line());
    m_dayLabel->setMinimumHeight(Space::control);
    m_clear = new QPushButton(m_filters);
    m_clear->setObjectName(QStringLiteral("auditClear"));
    auto* row = new WrapLayout(m_filters, Space::step2);
    row->setContentsMargins(Space::pageMargin, Space::step2, Space::pageMargin, Space::step2);
    for (auto* each : std::initializer_list<QWidget*>{m_person, m_kind, m_dayLabel, m_day, m_clear})
        row->addWidget(each);
    return m_filters;
}

QWidget* AuditTab::buildList()
{
    auto* list = new QWidget(m_splitter);
    m_table = new PlainTable(kindColumn, list);
    m_table->setObjectName(QStringLiteral("auditTable"));
    m_table->setMinimumHeight(leastTable);
    auto* foot = new QHBoxLayout;
    foot->setContentsMargins(Space::pageMargin, Space::step1, Space::pageMargin, Space::step1);
    m_hint = new TextLabel(TypeStep::small, Token::text2, list);
    m_hint->setObjectName(QStringLiteral("auditHint"));
    m_more = new QPushButton(list);
    m_more->setObjectName(QStringLiteral("auditMore"));
    foot->addWidget(m_hint, 1);
    foot->addWidget(m_more);
    auto* rows = new QVBoxLayout(list);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(m_table, 1);
    rows->addLayout(foot);
    return list;
}

QWidget* AuditTab::buildDetail()
{
    m_detail = new QWidget(m_splitter);
    m_headline = new TextLabel(TypeStep::section, Token::text, m_detail);
    m_headline->setObjectName(QStringLiteral("auditHeadline"));
    m_headline->setWordWrap(true);
    m_only = new QPushButton(m_detail);
    m_only->setObjectName(QStringLiteral("auditOnly"));
    m_inLedger = new QPushButton(m_detail);
    m_inLedger->setObjectName(QStringLiteral("auditInLedger"));
    auto* head = new QHBoxLayout;
    head->setContentsMargins(Space::pageMargin, Space::step2, Space::pageMargin, Space::step2);
    head->addWidget(m_headline, 1);
    head->addWidget(m_inLedger, 0, Qt::AlignTop);
    head->addWidget(m_only, 0, Qt::AlignTop);
    m_changes = new PlainTable(afterColumn, m_detail);
    m_changes->setObjectName(QStringLiteral("auditChanges"));
    m_noChanges = new TextLabel(TypeStep::body, Token::text2, m_detail);
    m_noChanges->setWordWrap(true);
    m_noChanges->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_noChanges->setContentsMargins(Space::pageMargin, 0, Space::pageMargin, 0);
    m_changesOrNot = new QStackedWidget(m_detail);
    m_changesOrNot->addWidget(m_changes);
    m_changesOrNot->addWidget(m_noChanges);
    auto* rows = new QVBoxLayout(m_detail);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addLayout(head);
    rows->addWidget(m_changesOrNot, 1);
    return m_detail;
}

void AuditTab::bind()
{
    const auto narrow = [this](std::string AuditQuestion::* part, QComboBox* box) {
        connect(box, &QComboBox::activated, this, [this, part, box](int at) {
            auto question = m_question;
            question.*part = box->itemData(at).toString().toStdString();
            ask(std::move(question));
        });
    };
    narrow(&AuditQuestion::person, m_person);
    narrow(&AuditQuestion::kind, m_kind);
    connect(m_day, &DayEdit::dayChanged, this, [this](const std::string& day) {
        auto question = m_question;
        question.day = day;
        ask(std::move(question));
    });
    connect(m_clear, &QPushButton::clicked, this, [this] {
        m_day->line().clear();
        m_person->setFocus(Qt::OtherFocusReason);
        ask({});
    });
    connect(m_only, &QPushButton::clicked, this, [this] {
        AuditQuestion question;
        if (const auto* record = chosen())
            question.record = record->record.value_or(std::string{});
        ask(std::move(question));
    });
    connect(m_inLedger, &QPushButton::clicked, this, [this] {
        if (const auto* record = chosen())
            Q_EMIT linkPressed({.page = WorkspacePage::ledger,
                                .action = PageAction::showEntry,
                                .subject = record->record.value_or(std::string{})});
    });
    connect(m_table, &PlainTable::chosen, this, &AuditTab::presentDetail);
    connect(m_more, &QPushButton::clicked, this, &AuditTab::wantMore);
    connect(m_again, &QPushButton::clicked, this, &AuditTab::wantMore);
    connect(m_table->verticalScrollBar(), &QScrollBar::valueChanged, this, [this](int place) {
        if (place > 0 && place == m_table->verticalScrollBar()->maximum() && !m_isUnread)
            wantMore();
    });
    connect(&store(), &LedgerStore::isBusyChanged, this, [this] {
        if (m_isWanted)
            wantMore();
    });
}

PageView::StatusContext AuditTab::statusContext() const
{
    if (m_records.empty())
        return {};
    return {.text = countedIn(InterfaceLanguage::tag(), auditWords(), "count", m_records.size()), .figure = {}};
}

QList<QWidget*> AuditTab::panes() const
{
    if (m_stack->currentWidget() == m_none)
        return {m_filters, m_none};
    return {m_filters, m_table, m_detail};
}

void AuditTab::showEvent(QShowEvent* event)
{
    CompanyTab::showEvent(event);
    ask(m_question);
}

void AuditTab::ask(AuditQuestion question)
{
    question.below.reset();
    m_question = std::move(question);
    m_hasMore = true;
    m_records.clear();
    wantMore();
    if (store().snapshot())
        present();
}

void AuditTab::wantMore()
{
    m_isWanted = m_hasMore && store().snapshot() != nullptr;
    // Whatever ends just now may begin something else: that goes first.
    QMetaObject::invokeMethod(this, &AuditTab::load, Qt::QueuedConnection);
}

void AuditTab::load()
{
    if (!m_isWanted || store().isBusy() || !store().snapshot())
        return;
    m_isWanted = false;
    m_isUnread = false;
    QCoro::connect(store().loadAudit(m_question, false), this,
                   [this, asked = m_question](const Result<AuditTrailPage>& loaded) { take(asked, loaded); });
}

void AuditTab::take(const AuditQuestion& question, const Result<AuditTrailPage>& loaded)
{
    if (!store().snapshot() || question != m_question)
        return; // another page is asked for meanwhile
    m_isUnread = !loaded;
    if (loaded) {
        m_records.insert(m_records.end(), loaded->records.begin(), loaded->records.end());
        m_hasMore = loaded->next.has_value();
        m_question.below = loaded->next;
        // What the filters look for may be far back in the trail.
        if (m_hasMore && loaded->records.empty())
            wantMore();
    }
    present();
    Q_EMIT standingChanged();
}

const AuditTrailRecord* AuditTab::chosen() const
{
    const auto id = m_table->chosenID();
    const auto found = std::ranges::find_if(
        m_records, [&id](const AuditTrailRecord& each) { return std::to_string(each.number) == id; });
    return found == m_records.end() ? nullptr : &*found;
}

bool AuditTab::isFiltered() const
{
    auto all = AuditQuestion{};
    all.below = m_question.below;
    return m_question != all;
}

void AuditTab::present()
{
    presentFilters();
    presentList();
    presentDetail();
}

void AuditTab::presentFilters()
{
    const auto& locale = InterfaceLanguage::tag();
    const auto snapshot = store().snapshot();
    std::vector<std::pair<std::string, QString>> people;
    for (const auto& each : snapshot->members)
        people.emplace_back(each.id, qString(each.name));
    fill(*m_person, text("anyone"), people, m_question.person);
    nameComboBox(*m_person, text("person"));
    std::vector<std::pair<std::string, QString>> kinds;
    for (const auto kind : AuditRows::kinds())
        kinds.emplace_back(kind, AuditRows::kindText(kind, locale));
    fill(*m_kind, text("anything"), kinds, m_question.kind);
    nameComboBox(*m_kind, text("kind"));
    m_dayLabel->setText(text("day"));
    m_day->setNames(text("day"), text("calendar"));
    const auto today = store().today();
    m_day->present(m_question.day,
                   {.earliest = {}, .latest = DayTyping::bounds(*snapshot, today).latest, .today = today});
    m_clear->setText(text("clear"));
    m_clear->setVisible(isFiltered());
}

void AuditTab::presentList()
{
    const auto& locale = InterfaceLanguage::tag();
    m_table->setAccessibleName(text("list"));
    m_table->present(AuditRows::columns(locale), AuditRows::rows(m_records, *store().snapshot(), locale));
    if (!m_table->currentIndex().isValid())
        m_table->chooseFirst();
    m_more->setText(text(m_isUnread ? "again" : "older"));
    m_more->setVisible(m_hasMore);
    m_hint->setText(m_isUnread  ? text("unreadMore")
                    : m_hasMore ? countedIn(locale, auditWords(), "count", m_records.size())
                                : text("all"));
    if (m_isUnread)
        m_none->setTexts(text("unread"), {});
    else if (m_hasMore)
        m_none->setTexts(text("loading"), {});
    else
        m_none->setTexts(text("nothing"), text("nothingText"));
    m_again->setText(text("again"));
    m_again->setVisible(m_isUnread);
    m_stack->setCurrentWidget(m_records.empty() ? static_cast<QWidget*>(m_none) : m_splitter);
}

void AuditTab::presentDetail()
{
    const auto* record = chosen();
    m_detail->setVisible(record != nullptr);
    if (!record || !store().snapshot())
        return;
    const auto& locale = InterfaceLanguage::tag();
    m_headline->setText(AuditRows::headline(*record, *store().snapshot(), locale));
    m_inLedger->setText(text("inLedger"));
    m_inLedger->setVisible(record->record && isEntry(*store().snapshot(), *record->record));
    m_only->setText(text("onlyRecord"));
    m_only->setVisible(record->record && m_question.record != *record->record);
    m_changes->setAccessibleName(text("changes"));
    auto rows = AuditRows::changes(*record, *store().snapshot(), locale);
    m_noChanges->setText(text("noDetail"));
    m_changesOrNot->setCurrentWidget(rows.empty() ? static_cast<QWidget*>(m_noChanges) : m_changes);
    m_changes->present(AuditRows::changeColumns(locale), std::move(rows));
}
