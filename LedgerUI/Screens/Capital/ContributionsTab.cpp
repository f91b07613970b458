#include "LedgerUI/Screens/Capital/ContributionsTab.h"

#include <algorithm>

#include <QEvent>
#include <QGridLayout>
#include <QPushButton>
#include <QScrollArea>

#include "LedgerUI/Components/Buttons/SpokenRole.h"
#include "LedgerUI/Components/Page/Banner.h"
#include "LedgerUI/Components/Page/EmptyState.h"
#include "LedgerUI/Components/Page/Line.h"
#include "LedgerUI/Components/Page/ListDetailPage.h"
#include "LedgerUI/Components/Page/PlainRows.h"
#include "LedgerUI/Components/Text/ElidedLabel.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Capital/ContributionPane.h"
#include "LedgerUI/Screens/Records/RecordHead.h"
#include "LedgerUI/Screens/Records/RecordInks.h"
#include "LedgerUI/Screens/Records/RecordTable.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int baselineHeight = 132;

QString text(std::string_view key)
{
    return word(capitalWords(), key);
}

}

ContributionsTab::ContributionsTab(QWidget* parent) : QWidget{parent}
{
    setObjectName(QStringLiteral("capitalContributions"));
    buildLayout();
    connect(m_table, &RecordTable::selectionMoved, this, &ContributionsTab::chosenChanged);
    connect(m_table, &RecordTable::opened, m_page, &ListDetailPage::openDetail);
    connect(m_detail, &ContributionPane::closeWanted, m_page, &ListDetailPage::closeDetail);
    connect(m_detail, &ContributionPane::left, m_page, &ListDetailPage::leaveDetail);
    connect(m_detail, &ContributionPane::entryWanted, this, &ContributionsTab::entryWanted);
    connect(m_detail, &ContributionPane::contributionWanted, this,
            [this](const QString& id) { choose(id.toStdString()); });
    retranslate();
}

void ContributionsTab::buildLayout()
{
    m_page = new ListDetailPage(this);
    auto* message = new QWidget(m_page);
    m_banner = new Banner(Banner::Kind::warn, message);
    m_banner->setObjectName(QStringLiteral("baselineBanner"));
    auto* messageRow = plainRows(message);
    messageRow->setContentsMargins(Space::pageMargin, Space::step2, Space::pageMargin, Space::step2);
    messageRow->addWidget(m_banner);

    auto* list = new QWidget(m_page->listPlace());
    m_table = new RecordTable(RecordTable::Lines::two, list);
    m_table->setObjectName(QStringLiteral("contributionsTable"));
    list->setFocusProxy(m_table);
    auto* listRows = plainRows(list);
    listRows->addWidget(m_table, 1);
    listRows->addWidget(m_table->total());
    m_notice = new EmptyState(QStringLiteral("people"), m_page->listPlace());

    auto* below = new QWidget(m_page->stripPlace());
    m_hint = new TextLabel(TypeStep::small, Token::text2, below);
    m_hint->setWordWrap(true);
    m_hint->setContentsMargins(Space::pageMargin, Space::step2, Space::pageMargin, Space::step2);
    m_baselineHead = new RecordHead(below);
    auto* scroll = new QScrollArea(below);
    scroll->setObjectName(QStringLiteral("baselineScroll"));
    scroll->setWidgetResizable(true);
    scroll->setFocusPolicy(Qt::StrongFocus);
    speakAsGroup(*scroll);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_baselineLines = new QWidget(scroll->viewport());
    m_baselineLines->installEventFilter(this);
    m_baselines = new QVBoxLayout(m_baselineLines);
    m_baselines->setContentsMargins(Space::pageMargin, 0, Space::pageMargin, Space::step2);
    m_baselines->setSpacing(Space::step2);
    scroll->setWidget(m_baselineLines);
    scroll->viewport()->setAutoFillBackground(false);
    m_baselineBox = scroll;
    auto* belowRows = plainRows(below);
    belowRows->addWidget(m_hint);
    belowRows->addWidget(new Line(Qt::Horizontal, below));
    belowRows->addWidget(m_baselineHead);
    belowRows->addWidget(scroll);

    m_detail = new ContributionPane(m_page->detailPlace());
    auto* top = new QWidget(m_page);
    auto* filters = new QWidget(m_page);
    for (auto* empty : {top, filters})
        empty->setFixedHeight(0);
    m_page->arrange({.header = top,
                     .filters = filters,
                     .message = message,
                     .table = list,
                     .notice = m_notice,
                     .strip = below,
                     .detail = m_detail,
                     .detailStop = m_detail->firstStop()});
    plainRows(this)->addWidget(m_page);
}

