#include "LedgerUI/Screens/Entry/BatchReversalDialog.h"

#include <algorithm>
#include <utility>

#include <QCoro/QCoroTask>
#include <QPushButton>
#include <QStringList>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Entries/EntryLimits.h"
#include "LedgerCore/Domain/Text/TextFold.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Fields/FieldError.h"
#include "LedgerUI/Components/Fields/FormField.h"
#include "LedgerUI/Components/Fields/LimitedEdit.h"
#include "LedgerUI/Components/Table/PlainTable.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int dialogWidth = 680;
constexpr int tableHeight = 240;
constexpr int lowestTable = 96;
constexpr int stateColumn = 2; // the only one that may be long

using ItemStage = BatchReversal::Item::Stage;

}

BatchReversalDialog::BatchReversalDialog(LedgerStore& store, const std::vector<std::string>& ids, QWidget* parent)
    : CommandForm{store, parent},
      m_batch{BatchReversal::of(
          ids, VisibleBooks{*snapshot()},
          [&store](const std::string& id) { return store.keptReversal(id).has_value(); }, locale())}
{
    setObjectName(QStringLiteral("batchReversalDialog"));
    confirmButton().setObjectName(QStringLiteral("batchConfirm"));
    cancelButton().setObjectName(QStringLiteral("batchCancel"));
    if (m_batch.partCount() > 1)
        m_part.reset(); // what will be reversed may stand in any of them
    buildBody();
    connect(m_reason, &QLineEdit::textEdited, this, [this] {
        m_isReasonMissing = false;
        presentStage(); // not the table: it may have thousands of rows
    });
    connect(this, &FormDialog::confirmed, this, &BatchReversalDialog::proceed);
    present();
}

void BatchReversalDialog::buildBody()
{
    auto* body = new QWidget(bodyPlace());
    m_explanation = new TextLabel(TypeStep::body, Token::text, body);
    m_explanation->setWordWrap(true);
    m_reason = new LimitedEdit(EntryLimits::noteLength);
    m_reason->setObjectName(QStringLiteral("batchReason"));
    m_reasonField = new FormField(m_reason, body);
    m_reasonField->error().setObjectName(QStringLiteral("batchReasonError"));
    m_table = new PlainTable(stateColumn, body);
    m_table->setObjectName(QStringLiteral("batchTable"));
    auto* layout = new QVBoxLayout(body);
    layout->setContentsMargins(Space::dialogMargin, 0, Space::dialogMargin, Space::dialogMargin);
    layout->setSpacing(Space::fieldToField);
    layout->addWidget(m_explanation);
    layout->addWidget(m_reasonField);
    layout->addWidget(m_table, 1);
    setBody(body, dialogWidth);
}

void BatchReversalDialog::adoptSnapshot()
{
    takeSnapshot();
    if (!isRunning()) // each reply brings one, and the rows stay as they were when they were chosen
        present();
}

void BatchReversalDialog::present()
{
    presentTable();
    presentStage();
}

void BatchReversalDialog::presentTable()
{
    m_table->setAccessibleName(word(entryFormWords(), "batch.title"));
    m_table->present(BatchReversal::columns(locale()),
                     m_part ? m_batch.rows(*m_part, *snapshot(), locale()) : m_batch.openRows(*snapshot(), locale()));
    m_table->setFixedHeight(std::clamp(m_table->wholeHeight(), lowestTable, tableHeight));
}

void BatchReversalDialog::presentRow(std::size_t at)
{
    if (std::exchange(m_part, at / BatchReversal::partSize) != m_part)
        presentTable();
    else
        m_table->amend(m_batch.row(at, *snapshot(), locale()));
}

QString BatchReversalDialog::listing() const
{
    const auto parts = m_batch.partCount();
    if (parts <= 1)
        return {};
    if (!m_part)
        return word(entryFormWords(), "batch.open");
    return word(entryFormWords(), "batch.part", {groupedNumber(*m_part + 1, locale()), groupedNumber(parts, locale())});
}

