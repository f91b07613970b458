#pragma once

#include <array>
#include <optional>
#include <vector>

#include <QPointer>
#include <QWidget>

#include "LedgerUI/Presentation/SignIn/SignInMode.h"
#include "LedgerUI/Presentation/SignIn/SignInProblem.h"
#include "LedgerUI/Presentation/SignIn/SignInState.h"

class AccessFlowView;
class AddressFold;
class Banner;
class BusyBar;
class LedgerStore;
class QComboBox;
class QScrollArea;
class QShortcut;
class SignInAside;
class SignInProgress;
class SignInWay;
class TextLabel;

/// What a signed-out person sees: language, ways to sign in, the demonstration and the service's address.
class SignInView final : public QWidget {
    Q_OBJECT
public:
    SignInView(LedgerStore& store, const SignInStart& start, QWidget* parent = nullptr);

protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    QWidget* buildStrip(QWidget* ground);
    QWidget* buildPanel(const SignInStart& start, QWidget* ground);
    void buildPage(const SignInStart& start);
    void bind();
    void bindWay(SignInWay& way);
    void choose(SignInMode mode);
    void activate(const SignInDraft& draft);
    [[nodiscard]] SignInWay& way() const { return *m_ways[static_cast<std::size_t>(m_mode)]; }
    /// Something is about to be sent, and its answer waited for.
    void expectAnswer();
    void followStore();
    void present();
    void presentMode();
    /// Whether something in this window waits until the member who was signed in last is back.
    [[nodiscard]] bool isAwaited();
    void presentBanner();
    /// As high as the page needs, within the window; the page scrolls where that is not enough.
    void fitPanel();
    void placeFocus(QWidget* lost);
    void retranslate();
    void setTabOrders();

    LedgerStore& m_store;
    std::optional<MemberIdentity> m_last; // who was signed in last
    QString m_lastEmail;                  // theirs
    QComboBox* m_language = nullptr;
    SignInAside* m_aside = nullptr;
    QWidget* m_panel = nullptr;
    QScrollArea* m_scroll = nullptr;
    QWidget* m_page = nullptr;
    TextLabel* m_title = nullptr;
    Banner* m_banner = nullptr;
    std::array<SignInWay*, signInModes.size()> m_ways{}; // in the order of signInModes
    AccessFlowView* m_activation = nullptr;              // one of them
    SignInMode m_mode = SignInMode::login;
    std::optional<SignInProblem> m_warning; // what concerns the page as a whole
    AddressFold* m_address = nullptr;
    SignInProgress* m_progress = nullptr;
    BusyBar* m_busy = nullptr;
    std::vector<QShortcut*> m_stopKeys; // in force only while there is something to stop
    SignInWait m_wait;
    QPointer<QWidget> m_focusBefore; // a field that is locked gives the focus away until the answer is there
};
