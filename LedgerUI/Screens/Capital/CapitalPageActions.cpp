#include "LedgerUI/Screens/Capital/CapitalPageActions.h"

#include <algorithm>

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QPointer>
#include <QWidget>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Access/MemberRights.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Capital/CapitalActions.h"
#include "LedgerUI/Presentation/Capital/ContributionList.h"
#include "LedgerUI/Presentation/Dividends/DividendActions.h"
#include "LedgerUI/Presentation/Keys/KeyBindings.h"
#include "LedgerUI/Presentation/Records/CapitalSections.h"
#include "LedgerUI/Presentation/Records/CommandForms.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Capital/CapitalActionForm.h"
#include "LedgerUI/Screens/Capital/SectionExport.h"
#include "LedgerUI/Screens/Dividends/DividendActionForm.h"
#include "LedgerUI/Screens/Receipts/AddReceiptsDialog.h"

namespace {

QString text(std::string_view key)
{
    return word(capitalWords(), key);
}

/// What is recorded stays; receipts that failed are kept, to be tried again for the entry that was booked.
AddReceiptsDialog* handOn(LedgerStore& store, const RecordOutcome& outcome, QWidget& window)
{
    if (outcome.failed.empty() || outcome.entryID.empty())
        return nullptr;
    auto* dialog = new AddReceiptsDialog(
        store, {.entryID = outcome.entryID, .failed = outcome.failed, .uploaded = outcome.uploaded}, &window);
    dialog->open();
    return dialog;
}

}

CapitalPageActions::CapitalPageActions(LedgerStore& store, QWidget& page)
    : QObject{&page}, m_store{store}, m_page{page}, m_actions{new ActionSet(&page)},
      m_export{new SectionExport(store, page)}
{
    for (const auto* id : {"contribute", "owners", "ownership", "history", "supersede", "reverseContribution",
                           "allocate", "payAdvance", "participants", "cancelBatch", "pay", "applyAdvance",
                           "returnAdvance", "reverseMovement", "openMovement", "exportCapital", "exportDividends"})
        m_actions->present({act(id, {}, false, {})});
    connect(m_export, &SectionExport::done, this, &CapitalPageActions::done);
}

QAction* CapitalPageActions::operator[](const char* id) const
{
    return (*m_actions)[QString::fromLatin1(id)];
}

void CapitalPageActions::present(const CapitalFocus& focus)
{
    if (!m_store.snapshot())
        return;
    m_actions->present(capitalActions(focus));
    m_actions->present(dividendActions(focus));
    m_actions->present(chosenActions(focus));
    m_actions->present(exportActions(focus));
}

void CapitalPageActions::offerUnconfirmed()
{
    if (auto* modal = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
        connect(modal, &QDialog::finished, this, &CapitalPageActions::offerUnconfirmed, Qt::QueuedConnection);
        return;
    }
    const auto all = m_store.keptRequests().sections;
    const auto kept = std::ranges::find_if(all, [](const auto& each) { return hasForm(each.command); });
    if (kept == all.end())
        return;
    if (const auto* capital = std::get_if<CapitalCommand>(&kept->command))
        open<CapitalActionForm>(*capital, kept->outcomeUnknown);
    else
        open<DividendActionForm>(std::get<DividendCommand>(kept->command), kept->outcomeUnknown);
}

template <class Form, class... Opening>
void CapitalPageActions::open(const Opening&... opening)
{
    auto* form = new Form(m_store, opening..., m_page.window());
    // The page goes with the session and with the company; a form that outlives it finds the one of now.
    form->whenDone([&store = m_store, window = QPointer{m_page.window()}](const RecordOutcome& outcome) {
        if (auto* const page = window ? window->findChild<CapitalPageActions*>() : nullptr)
            page->finish(outcome);
        else if (window)
            handOn(store, outcome, *window);
    });
    form->open();
}

void CapitalPageActions::finish(const RecordOutcome& outcome)
{
    Q_EMIT done(text("done"));
    if (!outcome.currency.empty())
        Q_EMIT recordedIn(QString::fromStdString(outcome.currency));
    if (outcome.failed.empty())
        return;
    if (outcome.entryID.empty()) {
        Q_EMIT done(
            word(receiptWords(), "outcome", {std::to_string(outcome.uploaded), std::to_string(outcome.failed.size())}));
        return;
    }
    connect(handOn(m_store, outcome, *m_page.window()), &AddReceiptsDialog::added, this,
            [this] { Q_EMIT done(word(receiptWords(), "add.done")); });
}

Action CapitalPageActions::act(const char* id, const QString& whyNot, bool isOffered, std::function<void()> run) const
{
    return {.id = QString::fromLatin1(id),
            .text = text(std::string{"action."} + id),
            .whyNot = m_store.isBusy() ? text("busy") : whyNot,
            .isOffered = isOffered,
            .run = std::move(run)};
}

