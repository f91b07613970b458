#include "LedgerUI/Screens/Imports/ImportDialog.h"

#include <span>
#include <utility>

#include <QApplication>
#include <QClipboard>
#include <QCoro/QCoroTask>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QPointer>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>

#include "LedgerCore/Client/Errors/FailureMessages.h"
#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Imports/LedgerImportCSV.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Dialogs/FileChoice.h"
#include "LedgerUI/Components/Dialogs/MessageDialog.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Forms/SavedFile.h"
#include "LedgerUI/Presentation/Text/FailureText.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Imports/ImportFileCard.h"
#include "LedgerUI/Screens/Imports/ImportFindings.h"
#include "LedgerUI/Screens/Imports/ImportGuide.h"
#include "LedgerUI/Screens/Imports/ImportProgress.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int bodyWidth = 820;

QString text(std::string_view key)
{
    return word(importWords(), key);
}

QString counted(std::string_view key, std::size_t count)
{
    return countedIn(InterfaceLanguage::tag(), importWords(), key, count);
}

std::optional<std::filesystem::path> fileIn(const QMimeData& data)
{
    const auto urls = data.urls();
    if (urls.size() != 1 || !urls.first().isLocalFile())
        return std::nullopt;
    return std::filesystem::path{urls.first().toLocalFile().toStdString()};
}

}

ImportDialog::ImportDialog(LedgerStore& store, QWidget* parent) : CommandForm{store, parent}
{
    setObjectName(QStringLiteral("importDialog"));
    confirmButton().setObjectName(QStringLiteral("importStart"));
    cancelButton().setObjectName(QStringLiteral("importClose"));
    setAcceptDrops(true);
    buildBody();
    connect(&m_file->button(), &QPushButton::clicked, this, &ImportDialog::askForFile);
    connect(m_guide, &ImportGuide::copyWanted, this, [this] {
        QApplication::clipboard()->setText(LedgerImport::issuesText(*m_reading, locale()));
        say(text("copied"));
    });
    connect(m_guide, &ImportGuide::issuesWanted, this, [this] {
        const auto name = qString(m_reading->path.stem().string()) + QStringLiteral("-issues.csv");
        saveFile(name, [reading = m_reading, locale = locale()] { return LedgerImport::issuesFile(*reading, locale); });
    });
    connect(m_guide, &ImportGuide::templateWanted, this, [this] {
        saveFile(qString(LedgerImportCSV::templateName) + QStringLiteral(".csv"), LedgerImportCSV::templateText);
    });
    connect(this, &FormDialog::confirmed, this, &ImportDialog::confirm);
    connect(&store, &LedgerStore::isBusyChanged, this, [this] {
        if (std::exchange(m_waits, false))
            present();
    });
    present();
}

void ImportDialog::buildBody()
{
    auto* body = new QWidget(bodyPlace());
    m_file = new ImportFileCard(body);
    m_findings = new ImportFindings(body);
    m_progress = new ImportProgress(body);
    m_guide = new ImportGuide(body);
    auto* rows = new QVBoxLayout(body);
    rows->setContentsMargins(Space::dialogMargin, 0, Space::dialogMargin, Space::step4);
    rows->setSpacing(Space::step2);
    rows->addWidget(m_file);
    rows->addWidget(m_findings);
    rows->addWidget(m_progress);
    rows->addWidget(m_guide);
    rows->addStretch(1);
    setBody(body, bodyWidth);
    m_limits = new TextLabel(TypeStep::small, Token::text2, this);
    setFootPart(m_limits);
}

void ImportDialog::present()
{
    setWindowTitle(text("title"));
    const bool isReady = isPlanned() && m_reading->isReady();
    const bool goesOn = m_stage == Stage::stopped;
    const auto confirm = goesOn ? text("again") : counted("start", isReady ? m_reading->plan.inputs.size() : 0);
    presentStanding({.stage = SubmissionStage::editing, .refusal = {}, .note = note(), .confirm = confirm});
    setConfirmVisible(isReady || goesOn);
    const bool isImporting = m_stage == Stage::importing;
    cancelButton().setText(isImporting ? text(m_isStopping ? "stopping" : "stop") : word(dialogWords(), "close"));
    cancelButton().setEnabled(!m_isStopping);
    presentFile();
    m_findings->present(isPlanned() ? m_reading : nullptr);
    m_progress->setVisible(isImporting);
    if (isImporting)
        m_progress->present(m_confirmed, m_reading->plan.inputs.size());
    m_guide->setVisible(!isImporting);
    const bool hasIssues = isPlanned() && m_reading->issueCount() > 0;
    m_guide->present({.howTo = !isReady && m_stage != Stage::done,
                      .copiesIssues = hasIssues,
                      .savesIssues = hasIssues && LedgerImport::hasRows(*m_reading)});
    m_limits->setText(text("limits"));
}

