#include "LedgerUI/Components/Buttons/SplitButton.h"

#include <QAction>
#include <QHBoxLayout>
#include <QMenu>

#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"

SplitButton::SplitButton(QWidget* parent) : QWidget{parent}
{
    m_main = new PrimaryButton(this);
    m_main->setObjectName(QStringLiteral("splitMain"));
    m_main->setProperty("joined", QStringLiteral("first"));
    m_main->setIconSize({Space::iconBeforeText, Space::icon});
    m_main->setFixedHeight(Space::control);
    m_arrow = new PrimaryButton(this);
    m_arrow->setObjectName(QStringLiteral("splitMenu"));
    m_arrow->setProperty("joined", QStringLiteral("last"));
    m_arrow->setProperty("menuIndicator", QStringLiteral("none"));
    m_arrow->setIcon(Icon::of(QStringLiteral("chevron-down"), Token::onAccent));
    m_arrow->setIconSize({Space::chevron, Space::chevron});
    m_arrow->setFixedSize(Space::controlSmall, Space::control);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_main);
    layout->addWidget(m_arrow);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void SplitButton::setAction(QAction* action)
{
    follow(action);
    connect(action, &QAction::changed, this, [this, action] { follow(action); });
    connect(m_main, &QPushButton::clicked, action, &QAction::trigger);
}

void SplitButton::setMenu(const std::function<void(QMenu& menu)>& fill)
{
    connect(m_arrow, &QPushButton::clicked, this, [this, fill] {
        if (!m_menu) {
            m_menu = new QMenu(this);
            m_menu->setObjectName(objectName() + QStringLiteral("Menu"));
            fill(*m_menu);
        }
        // Right edges meet: the menu is wider than the button and would leave the window otherwise.
        m_menu->popup(mapToGlobal(QPoint{width() - m_menu->sizeHint().width(), height() + 1}));
    });
}

void SplitButton::setGlyph(const QString& glyph)
{
    m_main->setIcon(Icon::of(glyph, Token::onAccent));
}

void SplitButton::setMenuName(const QString& name)
{
    m_arrow->setAccessibleName(name);
    m_arrow->setToolTip(name);
}

void SplitButton::follow(const QAction* action)
{
    m_main->setText(action->text());
    m_main->setToolTip(action->toolTip());
    m_main->setEnabled(action->isEnabled());
    m_arrow->setEnabled(action->isEnabled());
}
