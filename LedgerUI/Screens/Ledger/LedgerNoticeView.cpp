#include "LedgerUI/Screens/Ledger/LedgerNoticeView.h"

#include <QPushButton>
#include <QVBoxLayout>

#include "LedgerUI/Components/EmptyState.h"
#include "LedgerUI/Components/PrimaryButton.h"

namespace {

using Reason = LedgerNotice::Reason;
using Remedy = LedgerNotice::Remedy;

QString glyphOf(Reason reason)
{
    switch (reason) {
    case Reason::nothingRecorded:
        return QStringLiteral("journal-text");
    case Reason::noAccess:
        return QStringLiteral("eye-slash");
    case Reason::nothingInPeriod:
        return QStringLiteral("calendar3");
    case Reason::nothingMatches:
        return QStringLiteral("search");
    }
    return {};
}

}

LedgerNoticeView::LedgerNoticeView(QWidget* parent) : QWidget{parent}
{
    setObjectName(QStringLiteral("ledgerNotice"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
}

void LedgerNoticeView::present(const LedgerNotice& notice)
{
    auto* state = new EmptyState(glyphOf(notice.reason), this);
    state->setTexts(notice.headline, notice.sentence);
    for (const auto& offer : notice.offers) {
        const bool records = offer.remedy == Remedy::record;
        auto* button = records ? new PrimaryButton(state) : new QPushButton(state);
        button->setText(offer.text);
        button->setObjectName(records ? QStringLiteral("noticeRecord") : QStringLiteral("noticeChangeFilter"));
        state->addButton(button);
        connect(button, &QPushButton::clicked, this, [this, records, filter = offer.filter] {
            if (records)
                Q_EMIT recordWanted();
            else
                Q_EMIT filterWanted(filter);
        });
    }
    replace(state);
}

void LedgerNoticeView::presentWaiting(const QString& text)
{
    auto* state = new EmptyState(QStringLiteral("hourglass"), this);
    state->setTexts(text, {});
    replace(state);
}

QWidget* LedgerNoticeView::firstStop() const
{
    return findChild<QPushButton*>();
}

void LedgerNoticeView::replace(EmptyState* state)
{
    if (m_state) {
        m_state->hide();
        m_state->deleteLater();
        // Nobody shall find the buttons of a notice that is gone.
        m_state->setParent(nullptr);
    }
    m_state = state;
    layout()->addWidget(state);
}
