#include "LedgerUI/Screens/Entry/ReversalDialog.h"

#include <QCoro/QCoroTask>
#include <QEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "LedgerCore/Client/LedgerStore.h"
#include "LedgerCore/Domain/Access/LedgerEntryAccess.h"
#include "LedgerCore/Domain/Text/TextFold.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Fields/FieldError.h"
#include "LedgerUI/Components/Fields/FormField.h"
#include "LedgerUI/Components/Page/Banner.h"
#include "LedgerUI/Components/Text/EntryKindColor.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Entry/EntryEdits.h"
#include "LedgerUI/Presentation/Entry/EntryFormWords.h"
#include "LedgerUI/Presentation/Text/DialogWords.h"
#include "LedgerUI/Screens/Entry/ReversalRows.h"
#include "LedgerUI/Screens/Entry/TransactionForm.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int dialogWidth = 560;
constexpr int maximumReasonLength = 2000;

std::optional<Reversal> requestOf(const std::optional<KeptReversal>& kept)
{
    return kept ? std::optional{kept->reversal} : std::nullopt;
}

}

ReversalDialog::ReversalDialog(LedgerStore& store, LedgerTransaction original, QWidget* parent)
    : FormDialog{parent}, m_store{store}, m_original{std::move(original)}, m_snapshot{store.snapshot()},
      m_state{EntryReversal::opened(requestOf(store.keptReversal(m_original.id)))}
{
    setObjectName(QStringLiteral("reversalDialog"));
    setAttribute(Qt::WA_DeleteOnClose);
    confirmButton().setObjectName(QStringLiteral("reversalConfirm"));
    cancelButton().setObjectName(QStringLiteral("reversalCancel"));
    buildBody();
    connect(m_reason, &QLineEdit::textEdited, this, [this](const QString& text) {
        if (std::holds_alternative<ReversalTyping>(m_state))
            m_state = ReversalTyping{.reason = text.toStdString()};
        present();
    });
    connect(this, &FormDialog::confirmed, this, &ReversalDialog::proceed);
    connect(&m_store, &LedgerStore::snapshotChanged, this, [this] {
        if (!m_store.snapshot())
            leave();
    });
    present();
}

void ReversalDialog::buildBody()
{
    auto* body = new QWidget;
    m_explanation = new TextLabel(TypeStep::body, Token::text, body);
    m_explanation->setObjectName(QStringLiteral("reversalExplanation"));
    m_explanation->setWordWrap(true);
    m_rows = new ReversalRows(body);
    m_reason = new QLineEdit;
    m_reason->setObjectName(QStringLiteral("reversalReason"));
    m_reason->setMaxLength(maximumReasonLength);
    m_reasonField = new FormField(m_reason, body);
    m_reasonField->error().setObjectName(QStringLiteral("reversalReasonError"));
    auto* layout = new QVBoxLayout(body);
    layout->setContentsMargins(Space::dialogMargin, 0, Space::dialogMargin, Space::dialogMargin);
    layout->setSpacing(Space::fieldToField);
    layout->addWidget(m_explanation);
    layout->addWidget(m_rows);
    layout->addWidget(m_reasonField);
    layout->addStretch(1);
    setBody(body, dialogWidth);
}

void ReversalDialog::present()
{
    // A posted reversal is kept no more: its day stays the one shown.
    if (const auto kept = m_store.keptReversal(m_original.id))
        m_day = kept->reversal.date;
    else if (std::holds_alternative<ReversalTyping>(m_state))
        m_day = m_store.today();
    const auto content = EntryReversal::content(m_state, m_original, *m_snapshot, m_day, InterfaceLanguage::tag());
    setWindowTitle(content.title);
    m_explanation->setText(content.explanation);
    m_rows->present(content.rows, entryKindColor(m_original.kind, *m_snapshot),
                    entryKindColor(EntryKind::reversal, *m_snapshot));
    m_reasonField->setLabel(entryWord("reason", InterfaceLanguage::tag()));
    if (m_reason->text() != content.reason)
        m_reason->setText(content.reason);
    m_reasonField->error().present(content.reasonMessage);
    setConfirmText(content.confirm);
    setBusy(std::holds_alternative<ReversalSending>(m_state), Leaving::blocked);
    m_reason->setEnabled(std::holds_alternative<ReversalTyping>(m_state));
    const bool isDone = std::holds_alternative<ReversalDone>(m_state);
    const bool resends =
        std::holds_alternative<ReversalUncertain>(m_state) || std::holds_alternative<ReversalKept>(m_state);
    const auto glyph = resends ? QStringLiteral("arrow-repeat") : QStringLiteral("arrow-counterclockwise");
    confirmButton().setIcon(isDone ? QIcon{} : Icon::of(glyph, Token::onAccent));
    setConfirmVisible(!isDone || mayCorrect());
    presentBanner();
    presentLeaving();
    if (isVisible())
        QMetaObject::invokeMethod(this, [this] { fitWindow(Fit::growing); }, Qt::QueuedConnection);
}

