#include "LedgerUI/Screens/Entry/TransactionForm.h"

#include <algorithm>
#include <array>

#include <QCoro/QCoroTask>
#include <QHBoxLayout>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Entries/EntryWords.h"
#include "LedgerCore/Domain/Records/ServiceCode.h"
#include "LedgerCore/Domain/Templates/TemplateSchedule.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Categories/CategoryForm.h"
#include "LedgerUI/Presentation/Entry/EntryEdits.h"
#include "LedgerUI/Presentation/Entry/EntryFormWords.h"
#include "LedgerUI/Presentation/Receipts/ReceiptWords.h"
#include "LedgerUI/Presentation/Templates/TemplateDrafts.h"
#include "LedgerUI/Presentation/Templates/TemplateWords.h"
#include "LedgerUI/Presentation/Text/KeyBindings.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Screens/Categories/CategoryDialog.h"
#include "LedgerUI/Screens/Entry/EntryDayField.h"
#include "LedgerUI/Screens/Entry/EntryDrafts.h"
#include "LedgerUI/Screens/Entry/EntryFormBody.h"
#include "LedgerUI/Screens/Receipts/ReceiptInput.h"
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
}

TransactionForm::TransactionForm(LedgerStore& store, const KeptEntry& kept, QWidget* parent)
    : TransactionForm{store, EntryEdits::restored(kept, *store.snapshot(), InterfaceLanguage::tag()), parent}
{
}

TransactionForm::TransactionForm(LedgerStore& store, EntrySubmission submission, QWidget* parent)
    : CommandForm{store, parent}, m_books{*snapshot()}, m_history{snapshot()}, m_submission{std::move(submission)}
{
    // What was sent once is a draft from the start: leaving it asks.
    if (!m_submission.command())
        m_initial = m_submission.form().draft;
    setObjectName(QStringLiteral("transactionForm"));
    m_body = new EntryFormBody;
    m_day = new EntryDayField;
    buildBody();
    bindReceipts();
    setFootPart(m_day);
    m_another = new QPushButton(this);
    m_another->setObjectName(QStringLiteral("entrySaveAndNew"));
    m_another->setToolTip(KeyBindings::shown(Command::confirmAndNew));
    setSecondary(m_another);
    confirmButton().setObjectName(QStringLiteral("entrySave"));
    cancelButton().setObjectName(QStringLiteral("entryCancel"));
    bind();
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
    m_templateRow->hide();
    auto* rows = new QVBoxLayout(whole);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(m_body, 1);
    rows->addWidget(m_templateRow);
    setBody(whole, formWidth);
}

void TransactionForm::offerTemplate()
{
    m_offersTemplate = true;
    connect(m_template, &QPushButton::clicked, this, [this] {
        m_body->settleAmounts();
        Q_EMIT templateWanted(m_submission.form().draft);
    });
    present();
}

bool TransactionForm::supports(std::string_view kind)
{
    static constexpr std::array kinds{EntryKind::expense,  EntryKind::income, EntryKind::transfer,
                                      EntryKind::exchange, EntryKind::refund, EntryKind::opening};
    return std::ranges::find(kinds, kind) != kinds.end();
}

void TransactionForm::bindReceipts()
{
    m_uploads = new ReceiptUploads(store(), 0, this);
    m_uploads->adopt(m_submission.form().draft.attachments);
    m_receipts = new ReceiptsPane(*m_uploads);
    setAside(m_receipts, receiptsWidth);
    auto* input = new ReceiptInput(*this);
    connect(input, &ReceiptInput::given, m_receipts, &ReceiptsPane::addFiles);
    connect(m_uploads, &ReceiptUploads::changed, this, &TransactionForm::adoptReceipts);
    connect(m_uploads, &ReceiptUploads::rested, this, [this] {
        if (std::exchange(m_savesOnceUploaded, false))
            submit();
    });
}

/// The draft takes the receipts that are uploaded.
void TransactionForm::adoptReceipts()
{
    edit([this](EntryEditing now) {
        now.draft.attachments = m_uploads->attachmentIDs();
        std::erase_if(now.problems, [](const EntryProblem& each) { return each.field == EntryField::receipts; });
        return now;
    });
}

void TransactionForm::edit(auto change)
{
    if (!m_submission.isEditing())
        return;
    const auto before = m_submission.form().draft;
    m_submission.edit(change(m_submission.form()));
    const auto& after = m_submission.form().draft;
    if (after.kind != before.kind || after.currency != before.currency)
        offer();
    keepDraft();
    present();
}

/// As it is typed: neither Cancel nor the end of a session may take more away than what was never entered.
void TransactionForm::keepDraft()
{
    if (m_submission.isEditing() && EntryForm::hasDraft(m_submission.form().draft, m_initial))
        EntryDrafts::of(store()).keep(m_submission.form().draft, locale());
}

