#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

#include "LedgerUI/Components/Dialogs/CommandForm.h"
#include "LedgerUI/Presentation/Reports/Output/ReportExport.h"

class FormField;
class QVBoxLayout;
class SegmentedControl;
class TextLabel;

/// Saves a table of a report as a CSV file, after the books were compared with what the report was worked out from.
/// Deletes itself when it closes; open it with `open()`.
class ReportExportDialog final : public CommandForm {
    Q_OBJECT
public:
    /// What the page shows now; null while it shows nothing.
    using Source = std::function<ReportSheetPointer()>;
    ReportExportDialog(LedgerStore& store, Source source, ReportPart part, QWidget* parent);

    /// The table of this name, where there is one.
    void choose(const QString& tableName);
    /// Goes on as if the person had chosen this file.
    void saveTo(const std::filesystem::path& path);

Q_SIGNALS:
    /// The file is written; the dialog closes.
    void saved(const QString& fileName);

private:
    void present() override;
    /// The page recomputes its report first.
    void adoptSnapshot() override;
    void adoptLanguage(const std::string& before) override;
    [[nodiscard]] QWidget& firstField() const override;

    void buildBody();
    void followPage();
    void takeSheet();
    void presentScope();
    void choose(const ReportExport::Choice& table);
    void tellChanges();
    [[nodiscard]] const ReportExport::Choice* chosen() const;
    void askForFile();
    void finish(const ReportExport::Outcome& outcome, const std::filesystem::path& path,
                const ReportSheetPointer& refused);

    Source m_source;
    ReportPart m_part;
    ReportSheetPointer m_sheet;
    ReportSheetPointer m_outdated; // what was refused, until it is told what has changed since
    std::vector<ReportExport::Choice> m_choices;
    std::string m_tableID;
    SubmissionStage m_stage = SubmissionStage::editing;
    std::optional<Failure> m_refusal;
    Note m_note;

    FormField* m_tableField = nullptr;
    SegmentedControl* m_table = nullptr;
    TextLabel* m_scope = nullptr;
    TextLabel* m_fileLabel = nullptr;
    TextLabel* m_file = nullptr;
    TextLabel* m_rows = nullptr;
    TextLabel* m_recheck = nullptr;
};