void ContributionsTab::present(const ContributionList& list, const RecordInks& inks)
{
    m_banner->present(Banner::Kind::warn, list.warning);
    m_banner->parentWidget()->setVisible(!list.warning.isEmpty());
    m_table->present(list.rows, inks);
    m_hint->setText(list.hint);
    m_hint->setVisible(!m_table->isEmpty()); // else the notice says it
    m_page->show(m_table->isEmpty() ? ListDetailPage::Content::notice : ListDetailPage::Content::table);
    // The baseline stands below, whether or not anything was paid in since.
    m_hint->parentWidget()->show();
    presentBaselines(list.baselines);
    if (m_table->chosen().empty() && !m_table->isEmpty())
        m_table->follow(list.rows.rows.front().id);
    m_notice->setTexts(text("contribution.none"), list.hint);
}

void ContributionsTab::presentDetail(const std::optional<ContributionDetail>& detail, const RecordInks& inks)
{
    m_detail->present(detail, inks.capital);
    m_page->setHasContents(!m_table->isEmpty());
}

void ContributionsTab::presentBaselines(const std::vector<BaselineSection>& sections)
{
    m_baselineBox->setVisible(!sections.empty());
    if (sections == m_shownBaselines)
        return;
    m_shownBaselines = sections;
    while (auto* item = m_baselines->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    const auto label = [](const QString& shown, Token tone, QWidget* parent) {
        auto* made = new TextLabel(TypeStep::small, tone, parent);
        made->setTextFormat(Qt::PlainText);
        made->setText(shown);
        return made;
    };
    for (const auto& section : sections) {
        auto* box = new QWidget;
        auto* grid = new QGridLayout(box);
        grid->setContentsMargins(0, 0, 0, 0);
        grid->setHorizontalSpacing(Space::step4);
        grid->setVerticalSpacing(2);
        grid->setColumnStretch(0, 1);
        const auto tone = section.isInForce ? Token::text : Token::text2;
        auto* title = label(section.title, tone, box);
        title->setBold(section.isInForce);
        grid->addWidget(title, 0, 0);
        grid->addWidget(label(section.second, Token::text2, box), 0, 1, Qt::AlignRight);
        int row = 1;
        for (const auto& line : section.lines) {
            auto* name = new ElidedLabel(TypeStep::small, tone, Qt::ElideRight, box);
            name->setTextFormat(Qt::PlainText);
            name->setText(line.label);
            grid->addWidget(name, row, 0);
            grid->addWidget(label(line.value, tone, box), row++, 1, Qt::AlignRight);
        }
        m_baselines->addWidget(box);
    }
    m_baselines->addStretch(1);
}

/// As high as the baselines need, up to a limit beyond which they scroll. What they need is known once they are shown.
bool ContributionsTab::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_baselineLines && event->type() == QEvent::LayoutRequest)
        m_baselineBox->setFixedHeight(std::min(m_baselineLines->sizeHint().height(), baselineHeight));
    return QWidget::eventFilter(watched, event);
}

void ContributionsTab::setHistoryAction(QAction* action)
{
    auto* button = new QPushButton(m_banner);
    followAction(*button, *action);
    m_banner->addAction(button);
}

void ContributionsTab::setReverseAction(QAction* action)
{
    m_detail->setReverseAction(action);
}

std::string ContributionsTab::chosen() const
{
    return m_table->chosen();
}

bool ContributionsTab::choose(const std::string& id)
{
    return m_table->choose(id);
}

void ContributionsTab::toggleDetail()
{
    m_page->toggleDetail();
}

QList<QWidget*> ContributionsTab::panes() const
{
    return m_page->panes();
}

void ContributionsTab::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QWidget::changeEvent(event);
}

void ContributionsTab::retranslate()
{
    m_table->setAccessibleName(text("tab.contributions"));
    m_baselineHead->setTexts(text("baseline.title"), {});
    m_baselineBox->setAccessibleName(text("baseline.title"));
}
