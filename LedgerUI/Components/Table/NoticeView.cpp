#include "LedgerUI/Components/Table/NoticeView.h"

#include <QApplication>
#include <QVBoxLayout>

#include "LedgerUI/Components/Dialogs/FocusChain.h"
#include "LedgerUI/Components/Page/EmptyState.h"

NoticeView::NoticeView(const QString& name, QWidget* parent) : QWidget{parent}
{
    setObjectName(name);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
}

void NoticeView::presentWaiting(const QString& text)
{
    replaceBy(madeState(QStringLiteral("hourglass"), text, {}));
}

EmptyState* NoticeView::madeState(const QString& glyph, const QString& headline, const QString& sentence)
{
    auto* state = new EmptyState(glyph, this);
    state->setTexts(headline, sentence);
    return state;
}

void NoticeView::replaceBy(EmptyState* state)
{
    const bool hadFocus = m_state && m_state->isAncestorOf(QApplication::focusWidget());
    if (m_state) {
        m_state->hide();
        m_state->deleteLater();
        // Nobody shall find the buttons of a notice that is gone.
        m_state->setParent(nullptr);
    }
    m_state = state;
    layout()->addWidget(state);
    setFocusProxy(FocusChain::firstStop(state));
    if (hadFocus)
        setFocus(Qt::OtherFocusReason);
}
