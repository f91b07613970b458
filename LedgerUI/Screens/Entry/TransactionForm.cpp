#include "LedgerUI/Screens/Entry/TransactionForm.h"

#include <QCoro/QCoroTask>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/EntryDrafts.h"
#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Entries/EntryWords.h"
#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerCore/Domain/Templates/TemplateSchedule.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Period/DayField.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Entry/BegunEntry.h"
#include "LedgerUI/Presentation/Entry/EntryEdits.h"
#include "LedgerUI/Presentation/Keys/KeyBindings.h"
#include "LedgerUI/Presentation/Templates/TemplateDrafts.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Entry/BegunEntryOffer.h"
#include "LedgerUI/Screens/Entry/CategoryCommands.h"
#include "LedgerUI/Screens/Entry/EntryFormBody.h"
#include "LedgerUI/Screens/Receipts/AddReceiptsDialog.h"
#include "LedgerUI/Screens/Receipts/DraftReceipts.h"
#include "LedgerUI/Screens/Receipts/ReceiptsPane.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int formWidth = 528;
constexpr int receiptsWidth = 332;

}

TransactionForm::TransactionForm(LedgerStore& store, const EntryForm::Opening& opening, QWidget* parent)
    : TransactionForm{store, EntrySubmission{EntryEdits::opened(opening, *store.snapshot(), store.newIdentifier())},
                      parent}
{
    if (opening.prefilled)
        store.drafts().takeOver(opening.prefilled->idempotencyKey);
    m_isFresh = !opening.prefilled;
}

TransactionForm::TransactionForm(LedgerStore& store, const KeptEntry& kept, QWidget* parent)
    : TransactionForm{store, EntryEdits::restored(kept, *store.snapshot(), InterfaceLanguage::tag()), parent}
{
}

TransactionForm::TransactionForm(LedgerStore& store, EntrySubmission submission, QWidget* parent)
    : CommandForm{store, parent}, m_entry{snapshot(), std::move(submission)}
{
    setObjectName(QStringLiteral("transactionForm"));
    build();
    bind();
    bindDraft();
    offer();
    present();
}

void TransactionForm::buildBody()
{
    auto* whole = new QWidget;
    m_templateRow = new QWidget(whole);
    m_template = new QPushButton(m_templateRow);
    m_template->setObjectName(QStringLiteral("entryKeepTemplate"));
    m_template->setProperty("kind", QStringLiteral("link"));
    m_template->setAutoDefault(false);
    auto* foot = new QHBoxLayout(m_templateRow);
    foot->setContentsMargins(Space::dialogMargin, 0, Space::dialogMargin, Space::step2);
    foot->addWidget(m_template);
    foot->addStretch(1);
    m_behind = new TextLabel(TypeStep::small, Token::text2, m_templateRow);
    m_behind->setObjectName(QStringLiteral("entryDraftBehind"));
    foot->addWidget(m_behind);
    m_templateRow->hide();
    auto* rows = new QVBoxLayout(whole);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    m_begun = new BegunEntryOffer(store().drafts(), whole);
    rows->addWidget(m_begun);
    rows->addWidget(m_body, 1);
    rows->addWidget(m_templateRow);
    setBody(whole, formWidth);
}

/// What another start of the program has left is offered before it is typed a second time.
void TransactionForm::offerBegun()
{
    if (!m_isFresh)
        return;
    m_offersBegun = true;
    connect(m_begun, &BegunEntryOffer::continued, this, [this](const EntryDraft& begun) {
        auto draft = BegunEntry::continued(begun, locale());
        leave();
        Q_EMIT continueWanted({.kind = draft.kind, .accountID = {}, .prefilled = std::move(draft)});
    });
    connect(m_begun, &BegunEntryOffer::gone, this, [this] { firstField().setFocus(Qt::OtherFocusReason); });
    connect(&store().drafts(), &EntryDrafts::changed, this, &TransactionForm::presentBegun);
    presentBegun();
}

void TransactionForm::presentBegun()
{
    const bool isOffered = m_offersBegun && snapshot() && m_entry.submission().isEditing() && !m_hasGoneOn &&
                           !hasChanges() && !isElsewhere();
    m_begun->present(isOffered ? snapshot().get() : nullptr, locale());
}

void TransactionForm::offerTemplate()
{
    m_offersTemplate = true;
    connect(m_template, &QPushButton::clicked, this, [this] {
        m_body->settleAmounts();
        Q_EMIT templateWanted(m_entry.draft());
    });
    present();
}

