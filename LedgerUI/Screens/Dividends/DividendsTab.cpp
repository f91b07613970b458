#include "LedgerUI/Screens/Dividends/DividendsTab.h"

#include <QEvent>
#include <QHeaderView>
#include <QSplitter>

#include "LedgerUI/Components/Page/EmptyState.h"
#include "LedgerUI/Components/Page/Line.h"
#include "LedgerUI/Components/Page/PlainRows.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Records/RecordEquation.h"
#include "LedgerUI/Screens/Records/RecordHead.h"
#include "LedgerUI/Screens/Records/RecordInks.h"
#include "LedgerUI/Screens/Records/RecordTable.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int batchesWidth = 300;
constexpr int batchesMinimum = 240;
constexpr int theRest = 10000;
constexpr int linesShown = 5;

QString text(std::string_view key)
{
    return word(capitalWords(), key);
}

}

DividendsTab::DividendsTab(QWidget* parent) : QWidget{parent}
{
    setObjectName(QStringLiteral("capitalDividends"));
    buildLayout();
    bind();
    retranslate();
}

void DividendsTab::buildLayout()
{
    auto* left = new QWidget(this);
    left->setMinimumWidth(batchesMinimum);
    m_batches = new RecordTable(RecordTable::Lines::two, left);
    m_batches->setObjectName(QStringLiteral("batchesTable"));
    m_hint = new TextLabel(TypeStep::small, Token::text2, left);
    m_hint->setWordWrap(true);
    m_hint->setContentsMargins(Space::pageMargin, Space::step2, Space::pageMargin, Space::step3);
    auto* leftRows = plainRows(left);
    leftRows->addWidget(m_batches, 1);
    leftRows->addWidget(new Line(Qt::Horizontal, left));
    leftRows->addWidget(m_hint);

    auto* right = new QWidget(this);
    m_batchHead = new RecordHead(right);
    m_batchHead->stackTexts(); // a long period leaves the amount its line
    m_lines = new RecordTable(RecordTable::Lines::one, right);
    m_lines->setObjectName(QStringLiteral("linesTable"));
    m_lines->fitRows(linesShown);
    m_none = new EmptyState(QStringLiteral("pie-chart"), right);
    m_settlement = buildSettlement();
    auto* rightRows = plainRows(right);
    rightRows->addWidget(m_batchHead);
    rightRows->addWidget(m_lines);
    rightRows->addWidget(m_lines->total());
    rightRows->addWidget(m_settlement, 1);
    rightRows->addWidget(m_none, 1);

    auto* splitter = new QSplitter(Qt::Horizontal, this);
    splitter->setChildrenCollapsible(false);
    splitter->setHandleWidth(1);
    splitter->addWidget(left);
    splitter->addWidget(right);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({batchesWidth, theRest});
    plainRows(this)->addWidget(splitter);
}

QWidget* DividendsTab::buildSettlement()
{
    auto* box = new QWidget(this);
    m_personHead = new RecordHead(box);
    m_personHead->stackTexts();
    m_equation = new RecordEquation(box);
    m_equation->setObjectName(QStringLiteral("settlementEquation"));
    m_movementHead = new RecordHead(box);
    m_movements = new RecordTable(RecordTable::Lines::two, box);
    m_movements->setObjectName(QStringLiteral("movementsTable"));
    m_movements->horizontalHeader()->hide();
    m_noMovements = new TextLabel(TypeStep::body, Token::text2, box);
    m_noMovements->setObjectName(QStringLiteral("settlementNone"));
    m_noMovements->setWordWrap(true);
    m_noMovements->setContentsMargins(Space::pageMargin, Space::step3, Space::pageMargin, 0);
    m_notes = new TextLabel(TypeStep::small, Token::text2, box);
    m_notes->setObjectName(QStringLiteral("settlementNotes"));
    m_notes->setWordWrap(true);
    m_notes->setContentsMargins(Space::pageMargin, Space::step1, Space::pageMargin, Space::step2);
    auto* rows = plainRows(box);
    rows->addWidget(m_personHead);
    auto* framed = new QVBoxLayout;
    framed->setContentsMargins(Space::pageMargin, 0, Space::pageMargin, 0);
    framed->addWidget(m_equation);
    rows->addLayout(framed);
    rows->addWidget(m_movementHead);
    rows->addWidget(new Line(Qt::Horizontal, box));
    rows->addWidget(m_noMovements);
    rows->addWidget(m_movements, 1);
    rows->addWidget(m_notes);
    rows->addStretch(0); // keeps the heads where they are while there is no table
    return box;
}