CommandForm::Note ImportDialog::note() const
{
    auto told = standing();
    if (m_said.isEmpty())
        return told;
    if (told.text.isEmpty())
        return {Banner::Kind::success, m_said};
    told.text += QLatin1Char('\n') + m_said;
    return told;
}

void ImportDialog::say(const QString& what)
{
    m_said = what;
    m_failure.clear();
    present();
}

CommandForm::Note ImportDialog::standing() const
{
    if (m_stage == Stage::done)
        return {Banner::Kind::success, counted("done", m_confirmed)};
    if (m_stage == Stage::stopped) {
        QStringList lines{m_stoppedBy ? qString(store().friendly(*m_stoppedBy, locale())) : QString{}, m_failure,
                          qString(importStoppedText(m_confirmed, locale()))};
        lines.removeAll(QString{});
        return {Banner::Kind::warn, lines.join(QLatin1Char('\n'))};
    }
    if (m_waits)
        return {Banner::Kind::error, word(ledgerWords(), "newEntry.busy")};
    if (!m_failure.isEmpty())
        return {Banner::Kind::error, m_failure};
    if (!isPlanned())
        return {};
    if (const auto problem = LedgerImport::problem(*m_reading, locale()); !problem.isEmpty())
        return {Banner::Kind::error, problem};
    const auto ready = counted("ready", m_reading->plan.inputs.size());
    const auto before = m_reading->recordedBefore;
    return {Banner::Kind::info, before == 0 ? ready : ready + QLatin1Char('\n') + counted("recorded", before)};
}

void ImportDialog::presentFile()
{
    const bool hasFile = m_reading != nullptr;
    const auto facts = hasFile && !m_reading->isUnreadable ? LedgerImport::sizeText(*m_reading, locale()) : QString{};
    m_file->present(hasFile ? qString(m_reading->path.filename().string()) : QString{},
                    m_stage == Stage::reading ? text("reading") : (hasFile ? facts : text("drop")),
                    text(hasFile ? "chooseAnother" : "choose"));
    m_file->button().setVisible(m_stage != Stage::importing);
    m_file->button().setEnabled(m_stage != Stage::reading);
}

QWidget& ImportDialog::firstField() const
{
    if (m_stage == Stage::importing || m_stage == Stage::done)
        return cancelButton();
    const bool canConfirm = m_stage == Stage::stopped || (isPlanned() && m_reading->isReady());
    return canConfirm ? static_cast<QWidget&>(confirmButton()) : m_file->button();
}

/// What a file would do is worked out from the books in force.
void ImportDialog::adoptSnapshot()
{
    takeSnapshot();
    if (isPlanned())
        read(m_reading->path);
}

void ImportDialog::adoptLanguage(const std::string& /*before*/)
{
    m_failure.clear();
    m_said.clear();
    if (isPlanned())
        m_findings->take(LedgerImport::found(*m_reading, locale()));
    present();
}

void ImportDialog::askForFile()
{
    FileChoice::open(
        {.name = QStringLiteral("importFileDialog"), .title = text("chooseDialog"), .filter = FileChoice::csvFiles()},
        this, [this](const std::filesystem::path& path) { chooseFile(path); });
}

void ImportDialog::chooseFile(const std::filesystem::path& path)
{
    if (m_stage == Stage::importing)
        return;
    m_reading.reset();
    m_confirmed = 0;
    read(path);
}

void ImportDialog::read(const std::filesystem::path& path)
{
    m_stage = Stage::reading;
    m_failure.clear();
    m_said.clear();
    present();
    const int run = ++m_readings;
    QCoro::connect(LedgerImport::read(path, snapshot(), store().today(), locale()), this,
                   [this, run](LedgerImport::Answer answer) {
                       if (run == m_readings)
                           adopt(std::move(answer));
                   });
}