void TransactionForm::build()
{
    m_body = new EntryFormBody;
    m_day = new DayField;
    buildBody();
    m_categories = new CategoryCommands(store(), *m_body, *this);
    m_receipts = new DraftReceipts(store(), 0, *this);
    m_receipts->uploads().adopt(m_entry.draft().attachments);
    setAside(&m_receipts->pane(), receiptsWidth);
    setFootPart(m_day);
    m_another = new QPushButton(this);
    m_another->setObjectName(QStringLiteral("entrySaveAndNew"));
    setSecondary(m_another, Command::confirmAndNew);
    confirmButton().setObjectName(QStringLiteral("entrySave"));
    cancelButton().setObjectName(QStringLiteral("entryCancel"));
}

void TransactionForm::edit(const EntryChange& change)
{
    if (!m_entry.submission().isEditing())
        return;
    if (m_entry.edit(change(m_entry.submission().form(), *snapshot())))
        offer();
    keepDraft();
    present();
}

/// As it is typed: neither Cancel nor the end of a session may take more away than what was never entered.
void TransactionForm::keepDraft()
{
    if (!m_entry.submission().isEditing() || !m_entry.hasDraft() || isElsewhere())
        return;
    store().drafts().keep(m_entry.draft(), locale());
    // An entry that was not tried and is changed now is kept once: as the draft that it has become.
    store().forgetEntry(m_entry.draft().idempotencyKey);
}

/// Another window goes on under the key, which only what was sent must keep.
void TransactionForm::takeAnotherKey(const std::string& key)
{
    if (!m_entry.submission().isEditing() || m_entry.draft().idempotencyKey != key || TemplateOccurrence::ofKey(key))
        return;
    m_entry.rekey(store().newIdentifier());
    keepDraft();
}

void TransactionForm::bind()
{
    connect(&store().drafts(), &EntryDrafts::takenOver, this, &TransactionForm::takeAnotherKey);
    connect(&store().drafts(), &EntryDrafts::isBehindChanged, this, &TransactionForm::present);
    const auto submits = [this](bool goesOn) {
        return [this, goesOn] {
            m_goesOn = goesOn;
            submit();
        };
    };
    connect(this, &FormDialog::confirmed, this, submits(false));
    connect(m_another, &QPushButton::clicked, this, submits(true));
    connect(this, &FormDialog::givenUp, this, &TransactionForm::forget);
    connect(m_receipts, &DraftReceipts::arrived, this, &TransactionForm::submit);
}

/// What changes the draft, and how.
void TransactionForm::bindDraft()
{
    connect(m_body, &EntryFormBody::edited, this, [this](const EntryChange& change) {
        m_receipts->callOff();
        edit(change);
    });
    connect(m_day, &DayField::dayChosen, this, [this](const std::string& day) {
        edit([&](const auto& now, const auto&) {
            return EntryEdits::withDay(now, day == store().today() ? std::string{} : day);
        });
    });
    connect(m_categories, &CategoryCommands::saved, this, [this](const std::string& id) {
        edit([&](const auto& now, const auto&) { return EntryEdits::withCategory(now, id); });
    });
    connect(m_receipts, &DraftReceipts::changed, this, [this] {
        edit([this](const auto& now, const auto&) {
            return EntryEdits::withReceipts(now, m_receipts->uploads().attachmentIDs());
        });
    });
}

void TransactionForm::offer()
{
    m_categories->setKind(m_entry.draft().kind);
    m_body->offer(snapshot(), m_entry.draft());
}

void TransactionForm::present()
{
    const auto shown = m_entry.content(store().today(), locale());
    setWindowTitle(shown.title);
    m_another->setText(shown.another);
    m_another->setVisible(!shown.another.isEmpty());
    const auto& draft = m_entry.draft();
    const bool isEditing = shown.stage == SubmissionStage::editing;
    m_template->setText(word(templateWords(), "keep"));
    const bool offersTemplate = m_offersTemplate && TemplateDrafts::recurs(draft.kind);
    m_behind->setText(word(entryFormWords(), "begun.behind"));
    m_behind->setVisible(store().drafts().isBehind());
    m_template->setVisible(offersTemplate);
    m_templateRow->setVisible(offersTemplate || store().drafts().isBehind());
    presentBegun();
    m_template->setEnabled(isEditing && TemplateDrafts::entryOf(draft, locale()).has_value());
    m_receipts->pane().setLocked(!isEditing);
    m_body->present(shown, draft.originalIncomeID);
    m_day->present(shown.day);
    presentStanding({.stage = shown.stage,
                     .refusal = m_entry.submission().refusal(),
                     .note = noteOn(shown),
                     .confirm = shown.confirm,
                     .draftWords = &EntryWords::words(),
                     .uncertainWords = &EntryWords::words(),
                     .hasChanges = hasChanges()});
}

