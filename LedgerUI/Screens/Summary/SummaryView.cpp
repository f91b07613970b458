#include "LedgerUI/Screens/Summary/SummaryView.h"

#include <limits>
#include <utility>

#include <QHBoxLayout>
#include <QHeaderView>
#include <QScrollArea>
#include <QVBoxLayout>

#include "LedgerUI/Components/Page/Action.h"
#include "LedgerUI/Components/Page/Line.h"
#include "LedgerUI/Components/Page/PageHeader.h"
#include "LedgerUI/Components/Period/PeriodNavigator.h"
#include "LedgerUI/Components/Print/PrintDialog.h"
#include "LedgerUI/Components/Text/EntryKindColor.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Reports/Grids/ReportGridModel.h"
#include "LedgerUI/Presentation/Reports/Grids/ReportSorting.h"
#include "LedgerUI/Presentation/Reports/Sheets/ReportBrowser.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Reports/AttentionList.h"
#include "LedgerUI/Screens/Reports/ReportPrinting.h"
#include "LedgerUI/Screens/Reports/ReportTable.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int expensesWidth = 359;
constexpr int everyRow = std::numeric_limits<int>::max();

QString text(std::string_view key)
{
    return word(reportWords(), key);
}

TextLabel* title(QWidget* parent)
{
    auto* label = new TextLabel(TypeStep::section, Token::text, parent);
    label->setContentsMargins(Space::pageMargin, Space::step3, Space::pageMargin, Space::step2);
    return label;
}

TextLabel* note(const char* name, QWidget* parent)
{
    auto* label = new TextLabel(TypeStep::body, Token::text2, parent);
    label->setObjectName(QString::fromLatin1(name));
    label->setWordWrap(true);
    label->setContentsMargins(Space::pageMargin, 0, Space::pageMargin, Space::step3);
    return label;
}

QVBoxLayout* column(QWidget* part)
{
    auto* rows = new QVBoxLayout(part);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    return rows;
}

}

SummaryView::SummaryView(LedgerStore& store, QWidget* parent)
    : ReportPage{store, ReportPart::summary, QStringLiteral("summary"), parent}
{
    header().setMiddle(&period());
    presentPrint();
    header().addSecondary(actions()[QStringLiteral("printReport")]);
    auto* scroll = new QScrollArea(this);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setWidget(buildBody());
    auto* rows = column(this);
    rows->addWidget(&header());
    rows->addWidget(scroll, 1);
    bindParts();
    adoptSnapshot();
}

QWidget* SummaryView::buildBody()
{
    auto* body = new QWidget(this);
    m_accountsTitle = title(body);
    m_scope = note("summaryScope", body);
    m_accounts = new ReportTable(QStringLiteral("ownAccountTable"), RowDelegate::Density::oneLine, body);
    m_accounts->showWhole(everyRow);
    auto* split = new QHBoxLayout;
    split->setSpacing(0);
    split->addWidget(buildLatest(), 1);
    split->addWidget(new Line(Qt::Vertical, body));
    split->addWidget(buildExpenses());
    auto* rows = column(body);
    rows->addWidget(m_accountsTitle);
    rows->addWidget(m_scope);
    rows->addWidget(m_accounts);
    rows->addLayout(split, 1);
    return body;
}

QWidget* SummaryView::buildLatest()
{
    auto* part = new QWidget(this);
    m_latestTitle = title(part);
    m_latestNone = note("latestNone", part);
    m_latest = new ReportTable(QStringLiteral("latestTable"), RowDelegate::Density::oneLine, part);
    m_latest->showWhole(everyRow);
    m_attention = new AttentionList(part);
    auto* rows = column(part);
    rows->addWidget(m_latestTitle);
    rows->addWidget(m_latestNone);
    rows->addWidget(m_latest);
    rows->addSpacing(Space::step3);
    rows->addWidget(m_attention);
    rows->addStretch(1);
    return part;
}

