#include "LedgerUI/Screens/Entry/ReversalDialog.h"

#include <QCoro/QCoroTask>
#include <QPushButton>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Access/LedgerEntryAccess.h"
#include "LedgerCore/Domain/Entries/EntryLimits.h"
#include "LedgerCore/Domain/Entries/EntryWords.h"
#include "LedgerCore/Domain/Text/TextFold.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Fields/FieldError.h"
#include "LedgerUI/Components/Fields/FormField.h"
#include "LedgerUI/Components/Fields/LimitedEdit.h"
#include "LedgerUI/Components/Text/EntryKindColor.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Entry/EntryEdits.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Entry/ReversalRows.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int dialogWidth = 560;

}

ReversalDialog::ReversalDialog(LedgerStore& store, LedgerTransaction original, QWidget* parent)
    : CommandForm{store, parent}, m_books{*snapshot()}, m_original{std::move(original)},
      m_submission{EntryReversal::opened(store.keptReversal(m_original.id))}
{
    setObjectName(QStringLiteral("reversalDialog"));
    confirmButton().setObjectName(QStringLiteral("reversalConfirm"));
    cancelButton().setObjectName(QStringLiteral("reversalCancel"));
    buildBody();
    connect(m_reason, &QLineEdit::textEdited, this, [this](const QString& text) {
        m_submission.edit({.reason = text.toStdString()});
        present();
    });
    connect(this, &FormDialog::confirmed, this, &ReversalDialog::proceed);
    present();
}

void ReversalDialog::buildBody()
{
    auto* body = new QWidget(bodyPlace());
    m_explanation = new TextLabel(TypeStep::body, Token::text, body);
    m_explanation->setObjectName(QStringLiteral("reversalExplanation"));
    m_explanation->setWordWrap(true);
    m_rows = new ReversalRows(body);
    m_reason = new LimitedEdit(EntryLimits::noteLength);
    m_reason->setObjectName(QStringLiteral("reversalReason"));
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

void ReversalDialog::adoptSnapshot()
{
    takeSnapshot();
    m_books = VisibleBooks{*snapshot()};
    present();
}

void ReversalDialog::present()
{
    const auto content = EntryReversal::content(m_submission, m_original, *snapshot(), store().today(), locale());
    setWindowTitle(content.title);
    m_explanation->setText(content.explanation);
    m_rows->present(content.rows, entryKindColor(m_original.kind, *snapshot()),
                    entryKindColor(EntryKind::reversal, *snapshot()));
    m_reasonField->setLabel(word(entryFormWords(), "reason"));
    if (m_reason->text() != content.reason)
        m_reason->setText(content.reason);
    m_reasonField->error().present(content.reasonMessage);
    setConfirmVisible(!m_submission.isDone() || mayCorrect());
    const Note posted{Banner::Kind::success, word(entryFormWords(), "reverse.done")};
    presentStanding({.stage = m_submission.stage(),
                     .refusal = m_submission.refusal(),
                     .note = m_submission.isDone() ? posted : Note{Banner::Kind::info, content.hint},
                     .confirm = content.confirm,
                     .glyph = m_submission.isDone() ? QString{} : QStringLiteral("arrow-counterclockwise"),
                     .resends = content.resends,
                     .uncertainWords = &EntryWords::words(),
                     .hasChanges = content.mayEdit && !content.reason.isEmpty(),
                     .whyNot = EntryReversal::whyNot(m_submission, m_original.id, m_books, locale())});
}

void ReversalDialog::proceed()
{
    if (m_submission.isDone())
        offerCorrection();
    else if (const auto* request = commandToSend(m_submission, [this] { return checked(); }))
        send(*request);
}

std::optional<Reversal> ReversalDialog::checked()
{
    if (m_submission.command())
        return m_submission.command(); // it was refused, and is remembered as it was
    std::string reason{TextFold::trimmed(m_submission.form().reason)};
    if (!reason.empty() && m_reason->isWithinLimit())
        return Reversal{.reason = std::move(reason), .idempotencyKey = {}, .date = store().today()};
    if (reason.empty()) {
        m_submission.edit({.reason = {}, .isReasonMissing = true});
        present();
    }
    m_reason->setFocus(Qt::OtherFocusReason);
    return {};
}

void ReversalDialog::send(const Reversal& request)
{
    present();
    QCoro::connect(store().reverseTransaction(m_original.id, request.reason), this,
                   [this](const Result<void>& reply) { finish(reply); });
}

void ReversalDialog::finish(const Result<void>& reply)
{
    if (!m_submission.isSaving())
        return;
    if (reply) {
        m_submission.succeed();
    } else {
        m_submission = EntryReversal::afterFailure(m_submission, reply.error(), store().keptReversal(m_original.id));
        sayHere();
    }
    presentAnew();
    if (m_submission.isDone())
        Q_EMIT reversed(qString(m_original.id));
}

QWidget& ReversalDialog::firstField() const
{
    if (!m_submission.isDone() && m_submission.isEditing() && !m_submission.command())
        return *m_reason;
    return confirmButton().isHidden() ? static_cast<QWidget&>(cancelButton()) : confirmButton();
}

void ReversalDialog::offerCorrection()
{
    Q_EMIT correctionRequested(EntryEdits::correctionOf(m_original, locale()));
    leave();
}

bool ReversalDialog::mayCorrect() const
{
    const auto now = store().snapshot();
    return now && EntryForm::supports(m_original.kind) && !LedgerEntryAccess::accounts(*now, m_original.kind).empty();
}
