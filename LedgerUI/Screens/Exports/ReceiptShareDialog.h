#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "LedgerUI/Components/Dialogs/CommandForm.h"
#include "LedgerUI/Presentation/Exports/DigitalReceipt.h"

class DigitalReceiptView;
class FormField;
class QCheckBox;
class QComboBox;
class QPrinter;
class QVBoxLayout;
class SegmentedControl;
class TextLabel;

/// Shows the digital receipt of an entry, and copies, saves or prints it as it is shown. Stays open until a person
/// closes it, and deletes itself then.
class ReceiptShareDialog final : public CommandForm {
    Q_OBJECT
public:
    /// The entry must be in the store's snapshot.
    ReceiptShareDialog(LedgerStore& store, const std::string& entryID, QWidget* parent);

    /// Goes on as if the person had chosen this file.
    void saveTo(const std::filesystem::path& path);
    /// Prints on the printer's paper.
    void printOn(QPrinter& printer);

private:
    enum Format { png, pdf };

    void present() override;
    void adoptSnapshot() override;
    [[nodiscard]] QWidget& firstField() const override;

    void buildBody();
    void buildChoices(QVBoxLayout& column, QWidget* body);
    void buildFoot();
    void bindParts();
    void presentReceipt();
    void copyImage();
    void askForFile();
    void askForPrinter();
    void say(Banner::Kind kind, const QString& text);
    /// What was done, and that the receipt can be shared now.
    void sayReady(const QString& done);

    LedgerTransaction m_entry;
    DigitalReceiptChoice m_choice;
    DigitalReceipt m_receipt;
    SubmissionStage m_stage = SubmissionStage::editing;
    Note m_note;
    DigitalReceiptView* m_view = nullptr;
    TextLabel* m_hint = nullptr;
    QCheckBox* m_account = nullptr;
    QCheckBox* m_entryNote = nullptr;
    QCheckBox* m_recorder = nullptr;
    FormField* m_languageField = nullptr;
    QComboBox* m_language = nullptr;
    FormField* m_formatField = nullptr;
    SegmentedControl* m_format = nullptr;
    class QPushButton* m_copy = nullptr;
    class QPushButton* m_print = nullptr;
};