void BatchReversalDialog::presentStage()
{
    const auto left = m_batch.left();
    setWindowTitle(word(entryFormWords(), "batch.title"));
    QStringList explanation{word(entryFormWords(), "batch.explanation"), listing()};
    explanation.removeAll(QString{});
    m_explanation->setText(explanation.join(QLatin1Char{'\n'}));
    m_reasonField->setLabel(word(entryFormWords(), "reason"));
    m_reasonField->error().present(m_isReasonMissing ? word(entryFormWords(), "reasonRequired") : QString{});
    m_reason->setReadOnly(m_stage != Stage::asking);
    setConfirmVisible(m_stage != Stage::done);
    const auto* key = m_stage == Stage::asking ? "batch.confirm" : "batch.continue";
    presentStanding(
        {.stage = isRunning() ? SubmissionStage::saving : SubmissionStage::editing,
         .note = note(),
         .confirm = countedIn(locale(), entryFormWords(), key, left),
         .glyph = QStringLiteral("arrow-counterclockwise"),
         .hasChanges = m_stage == Stage::asking && !m_reason->text().isEmpty(),
         .whyNot = left == 0 && m_stage == Stage::asking ? word(entryFormWords(), "batch.none") : QString{}});
    cancelButton().setEnabled(m_stage != Stage::stopping);
    if (isRunning())
        cancelButton().setText(word(entryFormWords(), "batch.stop"));
    else if (m_stage != Stage::asking)
        cancelButton().setText(word(dialogWords(), "close"));
}

CommandForm::Note BatchReversalDialog::note() const
{
    const auto done = m_batch.count(ItemStage::done);
    const auto refused = m_batch.count(ItemStage::refused);
    if (m_stage == Stage::done)
        return {.kind = refused > 0 ? Banner::Kind::warn : Banner::Kind::success,
                .text = countedIn(locale(), entryFormWords(), "batch.result", done)};
    if (isRunning())
        return {.kind = Banner::Kind::info,
                .text = word(entryFormWords(), "batch.progress",
                             {groupedNumber(m_batch.judged(), locale()),
                              groupedNumber(m_batch.judged() + m_batch.left(), locale())})};
    if (m_stage != Stage::stopped)
        return {};
    QStringList lines{m_failure, word(entryFormWords(), "batch.stopped",
                                      {groupedNumber(done, locale()), groupedNumber(m_batch.left(), locale())})};
    lines.removeAll(QString{});
    return {.kind = Banner::Kind::warn, .text = lines.join(QLatin1Char{'\n'})};
}

void BatchReversalDialog::proceed()
{
    if (isRunning() || m_stage == Stage::done || store().isBusy())
        return;
    m_isReasonMissing = TextFold::trimmed(m_reason->text().toStdString()).empty();
    if (m_isReasonMissing || !m_reason->isWithinLimit()) {
        present();
        m_reason->setFocus(Qt::OtherFocusReason);
        return;
    }
    m_failure.clear();
    m_stage = Stage::running;
    sendNext();
}

void BatchReversalDialog::sendNext()
{
    const auto next = m_stage == Stage::running ? m_batch.begin() : std::nullopt;
    const auto at = m_batch.sendingAt();
    if (!next || !at) {
        rest();
        return;
    }
    presentRow(*at);
    presentStage();
    QCoro::connect(store().reverseTransaction(*next, std::string{TextFold::trimmed(m_reason->text().toStdString())}),
                   this, [this](const Result<void>& reply) { take(reply); });
}

void BatchReversalDialog::take(const Result<void>& reply)
{
    // With the session the dialog closes, and what ended it is told elsewhere.
    const auto at = m_batch.sendingAt();
    if (!at || !store().snapshot())
        return;
    if (reply) {
        m_batch.succeed();
        presentRow(*at);
        sendNext();
        return;
    }
    // The row says it: an alert over the dialog would say it twice.
    store().dismissMessages();
    const auto message = qString(store().friendly(reply.error(), locale()));
    if (m_batch.fail(reply.error(), message)) {
        presentRow(*at);
        sendNext();
        return;
    }
    m_failure = message;
    m_stage = Stage::stopping;
    rest();
}

void BatchReversalDialog::rest()
{
    m_stage = m_batch.left() == 0 ? Stage::done : Stage::stopped;
    if (m_batch.partCount() > 1)
        m_part.reset(); // what is to be looked at now may stand in any of them
    presentAnew();
    if (const auto done = m_batch.count(ItemStage::done); done > 0)
        Q_EMIT reversed(done);
}

void BatchReversalDialog::reject()
{
    if (!isRunning()) {
        CommandForm::reject();
        return;
    }
    m_stage = Stage::stopping;
    present();
}

QWidget& BatchReversalDialog::firstField() const
{
    if (m_stage == Stage::asking)
        return *m_reason;
    return confirmButton().isHidden() ? static_cast<QWidget&>(cancelButton()) : confirmButton();
}
