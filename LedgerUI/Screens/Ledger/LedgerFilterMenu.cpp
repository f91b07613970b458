#include "LedgerUI/Screens/Ledger/LedgerFilterMenu.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include "LedgerUI/Presentation/Ledger/LedgerWords.h"
#include "LedgerUI/Presentation/Text/Words.h"

namespace {

/// Menus read "&" as a mnemonic; in people's own names it is only a letter.
QString literal(QString text)
{
    return text.replace(QLatin1Char('&'), QStringLiteral("&&"));
}

}

LedgerFilterMenu::LedgerFilterMenu(LedgerFilter::Part part, QWidget* parent) : QMenu{parent}, m_part{part} {}

void LedgerFilterMenu::present(const LedgerBook& book, const LedgerFilter& filter)
{
    m_choices = chosenIn(filter, m_part);
    clear();
    setTitle(partName(m_part, book.locale()));
    m_all = addAction(wordIn(book.locale(), ledgerWords(), "filter.all"));
    m_all->setCheckable(true);
    m_all->setChecked(m_choices.empty());
    addSeparator();
    for (const auto& choice : filterChoices(book, m_part)) {
        const auto indent = choice.level == LedgerFilterChoice::Level::child ? QStringLiteral("      ") : QString{};
        auto* action = addAction(indent + literal(choice.text));
        action->setCheckable(true);
        action->setChecked(m_choices.contains(choice.id));
        action->setData(QString::fromStdString(choice.id));
    }
}

void LedgerFilterMenu::mouseReleaseEvent(QMouseEvent* event)
{
    if (!toggle(actionAt(event->position().toPoint())))
        QMenu::mouseReleaseEvent(event);
}

void LedgerFilterMenu::keyPressEvent(QKeyEvent* event)
{
    const bool ticks = event->key() == Qt::Key_Space || event->key() == Qt::Key_Return;
    if (!ticks || !toggle(activeAction()))
        QMenu::keyPressEvent(event);
}

bool LedgerFilterMenu::toggle(QAction* action)
{
    if (!action || !action->isCheckable())
        return false;
    if (action == m_all) {
        m_choices.clear();
    } else {
        const auto id = action->data().toString().toStdString();
        if (m_choices.erase(id) == 0)
            m_choices.insert(id);
    }
    for (auto* each : actions())
        each->setChecked(each == m_all ? m_choices.empty() : m_choices.contains(each->data().toString().toStdString()));
    Q_EMIT choicesChanged(m_part, m_choices);
    return true;
}
