#pragma once

#include <optional>

#include "LedgerCore/Domain/Records/Requests/AccessRecords.h"
#include "LedgerUI/Components/Dialogs/CommandForm.h"

class FormField;
class QLineEdit;
class TextLabel;

/// Joining a company by the code of an invitation: first it shows what the code opens, then it goes there.
class CompanyAccessView final : public CommandForm {
    Q_OBJECT
public:
    CompanyAccessView(LedgerStore& store, QWidget* parent);

protected:
    void present() override;
    [[nodiscard]] QWidget& firstField() const override;

private:
    void buildLayout();
    void proceed();
    void look();
    void join();
    void finish(const std::optional<Failure>& failure);
    void edited();

    TextLabel* m_lead = nullptr;
    QLineEdit* m_code = nullptr;
    FormField* m_field = nullptr;
    TextLabel* m_preview = nullptr;
    std::optional<InvitationPreview> m_invitation; // what the code opens, once the service has said so
    std::optional<Failure> m_refusal;
    bool m_isMissing = false;
    bool m_isBusy = false;
};
