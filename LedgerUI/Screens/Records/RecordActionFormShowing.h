#pragma once

#include <QCoro/QCoroTask>
#include <QPushButton>

#include "LedgerCore/Domain/Entries/EntryWords.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Records/RecordDraft.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Records/RecordActionForm.h"
#include "LedgerUI/Screens/Records/RecordFormBody.h"
#include "LedgerUI/Screens/Records/RecordReceipts.h"

// How a form over a section of the books opens, and what it shows.

template <class Section>
RecordActionForm<Section>::RecordActionForm(LedgerStore& store, const typename Section::Route& route, QWidget* parent)
    : RecordActionForm{
          store, Sending{Section::opened(route, *store.snapshot(), store.today(), InterfaceLanguage::tag())}, parent}
{
}

template <class Section>
RecordActionForm<Section>::RecordActionForm(LedgerStore& store, const Command& kept, bool outcomeUnknown,
                                            QWidget* parent)
    : RecordActionForm{store, restored(store, kept, outcomeUnknown), parent}
{
    m_keptKey = kept.idempotencyKey;
    if (outcomeUnknown)
        return;
    m_initial = Section::opened(form().route, *store.snapshot(), store.today(), locale());
    RecordActionForm::present();
}

template <class Section>
typename RecordActionForm<Section>::Sending RecordActionForm<Section>::restored(LedgerStore& store, const Command& kept,
                                                                                bool outcomeUnknown)
{
    auto form = Section::restored(kept, *store.snapshot(), InterfaceLanguage::tag());
    return outcomeUnknown ? Sending::uncertain(std::move(form), kept) : Sending{std::move(form)};
}

template <class Section>
RecordActionForm<Section>::RecordActionForm(LedgerStore& store, Sending submission, QWidget* parent)
    : CommandForm{store, parent}, m_initial{submission.form()}, m_submission{std::move(submission)}
{
    const auto& route = m_initial.route;
    setObjectName(QStringLiteral("recordForm"));
    confirmButton().setObjectName(QStringLiteral("recordConfirm"));
    cancelButton().setObjectName(QStringLiteral("recordCancel"));
    m_body = new RecordFormBody;
    m_foot = new TextLabel(TypeStep::small, Token::text2);
    m_foot->setWordWrap(true);
    m_reload = new QPushButton(&banner());
    m_reload->setObjectName(QStringLiteral("recordReload"));
    banner().addAction(m_reload);
    setFootPart(m_foot);
    const bool takesReceipts = Section::takesReceipts(route);
    setBody(m_body, takesReceipts ? besideReceipts : Section::hasTable(route) ? tableWidth : plainWidth);
    if (takesReceipts)
        bindReceipts();
    connect(m_body, &RecordFormBody::edited, this, [this](const RecordEdit& edit) { take(edit); });
    connect(m_reload, &QPushButton::clicked, this, [this] { reload(); });
    connect(m_body, &RecordFormBody::amountLeft, this,
            [this](const std::string& personID) { judge(Section::leftAmount(form(), personID, locale())); });
    connect(m_body, &RecordFormBody::pasteRefused, this, [this](PasteRefusal refusal, const std::string& personID) {
        judge(Section::refusedPaste(form(), refusal, personID));
    });
    connect(this, &FormDialog::confirmed, this, [this] { submit(); });
    connect(this, &FormDialog::givenUp, this, [this] { this->store().forgetSectionCommand(m_keptKey); });
    // What waits as a form must not come back as a kept command beside it.
    connect(this, &CommandForm::wentAside, this, [this] {
        if (whose())
            this->store().forgetSectionCommand(*whose(), m_keptKey);
    });
    RecordActionForm::present();
}

template <class Section>
void RecordActionForm<Section>::adoptForm(Form form)
{
    m_submission.edit(std::move(form));
    present();
}

template <class Section>
void RecordActionForm<Section>::present()
{
    const auto content = this->content();
    const auto whyNot = this->whyNot();
    setWindowTitle(content.title);
    m_body->present(content);
    m_foot->setText(content.foot);
    m_reload->setText(content.reload);
    m_reload->setVisible(!content.reload.isEmpty() && whyNot.isEmpty() && !isElsewhere());
    const bool isEditing = m_submission.isEditing();
    const bool isTold = RecordDrafts::conflictIn(m_submission.refusal()); // by the content, with what can be done
    if (m_receipts)
        m_receipts->setLocked(!isEditing);
    presentStanding({.stage = m_submission.stage(),
                     .refusal = isTold ? std::nullopt : m_submission.refusal(),
                     .note = noteOf(content),
                     .confirm = content.confirm,
                     .draftWords = m_receipts ? &EntryWords::words() : nullptr, // they speak of the receipts
                     .hasChanges = content.hasChanges || (m_receipts && m_receipts->holdsMoreThan(form().receiptIDs)),
                     .whyNot = whyNot});
    if (!isEditing || !whyNot.isEmpty() || isElsewhere() || content.whyNotConfirm.isEmpty())
        return;
    confirmButton().setEnabled(false);
    confirmButton().setToolTip(content.whyNotConfirm);
}

template <class Section>
void RecordActionForm<Section>::adoptSnapshot()
{
    // While a reply is awaited the snapshot that comes with it may already hold what was sent.
    if (m_submission.isSaving())
        return;
    takeSnapshot();
    noteChanges();
    present();
}

template <class Section>
void RecordActionForm<Section>::adoptLanguage(const std::string& before)
{
    m_submission.adopt(Section::rewritten(form(), before, locale()));
    m_initial = Section::rewritten(m_initial, before, locale());
    present();
}

template <class Section>
QWidget& RecordActionForm<Section>::firstField() const
{
    auto* const first = m_submission.isEditing() ? m_body->firstStop() : nullptr;
    return first ? *first : static_cast<QWidget&>(confirmButton());
}

template <class Section>
RecordFormContent RecordActionForm<Section>::content() const
{
    return Section::content(m_submission, m_initial, *snapshot(), store().today(), locale());
}

template <class Section>
QString RecordActionForm<Section>::whyNot() const
{
    return m_submission.isEditing() ? Section::whyNot(form(), *snapshot(), locale()) : QString{};
}

template <class Section>
void RecordActionForm<Section>::bindReceipts()
{
    m_receipts = new RecordReceipts(store(), *this, form().receiptIDs);
    setAside(m_receipts->pane(), RecordReceipts::width);
    connect(m_receipts, &RecordReceipts::changed, this, [this] {
        auto now = form();
        now.receiptIDs = m_receipts->attachmentIDs();
        if (m_submission.isEditing() && now != form())
            m_submission.edit(std::move(now));
        present();
    });
    connect(m_receipts, &RecordReceipts::rested, this, [this] { submit(); });
}

template <class Section>
CommandForm::Note RecordActionForm<Section>::noteOf(const RecordFormContent& content) const
{
    if (m_receipts && m_receipts->isWaited() && m_submission.isEditing())
        return {Banner::Kind::info, word(receiptWords(), "wait")};
    if (!content.conflict.isEmpty())
        return {Banner::Kind::warn, content.conflict};
    if (content.problem.isEmpty())
        return {Banner::Kind::info, content.notice};
    return {Banner::Kind::error, content.problem};
}
