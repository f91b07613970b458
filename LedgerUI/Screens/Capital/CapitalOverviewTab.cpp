#include "LedgerUI/Screens/Capital/CapitalOverviewTab.h"

#include <QEvent>
#include <QHeaderView>
#include <QPushButton>
#include <QScrollArea>
#include <QSplitter>
#include <QStringList>

#include "LedgerUI/Components/Buttons/SpokenRole.h"
#include "LedgerUI/Components/Page/Banner.h"
#include "LedgerUI/Components/Page/Line.h"
#include "LedgerUI/Components/Page/PlainRows.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Capital/OwnershipBars.h"
#include "LedgerUI/Screens/Records/RecordHead.h"
#include "LedgerUI/Screens/Records/RecordInks.h"
#include "LedgerUI/Screens/Records/RecordTable.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int ownersShown = 6;
constexpr int leftPart = 440;
constexpr int rightPart = 520;

}

CapitalOverviewTab::CapitalOverviewTab(QWidget* parent) : QWidget{parent}
{
    setObjectName(QStringLiteral("capitalOverview"));
    buildLayout();
    connect(m_latest, &RecordTable::opened, this, [this] {
        if (const auto entry = m_latest->chosenEntry())
            Q_EMIT entryWanted(QString::fromStdString(*entry));
        else
            Q_EMIT entryRefused(word(capitalWords(), entry.error()));
    });
    connect(m_owners, &RecordTable::opened, this, [this] {
        const auto at = m_owners->currentIndex().row();
        if (at >= 0 && static_cast<std::size_t>(at) < m_participants.size())
            Q_EMIT settlementWanted(QString::fromStdString(m_participants[static_cast<std::size_t>(at)]));
    });
    retranslate();
}

void CapitalOverviewTab::buildLayout()
{
    m_banner = new Banner(Banner::Kind::warn, this);
    m_banner->setObjectName(QStringLiteral("historyBanner"));
    auto* bannerBox = new QWidget(this);
    auto* bannerRow = plainRows(bannerBox);
    bannerRow->setContentsMargins(Space::pageMargin, Space::step2, Space::pageMargin, 0);
    bannerRow->addWidget(m_banner);
    m_ownersHead = new RecordHead(this);
    m_owners = new RecordTable(RecordTable::Lines::one, this);
    m_owners->setObjectName(QStringLiteral("ownersTable"));
    m_owners->fitRows(ownersShown);
    m_notes = new TextLabel(TypeStep::small, Token::text2, this);
    m_notes->setObjectName(QStringLiteral("overviewNotes"));
    m_notes->setWordWrap(true);
    m_notes->setContentsMargins(Space::pageMargin, Space::step2, Space::pageMargin, Space::step2);

    m_ownershipPane = new QWidget(this);
    m_ownershipHead = new RecordHead(m_ownershipPane);
    auto* scroll = new QScrollArea(m_ownershipPane);
    scroll->setObjectName(QStringLiteral("ownershipScroll"));
    scroll->setWidgetResizable(true);
    scroll->setFocusPolicy(Qt::StrongFocus); // whose keys scroll
    speakAsGroup(*scroll);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_ownership = new OwnershipBars;
    m_ownership->setObjectName(QStringLiteral("ownershipBars"));
    scroll->setWidget(m_ownership);
    scroll->viewport()->setAutoFillBackground(false);
    auto* left = plainRows(m_ownershipPane);
    left->addWidget(m_ownershipHead);
    left->addWidget(new Line(Qt::Horizontal, m_ownershipPane));
    left->addWidget(scroll, 1);

    auto* lower = new QSplitter(Qt::Horizontal, this);
    lower->setChildrenCollapsible(false);
    lower->setHandleWidth(1);
    lower->addWidget(m_ownershipPane);
    lower->addWidget(buildLatest());
    lower->setSizes({leftPart, rightPart});
    auto* rows = plainRows(this);
    rows->addWidget(bannerBox);
    rows->addWidget(m_ownersHead);
    rows->addWidget(m_owners);
    rows->addWidget(m_owners->total());
    rows->addWidget(m_notes);
    rows->addWidget(new Line(Qt::Horizontal, this));
    rows->addWidget(lower, 1);
}

QWidget* CapitalOverviewTab::buildLatest()
{
    auto* latestPane = new QWidget(this);
    m_latestHead = new RecordHead(latestPane);
    m_latest = new RecordTable(RecordTable::Lines::one, latestPane);
    m_latest->setObjectName(QStringLiteral("latestRecords"));
    m_latest->horizontalHeader()->hide();
    m_latestNone = new TextLabel(TypeStep::body, Token::text2, latestPane);
    m_latestNone->setWordWrap(true);
    m_latestNone->setContentsMargins(Space::pageMargin, Space::step3, Space::pageMargin, 0);
    auto* right = plainRows(latestPane);
    right->addWidget(m_latestHead);
    right->addWidget(new Line(Qt::Horizontal, latestPane));
    right->addWidget(m_latestNone);
    right->addWidget(m_latest, 1);
    right->addStretch(0); // keeps the head where it is while there is no table
    return latestPane;
}

void CapitalOverviewTab::present(const CapitalOverview& overview, const RecordInks& inks)
{
    m_title = overview.title;
    m_since = overview.since;
    m_ownershipPane->setVisible(overview.showsOwnership);
    m_banner->present(Banner::Kind::warn, overview.warning);
    m_banner->parentWidget()->setVisible(!overview.warning.isEmpty());
    m_owners->present(overview.owners, inks);
    m_participants = overview.participants;
    QStringList notes;
    for (const auto& note : overview.notes)
        notes << note;
    m_notes->setText(notes.join(QLatin1Char{' '}));
    m_notes->setVisible(!notes.isEmpty());
    m_ownership->present(overview.ownership, word(capitalWords(), "ownership.none"));
    m_latest->present(overview.latest, inks);
    m_latest->setVisible(!m_latest->isEmpty());
    m_latestNone->setVisible(m_latest->isEmpty());
    retranslate();
}

void CapitalOverviewTab::setHistoryAction(QAction* action)
{
    auto* button = new QPushButton(m_banner);
    followAction(*button, *action);
    m_banner->addAction(button);
}

QList<QWidget*> CapitalOverviewTab::panes() const
{
    QList<QWidget*> all{m_owners};
    if (!m_latest->isEmpty())
        all.append(m_latest);
    return all;
}

void CapitalOverviewTab::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QWidget::changeEvent(event);
}

void CapitalOverviewTab::retranslate()
{
    m_ownersHead->setTexts(m_title, m_since);
    m_owners->setAccessibleName(m_title);
    m_ownershipHead->setTexts(word(capitalWords(), "ownership.title"), {});
    auto* scroll = m_ownershipPane->findChild<QScrollArea*>();
    scroll->setAccessibleName(word(capitalWords(), "ownership.title"));
    m_latestHead->setTexts(word(capitalWords(), "latest.title"), {});
    m_latest->setAccessibleName(word(capitalWords(), "latest.title"));
    m_latestNone->setText(word(capitalWords(), "latest.none"));
}
