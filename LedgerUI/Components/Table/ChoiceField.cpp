#include "LedgerUI/Components/Table/ChoiceField.h"

#include <algorithm>
#include <utility>

#include <QVBoxLayout>

#include "LedgerUI/Components/Dialogs/Popover.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int highest = 320;

}

ChoiceField::ChoiceField(QWidget* parent) : QToolButton{parent}
{
    setProperty("kind", QStringLiteral("field"));
    setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    setLayoutDirection(Qt::RightToLeft); // the mark at the end
    setIcon(Icon::of(QStringLiteral("chevron-down"), Token::text2));
    setIconSize({Space::chevron, Space::chevron});
    setMinimumHeight(Space::control);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(this, &QToolButton::clicked, this, &ChoiceField::openList);
}

void ChoiceField::present(const QString& summary, ChoiceList::Words words, std::vector<ChoiceList::Choice> choices,
                          ChoiceList::Chosen chosen)
{
    setText(summary);
    setAccessibleName(words.name + QStringLiteral(", ") + summary);
    m_words = std::move(words);
    m_choices = std::move(choices);
    m_chosen = std::move(chosen);
}

void ChoiceField::openList()
{
    if (!m_popover) {
        m_popover = new Popover(this);
        m_popover->setObjectName(objectName() + QStringLiteral("Popover"));
        m_list = new ChoiceList(m_popover);
        auto* rows = new QVBoxLayout(m_popover);
        rows->setContentsMargins(Space::step2, Space::step2, Space::step2, Space::step2);
        rows->addWidget(m_list);
        connect(m_list, &ChoiceList::chosenChanged, this, &ChoiceField::chosenChanged);
    }
    m_popover->setAccessibleName(m_words.name);
    m_list->present(m_words, m_choices, m_chosen);
    m_popover->setFixedSize(width(), std::min(m_list->wholeHeight() + 2 * Space::step2 + 2, highest));
    m_popover->open(m_list->firstStop());
}