void ImportDialog::adopt(LedgerImport::Answer answer)
{
    // The books may have changed while the file was read: what is shown must be worked out from those of now.
    if (answer.reading->books != snapshot())
        return read(answer.reading->path);
    m_reading = std::move(answer.reading);
    m_stage = Stage::planned;
    m_findings->take(std::move(answer.table));
    if (m_reading->issueCount() > 0)
        m_findings->chooseFirst();
    present();
    firstField().setFocus(Qt::OtherFocusReason);
}

void ImportDialog::saveFile(const QString& suggestion, std::function<std::string()> content)
{
    const auto write = [this, content = std::move(content)](const std::filesystem::path& path) {
        QCoro::connect(SavedFile::write(path, content), this, [this, path](std::optional<SavingProblem> problem) {
            if (!problem)
                return say(word(exportWords(), "done", {path.filename().string()}));
            m_said.clear();
            m_failure = FailureText::ofSaving(locale(), word(fileWords(), "notSaved"), *problem);
            present();
        });
    };
    FileChoice::save({.name = QStringLiteral("importSaveDialog"),
                      .title = word(fileWords(), "save"),
                      .filter = FileChoice::csvFiles()},
                     suggestion, this, write);
}

/// After a stop the file is read once more: it may have been mended, and the books tell what is recorded already.
void ImportDialog::confirm()
{
    if (m_stage == Stage::stopped)
        return read(m_reading->path);
    if (!isPlanned() || !m_reading->isReady())
        return;
    MessageDialog::ask({.title = text("confirm"),
                        .text = text("confirmText"),
                        .confirm = counted("start", m_reading->plan.inputs.size()),
                        .cancel = text("notYet")},
                       this, [this] { import(); });
}

void ImportDialog::import()
{
    // While the question was open the books may have come anew, or something else may be on its way.
    m_waits = store().isBusy();
    if (m_waits)
        return present();
    if (!isPlanned() || !m_reading->isReady() || isElsewhere()) {
        m_failure = text("changedMeanwhile");
        return present();
    }
    m_stage = Stage::importing;
    m_confirmed = 0;
    m_isStopping = false;
    m_stoppedBy.reset();
    m_failure.clear();
    m_said.clear();
    present();
    cancelButton().setFocus(Qt::OtherFocusReason);
    const auto progress = [self = QPointer<ImportDialog>{this}](std::size_t confirmed) {
        if (!self)
            return;
        self->m_confirmed = confirmed;
        self->m_progress->advance(confirmed);
    };
    QCoro::connect(store().importTransactions(m_reading->plan.inputs, progress), this,
                   [this](const Result<void>& outcome) { finish(outcome); });
}

void ImportDialog::finish(const Result<void>& outcome)
{
    if (!store().snapshot())
        return; // with the session the dialog closes, and what ended it is told elsewhere
    m_isStopping = false;
    m_stage = outcome ? Stage::done : Stage::stopped;
    if (!outcome) {
        if (!std::holds_alternative<Cancelled>(outcome.error()))
            m_stoppedBy = outcome.error();
        store().dismissMessages(); // the banner says it
    }
    present();
    firstField().setFocus(Qt::OtherFocusReason);
    // What an import records is called after its key.
    std::vector<std::string> ids;
    for (const auto& input : std::span{m_reading->plan.inputs}.first(m_confirmed))
        ids.push_back(input.idempotencyKey);
    if (!ids.empty())
        Q_EMIT imported(ids);
}

/// While entries are being recorded, leaving is stopping: the dialog stays to say how far it came.
void ImportDialog::reject()
{
    if (m_stage != Stage::importing) {
        CommandForm::reject();
        return;
    }
    if (m_isStopping)
        return;
    m_isStopping = true;
    present();
    store().cancel();
}

void ImportDialog::dragEnterEvent(QDragEnterEvent* event)
{
    if (m_stage != Stage::importing && fileIn(*event->mimeData()))
        event->acceptProposedAction();
}

void ImportDialog::dropEvent(QDropEvent* event)
{
    if (const auto file = fileIn(*event->mimeData()))
        chooseFile(*file);
}