void DividendsTab::bind()
{
    connect(m_batches, &RecordTable::selectionMoved, this, [this] {
        const auto id = m_batches->chosen();
        if (!m_isPresenting && !id.empty() && id != m_choice.batchID)
            Q_EMIT choiceWanted({.batchID = id, .participantID = m_choice.participantID, .advanceID = {}});
    });
    connect(m_lines, &RecordTable::selectionMoved, this, [this] {
        const auto id = m_lines->chosen();
        const bool isAdvances = m_choice.batchID == DividendBoards::advances;
        auto wanted = m_choice;
        (isAdvances ? wanted.advanceID : wanted.participantID) = id;
        if (!m_isPresenting && !id.empty() && wanted != m_choice)
            Q_EMIT choiceWanted(wanted);
    });
    connect(m_movements, &RecordTable::selectionMoved, this, [this] {
        if (!m_isPresenting)
            Q_EMIT movementChosen();
    });
    connect(m_movements, &RecordTable::opened, this, &DividendsTab::movementOpened);
}

void DividendsTab::present(const DividendBoard& board, const RecordInks& inks)
{
    m_isPresenting = true;
    m_choice = board.choice;
    m_batches->present(board.batches, inks);
    m_batches->follow(m_choice.batchID);
    m_hint->setText(board.hint);
    m_batchHead->setTexts(board.title, board.subtitle);
    m_lines->present(board.lines, inks);
    m_lines->follow(m_choice.batchID == DividendBoards::advances ? m_choice.advanceID : m_choice.participantID);
    const bool isEmpty = board.lines.rows.empty();
    m_lines->setVisible(!isEmpty);
    m_settlement->setVisible(!isEmpty);
    m_none->setVisible(isEmpty);
    m_personHead->setTexts(board.person, board.standing);
    m_equation->present(board.equation);
    m_movements->present(board.movements, inks);
    m_movements->setVisible(!m_movements->isEmpty());
    m_noMovements->setVisible(m_movements->isEmpty());
    m_notes->setText(board.notes);
    m_notes->setVisible(!board.notes.isEmpty());
    m_isPresenting = false;
    retranslate();
}

std::string DividendsTab::chosenMovement() const
{
    return m_movements->chosen();
}

RecordEntry DividendsTab::chosenEntry() const
{
    return m_movements->chosenEntry();
}

bool DividendsTab::chooseMovement(const std::string& id)
{
    return m_movements->choose(id);
}

QList<QWidget*> DividendsTab::panes() const
{
    QList<QWidget*> all{m_batches};
    if (!m_lines->isHidden())
        all << m_lines;
    if (!m_lines->isHidden() && !m_movements->isHidden())
        all << m_movements;
    return all;
}

void DividendsTab::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QWidget::changeEvent(event);
}

void DividendsTab::retranslate()
{
    m_batches->setAccessibleName(text("column.allocation"));
    m_lines->setAccessibleName(text("column.participant"));
    m_movementHead->setTexts(text("movements.title"), {});
    m_movements->setAccessibleName(text("movements.title"));
    m_noMovements->setText(text("movements.none"));
    m_none->setTexts(text("dividends.none"), text("hint.single"));
}