template <class... Values>
void TransactionForm::connectEdit(void (EntryFormBody::*edited)(Values...), auto change)
{
    connect(m_body, edited, this, [this, change](Values... values) {
        m_savesOnceUploaded = false; // who goes on writing is not done yet
        edit([&](const EntryEditing& now) { return change(now, values...); });
    });
}

void TransactionForm::bind()
{
    using namespace EntryEdits;
    using Body = EntryFormBody;
    const auto withSnapshot = [this](auto change) {
        return [this, change](const EntryEditing& now, const std::string& value) {
            return change(now, value, *snapshot());
        };
    };
    const auto withText = [](auto change) {
        return [change](const EntryEditing& now, const QString& text) { return change(now, text.toStdString()); };
    };
    connectEdit(&Body::kindChosen, withSnapshot(&withKind));
    connectEdit(&Body::accountChosen, withSnapshot(&withAccount));
    connectEdit(&Body::currencyChosen, withSnapshot(&withCurrency));
    connectEdit(&Body::destinationChosen, withSnapshot(&withDestination));
    connectEdit(&Body::targetCurrencyChosen, &withTargetCurrency);
    connectEdit(&Body::amountEdited, withText(&withAmount));
    connectEdit(&Body::targetAmountEdited, withText(&withTargetAmount));
    connectEdit(&Body::amountLeft,
                [this](const EntryEditing& now, EntryField amount) { return leftAmount(now, amount, locale()); });
    connectEdit(&Body::pasteRefused, &refusedPaste);
    connectEdit(&Body::categoryChosen, &withCategory);
    connectEdit(&Body::originalChosen, &withOriginal);
    connectEdit(&Body::referenceEdited, withText(&withReference));
    connectEdit(&Body::noteEdited, withText(&withNote));
    connect(m_day, &EntryDayField::dayChosen, this, [this](const std::string& day) {
        edit([&](const EntryEditing& now) { return withDay(now, day == store().today() ? std::string{} : day); });
    });
    connect(this, &FormDialog::confirmed, this, [this] {
        m_goesOn = false;
        submit();
    });
    connect(m_another, &QPushButton::clicked, this, [this] {
        if (m_another->isHidden())
            return;
        m_goesOn = true;
        submit();
    });
    for (const auto& keys : KeyBindings::keys(Command::confirmAndNew))
        connect(new QShortcut(keys, this), &QShortcut::activated, m_another, &QPushButton::click);
    connect(m_body, &EntryFormBody::categoryPinWanted, this, &TransactionForm::pin);
    connect(m_body, &EntryFormBody::categoryEditWanted, this, [this](const std::string& id) {
        const auto found = std::ranges::find(snapshot()->categories, id, &Category::id);
        if (found != snapshot()->categories.end())
            openCategory(CategoryForm::of(*found));
    });
    connect(m_body, &EntryFormBody::categoryCreationWanted, this, [this](const QString& name) {
        auto form = CategoryForm::fresh(m_submission.form().draft.kind);
        if (!name.isEmpty())
            form.names[locale()] = name.toStdString();
        openCategory(form);
    });
    connect(this, &FormDialog::givenUp, this, &TransactionForm::forget);
}

void TransactionForm::pin(const std::string& categoryID, bool isPinned)
{
    // An operation that runs is over in a moment; a refusal of this one says so itself.
    if (!store().isBusy())
        QCoro::connect(store().setCategorySelected(categoryID, isPinned), this, [](const Result<void>&) {});
}

void TransactionForm::openCategory(const CategoryForm& form)
{
    auto* dialog = new CategoryDialog(store(), form, this);
    connect(dialog, &CategoryDialog::saved, this, [this](const std::string& id) {
        edit([&](const EntryEditing& now) { return EntryEdits::withCategory(now, id); });
    });
    dialog->open();
}

void TransactionForm::offer()
{
    m_body->offer(snapshot(), m_submission.form().draft);
}

EntryFormContent TransactionForm::content() const
{
    return EntryForm::content(m_submission, *snapshot(), store().today(), locale(), &m_history);
}

void TransactionForm::present()
{
    const auto shown = content();
    const auto& draft = m_submission.form().draft;
    m_another->setText(shown.another);
    m_another->setVisible(!shown.another.isEmpty());
    m_template->setText(word(templateWords(), "keep"));
    m_templateRow->setVisible(m_offersTemplate && TemplateDrafts::recurs(draft.kind));
    m_template->setEnabled(m_submission.isEditing() && TemplateDrafts::entryOf(draft, locale()).has_value());
    m_receipts->setLocked(!m_submission.isEditing());
    setWindowTitle(shown.title);
    m_body->present(shown, draft.originalIncomeID);
    m_day->present(shown.day);
    presentStanding({.stage = shown.stage,
                     .refusal = m_submission.refusal(),
                     .note = noteOn(shown),
                     .confirm = shown.confirm,
                     .draftWords = &EntryWords::words(),
                     .hasChanges = hasChanges()});
}

