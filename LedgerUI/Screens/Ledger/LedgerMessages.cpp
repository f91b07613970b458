#include "LedgerUI/Screens/Ledger/LedgerMessages.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "LedgerUI/Components/Buttons/IconButton.h"
#include "LedgerUI/Components/Dialogs/FocusChain.h"
#include "LedgerUI/Components/Page/Banner.h"
#include "LedgerUI/Components/Text/GlyphLabel.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Period/PeriodLabel.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int belowHint = 1; // where what is due stands among the rows

}

LedgerMessages::LedgerMessages(QWidget* parent) : QWidget{parent}
{
    m_hint = new TextLabel(TypeStep::small, Token::text2, this);
    m_hint->setObjectName(QStringLiteral("periodHint"));
    m_hint->setContentsMargins(Space::pageMargin, Space::step1, Space::pageMargin, Space::step1);
    m_hint->setWordWrap(true);
    m_hint->hide();
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(m_hint);
}

/// Like what is due, made when there is something to say: on most days the page opens without.
void LedgerMessages::buildBox()
{
    m_box = new QWidget(this);
    m_banner = new Banner(Banner::Kind::info, m_box);
    m_banner->setObjectName(QStringLiteral("recordedElsewhere"));
    m_show = new QPushButton(m_banner);
    m_show->setObjectName(QStringLiteral("recordedShow"));
    m_show->setProperty("extent", QStringLiteral("small"));
    m_close = new IconButton(QStringLiteral("x"), IconButton::Frame::none, m_banner);
    m_close->setObjectName(QStringLiteral("recordedClose"));
    m_close->setFixedSize(Space::controlSmall, Space::controlSmall);
    m_banner->addAction(m_show);
    m_banner->addAction(m_close);
    auto* box = new QVBoxLayout(m_box);
    box->setContentsMargins(Space::pageMargin, Space::step2, Space::pageMargin, Space::step2);
    box->addWidget(m_banner);
    m_box->hide();
    layout()->addWidget(m_box);
    connect(m_show, &QPushButton::clicked, this, [this] {
        const auto id = QString::fromStdString(m_announced);
        withdraw();
        Q_EMIT entryWanted(id);
    });
    connect(m_close, &QToolButton::clicked, this, [this] {
        withdraw();
        Q_EMIT left();
    });
    FocusChain::settle(this);
}

void LedgerMessages::buildDue()
{
    m_dueRow = new QWidget(this);
    m_due = new TextLabel(TypeStep::small, Token::text2, m_dueRow);
    m_due->setObjectName(QStringLiteral("templatesDue"));
    m_dueShow = new QPushButton(m_dueRow);
    m_dueShow->setObjectName(QStringLiteral("templatesDueShow"));
    m_dueShow->setProperty("kind", QStringLiteral("link"));
    auto* row = new QHBoxLayout(m_dueRow);
    row->setContentsMargins(Space::pageMargin, Space::step1, Space::pageMargin, Space::step1);
    row->setSpacing(Space::step2);
    row->addWidget(new GlyphLabel(QStringLiteral("arrow-repeat"), Token::text2, Space::icon, m_dueRow));
    row->addWidget(m_due);
    row->addWidget(m_dueShow);
    row->addStretch(1);
    m_dueRow->hide();
    m_dueRow->lower(); // Tab comes to it before the box, which may be there already
    static_cast<QVBoxLayout*>(layout())->insertWidget(belowHint, m_dueRow);
    connect(m_dueShow, &QPushButton::clicked, this, &LedgerMessages::dueWanted);
    FocusChain::settle(this);
}

void LedgerMessages::presentDue(std::size_t count)
{
    if (!m_dueRow && count == 0)
        return;
    if (!m_dueRow)
        buildDue();
    m_due->setText(countedIn(InterfaceLanguage::tag(), templateWords(), "dueCount", count));
    m_dueShow->setText(word(templateWords(), "show"));
    m_dueShow->setAccessibleName(QStringLiteral("%1, %2").arg(m_dueShow->text(), m_due->text()));
    m_dueRow->setVisible(count > 0);
}

void LedgerMessages::present(const LedgerBrowser& browser)
{
    m_hint->setText(word(ledgerWords(), "latestShown",
                         {periodLabel(browser.filter().period, InterfaceLanguage::tag()).toStdString()}));
    m_hint->setVisible(browser.showsLatestInstead());
    if (m_announced.empty())
        return;
    if (browser.listing() && browser.listing()->lineOf(m_announced) < 0)
        presentAnnounced(browser);
    else
        withdraw();
}

void LedgerMessages::announce(const LedgerBrowser& browser, const std::string& entryID)
{
    m_announced = entryID;
    presentAnnounced(browser);
}

void LedgerMessages::presentAnnounced(const LedgerBrowser& browser)
{
    const auto& book = *browser.book();
    const auto at = book.find(m_announced);
    if (at == LedgerBook::none) {
        withdraw();
        return;
    }
    if (!m_box)
        buildBox();
    m_show->setText(word(ledgerWords(), "recorded.show"));
    m_close->setName(word(ledgerWords(), "recorded.close"));
    const auto& entry = book.transaction(at);
    const auto text = word(ledgerWords(), entry.reversedBy ? "reversed.elsewhere" : "recorded.elsewhere",
                           {DayText::longDay(entry.date, book.locale()).toStdString()});
    if (!m_box->isVisibleTo(this) || m_banner->text() != text)
        m_banner->present(Banner::Kind::info, text); // readers hear it once
    m_box->show();
}

void LedgerMessages::withdraw()
{
    m_announced.clear();
    if (m_box)
        m_box->hide();
}

void LedgerMessages::enter()
{
    if (m_show)
        m_show->setFocus(Qt::OtherFocusReason);
}
