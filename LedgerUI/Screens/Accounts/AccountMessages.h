#pragma once

#include <functional>
#include <optional>

#include <QWidget>

#include "LedgerUI/Presentation/Accounts/SetupChecklist.h"

class Banner;
class IconButton;
class QPushButton;

/// Above the accounts: the next step of a company's setup, or the next opening balance after one was recorded.
class AccountMessages final : public QWidget {
    Q_OBJECT
public:
    explicit AccountMessages(QWidget* parent = nullptr);

    /// One thing to go on with.
    struct Offer {
        QString text;
        QString button;
        std::function<void()> run;
    };
    /// Nothing hides the message. What a person closed stays away until it says something else.
    void present(std::optional<Offer> offer);
    void enter();

Q_SIGNALS:
    /// It is closed, and the focus has to go elsewhere.
    void left();

private:
    Banner* m_banner = nullptr;
    QPushButton* m_go = nullptr;
    IconButton* m_close = nullptr;
    std::optional<Offer> m_offer;
    QString m_closedText;
};
