#include "LedgerUI/Screens/Imports/ImportFindings.h"

#include <algorithm>
#include <utility>

#include <QVBoxLayout>

#include "LedgerUI/Components/Table/PlainTable.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int entriesHeight = 230;
constexpr int effectsHeight = 130;
constexpr int issuesHeight = 220;
constexpr int stretchedColumn = 3; // of issues and of entries

QString text(std::string_view key)
{
    return word(importWords(), key);
}

}

ImportFindings::ImportFindings(QWidget* parent) : QWidget{parent}
{
    m_tableTitle = new TextLabel(TypeStep::small, Token::text2, this);
    m_table = new PlainTable(stretchedColumn, this);
    m_table->setObjectName(QStringLiteral("importTable"));
    m_issue = new TextLabel(TypeStep::body, Token::text, this);
    m_issue->setObjectName(QStringLiteral("importIssue"));
    m_issue->setWordWrap(true);
    m_effectsTitle = new TextLabel(TypeStep::small, Token::text2, this);
    m_effects = new PlainTable(0, this);
    m_effects->setObjectName(QStringLiteral("importEffects"));
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(Space::step2);
    for (auto* part :
         {static_cast<QWidget*>(m_tableTitle), static_cast<QWidget*>(m_table), static_cast<QWidget*>(m_issue),
          static_cast<QWidget*>(m_effectsTitle), static_cast<QWidget*>(m_effects)})
        rows->addWidget(part);
    connect(m_table, &PlainTable::chosen, this, &ImportFindings::presentIssue);
}

void ImportFindings::take(LedgerImport::Table table)
{
    m_table->present(std::move(table.columns), std::move(table.rows));
}

void ImportFindings::chooseFirst()
{
    m_table->chooseFirst();
}

void ImportFindings::present(ImportReadingPointer reading)
{
    m_reading = std::move(reading);
    setVisible(hasIssues() || isReady());
    m_tableTitle->setVisible(isReady());
    m_tableTitle->setText(text("entryList"));
    m_table->setAccessibleName(text(hasIssues() ? "issueList" : "entryList"));
    m_table->setFixedHeight(std::min(m_table->wholeHeight(), hasIssues() ? issuesHeight : entriesHeight));
    presentIssue();
    presentEffects();
}

void ImportFindings::presentIssue()
{
    m_issue->setText(hasIssues() ? LedgerImport::issueText(*m_reading, m_table->chosenID(), InterfaceLanguage::tag())
                                 : QString{});
    m_issue->setVisible(!m_issue->text().isEmpty());
}

void ImportFindings::presentEffects()
{
    const bool hasEffects = isReady() && !m_reading->effects.empty();
    m_effectsTitle->setVisible(hasEffects);
    m_effects->setVisible(hasEffects);
    if (!hasEffects)
        return;
    auto effects = LedgerImport::effects(*m_reading, InterfaceLanguage::tag());
    m_effectsTitle->setText(text("effectList"));
    m_effects->setAccessibleName(text("effectList"));
    m_effects->present(std::move(effects.columns), std::move(effects.rows));
    m_effects->setFixedHeight(std::min(m_effects->wholeHeight(), effectsHeight));
}
