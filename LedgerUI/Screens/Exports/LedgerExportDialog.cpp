#include "LedgerUI/Screens/Exports/LedgerExportDialog.h"

#include <algorithm>
#include <chrono>

#include <QCoro/QCoroTask>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Exports/LedgerCSV.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Dialogs/FileChoice.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Text/ExportChangesText.h"
#include "LedgerUI/Presentation/Text/FailureText.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Exports/LedgerExportFields.h"
#include "LedgerUI/Screens/Exports/LedgerExportPreviewPane.h"
#include "LedgerUI/Theme/Space.h"

namespace {

using Source = LedgerExportForm::Source;

constexpr int bodyWidth = 418;
constexpr int asideWidth = 382;
constexpr auto typingPause = std::chrono::milliseconds{150};

QString text(std::string_view key)
{
    return word(exportWords(), key);
}

}

LedgerExportDialog::LedgerExportDialog(LedgerStore& store, LedgerExport::Page page, QWidget* parent)
    : CommandForm{store, parent}, m_page{std::make_shared<const LedgerExport::Page>(std::move(page))},
      m_form{LedgerExport::opened(*m_page, *snapshot())}, m_sources{LedgerExport::sources(*m_page)}
{
    setObjectName(QStringLiteral("ledgerExportDialog"));
    confirmButton().setObjectName(QStringLiteral("exportSave"));
    cancelButton().setObjectName(QStringLiteral("exportCancel"));
    m_pause = new QTimer(this);
    m_pause->setSingleShot(true);
    m_pause->setInterval(typingPause);
    buildBody();
    bindParts();
    present();
    count();
}

void LedgerExportDialog::buildBody()
{
    auto* body = new QWidget(bodyPlace());
    auto* layout = new QVBoxLayout(body);
    layout->setContentsMargins(Space::dialogMargin, 0, Space::dialogMargin, Space::step4);
    layout->setSpacing(Space::fieldToField);
    m_fields = new LedgerExportFields(m_sources, body);
    layout->addWidget(m_fields);
    m_narrowed = new TextLabel(TypeStep::small, Token::text2, body);
    m_narrowed->setObjectName(QStringLiteral("exportNarrowed"));
    m_narrowed->setWordWrap(true);
    layout->addWidget(m_narrowed);
    layout->addStretch(1);
    setBody(body, bodyWidth);
    m_preview = new LedgerExportPreviewPane(this);
    setAside(m_preview, asideWidth);
    m_format = new TextLabel(TypeStep::small, Token::text2, this);
    setFootPart(m_format);
}

void LedgerExportDialog::bindParts()
{
    connect(m_pause, &QTimer::timeout, this, &LedgerExportDialog::count);
    connect(this, &FormDialog::confirmed, this, &LedgerExportDialog::proceed);
    connect(m_fields, &LedgerExportFields::edited, this, &LedgerExportDialog::edit);
}

void LedgerExportDialog::edit(LedgerExportForm form)
{
    if (m_stage != SubmissionStage::editing || form == m_form)
        return;
    m_form = std::move(form);
    m_refusal.reset();
    m_note = {};
    m_savesWhenCounted = false;
    present();
    m_pause->start();
}

void LedgerExportDialog::adoptSnapshot()
{
    takeSnapshot();
    present();
    count();
}

void LedgerExportDialog::adoptLanguage(const std::string& /*before*/)
{
    present();
    count(); // what narrows the page is named anew
}

void LedgerExportDialog::present()
{
    const auto& today = store().today();
    const auto problems = LedgerExport::problems(m_form, today, locale());
    setWindowTitle(text("title"));
    m_fields->present({.form = m_form,
                       .snapshot = *snapshot(),
                       .today = today,
                       .problems = problems,
                       .selected = m_page->selectedIDs.size(),
                       .facts = facts(),
                       .onPage = LedgerExport::narrowing(m_page->filter)});
    m_narrowed->setText(text("narrowed"));
    const bool isShownOffered = std::ranges::find(m_sources, Source::shown) != m_sources.end();
    m_narrowed->setVisible(m_form.source == Source::chosen && isShownOffered);
    const auto columns = LedgerCSV::columnCount({.includesReceiptIndex = m_form.includesReceiptIndex});
    m_format->setText(word(exportWords(), "format", {std::to_string(columns)}));
    const auto counts = m_previewed && m_previewed->counts ? std::optional{*m_previewed->counts} : std::nullopt;
    m_preview->present(counts, !counted(), fileName());
    presentStanding({.stage = m_stage,
                     .refusal = m_refusal,
                     .note = m_note,
                     .confirm = text("save"),
                     .glyph = QStringLiteral("box-arrow-up")});
    if (problems.any())
        confirmButton().setEnabled(false);
}

