#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include <QCoro/QCoroTask>

#include "LedgerCore/Client/Errors/Failure.h"
#include "LedgerUI/Components/Dialogs/CommandForm.h"
#include "LedgerUI/Presentation/Print/PrintHead.h"
#include "LedgerUI/Presentation/Print/PrintedPages.h"

class FormField;
class PagesView;
class QPrinter;
class SegmentedControl;
class TextLabel;

/// The time of now, on the day that the program counts as today.
PrintMoment momentNow(std::string today);

/// What is printed.
struct PrintJob {
    /// Makes the document in a language. Called on a worker, so it holds what it looks at.
    std::function<PrintedDocument(const std::string& locale)> document;
    /// Whether the document may still be given out as it is, asked before it is printed or saved; null for always.
    std::function<QCoro::Task<Result<void>>()> permission = {};
};

/// Asks for what is to be printed as it stands now: at first, and again once that has changed.
using PrintSource = std::function<PrintJob()>;

/// Shows a document as it will look on paper, prints it and saves it as PDF. Deletes itself when it closes; open it
/// with `open()`.
class PrintDialog final : public CommandForm {
    Q_OBJECT
public:
    PrintDialog(LedgerStore& store, PrintSource source, QWidget* parent);

    /// Goes on as if the person had chosen this file.
    void saveTo(const std::filesystem::path& path);
    /// Lays the document out for the printer's paper and prints it.
    void printOn(std::shared_ptr<QPrinter> printer);

Q_SIGNALS:
    /// The document is printed or saved; the dialog closes. `what` says so.
    void finished(const QString& what);

private:
    using Pages = std::shared_ptr<const PrintedPages>;

    void present() override;
    void adoptLanguage(const std::string& before) override;
    void adoptSnapshot() override {} // a document is of the moment in which it was asked for
    [[nodiscard]] QWidget& firstField() const override;

    void buildBody();
    void bindParts();
    void presentPageShown();
    void makeDocument();
    void layOut();
    static QCoro::Task<Pages> laidOut(std::shared_ptr<const PrintedDocument> document, PaperChoice paper);
    void askForFile();
    void askForPrinter();
    /// Goes on with `proceed` once the document may be given out.
    void giveOut(std::function<void()> proceed);
    void finish(const QString& what);
    void refuse(const Failure& failure);
    void fail(const Note& why);

    PrintSource m_source;
    PrintJob m_job;
    PaperChoice m_paper;
    std::shared_ptr<const PrintedDocument> m_document; // null until it is made
    Pages m_pages;                                     // null while they are laid out
    int m_run = 0;                                     // whose answer counts
    SubmissionStage m_stage = SubmissionStage::editing;
    std::optional<Failure> m_refusal;
    Note m_note;
    FormField* m_sizeField = nullptr;
    SegmentedControl* m_size = nullptr;
    FormField* m_orientationField = nullptr;
    SegmentedControl* m_orientation = nullptr;
    TextLabel* m_count = nullptr;
    TextLabel* m_hint = nullptr;
    PagesView* m_view = nullptr;
    class QPushButton* m_print = nullptr;
};
