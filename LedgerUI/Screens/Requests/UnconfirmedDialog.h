#pragma once

#include <string>
#include <vector>

#include "LedgerUI/Components/Dialogs/FormDialog.h"
#include "LedgerUI/Presentation/Requests/UnconfirmedRequests.h"

class LedgerStore;
class QVBoxLayout;
class TextLabel;

/// Every request that the service has not confirmed, each with a way to send it again as it stands and to the form
/// that it came from. Deletes itself when it closes; open it with `open()`.
class UnconfirmedDialog final : public FormDialog {
    Q_OBJECT
public:
    UnconfirmedDialog(LedgerStore& store, QWidget* parent);

protected:
    void changeEvent(QEvent* event) override;

private:
    void present();
    void fill();
    QWidget* buildRow(std::size_t at);
    void retry(const std::string& id);
    void finish(const UnconfirmedRequest& request, const KeptRequests& sent, const std::optional<Failure>& failure);
    void openForm(const std::string& id);

    LedgerStore& m_store;
    std::vector<UnconfirmedRequest> m_requests;
    TextLabel* m_hint = nullptr;
    TextLabel* m_none = nullptr;
    QWidget* m_list = nullptr;
    QVBoxLayout* m_rows = nullptr;
};
