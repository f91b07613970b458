#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "LedgerUI/Components/Dialogs/CommandForm.h"
#include "LedgerUI/Presentation/Exports/LedgerExportForm.h"

class LedgerExportFields;
class LedgerExportPreviewPane;
class TextLabel;
class QTimer;

/// Chooses what of the ledger goes into a file, shows how much that is, and saves it where the person wants. Deletes
/// itself when it closes; open it with `open()`, and only for a member who may export.
class LedgerExportDialog final : public CommandForm {
    Q_OBJECT
public:
    /// Begins as the ledger page is narrowed, or with what is selected on it.
    LedgerExportDialog(LedgerStore& store, LedgerExport::Page page, QWidget* parent);

    /// Goes on as if the person had chosen this file.
    void saveTo(const std::filesystem::path& path);

Q_SIGNALS:
    /// The file is written; the dialog closes.
    void saved(const QString& fileName);

private:
    void present() override;
    void adoptSnapshot() override;
    void adoptLanguage(const std::string& before) override;
    [[nodiscard]] QWidget& firstField() const override;

    void buildBody();
    void bindParts();
    void edit(LedgerExportForm form);
    void count();
    void adopt(LedgerExport::Preview previewed);
    void proceed();
    void askForFile();
    void finish(const LedgerExport::Outcome& outcome, const std::filesystem::path& path);
    [[nodiscard]] std::vector<PrintedFact> facts() const;
    [[nodiscard]] const LedgerExport::Preview* counted() const;
    [[nodiscard]] QString fileName() const;

    LedgerExport::PagePointer m_page;
    LedgerExportForm m_form;
    std::vector<LedgerExportForm::Source> m_sources;
    std::optional<LedgerExport::Preview> m_previewed;
    int m_counting = 0; // the run whose answer counts
    bool m_savesWhenCounted = false;
    SubmissionStage m_stage = SubmissionStage::editing;
    std::optional<Failure> m_refusal;
    Note m_note;
    QTimer* m_pause = nullptr;

    LedgerExportFields* m_fields = nullptr;
    TextLabel* m_narrowed = nullptr;
    TextLabel* m_format = nullptr;
    LedgerExportPreviewPane* m_preview = nullptr;
};
