#include "LedgerUI/Screens/Capital/ContributionPane.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "LedgerUI/Components/Page/Line.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/SelectableText.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Records/RecordHead.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int labelColumn = 96;

TextLabel* label(const QString& text, TypeStep step, Token tone, QWidget* parent)
{
    auto* made = new TextLabel(step, tone, parent);
    made->setTextFormat(Qt::PlainText);
    made->setText(text);
    return made;
}

}

ContributionPane::ContributionPane(QWidget* parent)
    : DetailPane{{.pane = QStringLiteral("detailPane"),
                  .headline = QStringLiteral("contributionOwner"),
                  .close = QStringLiteral("contributionClose")},
                 parent}
{
    auto* footRow = new QHBoxLayout(&foot());
    footRow->setContentsMargins(Space::pageMargin, Space::step3, Space::pageMargin, Space::step3);
    foot().hide();
}

void ContributionPane::setReverseAction(QAction* action)
{
    m_reverse = new QPushButton(&foot());
    followAction(*m_reverse, *action);
    m_reverse->setIcon(Icon::of(QStringLiteral("arrow-counterclockwise"), Token::text));
    m_reverse->setIconSize({Space::iconBeforeText, Space::icon});
    auto* row = static_cast<QHBoxLayout*>(foot().layout());
    row->addWidget(m_reverse);
    row->addStretch(1);
}

void ContributionPane::present(const std::optional<ContributionDetail>& detail, const ThemeColor& ink)
{
    setSpoken(word(capitalWords(), "detail"), word(dialogWords(), "close"));
    foot().setVisible(m_reverse && detail && !detail->isReversal && !detail->isReversed);
    if (detail == m_shown && body())
        return;
    m_shown = detail;
    m_ink = ink;
    setHead({}, Token::text, detail ? detail->owner : QString{});
    auto* filled = new QWidget(bodyPlace());
    auto* rows = new QVBoxLayout(filled);
    rows->setContentsMargins(Space::pageMargin, 0, Space::pageMargin, Space::pageMargin);
    rows->setSpacing(Space::step2);
    if (detail)
        fill(*detail, *rows);
    rows->addStretch(1);
    setBody(filled);
}

void ContributionPane::fill(const ContributionDetail& detail, QVBoxLayout& rows)
{
    auto* amountRow = new QHBoxLayout;
    amountRow->setSpacing(Space::step2);
    auto* digits = label(detail.amount.figure(), TypeStep::display, Token::text, nullptr);
    digits->setObjectName(QStringLiteral("contributionAmount"));
    digits->setAccessibleName(detail.amount.spoken);
    if (!detail.isReversal && !detail.isReversed)
        digits->setInk(m_ink);
    auto font = digits->font();
    font.setStrikeOut(detail.isReversed);
    digits->setFont(font);
    amountRow->addWidget(label(detail.amount.currency, TypeStep::body, Token::text3, nullptr), 0, Qt::AlignBottom);
    amountRow->addWidget(digits, 1);
    rows.addLayout(amountRow);

    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(Space::step2);
    grid->setVerticalSpacing(Space::step2 - 2);
    grid->setColumnStretch(1, 1);
    int at = 0;
    const auto add = [&](const QString& name, QWidget* value) {
        auto* title = label(name, TypeStep::small, Token::text2, nullptr);
        title->setWordWrap(true);
        title->setFixedWidth(labelColumn);
        grid->addWidget(title, at, 0, Qt::AlignTop);
        grid->addWidget(value, at++, 1, Qt::AlignTop);
    };
    for (const auto& line : detail.lines)
        add(line.label, new SelectableText(line.value, TypeStep::body, Token::text));
    if (!detail.linkID.empty()) {
        auto* button = link(detail.link, QStringLiteral("linkedContribution"));
        const auto id = QString::fromStdString(detail.linkID);
        connect(button, &QPushButton::clicked, this, [this, id] { Q_EMIT contributionWanted(id); });
        add(word(capitalWords(), "detail.linked"), button);
    }
    if (!detail.entryID.empty()) {
        auto* button = link(word(capitalWords(), "openEntry"), QStringLiteral("contributionEntry"));
        const auto id = QString::fromStdString(detail.entryID);
        connect(button, &QPushButton::clicked, this, [this, id] { Q_EMIT entryWanted(id); });
        add(word(capitalWords(), "detail.entry"), button);
    }
    rows.addLayout(grid);
}

QPushButton* ContributionPane::link(const QString& text, const QString& name)
{
    auto* button = new QPushButton(text);
    button->setObjectName(name);
    button->setProperty("kind", QStringLiteral("link"));
    button->setCursor(Qt::PointingHandCursor);
    return button;
}
