#include "LedgerUI/Screens/Reports/ReportExportDialog.h"

#include <algorithm>
#include <utility>

#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Buttons/SegmentedControl.h"
#include "LedgerUI/Components/Dialogs/FileChoice.h"
#include "LedgerUI/Components/Fields/FormField.h"
#include "LedgerUI/Components/Print/PrintDialog.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Text/FailureText.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int bodyWidth = 680;

QString text(std::string_view key)
{
    return word(reportWords(), key);
}

TextLabel* paragraph(TypeStep step, Token tone, QWidget* parent)
{
    auto* label = new TextLabel(step, tone, parent);
    label->setWordWrap(true);
    return label;
}

}

ReportExportDialog::ReportExportDialog(LedgerStore& store, Source source, ReportPart part, QWidget* parent)
    : CommandForm{store, parent}, m_source{std::move(source)}, m_part{part}
{
    setObjectName(QStringLiteral("reportExportDialog"));
    confirmButton().setObjectName(QStringLiteral("reportExportSave"));
    cancelButton().setObjectName(QStringLiteral("reportExportCancel"));
    buildBody();
    connect(this, &FormDialog::confirmed, this, &ReportExportDialog::askForFile);
    connect(m_table, &SegmentedControl::chosenByUser, this,
            [this](int at) { choose(m_choices[static_cast<std::size_t>(at)]); });
    takeSheet();
}

void ReportExportDialog::buildBody()
{
    auto* body = new QWidget(bodyPlace());
    m_table = new SegmentedControl;
    m_table->setObjectName(QStringLiteral("reportExportTable"));
    m_tableField = new FormField(m_table, body);
    m_scope = paragraph(TypeStep::body, Token::text, body);
    m_scope->setObjectName(QStringLiteral("reportExportScope"));
    m_fileLabel = new TextLabel(TypeStep::small, Token::text2, body);
    m_file = paragraph(TypeStep::body, Token::text, body);
    m_file->setObjectName(QStringLiteral("reportExportFile"));
    m_file->setBold(true);
    m_rows = new TextLabel(TypeStep::small, Token::text2, body);
    m_recheck = paragraph(TypeStep::small, Token::text2, body);
    auto* file = new QVBoxLayout;
    file->setSpacing(Space::labelToField);
    for (auto* part : {m_fileLabel, m_file, m_rows})
        file->addWidget(part);
    auto* rows = new QVBoxLayout(body);
    rows->setContentsMargins(Space::dialogMargin, 0, Space::dialogMargin, Space::step4);
    rows->setSpacing(Space::fieldToField);
    rows->addWidget(m_tableField);
    rows->addWidget(m_scope);
    rows->addLayout(file);
    rows->addWidget(m_recheck);
    rows->addStretch(1);
    setBody(body, bodyWidth);
}

QWidget& ReportExportDialog::firstField() const
{
    return m_choices.size() > 1 ? static_cast<QWidget&>(*m_table) : confirmButton();
}

/// What is saved is what the page shows, with the books behind it.
void ReportExportDialog::takeSheet()
{
    m_sheet = m_source();
    m_choices.clear();
    if (m_sheet && !m_sheet->failure)
        m_choices = ReportExport::choices(*m_sheet, m_part, momentNow(store().today()));
    if (!chosen() && !m_choices.empty())
        m_tableID = m_choices.back().tableID; // the table in detail
    m_table->clear();
    for (std::size_t at = 0; at < m_choices.size(); ++at)
        m_table->addSegment(static_cast<int>(at), {});
    present();
    tellChanges();
}

/// Once the page shows the report of the newer books.
void ReportExportDialog::tellChanges()
{
    if (!m_outdated || !m_sheet || m_sheet->failure || m_sheet->books->snapshot == m_outdated->books->snapshot)
        return;
    QCoro::connect(ReportExport::changes(std::exchange(m_outdated, nullptr), m_sheet, m_part), this,
                   [this](const QString& what) {
                       if (what.isEmpty() || m_stage != SubmissionStage::editing || m_refusal)
                           return;
                       m_note = {Banner::Kind::info, text("export.renewed") + QLatin1Char('\n') + what};
                       present();
                   });
}

const ReportExport::Choice* ReportExportDialog::chosen() const
{
    const auto found = std::ranges::find(m_choices, m_tableID, &ReportExport::Choice::tableID);
    return found == m_choices.end() ? nullptr : &*found;
}

