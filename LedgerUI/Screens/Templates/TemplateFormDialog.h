#pragma once

#include <map>
#include <optional>

#include "LedgerUI/Components/Dialogs/CommandForm.h"
#include "LedgerUI/Components/Fields/FieldMap.h"
#include "LedgerUI/Presentation/Forms/AmountTyping.h"
#include "LedgerUI/Presentation/Templates/TemplateForm.h"

class AmountEdit;
class DayEdit;
class FormField;
class LimitedEdit;
class QCheckBox;
class QComboBox;
class QHBoxLayout;
class TemplateEntryFields;
class TransactionForm;

/// Saves a template, new or changed. Deletes itself when it closes; open it with `open()`.
class TemplateFormDialog final : public CommandForm {
    Q_OBJECT
public:
    TemplateFormDialog(LedgerStore& store, TemplateForm form, QWidget* parent);
    /// On a new template of an entry of this day, over `parent`.
    static void openOn(LedgerStore& store, const TemplateEntry& entry, const std::string& entryDay, QWidget* parent);
    /// The form offers to keep what stands in it as a template, where the service keeps templates.
    static void offerIn(TransactionForm& form, LedgerStore& store);

Q_SIGNALS:
    /// The service has it, and the dialog is about to close.
    void saved();

private:
    void present() override;
    void adoptSnapshot() override;
    void adoptLanguage(const std::string& before) override;
    [[nodiscard]] QWidget& firstField() const override;

    void buildBody();
    QHBoxLayout* buildRhythm(QWidget* body);
    void bind();
    void bindAmount();
    void bindEntry();
    void presentRhythm();
    /// What stands under the fields: everything that is wrong once it was to be saved, and before that the amount
    /// alone.
    [[nodiscard]] std::map<TemplateForm::Field, QString> messages() const;
    void edit(auto change);
    void submit();
    /// The command that is to be sent, unless something is wrong, which is said then.
    std::optional<TemplateCommand> checked();
    void send(const TemplateCommand& command);
    void finish(const Result<EntryTemplateList>& reply);

    Submission<TemplateForm, TemplateCommand> m_submission;
    TemplateForm m_initial;
    std::string m_key; // of a new template, for every attempt
    bool m_isChecked = false;
    bool m_isAmountLeft = false; // and not changed since
    std::optional<PasteRefusal> m_refused;
    FieldMap<TemplateForm::Field> m_fields;
    TemplateEntryFields* m_entry = nullptr;
    LimitedEdit* m_name = nullptr;
    AmountEdit* m_amount = nullptr;
    LimitedEdit* m_note = nullptr;
    LimitedEdit* m_every = nullptr;
    QComboBox* m_unit = nullptr;
    DayEdit* m_first = nullptr;
    DayEdit* m_last = nullptr;
    QCheckBox* m_shared = nullptr;
    FormField* m_nameField = nullptr;
    FormField* m_amountField = nullptr;
    FormField* m_noteField = nullptr;
    FormField* m_everyField = nullptr;
    FormField* m_unitField = nullptr;
    FormField* m_firstField = nullptr;
    FormField* m_lastField = nullptr;
};
