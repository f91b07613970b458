#pragma once

#include <string>

#include "LedgerUI/Components/Dialogs/FormDialog.h"

class QPushButton;
class TextLabel;

/// Shows the activation code of a new invitation, once. Deletes itself when it closes; open it with `open()` over a
/// window that outlives the session.
class InvitationCodeDialog final : public FormDialog {
    Q_OBJECT
public:
    struct Invitation {
        std::string name;
        std::string email;
        std::string code;
    };

    InvitationCodeDialog(Invitation invitation, QWidget* parent);

protected:
    void changeEvent(QEvent* event) override;

private:
    void buildBody();
    void present();
    void copy();

    Invitation m_invitation;
    bool m_isCopied = false;
    TextLabel* m_text = nullptr;
    TextLabel* m_code = nullptr;
    QPushButton* m_copy = nullptr;
    TextLabel* m_hint = nullptr;
};
