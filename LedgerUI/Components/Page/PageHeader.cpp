#include "LedgerUI/Components/Page/PageHeader.h"

#include <QAction>
#include <QHBoxLayout>
#include <QToolButton>

#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/StyleProperty.h"

namespace {

constexpr int afterTitle = 1; // where the middle widget stands in the row

// A default action of a tool button would lose the ellipsis of its text.
void follow(QToolButton& button, const QAction& action)
{
    button.setText(action.text());
    button.setIcon(action.icon());
    button.setEnabled(action.isEnabled());
    button.setVisible(action.isVisible());
    button.setAccessibleName(action.text());
    button.setToolTip(action.toolTip());
}

/// What a button takes with its text, however it stands now.
int unfoldedWidth(const QToolButton& button)
{
    constexpr int aroundText = 4 * Space::step2; // its paddings, and what parts it from the glyph
    return Space::iconBeforeText + button.fontMetrics().horizontalAdvance(button.text()) + aroundText;
}

void fold(QToolButton& button, bool folds)
{
    setStyleProperty(&button, "kind", folds ? QStringLiteral("outlined") : QStringLiteral("ghost"));
    button.setToolButtonStyle(folds ? Qt::ToolButtonIconOnly : Qt::ToolButtonTextBesideIcon);
    button.setMinimumSize(Space::control, Space::control);
    button.setIconSize({folds ? Space::icon : Space::iconBeforeText, Space::icon});
}

bool isFolded(const QToolButton& button)
{
    return button.toolButtonStyle() == Qt::ToolButtonIconOnly;
}

}

PageHeader::PageHeader(QWidget* parent) : QFrame{parent}
{
    setObjectName(QStringLiteral("pageHeader"));
    setFixedHeight(Space::pageHeader);
    m_title = new TextLabel(TypeStep::title, Token::text, this);
    m_title->setObjectName(QStringLiteral("pageTitle"));
    m_layout = new QHBoxLayout(this);
    m_layout->setContentsMargins(Space::pageMargin, 0, Space::pageMargin, 0);
    m_layout->setSpacing(Space::step2);
    m_layout->addWidget(m_title);
    m_layout->addStretch(1);
}

void PageHeader::setTitle(const QString& title)
{
    m_title->setText(title);
}

void PageHeader::setMiddle(QWidget* widget)
{
    m_layout->insertWidget(afterTitle, widget);
    m_layout->insertSpacing(afterTitle, Space::step3);
}

void PageHeader::addSecondary(QAction* action)
{
    auto* button = new QToolButton(this);
    button->setObjectName(action->objectName() + QStringLiteral("Button"));
    button->setFocusPolicy(Qt::StrongFocus);
    fold(*button, true); // until there is a width
    follow(*button, *action);
    connect(action, &QAction::changed, button, [this, button, action] {
        follow(*button, *action);
        adapt(); // other texts, or another number of them
    });
    connect(button, &QToolButton::clicked, action, &QAction::trigger);
    m_secondary.push_back(button);
    m_layout->insertWidget(m_primary ? m_layout->indexOf(m_primary) : m_layout->count(), button);
    adapt();
}

void PageHeader::setPrimary(QWidget* button)
{
    m_primary = button;
    m_layout->addWidget(button);
}

void PageHeader::resizeEvent(QResizeEvent* /*event*/)
{
    foldOrUnfold();
}

/// Not while its width is still to come: each look at their sizes would dress buttons that are dressed anew then.
void PageHeader::adapt()
{
    if (!testAttribute(Qt::WA_PendingResizeEvent))
        foldOrUnfold();
}

void PageHeader::foldOrUnfold()
{
    int needed = m_layout->sizeHint().width();
    for (const auto* button : m_secondary) {
        if (!button->isHidden())
            needed += unfoldedWidth(*button) - button->sizeHint().width();
    }
    const bool folds = window()->width() < Space::foldBelow || needed > width();
    for (auto* button : m_secondary) {
        if (isFolded(*button) != folds)
            fold(*button, folds);
    }
}