/// Other books may be given out where those before them were not.
void ReportExportDialog::adoptSnapshot()
{
    m_refusal.reset();
    followPage();
}

void ReportExportDialog::followPage()
{
    // The page hears of the same snapshot and language, maybe after this dialog does.
    QMetaObject::invokeMethod(this, &ReportExportDialog::takeSheet, Qt::QueuedConnection);
}

void ReportExportDialog::adoptLanguage(const std::string& /*before*/)
{
    m_note = {}; // in the words of another language
    followPage();
}

void ReportExportDialog::present()
{
    setWindowTitle(text("export.title"));
    const auto* table = chosen();
    m_tableField->setLabel(text("export.table"));
    m_table->setName(text("export.table"));
    m_tableField->setVisible(m_choices.size() > 1);
    if (table)
        m_table->choose(static_cast<int>(table - m_choices.data()));
    for (std::size_t at = 0; at < m_choices.size(); ++at)
        m_table->setSegmentText(static_cast<int>(at), m_choices[at].name);
    presentScope();
    m_fileLabel->setText(text("export.file"));
    m_file->setText(table ? table->fileName : QStringLiteral("–"));
    m_rows->setText(countedIn(locale(), reportWords(), "export.rows", table ? table->rows : 0));
    m_recheck->setText(text("export.recheck"));
    presentStanding({.stage = m_stage,
                     .refusal = m_refusal,
                     .note = m_note,
                     .confirm = text("export.save"),
                     .glyph = QStringLiteral("box-arrow-up")});
    if (!table)
        confirmButton().setEnabled(false);
}

void ReportExportDialog::presentScope()
{
    QStringList lines;
    if (m_sheet) {
        for (const auto& fact : ReportExport::scope(*m_sheet, m_part))
            lines << QStringLiteral("%1: %2").arg(fact.label, fact.value);
    }
    m_scope->setText(lines.join(QLatin1Char('\n')));
}

void ReportExportDialog::choose(const QString& tableName)
{
    const auto found = std::ranges::find(m_choices, tableName, &ReportExport::Choice::name);
    if (found != m_choices.end())
        choose(*found);
}

/// What was said was about another table.
void ReportExportDialog::choose(const ReportExport::Choice& table)
{
    m_tableID = table.tableID;
    m_refusal.reset();
    m_note = {};
    present();
}

void ReportExportDialog::askForFile()
{
    const auto* table = chosen();
    if (!table || m_stage != SubmissionStage::editing)
        return;
    FileChoice::save({.name = QStringLiteral("reportFileDialog"),
                      .title = text("export.saveDialog"),
                      .filter = FileChoice::csvFiles()},
                     table->fileName, this, [this](const std::filesystem::path& path) { saveTo(path); });
}

void ReportExportDialog::saveTo(const std::filesystem::path& path)
{
    if (!chosen() || m_stage != SubmissionStage::editing)
        return;
    m_stage = SubmissionStage::saving;
    m_refusal.reset();
    m_note = {};
    present();
    QCoro::connect(ReportExport::save(&store(), m_sheet, m_part, m_tableID, path), this,
                   [this, path, sheet = m_sheet](const ReportExport::Outcome& outcome) {
                       finish(outcome, path, sheet); // the page may show a newer one by then
                   });
}

void ReportExportDialog::finish(const ReportExport::Outcome& outcome, const std::filesystem::path& path,
                                const ReportSheetPointer& refused)
{
    if (!store().snapshot())
        return; // with the session the dialog closes
    m_stage = SubmissionStage::editing;
    if (std::holds_alternative<ReportExport::Saved>(outcome)) {
        Q_EMIT saved(qString(path.filename().string()));
        leave();
        return;
    }
    if (const auto* problem = std::get_if<SavingProblem>(&outcome))
        m_note = {Banner::Kind::error, FailureText::ofSaving(locale(), text("export.failed"), *problem)};
    else if (const auto& failure = std::get<Failure>(outcome); ReportExport::saysChanged(failure)) {
        m_note = {Banner::Kind::info, text("export.renewed")};
        m_outdated = refused;
    } else {
        m_refusal = failure;
    }
    takeSheet();
    confirmButton().setFocus(Qt::OtherFocusReason);
}