bool TransactionForm::hasChanges() const
{
    const auto& draft = m_submission.form().draft;
    return EntryForm::hasDraft(draft, m_initial) || m_uploads->all().size() > draft.attachments.size();
}

/// What the banner says beside what the sending itself has to say.
CommandForm::Note TransactionForm::noteOn(const EntryFormContent& shown) const
{
    const auto* const refused = m_submission.refusal() ? std::get_if<APIError>(&*m_submission.refusal()) : nullptr;
    if (refused && refused->code == ServiceCode::idempotencyConflict &&
        TemplateOccurrence::ofKey(m_submission.command()->idempotencyKey))
        return {.text = word(templateWords(), "recorded")};
    if (m_savesOnceUploaded && m_submission.isEditing())
        return {.text = word(receiptWords(), "wait")};
    if (shown.receiptsMessage.isEmpty() && m_hasGoneOn && m_submission.isEditing() && !hasChanges())
        return {.kind = Banner::Kind::success, .text = word(entryFormWords(), "savedNext")};
    return {.kind = Banner::Kind::error, .text = shown.receiptsMessage};
}

void TransactionForm::submit()
{
    if (m_submission.isUncertain()) {
        m_submission.sendAgain();
        send();
        return;
    }
    if (!m_submission.isEditing())
        return;
    m_body->settleAmounts();
    auto input = EntryForm::command(m_submission, m_books, store().today(), locale(), store().newIdentifier());
    auto judged = m_submission.form();
    judged.problems = input ? std::vector<EntryProblem>{} : std::move(input.error());
    m_submission.edit(std::move(judged));
    present();
    const auto shown = content();
    auto* const wrong = shown.day.message.isEmpty() ? m_body->firstWrong(shown) : m_day->control();
    if (!wrong && input && m_uploads->isBusy()) {
        m_savesOnceUploaded = true;
        present();
    } else if (!wrong && input) {
        m_submission.send(std::move(*input));
        send();
    } else if (wrong) {
        wrong->setFocus(Qt::OtherFocusReason);
    }
}

void TransactionForm::send()
{
    const auto input = *m_submission.command();
    // What may be recorded by now must not be begun again as a draft: the store keeps the command itself.
    EntryDrafts::of(store()).forget();
    present();
    QCoro::connect(store().postTransaction(input, false), this,
                   [this](const Result<std::string>& reply) { finish(reply); });
}

void TransactionForm::finish(const Result<std::string>& reply)
{
    // With the session the form closes; the store keeps what it had sent.
    if (!m_submission.isSaving() || !store().snapshot())
        return;
    if (reply) {
        m_submission.succeed();
        Q_EMIT recorded(qString(*reply));
        const auto failed = m_uploads->failed();
        if (m_goesOn && failed.empty()) {
            goOn();
            return;
        }
        leave();
        if (!failed.empty() && !reply->empty())
            Q_EMIT receiptsLeft(qString(*reply), m_submission.command()->attachmentIDs.size(), failed);
        return;
    }
    m_submission.fail(reply.error());
    keepDraft();
    present();
    (m_submission.isUncertain() ? &confirmButton() : m_body->control(EntryField::amount))
        ->setFocus(Qt::OtherFocusReason);
}

void TransactionForm::goOn()
{
    takeSnapshot();
    m_books = VisibleBooks{*snapshot()};
    m_history = EntryHistory{snapshot()};
    m_submission = EntrySubmission{EntryEdits::following(m_submission.form(), *snapshot(), store().newIdentifier())};
    m_initial = m_submission.form().draft;
    m_goesOn = false;
    m_hasGoneOn = true;
    m_uploads->startOver();
    offer();
    present();
    firstField().setFocus(Qt::OtherFocusReason);
}

void TransactionForm::adoptSnapshot()
{
    // While a reply is awaited the snapshot that comes with it may already hold the entry.
    if (m_submission.isSaving())
        return;
    takeSnapshot();
    m_books = VisibleBooks{*snapshot()};
    m_history = EntryHistory{snapshot()};
    if (m_submission.isEditing())
        m_submission.adopt(EntryEdits::refreshed(m_submission.form(), *snapshot()));
    offer();
    present();
}

QWidget& TransactionForm::firstField() const
{
    if (m_submission.isUncertain())
        return confirmButton();
    return *m_body->control(EntryForm::nextField(m_submission.form().draft));
}

/// A person who was warned gives an entry up; it is not offered again.
void TransactionForm::forget()
{
    if (m_submission.command())
        store().forgetEntry(m_submission.command()->idempotencyKey);
}

void TransactionForm::adoptLanguage(const std::string& before)
{
    auto rewritten = m_submission.form();
    for (auto* amount : {&rewritten.draft.amount, &rewritten.draft.targetAmount})
        *amount = EntryForm::rewritten(*amount, before, locale());
    m_submission.adopt(std::move(rewritten));
    offer();
    present();
}