/// How the page is narrowed, where its entries are exported.
std::vector<PrintedFact> LedgerExportDialog::facts() const
{
    return m_previewed && m_previewed->form.source == m_form.source ? m_previewed->facts : std::vector<PrintedFact>{};
}

/// What the preview says, unless it is about other books or another choice than those in force.
const LedgerExport::Preview* LedgerExportDialog::counted() const
{
    const bool isInForce = m_previewed && m_previewed->books == snapshot() && m_previewed->form == m_form;
    return isInForce ? &*m_previewed : nullptr;
}

QString LedgerExportDialog::fileName() const
{
    if (m_form.source != Source::chosen) {
        const auto* found = counted();
        return found ? qString(LedgerCSV::fileName(found->scope.startDate, found->scope.endDate)) : QStringLiteral("–");
    }
    if (m_form.firstDay.empty() || m_form.lastDay.empty())
        return QStringLiteral("–");
    return qString(LedgerCSV::fileName(m_form.firstDay, m_form.lastDay));
}

QWidget& LedgerExportDialog::firstField() const
{
    return m_fields->first();
}

void LedgerExportDialog::count()
{
    m_pause->stop();
    if (LedgerExport::problems(m_form, store().today(), locale()).any())
        return;
    const int run = ++m_counting;
    QCoro::connect(
        LedgerExport::preview(
            {.books = snapshot(), .form = m_form, .page = m_page, .locale = locale(), .before = m_previewed}),
        this, [this, run](LedgerExport::Preview previewed) {
            if (run != m_counting)
                return;
            adopt(std::move(previewed));
            if (std::exchange(m_savesWhenCounted, false))
                proceed();
        });
}

void LedgerExportDialog::adopt(LedgerExport::Preview previewed)
{
    const auto changes = exportChangesText(previewed.changes, locale());
    m_previewed = std::move(previewed);
    if (!m_previewed->counts && m_stage == SubmissionStage::editing)
        m_refusal = LedgerExport::failureOf(m_previewed->counts.error());
    else if (!changes.isEmpty())
        m_note = {Banner::Kind::info, word(exportWords(), "renewed", {changes.toStdString()})};
    present();
}

/// What is saved is what the preview counted: until that is there, the file waits for it.
void LedgerExportDialog::proceed()
{
    if (m_stage != SubmissionStage::editing)
        return;
    const auto* found = counted();
    if (!found) {
        m_savesWhenCounted = true;
        count();
        return;
    }
    if (found->counts)
        askForFile();
}

void LedgerExportDialog::askForFile()
{
    FileChoice::save(
        {.name = QStringLiteral("exportFileDialog"), .title = text("saveDialog"), .filter = FileChoice::csvFiles()},
        fileName(), this, [this](const std::filesystem::path& path) { saveTo(path); });
}

void LedgerExportDialog::saveTo(const std::filesystem::path& path)
{
    const auto* found = counted();
    if (m_stage != SubmissionStage::editing || !found || !found->counts)
        return;
    const auto previewed = *found;
    m_stage = SubmissionStage::saving;
    m_refusal.reset();
    m_note = {};
    present();
    QCoro::connect(LedgerExport::save(&store(), m_page, previewed, path, locale()), this,
                   [this, path](const LedgerExport::Outcome& outcome) { finish(outcome, path); });
}

void LedgerExportDialog::finish(const LedgerExport::Outcome& outcome, const std::filesystem::path& path)
{
    if (!store().snapshot())
        return; // with the session the dialog closes
    m_stage = SubmissionStage::editing;
    if (std::holds_alternative<LedgerExport::Saved>(outcome)) {
        Q_EMIT saved(qString(path.filename().string()));
        leave();
        return;
    }
    if (const auto* failure = std::get_if<Failure>(&outcome)) {
        m_refusal = *failure;
    } else {
        const auto problem = std::get<SavingProblem>(outcome);
        m_note = {Banner::Kind::error, FailureText::ofSaving(locale(), text("failed"), problem)};
    }
    present();
    confirmButton().setFocus(Qt::OtherFocusReason);
}
