#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "LedgerUI/Components/Dialogs/CommandForm.h"
#include "LedgerUI/Presentation/Exports/LedgerExportForm.h"

class ChoiceField;
class DayEdit;
class FieldError;
class FormField;
class LedgerExportPreviewPane;
class TextLabel;
class QCheckBox;
class QTimer;
class SegmentedControl;

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

    struct Kind {
        std::string kind;
        QCheckBox* box = nullptr;
    };

    QWidget* buildDays(QWidget* parent);
    QWidget* buildKinds(QWidget* parent);
    QWidget* buildSource(QWidget* parent);
    QWidget* buildChoice(QWidget* parent);
    QWidget* buildReceipts(QWidget* parent);
    void buildBody();
    void bindParts();
    void presentSource();
    [[nodiscard]] QString sourceText(LedgerExportForm::Source source) const;
    void presentChoices();
    void presentKinds();
    void edit(LedgerExportForm form);
    void count();
    void adopt(LedgerExport::Preview previewed);
    void proceed();
    void askForFile();
    void finish(const LedgerExport::Outcome& outcome, const std::filesystem::path& path);
    [[nodiscard]] bool isCounting() const;
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

    SegmentedControl* m_source = nullptr;
    FormField* m_sourceField = nullptr;
    TextLabel* m_facts = nullptr;
    QWidget* m_choice = nullptr; // the fields of what is chosen here
    TextLabel* m_daysLabel = nullptr;
    DayEdit* m_firstDay = nullptr;
    DayEdit* m_lastDay = nullptr;
    TextLabel* m_to = nullptr;
    FieldError* m_firstDayError = nullptr;
    FieldError* m_lastDayError = nullptr;
    ChoiceField* m_accounts = nullptr;
    FormField* m_accountsField = nullptr;
    TextLabel* m_accountsHint = nullptr;
    ChoiceField* m_currencies = nullptr;
    FormField* m_currenciesField = nullptr;
    TextLabel* m_kindsLabel = nullptr;
    std::vector<Kind> m_kinds;
    FieldError* m_kindsError = nullptr;
    QCheckBox* m_receiptIndex = nullptr;
    TextLabel* m_receiptHint = nullptr;
    TextLabel* m_narrowed = nullptr;
    TextLabel* m_format = nullptr;
    LedgerExportPreviewPane* m_preview = nullptr;
};
