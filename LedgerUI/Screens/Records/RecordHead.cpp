#include "LedgerUI/Screens/Records/RecordHead.h"

#include <QAction>
#include <QHBoxLayout>
#include <QPushButton>
#include <QToolButton>

#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Text/ElidedLabel.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/StyleProperty.h"

void followAction(QAbstractButton& button, QAction& action)
{
    button.setObjectName(action.objectName() + QStringLiteral("Button"));
    const auto follow = [&button, &action] {
        button.setText(action.text());
        button.setEnabled(action.isEnabled());
        button.setVisible(action.isVisible());
        button.setToolTip(action.toolTip());
        button.setAccessibleDescription(action.isEnabled() ? QString{} : action.toolTip());
    };
    follow();
    QObject::connect(&action, &QAction::changed, &button, follow);
    QObject::connect(&button, &QAbstractButton::clicked, &action, &QAction::trigger);
}

RecordHead::RecordHead(QWidget* parent) : QWidget{parent}
{
    m_title = new TextLabel(TypeStep::section, Token::text, this);
    m_title->setTextFormat(Qt::PlainText);
    m_beside = new ElidedLabel(TypeStep::small, Token::text2, Qt::ElideRight, this);
    m_row = new QHBoxLayout(this);
    m_row->setContentsMargins(Space::pageMargin, Space::step1, Space::pageMargin, Space::step1);
    m_row->setSpacing(Space::step2);
    m_row->addWidget(m_title);
    m_row->addWidget(m_beside, 1);
    setMinimumHeight(Space::tabRow);
}

void RecordHead::setTexts(const QString& title, const QString& beside)
{
    m_title->setText(title);
    m_beside->setText(beside);
}

void RecordHead::addAction(QAction* action, bool isPrimary)
{
    auto* button = isPrimary ? static_cast<QPushButton*>(new PrimaryButton(this)) : new QPushButton(this);
    followAction(*button, *action);
    m_row->addWidget(button);
}

void RecordHead::addGlyph(QAction* action)
{
    auto* button = new QToolButton(this);
    button->setFocusPolicy(Qt::StrongFocus);
    button->setToolButtonStyle(Qt::ToolButtonIconOnly);
    button->setMinimumSize(Space::control, Space::control);
    setStyleProperty(button, "kind", QStringLiteral("outlined"));
    const auto draw = [button, action] {
        button->setIcon(action->icon());
        button->setAccessibleName(action->text());
    };
    draw();
    connect(action, &QAction::changed, button, draw);
    followAction(*button, *action);
    m_row->addWidget(button);
}
