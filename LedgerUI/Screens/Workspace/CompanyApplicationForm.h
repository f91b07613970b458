#pragma once

#include <optional>
#include <string>

#include "LedgerCore/Domain/Records/Requests/AccessRecords.h"
#include "LedgerUI/Components/Dialogs/CommandForm.h"

class FormField;
class QLineEdit;
class TextLabel;

/// Applying for a further company. One form is one application, however often it is sent: when the reply was lost, the
/// name stays as it was sent.
class CompanyApplicationForm final : public CommandForm {
    Q_OBJECT
public:
    CompanyApplicationForm(LedgerStore& store, QWidget* parent);

Q_SIGNALS:
    /// The company is open without a review: what there is to say of it.
    void founded(const QString& sentence);

protected:
    void present() override;
    [[nodiscard]] QWidget& firstField() const override;

private:
    void buildLayout();
    void proceed();
    /// The name to be sent, unless something is wrong with it, which is said then.
    std::optional<std::string> checked();
    void send(const std::string& name);
    void finish(const Result<PendingCompanyRegistration>& applied);

    std::string m_requestID;
    Submission<QString, std::string> m_submission{QString{}}; // the name as it is typed, and as it was sent
    TextLabel* m_lead = nullptr;
    QLineEdit* m_name = nullptr;
    FormField* m_field = nullptr;
    bool m_isChecked = false; // a wrong name is named from the first try on
};
