#include "LedgerUI/Screens/Entry/TransactionForm.h"

#include <algorithm>
#include <array>

#include <QCoro/QCoroTask>
#include <QEvent>
#include <QPushButton>
#include <QStringList>

#include "LedgerCore/Client/LedgerStore.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Page/Banner.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Entry/EntryEdits.h"
#include "LedgerUI/Presentation/Entry/EntryFormContent.h"
#include "LedgerUI/Presentation/Entry/EntryFormWords.h"
#include "LedgerUI/Presentation/Text/DialogWords.h"
#include "LedgerUI/Screens/Entry/EntryDayNote.h"
#include "LedgerUI/Screens/Entry/EntryFormBody.h"
#include "LedgerUI/Theme/Icon.h"

namespace {

constexpr int formWidth = 560;

}

TransactionForm::TransactionForm(LedgerStore& store, const EntryForm::Opening& opening, QWidget* parent)
    : FormDialog{parent}, m_store{store}, m_snapshot{store.snapshot()}, m_locale{InterfaceLanguage::tag()}
{
    setObjectName(QStringLiteral("transactionForm"));
    setAttribute(Qt::WA_DeleteOnClose);
    const auto editing = EntryEdits::opened(opening, *m_snapshot, m_store.newIdentifier(), m_store.today());
    m_initial = editing.draft;
    m_state = editing;
    m_body = new EntryFormBody;
    m_day = new EntryDayNote;
    setBody(m_body, formWidth);
    setFootPart(m_day);
    confirmButton().setObjectName(QStringLiteral("entrySave"));
    cancelButton().setObjectName(QStringLiteral("entryCancel"));
    setTabOrder(m_body->lastControl(), &cancelButton());
    setTabOrder(&cancelButton(), &confirmButton());
    bind();
    offer();
    present();
}

bool TransactionForm::supports(std::string_view kind)
{
    static constexpr std::array kinds{EntryKind::expense,  EntryKind::income, EntryKind::transfer,
                                      EntryKind::exchange, EntryKind::refund, EntryKind::opening};
    return std::ranges::find(kinds, kind) != kinds.end();
}

template <class Edit>
void TransactionForm::edit(Edit change)
{
    auto* editing = std::get_if<EntryEditing>(&m_state);
    if (!editing)
        return;
    const auto before = editing->draft;
    m_state = change(std::move(*editing));
    const auto& after = EntryForm::draftOf(m_state);
    if (after.kind != before.kind || after.currency != before.currency)
        offer();
    present();
}

void TransactionForm::bind()
{
    using namespace EntryEdits;
    connect(m_body, &EntryFormBody::kindChosen, this, [this](const std::string& kind) {
        edit([&](EntryEditing now) { return withKind(std::move(now), kind, *m_snapshot); });
    });
    connect(m_body, &EntryFormBody::accountChosen, this, [this](const std::string& id) {
        edit([&](EntryEditing now) { return withAccount(std::move(now), id, *m_snapshot); });
    });
    connect(m_body, &EntryFormBody::currencyChosen, this, [this](const std::string& code) {
        edit([&](EntryEditing now) { return withCurrency(std::move(now), code, *m_snapshot); });
    });
    connect(m_body, &EntryFormBody::destinationChosen, this, [this](const std::string& id) {
        edit([&](EntryEditing now) { return withDestination(std::move(now), id, *m_snapshot); });
    });
    connect(m_body, &EntryFormBody::targetCurrencyChosen, this, [this](const std::string& code) {
        edit([&](EntryEditing now) { return withTargetCurrency(std::move(now), code); });
    });
    connect(m_body, &EntryFormBody::amountEdited, this, [this](const QString& text) {
        edit([&](EntryEditing now) { return withAmount(std::move(now), text.toStdString()); });
    });
    connect(m_body, &EntryFormBody::targetAmountEdited, this, [this](const QString& text) {
        edit([&](EntryEditing now) { return withTargetAmount(std::move(now), text.toStdString()); });
    });
    connect(m_body, &EntryFormBody::categoryChosen, this, [this](const std::string& id) {
        edit([&](EntryEditing now) { return withCategory(std::move(now), id); });
    });
    connect(m_body, &EntryFormBody::originalChosen, this, [this](const std::optional<std::string>& id) {
        edit([&](EntryEditing now) { return withOriginal(std::move(now), id); });
    });
    connect(m_body, &EntryFormBody::referenceEdited, this, [this](const QString& text) {
        edit([&](EntryEditing now) { return withReference(std::move(now), text.toStdString()); });
    });
    connect(m_body, &EntryFormBody::noteEdited, this, [this](const QString& text) {
        edit([&](EntryEditing now) { return withNote(std::move(now), text.toStdString()); });
    });
    connect(this, &FormDialog::confirmed, this, &TransactionForm::submit);
    connect(&m_store, &LedgerStore::snapshotChanged, this, &TransactionForm::adoptSnapshot);
}

void TransactionForm::offer()
{
    m_body->offer(m_snapshot, EntryForm::draftOf(m_state));
}

