#include "LedgerUI/Screens/Ledger/LedgerNoticeView.h"

#include <QPushButton>

#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Page/EmptyState.h"
#include "LedgerUI/Components/Page/SetupStep.h"

namespace {

using Reason = LedgerNotice::Reason;
using Remedy = LedgerNotice::Remedy;

QString glyphOf(Reason reason)
{
    switch (reason) {
    case Reason::nothingRecorded:
        return QStringLiteral("journal-text");
    case Reason::noAccounts:
        return QStringLiteral("bank");
    case Reason::noAccess:
        return QStringLiteral("eye-slash");
    case Reason::nothingInPeriod:
        return QStringLiteral("calendar3");
    case Reason::nothingMatches:
        return QStringLiteral("search");
    }
    return {};
}

QString nameOf(Remedy remedy)
{
    switch (remedy) {
    case Remedy::record:
        return QStringLiteral("noticeRecord");
    case Remedy::recordOpening:
        return QStringLiteral("noticeOpening");
    case Remedy::setUp:
        return QStringLiteral("noticeSetUp");
    case Remedy::changeFilter:
        return QStringLiteral("noticeChangeFilter");
    }
    return {};
}

}

LedgerNoticeView::LedgerNoticeView(QWidget* parent) : NoticeView{QStringLiteral("ledgerNotice"), parent} {}

void LedgerNoticeView::present(const LedgerNotice& notice)
{
    auto* state = madeState(glyphOf(notice.reason), notice.headline, notice.sentence);
    for (const auto& offer : notice.offers) {
        const bool begins = offer.remedy == Remedy::record || offer.remedy == Remedy::setUp;
        state->addButton(buttonFor(offer, begins ? new PrimaryButton(state) : new QPushButton(state)));
    }
    int number = 1;
    for (const auto& step : notice.steps) {
        auto* button = buttonFor(step.offer, number == 1 ? new PrimaryButton(state) : new QPushButton(state));
        state->addStep(new SetupStep(number++, step.title, step.sentence, button, state));
    }
    replaceBy(state);
}

QPushButton* LedgerNoticeView::buttonFor(const LedgerNotice::Offer& offer, QPushButton* button)
{
    button->setText(offer.text);
    button->setObjectName(nameOf(offer.remedy));
    connect(button, &QPushButton::clicked, this, [this, remedy = offer.remedy, filter = offer.filter] {
        switch (remedy) {
        case Remedy::record:
            Q_EMIT recordWanted();
            return;
        case Remedy::recordOpening:
            Q_EMIT openingWanted();
            return;
        case Remedy::setUp:
            Q_EMIT setUpWanted();
            return;
        case Remedy::changeFilter:
            Q_EMIT filterWanted(filter);
            return;
        }
    });
    return button;
}
