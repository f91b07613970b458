#include "LedgerUI/Screens/Imports/ImportProgress.h"

#include <chrono>

#include <QProgressBar>
#include <QTimer>
#include <QVBoxLayout>

#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int barHeight = 8;
constexpr std::chrono::milliseconds betweenGlances{50}; // a row takes about one

}

ImportProgress::ImportProgress(QWidget* parent) : QWidget{parent}
{
    m_text = new TextLabel(TypeStep::body, Token::text, this);
    m_text->setObjectName(QStringLiteral("importProgress"));
    m_share = new TextLabel(TypeStep::body, Token::text2, this);
    m_share->setMinimumWidth(m_share->fontMetrics().horizontalAdvance(QStringLiteral("100 %")) + 1);
    m_share->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_bar = new QProgressBar(this);
    m_bar->setTextVisible(false);
    m_bar->setFixedHeight(barHeight);
    m_hint = new TextLabel(TypeStep::small, Token::text2, this);
    m_hint->setWordWrap(true);
    auto* head = new QHBoxLayout;
    head->addWidget(m_text, 1);
    head->addWidget(m_share);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, Space::step2, 0, 0);
    rows->setSpacing(Space::step2);
    rows->addLayout(head);
    rows->addWidget(m_bar);
    rows->addWidget(m_hint);
    m_timer = new QTimer(this);
    m_timer->setSingleShot(true);
    m_timer->setInterval(betweenGlances);
    connect(m_timer, &QTimer::timeout, this, &ImportProgress::glance);
}

void ImportProgress::present(std::size_t confirmed, std::size_t all)
{
    m_confirmed = confirmed;
    m_all = all;
    glance();
}

void ImportProgress::advance(std::size_t confirmed)
{
    m_confirmed = confirmed;
    if (!m_timer->isActive())
        m_timer->start();
}

void ImportProgress::glance()
{
    const auto& locale = InterfaceLanguage::tag();
    m_text->setText(
        word(importWords(), "progress", {groupedNumber(m_confirmed, locale), groupedNumber(m_all, locale)}));
    m_share->setText(QStringLiteral("%1 %").arg(m_confirmed * 100 / m_all));
    m_bar->setRange(0, static_cast<int>(m_all));
    m_bar->setValue(static_cast<int>(m_confirmed));
    m_bar->setAccessibleName(m_text->text());
    m_hint->setText(word(importWords(), "progressHint"));
}
