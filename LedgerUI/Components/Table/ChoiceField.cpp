#include "LedgerUI/Components/Table/ChoiceField.h"

#include <algorithm>

#include <QStylePainter>
#include <QVBoxLayout>

#include "LedgerUI/Components/Dialogs/Popover.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int highest = 320;
constexpr int arrowRoom = 28;

}

ChoiceField::ChoiceField(QWidget* parent) : QComboBox{parent}
{
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(1);
}

void ChoiceField::present(const ChoiceList::Words& words, const std::vector<ChoiceList::Choice>& choices,
                          const ChoiceList::Chosen& chosen, const QString& summary)
{
    const bool isSameList = m_choices == choices;
    m_words = words;
    m_choices = choices;
    m_chosen = chosen;
    m_summary = summary;
    if (!isSameList)
        hidePopup();
    presentText();
}

void ChoiceField::showPopup()
{
    if (!m_popover) {
        m_popover = new Popover(this);
        m_popover->setObjectName(objectName() + QStringLiteral("Popover"));
        m_list = new ChoiceList(m_popover);
        auto* layout = new QVBoxLayout(m_popover);
        layout->setContentsMargins(Space::step2, Space::step2, Space::step2, Space::step2);
        layout->addWidget(m_list);
        connect(m_list, &ChoiceList::chosenChanged, this, [this](const ChoiceList::Chosen& chosen) {
            m_chosen = chosen;
            presentText();
            Q_EMIT chosenChanged();
        });
    }
    if (m_popover->isVisible()) {
        m_popover->hide();
        return;
    }
    m_popover->setAccessibleName(m_words.name);
    m_list->present(m_words, m_choices, m_chosen);
    m_popover->setFixedSize(width(), std::min(m_list->wholeHeight() + 2 * Space::step2 + 2, highest));
    m_popover->open(m_list->firstStop());
}

void ChoiceField::hidePopup()
{
    if (m_popover)
        m_popover->hide();
}

void ChoiceField::paintEvent(QPaintEvent* /*event*/)
{
    QStylePainter painter{this};
    QStyleOptionComboBox option;
    initStyleOption(&option);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    option.currentText = fontMetrics().elidedText(currentText(), Qt::ElideRight, width() - arrowRoom - Space::step4);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}

/// The box holds a single row, of which readers tell: the names of what is ticked.
void ChoiceField::presentText()
{
    QStringList names;
    for (const auto& choice : m_choices) {
        if (m_chosen.contains(choice.id))
            names.append(choice.text);
    }
    clear();
    addItem(!m_summary.isEmpty() ? m_summary : names.join(word(dialogWords(), "listSeparator")));
    setToolTip(currentText());
}
