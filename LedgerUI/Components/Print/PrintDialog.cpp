#include "LedgerUI/Components/Print/PrintDialog.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include <QHBoxLayout>
#include <QLocale>
#include <QPrinter>
#include <QPushButton>
#include <QTime>
#include <QVBoxLayout>

#include "LedgerCore/Client/Http/APIClient.h"
#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Exports/ExportRefusal.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Buttons/SegmentedControl.h"
#include "LedgerUI/Components/Dialogs/FileChoice.h"
#include "LedgerUI/Components/Fields/FormField.h"
#include "LedgerUI/Components/Print/PagePainter.h"
#include "LedgerUI/Components/Print/PagesView.h"
#include "LedgerUI/Components/Print/PrinterChoice.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Forms/SavedFile.h"
#include "LedgerUI/Presentation/Print/Paginator.h"
#include "LedgerUI/Presentation/Text/FailureText.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"

namespace {

using Orientation = PaperChoice::Orientation;

constexpr int bodyWidth = 320;
constexpr int viewWidth = 540;
constexpr auto onWorker = std::numeric_limits<std::size_t>::max();

QString text(std::string_view key)
{
    return word(printWords(), key);
}

/// The paper that offices of this place use.
QPageSize usualPaper()
{
    const bool isLetter = QLocale::system().measurementSystem() == QLocale::ImperialUSSystem;
    return QPageSize{isLetter ? QPageSize::Letter : QPageSize::A4};
}

bool saysChanged(const Failure& failure)
{
    using enum ExportRefusal;
    const auto* error = std::get_if<APIError>(&failure);
    return error &&
           std::ranges::any_of(std::array{ledgerScopeChanged, ledgerChanged, reportScopeChanged, reportChanged},
                               [&](ExportRefusal refusal) { return error->code == code(refusal); });
}

QCoro::Task<std::shared_ptr<const PrintedDocument>> made(PrintJob job, std::string locale)
{
    const auto document = std::make_shared<PrintedDocument>();
    auto making = runForSize(
        onWorker, [document, job = std::move(job), locale = std::move(locale)] { *document = job.document(locale); });
    co_await making;
    co_return document;
}

}

PrintMoment momentNow(std::string today)
{
    return {.day = std::move(today), .time = QTime::currentTime().toString(QStringLiteral("HH:mm")).toStdString()};
}

PrintDialog::PrintDialog(LedgerStore& store, PrintSource source, QWidget* parent)
    : CommandForm{store, parent}, m_source{std::move(source)}, m_job{m_source()}, m_paper{.size = usualPaper()}
{
    setObjectName(QStringLiteral("printDialog"));
    confirmButton().setObjectName(QStringLiteral("printSave"));
    cancelButton().setObjectName(QStringLiteral("printCancel"));
    buildBody();
    bindParts();
    makeDocument();
}

void PrintDialog::buildBody()
{
    auto* body = new QWidget(bodyPlace());
    m_size = new SegmentedControl;
    m_size->setObjectName(QStringLiteral("printPaper"));
    m_size->addSegment(QPageSize::A4, QStringLiteral("A4"));
    m_size->addSegment(QPageSize::Letter, QStringLiteral("Letter"));
    m_sizeField = new FormField(m_size, body);
    m_orientation = new SegmentedControl;
    m_orientation->setObjectName(QStringLiteral("printOrientation"));
    for (const auto each : {Orientation::automatic, Orientation::portrait, Orientation::landscape})
        m_orientation->addSegment(static_cast<int>(each), {});
    m_orientationField = new FormField(m_orientation, body);
    m_count = new TextLabel(TypeStep::body, Token::text, body);
    m_count->setObjectName(QStringLiteral("printPages"));
    m_hint = new TextLabel(TypeStep::small, Token::text2, body);
    m_hint->setWordWrap(true);
    auto* rows = new QVBoxLayout(body);
    rows->setContentsMargins(Space::dialogMargin, 0, Space::dialogMargin, Space::step4);
    rows->setSpacing(Space::fieldToField);
    for (auto* part : {static_cast<QWidget*>(m_sizeField), static_cast<QWidget*>(m_orientationField),
                       static_cast<QWidget*>(m_count), static_cast<QWidget*>(m_hint)})
        rows->addWidget(part);
    rows->addStretch(1);
    setBody(body, bodyWidth);
    m_view = new PagesView(this);
    m_view->viewport()->setObjectName(QStringLiteral("printPaperGround"));
    setAside(m_view, viewWidth);
    m_view->setObjectName(QStringLiteral("printView"));
    auto* foot = new QWidget(this);
    m_print = new QPushButton(foot);
    m_print->setObjectName(QStringLiteral("printPrint"));
    m_print->setAutoDefault(false);
    auto* footRow = new QHBoxLayout(foot);
    footRow->setContentsMargins(0, 0, 0, 0);
    footRow->addStretch(1);
    footRow->addWidget(m_print);
    setFootPart(foot);
}

