#pragma once

#include <QCoro/QCoroTask>

#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Presentation/Records/RecordDraft.h"
#include "LedgerUI/Screens/Records/RecordActionForm.h"
#include "LedgerUI/Screens/Records/RecordFormBody.h"
#include "LedgerUI/Screens/Records/RecordReceipts.h"

// What becomes of what a person types into a form over a section of the books: from the keys to the reply.

template <class Section>
void RecordActionForm<Section>::take(const RecordEdit& edit)
{
    if (!m_submission.isEditing())
        return;
    if (m_receipts)
        m_receipts->stopWaiting();
    adoptForm(Section::edited(form(), edit, *snapshot(), locale()));
}

template <class Section>
void RecordActionForm<Section>::judge(Form judged)
{
    if (!m_submission.isEditing() || judged == form())
        return;
    m_submission.adopt(std::move(judged));
    present();
}

template <class Section>
void RecordActionForm<Section>::noteChanges()
{
    if (!m_submission.isEditing() || Section::isCurrent(form(), *snapshot()))
        return;
    auto changed = form();
    changed.needsReload = true;
    m_submission.adopt(std::move(changed));
}

template <class Section>
void RecordActionForm<Section>::reload()
{
    if (!m_submission.isEditing() || isElsewhere())
        return;
    QCoro::connect(store().refresh(true), this, [this](const Result<void>& reply) {
        if (!store().snapshot() || !m_submission.isEditing() || isElsewhere())
            return;
        takeSnapshot();
        if (reply)
            m_submission.edit(Section::reloaded(form(), *snapshot(), store().today(), locale()));
        presentAnew();
    });
}

template <class Section>
void RecordActionForm<Section>::submit()
{
    if (const auto* command = commandToSend(m_submission, [this] { return checked(); }))
        send(*command);
}

template <class Section>
auto RecordActionForm<Section>::checked() -> std::optional<Command>
{
    if (!m_body->isWithinLimits())
        return {};
    takeSnapshot();
    noteChanges();
    if (form().needsReload) {
        present();
        return {};
    }
    auto made = Section::command(form(), *snapshot(), {store().today(), store().newIdentifier()}, locale());
    auto judged = form();
    judged.problems.clear();
    if (!made)
        judged.problems = std::move(made.error());
    m_submission.edit(std::move(judged));
    if (made && !(m_receipts && m_receipts->holdsBack()))
        return *std::move(made);
    present();
    auto* const wrong = made ? nullptr : m_body->firstWrong(content());
    if (wrong)
        wrong->setFocus(Qt::OtherFocusReason);
    return {};
}

template <class Section>
void RecordActionForm<Section>::send(const Command& command)
{
    if (m_keptKey != command.idempotencyKey)
        store().forgetSectionCommand(m_keptKey); // this one takes its place
    m_keptKey = command.idempotencyKey;
    present();
    QCoro::connect((store().*Section::submit)(command, false), this,
                   [this](const Result<void>& reply) { finish(reply); });
}

template <class Section>
void RecordActionForm<Section>::finish(const Result<void>& reply)
{
    // With the session the form closes, and what ended it is told elsewhere.
    if (!m_submission.isSaving() || !store().snapshot())
        return;
    if (reply) {
        m_submission.succeed();
        leave();
        if (m_done)
            m_done(outcome());
        return;
    }
    m_submission.fail(reply.error());
    if (!isElsewhere())
        takeSnapshot();
    if (RecordDrafts::conflictIn(m_submission.refusal()) && m_submission.isEditing()) {
        auto changed = form();
        changed.needsReload = true;
        m_submission.adopt(std::move(changed));
    }
    presentAnew();
}

template <class Section>
RecordOutcome RecordActionForm<Section>::outcome() const
{
    if (!m_receipts)
        return {.currency = form().currency};
    return {.currency = form().currency,
            .entryID = Section::bookedEntry(form(), *store().snapshot()),
            .uploaded = m_receipts->attachmentIDs().size(),
            .failed = m_receipts->failed()};
}
