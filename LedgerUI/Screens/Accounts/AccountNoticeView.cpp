#include "LedgerUI/Screens/Accounts/AccountNoticeView.h"

#include <QPushButton>

#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Page/EmptyState.h"
#include "LedgerUI/Components/Page/SetupStep.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

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

AccountNoticeView::AccountNoticeView(QWidget* parent) : NoticeView{QStringLiteral("accountNotice"), parent} {}

void AccountNoticeView::present(const AccountNotice& notice, const std::optional<SetupChecklist>& setup)
{
    auto* state = madeState(glyphOf(notice.reason), notice.headline, notice.sentence);
    if (notice.offer) {
        auto* button = new QPushButton(notice.offer->text, state);
        button->setObjectName(QStringLiteral("accountRemedy"));
        connect(button, &QPushButton::clicked, this,
                [this, remedy = notice.offer->remedy] { Q_EMIT remedyWanted(remedy); });
        state->addButton(button);
    }
    if (setup && notice.reason == Reason::noAccounts)
        addSteps(state, *setup);
    replaceBy(state);
}

/// Steps that are done say so in place of their button; the next one stands out.
void AccountNoticeView::addSteps(EmptyState* state, const SetupChecklist& setup)
{
    int number = 1;
    for (const auto& step : setup.steps) {
        const bool isDone = step.state == SetupChecklist::Step::State::done;
        const bool isNext = &step == setup.next();
        auto* button = isNext ? new PrimaryButton(state) : new QPushButton(state);
        button->setObjectName(QStringLiteral("setupStep%1").arg(number));
        button->setText(isDone ? word(accountWords(), "setup.done") : step.button);
        button->setEnabled(!isDone && step.whyNot.isEmpty());
        button->setToolTip(step.whyNot);
        connect(button, &QPushButton::clicked, this, [this, link = step.link] { Q_EMIT stepWanted(link); });
        state->addStep(
            new SetupStep(number++, step.title, step.whyNot.isEmpty() ? step.sentence : step.whyNot, button, state));
    }
}