void PrintDialog::bindParts()
{
    connect(this, &FormDialog::confirmed, this, &PrintDialog::askForFile);
    connect(m_print, &QPushButton::clicked, this, &PrintDialog::askForPrinter);
    connect(m_view, &PagesView::pageChanged, this, &PrintDialog::presentPageShown);
    connect(m_size, &SegmentedControl::chosenByUser, this, [this](int id) {
        m_paper.size = QPageSize{static_cast<QPageSize::PageSizeId>(id)};
        layOut();
    });
    connect(m_orientation, &SegmentedControl::chosenByUser, this, [this](int id) {
        m_paper.orientation = static_cast<Orientation>(id);
        layOut();
    });
}

QWidget& PrintDialog::firstField() const
{
    return *m_size;
}

void PrintDialog::present()
{
    setWindowTitle(m_document ? QStringLiteral("%1: %2").arg(text("title"), m_document->title) : text("title"));
    m_sizeField->setLabel(text("paper"));
    m_size->setName(text("paper"));
    m_size->choose(m_paper.size.id());
    m_orientationField->setLabel(text("orientation"));
    m_orientation->setName(text("orientation"));
    m_orientation->setSegmentText(static_cast<int>(Orientation::automatic), text("orientation.automatic"));
    m_orientation->setSegmentText(static_cast<int>(Orientation::portrait), text("orientation.portrait"));
    m_orientation->setSegmentText(static_cast<int>(Orientation::landscape), text("orientation.landscape"));
    m_orientation->choose(static_cast<int>(m_paper.orientation));
    m_hint->setText(text("hint"));
    m_print->setText(text("action"));
    presentStanding({.stage = m_stage,
                     .refusal = m_refusal,
                     .note = m_note,
                     .confirm = text("savePdf"),
                     .glyph = QStringLiteral("file-earmark-pdf")});
    const bool isReady = m_pages && m_stage == SubmissionStage::editing;
    confirmButton().setEnabled(isReady);
    m_print->setEnabled(isReady);
    presentPageShown();
}

void PrintDialog::presentPageShown()
{
    if (!m_pages) {
        m_count->setText(text("preparing"));
        return;
    }
    const auto count = m_pages->pages.size();
    m_count->setText(countedIn(locale(), printWords(), "pages", count));
    const auto at = word(printWords(), "pages.shown", {std::to_string(m_view->pageShown()), std::to_string(count)});
    m_view->setAccessibleName(text("pages"));
    m_view->setAccessibleDescription(at);
}

void PrintDialog::adoptLanguage(const std::string& /*before*/)
{
    present();
    makeDocument();
}

void PrintDialog::makeDocument()
{
    const int run = ++m_run;
    m_document.reset();
    m_pages.reset();
    present();
    QCoro::connect(made(m_job, locale()), this, [this, run](std::shared_ptr<const PrintedDocument> document) {
        if (run != m_run)
            return;
        m_document = std::move(document);
        layOut();
    });
}