void ReversalDialog::presentBanner()
{
    if (std::holds_alternative<ReversalUncertain>(m_state))
        banner().present(Banner::Kind::warn, entryWord("uncertain", InterfaceLanguage::tag()));
    else if (std::holds_alternative<ReversalKept>(m_state))
        banner().present(Banner::Kind::info, entryWord("reverse.kept", InterfaceLanguage::tag()));
    else if (std::holds_alternative<ReversalDone>(m_state))
        banner().present(Banner::Kind::success, entryWord("reverse.done", InterfaceLanguage::tag()));
    else
        banner().present(Banner::Kind::error, {});
}

void ReversalDialog::presentLeaving()
{
    if (std::holds_alternative<ReversalUncertain>(m_state)) {
        cancelButton().setText(entryWord("closeUncertain", InterfaceLanguage::tag()));
        setLeaveQuestion(entryWord("uncertainTitle", InterfaceLanguage::tag()),
                         entryWord("uncertainDiscard", InterfaceLanguage::tag()),
                         entryWord("closeAnyway", InterfaceLanguage::tag()),
                         entryWord("keepOpen", InterfaceLanguage::tag()));
        setHasChanges([] { return true; });
        return;
    }
    const bool isTyping =
        std::holds_alternative<ReversalTyping>(m_state) || std::holds_alternative<ReversalSending>(m_state);
    cancelButton().setText(word(dialogWords(), isTyping ? "cancel" : "close"));
    setLeaveQuestion({}, {}, {}, {});
    setHasChanges([this, isTyping] { return isTyping && !m_reason->text().isEmpty(); });
}

void ReversalDialog::proceed()
{
    if (std::holds_alternative<ReversalDone>(m_state)) {
        offerCorrection();
        return;
    }
    if (const auto* uncertain = std::get_if<ReversalUncertain>(&m_state)) {
        send({.reason = uncertain->reason, .isRetry = true});
        return;
    }
    if (const auto* kept = std::get_if<ReversalKept>(&m_state)) {
        send({.reason = kept->reason, .isRetry = kept->mayBePosted});
        return;
    }
    const auto* typing = std::get_if<ReversalTyping>(&m_state);
    if (!typing)
        return;
    const std::string reason{TextFold::trimmed(typing->reason)};
    if (!reason.empty()) {
        send({.reason = reason, .isRetry = false});
        return;
    }
    m_state = ReversalTyping{.reason = {}, .isReasonMissing = true};
    present();
    m_reason->setFocus(Qt::OtherFocusReason);
}

void ReversalDialog::send(ReversalSending sending)
{
    auto reason = sending.reason;
    m_state = std::move(sending);
    present();
    QCoro::connect(m_store.reverseTransaction(m_original.id, std::move(reason)), this,
                   [this](const Result<void>& reply) { finish(reply); });
}

void ReversalDialog::finish(const Result<void>& reply)
{
    const auto* sending = std::get_if<ReversalSending>(&m_state);
    if (!sending)
        return;
    m_state = EntryReversal::afterReply(*sending, reply, requestOf(m_store.keptReversal(m_original.id)));
    present();
    if (std::holds_alternative<ReversalTyping>(m_state)) {
        m_reason->setFocus(Qt::OtherFocusReason);
        return;
    }
    (confirmButton().isHidden() ? static_cast<QWidget&>(cancelButton()) : confirmButton())
        .setFocus(Qt::OtherFocusReason);
    if (std::holds_alternative<ReversalDone>(m_state))
        Q_EMIT reversed(qString(m_original.id));
}

void ReversalDialog::offerCorrection()
{
    Q_EMIT correctionRequested(EntryEdits::correctionOf(m_original, InterfaceLanguage::tag()));
    leave();
}

bool ReversalDialog::mayCorrect() const
{
    const auto now = m_store.snapshot();
    return now && TransactionForm::supports(m_original.kind) &&
           !LedgerEntryAccess::accounts(*now, m_original.kind).empty();
}

void ReversalDialog::changeEvent(QEvent* event)
{
    FormDialog::changeEvent(event);
    if (event->type() == QEvent::LanguageChange && m_reasonField)
        present();
}

void ReversalDialog::showEvent(QShowEvent* event)
{
    FormDialog::showEvent(event);
    (m_reason->isEnabled() ? static_cast<QWidget*>(m_reason) : &confirmButton())->setFocus(Qt::OtherFocusReason);
}