std::vector<Action> CapitalPageActions::capitalActions(const CapitalFocus& focus)
{
    namespace Wanted = CapitalAction;
    const auto snapshot = m_store.snapshot();
    const bool hasCapital = CapitalSections::capital(*snapshot) != nullptr;
    const auto offer = [&](const char* id, std::string_view action, bool isOffered) {
        return act(id, CapitalActions::whyNot(action, *snapshot, InterfaceLanguage::tag()), hasCapital && isOffered,
                   [this, action, currency = focus.currency] {
                       open<CapitalActionForm>(CapitalRoute{.action = std::string{action}, .currency = currency});
                   });
    };
    const bool isOverview = focus.tab == CapitalModuleTab::overview;
    const auto contribution = focus.contributionID;
    const auto detail = ContributionLists::detail(*snapshot, contribution, m_store.today(), InterfaceLanguage::tag());
    return {offer("contribute", Wanted::contribute, focus.tab != CapitalModuleTab::dividends),
            offer("owners", Wanted::setParticipant, isOverview),
            offer("ownership", Wanted::setOwnership, isOverview),
            offer("history", Wanted::setBaseline, true),
            offer("supersede", Wanted::setBaseline, true),
            act("reverseContribution", detail ? detail->whyNotReverse : QString{}, detail.has_value(),
                [this, contribution] {
                    open<CapitalActionForm>(
                        CapitalRoute{.action = std::string{Wanted::reverse}, .contributionID = contribution});
                })};
}

std::vector<Action> CapitalPageActions::dividendActions(const CapitalFocus& focus)
{
    namespace Wanted = DividendAction;
    const auto snapshot = m_store.snapshot();
    const bool isOffered = focus.tab == CapitalModuleTab::dividends && CapitalSections::dividends(*snapshot);
    const auto offer = [&](const char* id, std::string_view action) {
        return act(id, DividendActions::whyNot(action, *snapshot, InterfaceLanguage::tag()), isOffered,
                   [this, action, currency = focus.currency] {
                       open<DividendActionForm>(DividendRoute{.action = std::string{action}, .currency = currency});
                   });
    };
    auto advance = offer("payAdvance", Wanted::advance);
    advance.glyph = QStringLiteral("cash-coin");
    auto participants = offer("participants", Wanted::setParticipant);
    participants.glyph = QStringLiteral("people");
    return {offer("allocate", Wanted::allocate), std::move(advance), std::move(participants)};
}

/// What can be done with the chosen allocation, participant, advance and movement.
std::vector<Action> CapitalPageActions::chosenActions(const CapitalFocus& focus)
{
    namespace Wanted = DividendAction;
    const auto snapshot = m_store.snapshot();
    const bool isAdvances = focus.choice.batchID == DividendBoards::advances;
    const bool hasBatch = !isAdvances && !focus.choice.batchID.empty();
    const DividendActions::Target line{.batchID = focus.choice.batchID, .participantID = focus.choice.participantID};
    const DividendActions::Target advance{.advanceID = focus.choice.advanceID};
    const DividendActions::Target movement{.movementID = focus.movementID};
    const auto offer = [&](const char* id, std::string_view action, const DividendActions::Target& target,
                           bool isOffered) {
        return act(id,
                   isOffered
                       ? DividendActions::whyNot(action, target, *snapshot, m_store.today(), InterfaceLanguage::tag())
                       : QString{},
                   isOffered, [this, action, target, currency = focus.currency] {
                       open<DividendActionForm>(DividendRoute{.action = std::string{action},
                                                              .participantID = target.participantID,
                                                              .batchID = target.batchID,
                                                              .advanceID = target.advanceID,
                                                              .movementID = target.movementID,
                                                              .currency = currency});
                   });
    };
    const auto& entry = focus.movementEntry;
    return {offer("cancelBatch", Wanted::cancelBatch, {.batchID = focus.choice.batchID}, hasBatch),
            offer("pay", Wanted::pay, line, hasBatch),
            offer("applyAdvance", Wanted::apply, line, hasBatch),
            offer("returnAdvance", Wanted::returnAdvance, advance, isAdvances && !focus.choice.advanceID.empty()),
            offer("reverseMovement", Wanted::reverse, movement, !movement.movementID.empty()),
            act("openMovement", entry ? QString{} : text(entry.error()), !movement.movementID.empty(),
                [this, entry] { Q_EMIT entryWanted(QString::fromStdString(entry.value_or(""))); })};
}

/// Each section from its own tab, and the first of them that may be exported from the overview.
std::vector<Action> CapitalPageActions::exportActions(const CapitalFocus& focus)
{
    const bool mayCapital = m_store.canExportCapital();
    const bool isCapital =
        focus.tab == CapitalModuleTab::contributions || (focus.tab == CapitalModuleTab::overview && mayCapital);
    auto capital = act("exportCapital", {}, isCapital && mayCapital, [this] { m_export->saveCapital(); });
    auto dividends =
        act("exportDividends", {}, !isCapital && MemberRights::canExportDividends(m_store.snapshot()->currentMember),
            [this] { m_export->saveDividends(); });
    dividends.hint = word(capitalWords(), "action.exportDividends.hint");
    for (auto* each : {&capital, &dividends}) {
        each->glyph = QStringLiteral("box-arrow-up");
        if (each->isOffered) // two actions must not share their keys
            each->keys = KeyBindings::keys(Command::exportRows);
    }
    return {std::move(capital), std::move(dividends)};
}