QCoro::Task<PrintDialog::Pages> PrintDialog::laidOut(std::shared_ptr<const PrintedDocument> document, PaperChoice paper)
{
    const auto pages = std::make_shared<PrintedPages>();
    auto making = runForSize(onWorker, [pages, document, paper, families = TypeScale::font(TypeStep::body).families()] {
        *pages = Paginator::pages(*document, paper, families);
    });
    co_await making;
    co_return pages;
}

/// The pages of before stay in sight until the next ones are there. A document that is being made is laid out once it
/// is there, on the paper chosen by then.
void PrintDialog::layOut()
{
    if (!m_document)
        return;
    const int run = ++m_run;
    m_pages.reset();
    present();
    QCoro::connect(laidOut(m_document, m_paper), this, [this, run](Pages pages) {
        if (run != m_run)
            return;
        m_pages = std::move(pages);
        m_view->present(m_pages);
        present();
    });
}

void PrintDialog::askForFile()
{
    if (!m_pages || m_stage != SubmissionStage::editing)
        return;
    FileChoice::save({.name = QStringLiteral("printFileDialog"),
                      .title = text("savePdf"),
                      .filter = text("pdfFiles") + QStringLiteral(" (*.pdf)")},
                     m_pages->fileName + QStringLiteral(".pdf"), this,
                     [this](const std::filesystem::path& path) { saveTo(path); });
}

void PrintDialog::saveTo(const std::filesystem::path& path)
{
    if (!m_pages)
        return;
    giveOut([this, path, pages = m_pages] {
        QCoro::connect(
            SavedFile::write(path, [pages] { return PagePainter::pdf(*pages); }), this,
            [this, path](std::optional<SavingProblem> problem) {
                if (problem)
                    fail({Banner::Kind::error, FailureText::ofSaving(locale(), text("saveFailed"), *problem)});
                else
                    finish(word(printWords(), "saved", {path.filename().string()}));
            });
    });
}

void PrintDialog::askForPrinter()
{
    if (!m_pages || m_stage != SubmissionStage::editing)
        return;
    if (!PrinterChoice::isOffered()) {
        m_note = {Banner::Kind::info, text("noPrinter")};
        present();
        return;
    }
    PrinterChoice::open(m_pages->paper, m_pages->orientation, static_cast<int>(m_pages->pages.size()), this,
                        [this](std::shared_ptr<QPrinter> printer) { printOn(std::move(printer)); });
}

void PrintDialog::printOn(std::shared_ptr<QPrinter> printer)
{
    if (!m_document)
        return;
    giveOut([this, printer = std::move(printer)] {
        const auto sheet = printer->pageLayout();
        const auto orientation =
            sheet.orientation() == QPageLayout::Landscape ? Orientation::landscape : Orientation::portrait;
        QCoro::connect(laidOut(m_document, {.size = sheet.pageSize(), .orientation = orientation}), this,
                       [this, printer](const Pages& pages) {
                           if (PagePainter::print(*printer, *pages))
                               finish(text("printed"));
                           else
                               fail({Banner::Kind::error, text("printFailed")});
                       });
    });
}

void PrintDialog::giveOut(std::function<void()> proceed)
{
    m_stage = SubmissionStage::saving;
    m_refusal.reset();
    m_note = {};
    present();
    if (!m_job.permission)
        return proceed();
    QCoro::connect(m_job.permission(), this, [this, proceed = std::move(proceed)](const Result<void>& allowed) {
        if (!store().snapshot())
            return; // with the session the dialog closes
        if (allowed)
            proceed();
        else
            refuse(allowed.error());
    });
}

/// Where the books have changed, the person looks again before anything is given out.
void PrintDialog::refuse(const Failure& failure)
{
    if (!saysChanged(failure)) {
        m_refusal = failure;
        return fail({});
    }
    m_job = m_source();
    fail({Banner::Kind::info, text("renewed")});
    makeDocument();
}

void PrintDialog::finish(const QString& what)
{
    Q_EMIT finished(what);
    leave();
}

void PrintDialog::fail(const Note& why)
{
    m_stage = SubmissionStage::editing;
    m_note = why;
    present();
    confirmButton().setFocus(Qt::OtherFocusReason);
}
