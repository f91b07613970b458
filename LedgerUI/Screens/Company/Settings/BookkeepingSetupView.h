#pragma once

#include <optional>

#include "LedgerUI/Components/Dialogs/CommandForm.h"
#include "LedgerUI/Presentation/Company/FinancialSettingsForm.h"

class DayEdit;
class FieldError;
class FormField;
class QCheckBox;
class QPushButton;
class QRadioButton;
class TextLabel;

/// Confirms the first day of the books, once and for all. Deletes itself when it closes; open it with `open()`.
class BookkeepingSetupView final : public CommandForm {
    Q_OBJECT
public:
    BookkeepingSetupView(LedgerStore& store, QWidget* parent);

Q_SIGNALS:
    void initialized();

private:
    void present() override;
    void adoptSnapshot() override;
    [[nodiscard]] QWidget& firstField() const override;

    void buildBody();
    void bind();
    void edit(auto change);
    [[nodiscard]] QString whyNot() const;
    [[nodiscard]] QString dayMessage() const;
    [[nodiscard]] std::string latestDay() const;
    void confirm();
    /// The command that is to be sent, unless something is wrong, which is said then.
    std::optional<FinancialSettingsCommand> checked();
    void send(const FinancialSettingsCommand& command);
    void finish(const Result<void>& reply);

    SetupSubmission m_submission;
    SetupForm m_initial;
    TextLabel* m_modeHead = nullptr;
    QRadioButton* m_withOpenings = nullptr;
    QRadioButton* m_fromZero = nullptr;
    DayEdit* m_day = nullptr;
    FormField* m_dayField = nullptr;
    TextLabel* m_earliest = nullptr;
    QCheckBox* m_agreed = nullptr;
    FieldError* m_error = nullptr;
    QPushButton* m_reload = nullptr;
};
