#include "LedgerUI/Screens/Records/RecordHead.h"

#include <algorithm>

#include <QAction>
#include <QHBoxLayout>
#include <QPushButton>
#include <QToolButton>

#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Text/ElidedLabel.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/StyleProperty.h"

namespace {

constexpr int titleRoom = 200;

}

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
    m_title = new ElidedLabel(TypeStep::section, Token::text, Qt::ElideRight, this);
    m_title->setTextFormat(Qt::PlainText);
    m_beside = new ElidedLabel(TypeStep::small, Token::text2, Qt::ElideRight, this);
    m_row = new QHBoxLayout(this);
    m_row->setContentsMargins(Space::pageMargin, Space::step1, Space::pageMargin, Space::step1);
    m_row->setSpacing(Space::step2);
    m_texts = new QBoxLayout(QBoxLayout::LeftToRight);
    m_texts->setSpacing(Space::step2);
    m_texts->addWidget(m_title);
    m_texts->addWidget(m_beside, 1);
    m_texts->addStretch(0);
    m_row->addLayout(m_texts, 1);
    setMinimumHeight(Space::tabRow);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void RecordHead::stackTexts()
{
    m_texts->setDirection(QBoxLayout::TopToBottom);
    m_texts->setSpacing(0);
}

void RecordHead::setTexts(const QString& title, const QString& beside)
{
    m_title->setText(title);
    m_title->setMinimumWidth(std::min(m_title->sizeHint().width(), titleRoom)); // before the text beside it
    m_beside->setText(beside);
    m_beside->setVisible(!beside.isEmpty());
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