QWidget* SummaryView::buildExpenses()
{
    auto* part = new QWidget(this);
    part->setFixedWidth(expensesWidth);
    m_expensesTitle = title(part);
    m_expensesNone = note("ownExpensesNone", part);
    m_expenses = new ReportTable(QStringLiteral("ownExpenseTable"), RowDelegate::Density::list, part);
    m_expenses->horizontalHeader()->hide();
    m_expenses->showWhole(everyRow);
    auto* rows = column(part);
    rows->addWidget(m_expensesTitle);
    rows->addWidget(m_expensesNone);
    rows->addWidget(m_expenses);
    rows->addStretch(1);
    return part;
}

void SummaryView::bindParts()
{
    for (auto* table : {m_accounts, m_latest, m_expenses}) {
        connect(table, &ReportTable::backingWanted, this,
                [this](const ReportBacking& backing) { showBacking(backing); });
        connect(table, &ReportTable::copied, this, [this] { sayCopied(); });
        connect(table, &ReportTable::sortWanted, this, [this, table](const std::optional<ReportSort>& sort) {
            browser().ask(ReportSorting::asked(browser().query(), table->grid().grid(), sort));
        });
    }
    // The chosen account's currency drives the categories.
    connect(m_accounts, &ReportTable::rowChosen, this, [this](const QString& id) {
        auto query = browser().query();
        query.currency = m_accounts->grid().row(m_accounts->grid().rowOf(id.toStdString())).currency;
        browser().ask(std::move(query));
    });
    connect(m_latest, &ReportTable::rowOpened, this, [this](const QString& entry) { showEntry(entry); });
    connect(m_attention, &AttentionList::wanted, this, [this](const AttentionItem& item) { lend(item); });
}

void SummaryView::present(const ReportSheet* sheet)
{
    header().setTitle(text("summary"));
    presentPrint();
    m_accountsTitle->setText(text("table.ownAccounts"));
    m_latestTitle->setText(text("table.latest"));
    if (!sheet) {
        m_scope->setText(text("preparing"));
        return;
    }
    m_scope->setText(sheet->failure ? text("failed") : text("summary.scope"));
    if (sheet->failure)
        return;
    const auto colors = colorsOf(*sheet);
    m_accounts->present(sheet->own.accounts, colors);
    m_latest->haveEntries(
        [snapshot = sheet->books->snapshot](std::string_view kind) { return entryKindColor(kind, *snapshot); });
    m_latest->present(sheet->own.latest, colors);
    m_expenses->present(sheet->largestExpenses, colors);
    auto attention = besideBooks();
    attention.insert(attention.end(), sheet->attention.begin(), sheet->attention.end());
    m_attention->present(std::move(attention));
    presentNotes(*sheet);
}

void SummaryView::presentPrint()
{
    const auto sheet = browser().sheet();
    actions().present({ReportPrinting::action(store(), sheet && !sheet->failure, [this] { print(); })});
}

void SummaryView::print()
{
    if (auto* dialog = ReportPrinting::open(store(), browser(), ReportPart::summary, window()))
        connect(dialog, &PrintDialog::finished, this, [this](const QString& what) { Q_EMIT done(what); });
}

void SummaryView::presentNotes(const ReportSheet& sheet)
{
    const auto& currency = sheet.query.currency; // none before there is an account
    m_expensesTitle->setText(currency.empty() ? text("table.expenseCategories")
                                              : word(reportWords(), "summary.expenses", {currency}));
    m_expenses->setAccessibleName(m_expensesTitle->text());
    m_latestNone->setText(text("latest.none"));
    m_latestNone->setVisible(sheet.own.latest.rows.empty());
    m_latest->setVisible(!sheet.own.latest.rows.empty());
    m_expensesNone->setText(text("expenses.none"));
    m_expensesNone->setVisible(sheet.largestExpenses.rows.empty());
    m_expenses->setVisible(!sheet.largestExpenses.rows.empty());
}

QList<QWidget*> SummaryView::panes() const
{
    QList<QWidget*> all{m_accounts};
    for (auto* pane : {m_latest, m_expenses}) {
        if (!pane->isHidden())
            all.append(pane);
    }
    if (m_attention->firstStop())
        all.append(m_attention);
    all.append(&header());
    return all;
}
