#include "LedgerUI/Components/Page/StatusBar.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QToolButton>

#include "LedgerUI/Components/Page/Line.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/StyleProperty.h"

namespace {

constexpr int buttonHeight = 20;
constexpr int lineHeight = 14;

}

StatusBar::StatusBar(QWidget* parent) : QFrame{parent}
{
    setObjectName(QStringLiteral("statusBar"));
    setFixedHeight(Space::statusBar);
    m_refresh = new QToolButton(this);
    m_refresh->setObjectName(QStringLiteral("refreshButton"));
    m_refresh->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_refresh->setIcon(Icon::of(QStringLiteral("arrow-repeat")));
    m_refresh->setIconSize({Space::icon, Space::chevron});
    m_refresh->setFixedHeight(buttonHeight);
    m_refresh->setFocusPolicy(Qt::TabFocus);
    m_count = new TextLabel(TypeStep::micro, Token::text2, this);
    m_count->setObjectName(QStringLiteral("entryCount"));
    m_unconfirmed = new QToolButton(this);
    m_unconfirmed->setObjectName(QStringLiteral("unconfirmedButton"));
    m_unconfirmed->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_unconfirmed->setIcon(Icon::of(QStringLiteral("question-circle"), Token::warn));
    m_unconfirmed->setIconSize({Space::icon, Space::chevron});
    m_unconfirmed->setFixedHeight(buttonHeight);
    m_unconfirmed->setFocusPolicy(Qt::TabFocus);
    setStyleProperty(m_unconfirmed, "tone", QStringLiteral("warn"));
    m_unconfirmed->hide();
    m_said = new TextLabel(TypeStep::micro, Token::ok, this);
    m_said->setObjectName(QStringLiteral("statusSaid"));
    m_said->hide();
    m_context = new TextLabel(TypeStep::micro, Token::text2, this);
    m_context->setObjectName(QStringLiteral("statusContext"));
    m_figure = new TextLabel(TypeStep::micro, Token::text2, this);
    m_figure->setObjectName(QStringLiteral("statusFigure"));
    m_figure->setBold(true);
    auto* line = new Line(Qt::Vertical, this);
    line->setFixedHeight(lineHeight);

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(Space::step3, 0, Space::pageMargin, 0);
    layout->setSpacing(Space::step2);
    layout->addWidget(m_refresh);
    layout->addWidget(line);
    layout->addWidget(m_count);
    layout->addWidget(m_unconfirmed);
    layout->addSpacing(Space::step2);
    layout->addWidget(m_said);
    layout->addStretch(1);
    layout->addWidget(m_context);
    layout->addWidget(m_figure);
    connect(m_refresh, &QToolButton::clicked, this, &StatusBar::refreshRequested);
    connect(m_unconfirmed, &QToolButton::clicked, this, &StatusBar::unconfirmedRequested);
}

void StatusBar::setRefreshText(const QString& text, Freshness freshness)
{
    m_refresh->setText(text);
    m_refresh->setAccessibleName(text);
    const bool isStale = freshness == Freshness::stale;
    setStyleProperty(m_refresh, "tone", isStale ? QStringLiteral("warn") : QString{});
    m_refresh->setIcon(Icon::of(QStringLiteral("arrow-repeat"), isStale ? Token::warn : Token::text2));
    announce();
}

void StatusBar::setRefreshHint(const QString& hint)
{
    m_refresh->setToolTip(hint);
}

void StatusBar::setRefreshEnabled(bool isEnabled)
{
    m_refresh->setEnabled(isEnabled);
}

void StatusBar::setCount(const QString& text)
{
    m_count->setText(text);
}

void StatusBar::setUnconfirmed(const QString& text)
{
    m_unconfirmed->setText(text);
    m_unconfirmed->setAccessibleName(text);
    m_unconfirmed->setVisible(!text.isEmpty());
    announce();
}

void StatusBar::setContext(const QString& text, const QString& figure)
{
    m_context->setText(text);
    m_figure->setText(figure);
    m_figure->setVisible(!figure.isEmpty());
    announce();
}

void StatusBar::say(const QString& sentence)
{
    m_said->setText(sentence);
    m_said->setAccessibleName(sentence);
    m_said->setVisible(!sentence.isEmpty());
    announce();
    if (sentence.isEmpty())
        return;
    QAccessibleEvent alert{m_said, QAccessible::Alert};
    QAccessible::updateAccessibility(&alert);
}

QWidget* StatusBar::tabStop() const
{
    return m_refresh;
}

void StatusBar::announce()
{
    const auto parts = {m_said->text(), m_refresh->text(), m_unconfirmed->text(), m_context->text(), m_figure->text()};
    setAccessibleName(listed(parts, InterfaceLanguage::tag()));
    QAccessibleEvent changed{this, QAccessible::NameChanged};
    QAccessible::updateAccessibility(&changed);
}