bool TransactionForm::hasChanges() const
{
    return m_entry.hasDraft() || m_receipts->uploads().all().size() > m_entry.draft().attachments.size();
}

/// What the banner says beside what the sending itself has to say.
CommandForm::Note TransactionForm::noteOn(const EntryFormContent& shown) const
{
    const auto& submission = m_entry.submission();
    const auto& refusal = submission.refusal();
    const auto* const refused = refusal ? std::get_if<APIError>(&*refusal) : nullptr;
    const auto& sent = submission.command();
    if (refused && sent && refused->code == ServiceCode::idempotencyConflict &&
        TemplateOccurrence::ofKey(sent->idempotencyKey))
        return {.text = word(templateWords(), "recorded")};
    const bool isEditing = submission.isEditing();
    if (m_receipts->isAwaited() && isEditing)
        return {.text = word(receiptWords(), "wait")};
    if (shown.receiptsMessage.isEmpty() && m_hasGoneOn && isEditing && !hasChanges())
        return {.kind = Banner::Kind::success, .text = word(entryFormWords(), "savedNext")};
    return {.kind = Banner::Kind::error, .text = shown.receiptsMessage};
}

void TransactionForm::submit()
{
    if (const auto* input = commandToSend(m_entry.submission(), [this] { return checked(); }))
        send(*input);
}

std::optional<TransactionInput> TransactionForm::checked()
{
    m_body->settleAmounts();
    auto input = m_entry.checked(store().today(), locale(), store().newIdentifier());
    present();
    if (auto* wrong = m_day->isWrong() ? m_day->control() : m_body->firstWrong()) {
        wrong->setFocus(Qt::OtherFocusReason);
        return {};
    }
    if (!input || !m_receipts->await())
        return input;
    present();
    return {};
}

void TransactionForm::send(const TransactionInput& input)
{
    // What may be recorded by now must not be begun again as a draft: it is kept as what was sent.
    store().drafts().keepSending(m_entry.draft(), locale(), input);
    if (m_entry.draft().idempotencyKey != input.idempotencyKey)
        store().forgetEntry(m_entry.draft().idempotencyKey); // this one takes its place
    m_entry.rekey(input.idempotencyKey);
    present();
    QCoro::connect(store().postTransaction(input, false), this,
                   [this](const Result<std::string>& reply) { finish(reply); });
}

void TransactionForm::finish(const Result<std::string>& reply)
{
    auto& submission = m_entry.submission();
    // With the session the form closes; the store keeps what it had sent.
    if (!submission.isSaving() || !store().snapshot())
        return;
    const auto sent = submission.sent();
    if (!reply)
        return refuse(reply.error());
    submission.succeed();
    store().drafts().settle(sent.idempotencyKey);
    Q_EMIT recorded(qString(*reply));
    const auto failed = m_receipts->uploads().failed();
    if (m_goesOn && failed.empty())
        return goOn();
    leave();
    if (!failed.empty() && !reply->empty())
        (new AddReceiptsDialog(store(), {.entryID = *reply, .failed = failed, .uploaded = sent.attachmentIDs.size()},
                               parentWidget()))
            ->open();
}

void TransactionForm::refuse(const Failure& failure)
{
    m_entry.submission().fail(failure);
    keepDraft();
    present();
    (m_entry.submission().isUncertain() ? &confirmButton() : m_body->control(EntryField::amount))
        ->setFocus(Qt::OtherFocusReason);
}

void TransactionForm::goOn()
{
    takeSnapshot();
    m_entry.goOn(snapshot(), store().newIdentifier());
    m_hasGoneOn = true;
    m_receipts->uploads().startOver();
    offer();
    presentAnew();
}

void TransactionForm::adoptSnapshot()
{
    // While a reply is awaited the snapshot that comes with it may already hold the entry.
    if (m_entry.submission().isSaving())
        return;
    takeSnapshot();
    m_entry.adopt(snapshot());
    offer();
    present();
}

QWidget& TransactionForm::firstField() const
{
    if (m_entry.submission().isUncertain())
        return confirmButton();
    return *m_body->control(EntryForm::nextField(m_entry.draft()));
}

/// A person who was warned gives an entry up; it is not offered again.
void TransactionForm::forget()
{
    store().drafts().hasten(); // before anything ends the session
    const auto& sent = m_entry.submission().command();
    if (!sent)
        return;
    store().forgetEntry(sent->idempotencyKey);
    const auto begun = store().drafts().own(); // refused, and changed since: that is a draft like any other
    if (!begun || begun->entry.idempotencyKey != sent->idempotencyKey)
        store().drafts().discard(sent->idempotencyKey);
}

void TransactionForm::adoptLanguage(const std::string& before)
{
    m_entry.adoptLanguage(before, locale());
    offer();
    present();
}