void TransactionForm::present()
{
    const auto content = EntryForm::content(m_state, *m_snapshot, m_locale);
    setWindowTitle(content.title);
    setConfirmText(content.confirm);
    confirmButton().setIcon(content.isUncertain ? Icon::of(QStringLiteral("arrow-repeat"), Token::onAccent) : QIcon{});
    setBusy(std::holds_alternative<EntrySaving>(m_state), Leaving::blocked);
    m_body->present(content, EntryForm::draftOf(m_state).originalIncomeID);
    m_day->present(content.day, content.dayHint);
    presentBanner();
    presentLeaving();
    if (!isVisible())
        return;
    // What was shown just now knows its height once it is polished.
    QMetaObject::invokeMethod(this, [this] { fitWindow(Fit::growing); }, Qt::QueuedConnection);
}

void TransactionForm::presentBanner()
{
    const auto* editing = std::get_if<EntryEditing>(&m_state);
    if (std::holds_alternative<EntryUncertain>(m_state))
        banner().present(Banner::Kind::warn, QStringList{entryWord("uncertain", InterfaceLanguage::tag()),
                                                         entryWord("retainedEntryDate", InterfaceLanguage::tag())}
                                                 .join(QLatin1Char{'\n'}));
    else if (editing && editing->refusal)
        banner().present(Banner::Kind::error, qString(m_store.friendly(*editing->refusal, m_locale)));
    else
        banner().present(Banner::Kind::error, {});
}

void TransactionForm::presentLeaving()
{
    if (std::holds_alternative<EntryUncertain>(m_state)) {
        cancelButton().setText(entryWord("closeUncertain", InterfaceLanguage::tag()));
        setLeaveQuestion(entryWord("uncertainTitle", InterfaceLanguage::tag()),
                         entryWord("uncertainDiscard", InterfaceLanguage::tag()),
                         entryWord("closeAnyway", InterfaceLanguage::tag()),
                         entryWord("keepOpen", InterfaceLanguage::tag()));
        setHasChanges([] { return true; });
        return;
    }
    cancelButton().setText(word(dialogWords(), "cancel"));
    setLeaveQuestion(
        entryWord("discardTitle", InterfaceLanguage::tag()), entryWord("discardMessage", InterfaceLanguage::tag()),
        entryWord("discard", InterfaceLanguage::tag()), entryWord("keepEditing", InterfaceLanguage::tag()));
    setHasChanges([this] { return EntryForm::hasDraft(EntryForm::draftOf(m_state), m_initial); });
}

void TransactionForm::submit()
{
    if (const auto* uncertain = std::get_if<EntryUncertain>(&m_state)) {
        send({.draft = uncertain->draft, .input = uncertain->input, .isRetry = true});
        return;
    }
    auto* editing = std::get_if<EntryEditing>(&m_state);
    if (!editing)
        return;
    editing->draft.date = m_store.today();
    auto input = EntryForm::submission(*editing, *m_snapshot, m_locale, m_store.newIdentifier());
    if (input) {
        send({.draft = editing->draft, .input = std::move(*input), .isRetry = false});
        return;
    }
    editing->problems = std::move(input.error());
    editing->refusal.reset();
    present();
    focusFirstProblem();
}

void TransactionForm::send(EntrySaving saving)
{
    const auto input = saving.input;
    m_state = std::move(saving);
    present();
    QCoro::connect(m_store.postTransaction(input, false), this,
                   [this](const Result<std::string>& reply) { finish(reply); });
}

void TransactionForm::finish(const Result<std::string>& reply)
{
    const auto* saving = std::get_if<EntrySaving>(&m_state);
    if (!saving)
        return;
    auto next = EntryForm::afterReply(*saving, reply ? Result<void>{} : std::unexpected(reply.error()));
    if (!next) {
        Q_EMIT recorded(qString(*reply));
        leave();
        return;
    }
    m_state = std::move(*next);
    present();
    if (std::holds_alternative<EntryUncertain>(m_state))
        confirmButton().setFocus(Qt::OtherFocusReason);
    else
        m_body->control(EntryField::amount)->setFocus(Qt::OtherFocusReason);
}

void TransactionForm::focusFirstProblem()
{
    const auto* editing = std::get_if<EntryEditing>(&m_state);
    if (editing && !editing->problems.empty())
        m_body->control(editing->problems.front().field)->setFocus(Qt::OtherFocusReason);
}

void TransactionForm::adoptSnapshot()
{
    const auto now = m_store.snapshot();
    if (!now) {
        leave();
        return;
    }
    // While a reply is awaited the snapshot that comes with it may already hold the entry.
    if (std::holds_alternative<EntrySaving>(m_state))
        return;
    m_snapshot = now;
    if (auto* editing = std::get_if<EntryEditing>(&m_state))
        m_state = EntryEdits::refreshed(std::move(*editing), *m_snapshot);
    offer();
    present();
}

void TransactionForm::changeEvent(QEvent* event)
{
    FormDialog::changeEvent(event);
    if (event->type() == QEvent::LanguageChange && m_body)
        retranslate();
}

void TransactionForm::showEvent(QShowEvent* event)
{
    FormDialog::showEvent(event);
    const bool hasAccount = EntryForm::draftOf(m_state).primaryAccount().has_value();
    m_body->control(hasAccount ? EntryField::amount : EntryField::account)->setFocus(Qt::OtherFocusReason);
}

void TransactionForm::retranslate()
{
    const auto& locale = InterfaceLanguage::tag();
    std::visit(
        [&](auto& state) {
            for (auto* amount : {&state.draft.amount, &state.draft.targetAmount})
                *amount = EntryForm::rewritten(*amount, m_locale, locale);
        },
        m_state);
    m_locale = locale;
    offer();
    present();
}
