#include "LedgerUI/Screens/Accounts/AccountNoticeView.h"

#include <QApplication>
#include <QPushButton>
#include <QVBoxLayout>

#include "LedgerUI/Components/Page/EmptyState.h"

namespace {

using Reason = AccountNotice::Reason;

QString glyphOf(Reason reason)
{
    switch (reason) {
    case Reason::noAccounts:
        return QStringLiteral("bank");
    case Reason::noAccess:
        return QStringLiteral("eye-slash");
    case Reason::noMatch:
        return QStringLiteral("search");
    case Reason::onlyArchived:
        return QStringLiteral("archive");
    }
    return {};
}

}

AccountNoticeView::AccountNoticeView(QWidget* parent) : QWidget{parent}
{
    setObjectName(QStringLiteral("accountNotice"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
}

void AccountNoticeView::present(const AccountNotice& notice)
{
    auto* state = new EmptyState(glyphOf(notice.reason), this);
    state->setTexts(notice.headline, notice.sentence);
    if (notice.offer) {
        auto* button = new QPushButton(notice.offer->text, state);
        button->setObjectName(QStringLiteral("accountRemedy"));
        connect(button, &QPushButton::clicked, this,
                [this, remedy = notice.offer->remedy] { Q_EMIT remedyWanted(remedy); });
        state->addButton(button);
    }
    replace(state);
}

void AccountNoticeView::presentWaiting(const QString& text)
{
    auto* state = new EmptyState(QStringLiteral("hourglass"), this);
    state->setTexts(text, {});
    replace(state);
}

void AccountNoticeView::replace(EmptyState* state)
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
    setFocusProxy(state->findChild<QPushButton*>());
    if (hadFocus)
        setFocus(Qt::OtherFocusReason);
}
