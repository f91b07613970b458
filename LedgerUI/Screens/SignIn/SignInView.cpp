#include "LedgerUI/Screens/SignIn/SignInView.h"

#include <algorithm>

#include <QComboBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QScrollArea>
#include <QShortcut>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/EntryDrafts.h"
#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Text/AppLanguage.h"
#include "LedgerUI/Components/Buttons/ComboBoxLists.h"
#include "LedgerUI/Components/Dialogs/CommandForm.h"
#include "LedgerUI/Components/Page/Banner.h"
#include "LedgerUI/Components/Page/BusyBar.h"
#include "LedgerUI/Components/Text/GlyphLabel.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Keys/KeyBindings.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/SignIn/AccessFlowView.h"
#include "LedgerUI/Screens/SignIn/AddressFold.h"
#include "LedgerUI/Screens/SignIn/AuthEntryView.h"
#include "LedgerUI/Screens/SignIn/DemoIdentitySelection.h"
#include "LedgerUI/Screens/SignIn/SignInAside.h"
#include "LedgerUI/Screens/SignIn/SignInForm.h"
#include "LedgerUI/Screens/SignIn/SignInProgress.h"
#include "LedgerUI/Screens/Workspace/UnsavedChanges.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int stripHeight = 48;
constexpr int languageWidth = 180;
constexpr int panelWidth = 820;
constexpr int panelHeight = 472;
constexpr int formPadding = 32;
constexpr int aroundPanel = 4;  // its border and the margin inside it, at both ends
constexpr int leastMargin = 20; // below the panel in a low window

}

SignInView::SignInView(LedgerStore& store, const SignInStart& start, QWidget* parent)
    : QWidget{parent}, m_store{store}, m_last{start.member}, m_lastEmail{qString(start.email)},
      m_wait{store.isBusy() ? start.wait : SignInWait::nothing}
{
    setObjectName(QStringLiteral("signInView"));
    auto* ground = new QFrame(this);
    ground->setObjectName(QStringLiteral("signInGround"));
    auto* column = new QVBoxLayout(ground);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(buildStrip(ground));
    column->addStretch(1);
    column->addWidget(buildPanel(start, ground), 0, Qt::AlignHCenter);
    column->addStretch(1);
    column->addSpacing(leastMargin);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(ground);
    m_busy = new BusyBar(this);
    m_busy->overlay(this, stripHeight);
    bind();
    setTabOrders();
    presentMode();
    retranslate();
    // Forms that wait for their member go aside only after this screen was made.
    QMetaObject::invokeMethod(this, &SignInView::presentBanner, Qt::QueuedConnection);
}

void SignInView::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QWidget::changeEvent(event);
}

bool SignInView::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_page && event->type() == QEvent::LayoutRequest)
        fitPanel();
    return QWidget::eventFilter(watched, event);
}

void SignInView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    fitPanel();
}

void SignInView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    fitPanel();
    way().form().focusStart();
}

QWidget* SignInView::buildStrip(QWidget* ground)
{
    auto* strip = new QWidget(ground);
    strip->setFixedHeight(stripHeight);
    m_language = new QComboBox(strip);
    m_language->setObjectName(QStringLiteral("languageChoice"));
    m_language->setFixedWidth(languageWidth);
    dressComboBox(*m_language);
    for (const auto tag : AppLanguage::supportedLocales)
        m_language->addItem(InterfaceLanguage::nativeName(tag), qString(tag));
    auto* layout = new QHBoxLayout(strip);
    layout->setContentsMargins(Space::pageMargin, 0, Space::pageMargin, 0);
    layout->setSpacing(Space::step2);
    layout->addStretch(1);
    layout->addWidget(new GlyphLabel(QStringLiteral("translate"), Token::text2, Space::icon, strip));
    layout->addWidget(m_language);
    return strip;
}

/// Each part is made where it is to stay: whatever changes its parent is dressed once more with all that it holds.
QWidget* SignInView::buildPanel(const SignInStart& start, QWidget* ground)
{
    m_panel = new QFrame(ground);
    m_panel->setObjectName(QStringLiteral("signInPanel"));
    m_panel->setFixedSize(panelWidth, panelHeight);
    m_aside = new SignInAside(m_store, m_panel);
    m_scroll = new QScrollArea(m_panel);
    m_scroll->setWidgetResizable(true);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_scroll->setFocusPolicy(Qt::NoFocus);
    m_page = new QWidget(m_scroll->viewport());
    buildPage(start);
    m_scroll->setWidget(m_page);
    // The panel's round corners show through.
    m_scroll->viewport()->setAutoFillBackground(false);
    m_page->setAutoFillBackground(false);

    auto* layout = new QHBoxLayout(m_panel);
    layout->setContentsMargins(1, 1, 1, 1);
    layout->setSpacing(0);
    layout->addWidget(m_aside);
    layout->addWidget(m_scroll, 1);
    return m_panel;
}

void SignInView::buildPage(const SignInStart& start)
{
    m_title = new TextLabel(TypeStep::title, Token::text, m_page);
    m_title->setObjectName(QStringLiteral("signInTitle"));
    m_banner = new Banner(Banner::Kind::info, m_page);
    m_banner->setObjectName(QStringLiteral("signInBanner"));
    m_activation = new AccessFlowView(AccessFlow::Purpose::join, m_store, m_page);
    m_ways = {new AuthEntryView(SignInPage::login, m_store, m_page),
              new AuthEntryView(SignInPage::registration, m_store, m_page), m_activation,
              new AccessFlowView(AccessFlow::Purpose::reset, m_store, m_page)};
    m_progress = new SignInProgress(m_page);
    m_address = new AddressFold(m_store, start.defaultAddress, m_page);
    auto* form = new QVBoxLayout(m_page);
    form->setContentsMargins(formPadding, formPadding - Space::step1, formPadding, Space::step6);
    form->setSpacing(Space::step3);
    form->addWidget(m_title);
    form->addWidget(m_banner);
    for (auto* each : m_ways) {
        each->setEmail(qString(start.email));
        form->addWidget(each);
    }
    form->addWidget(m_progress);
    form->addStretch(1);
    form->addWidget(m_address);
    m_page->installEventFilter(this);
}

void SignInView::bind()
{
    connect(m_language, &QComboBox::activated, this,
            [this](int index) { m_store.setAppLanguage(m_language->itemData(index).toString().toStdString()); });
    connect(m_aside, &SignInAside::modeChosen, this, &SignInView::choose);
    const auto* demonstration = &m_aside->demonstration();
    connect(demonstration, &DemoIdentitySelection::submitting, m_address, &AddressFold::commit);
    connect(demonstration, &DemoIdentitySelection::addressRefused, m_address, &AddressFold::complain);
    for (auto* each : m_ways)
        bindWay(*each);
    connect(m_address, &AddressFold::submitted, this, [this] { way().submit(); });
    // In this order: the address is handed over before the screen says where it connects to.
    connect(demonstration, &DemoIdentitySelection::submitting, this, &SignInView::expectAnswer);
    connect(m_progress, &SignInProgress::stopped, &m_store, &LedgerStore::cancel);
    for (const auto& keys : KeyBindings::keys(Command::leave)) {
        m_stopKeys.push_back(new QShortcut(keys, this));
        connect(m_stopKeys.back(), &QShortcut::activated, &m_store, &LedgerStore::cancel);
    }
    connect(&m_store, &LedgerStore::isBusyChanged, this, &SignInView::followStore);
    connect(&m_store, &LedgerStore::pendingCompanyRegistrationChanged, this, &SignInView::presentBanner);
}

void SignInView::bindWay(SignInWay& way)
{
    connect(&way, &SignInWay::submitting, m_address, &AddressFold::commit);
    connect(&way, &SignInWay::submitting, this, &SignInView::expectAnswer);
    connect(&way, &SignInWay::addressRefused, m_address, &AddressFold::complain);
    connect(&way, &SignInWay::modeWanted, this, &SignInView::choose);
    connect(&way, &SignInWay::activationWanted, this, &SignInView::activate);
    connect(&way, &SignInWay::warned, this, [this](const SignInProblem& problem) {
        m_warning = problem;
        presentBanner();
    });
}

/// The e-mail goes along; what is secret stays behind.
void SignInView::choose(SignInMode mode)
{
    if (mode != m_mode) {
        const auto email = way().email();
        way().leave();
        m_mode = mode;
        if (!email.isEmpty())
            way().setEmail(email);
        m_warning.reset();
        presentMode();
    }
    way().form().focusStart();
}

void SignInView::activate(const SignInDraft& draft)
{
    choose(SignInMode::join);
    m_activation->activate(draft);
}

void SignInView::expectAnswer()
{
    if (m_store.isBusy())
        return;
    m_wait = SignInWait::answer;
    m_warning.reset();
    presentBanner();
}

void SignInView::followStore()
{
    if (m_store.isBusy() && m_wait == SignInWait::nothing)
        m_wait = SignInWait::session; // what no form here asked for is the start of the program
    else if (!m_store.isBusy())
        m_wait = SignInWait::nothing;
    present();
}

void SignInView::present()
{
    const QPointer<QWidget> focus = window()->focusWidget();
    const auto state = signInState(m_wait, m_store.serverURL(), InterfaceLanguage::tag());
    m_progress->present(state.progress);
    for (auto* each : m_ways)
        each->present(state);
    for (auto* each : m_stopKeys)
        each->setEnabled(m_wait != SignInWait::nothing);
    m_aside->present(state);
    m_address->setEnabled(state.maySubmit);
    m_busy->setBusy(m_wait != SignInWait::nothing);
    // What is locked or taken away hands the focus to whatever comes next in the order of Tab.
    const bool hasWaited = focus == m_progress && m_wait == SignInWait::nothing;
    const bool isLost =
        !focus || hasWaited || (isAncestorOf(focus) && !(focus->isEnabled() && focus->isVisibleTo(this)));
    if (isLost && isVisible())
        placeFocus(focus);
}

void SignInView::presentMode()
{
    m_aside->choose(m_mode);
    m_title->setText(word(signInWords(), signInModeRow(m_mode).title));
    for (auto* each : m_ways)
        each->setVisible(each == &way());
    presentBanner();
}

bool SignInView::isAwaited()
{
    return m_last && (CommandForm::waitsFor(*m_last, *this) || UnsavedChanges::count(*this) > 0 ||
                      m_store.keptRequests(*m_last).count() > 0 || m_store.drafts().hasBegun(*m_last));
}

void SignInView::presentBanner()
{
    const auto pending = m_store.pendingCompanyRegistration();
    if (m_warning)
        m_banner->present(Banner::Kind::warn, m_warning->text(InterfaceLanguage::tag()));
    else if (pending)
        m_banner->present(Banner::Kind::warn,
                          word(signInWords(), "pendingNotice", {pending->companyName, pending->email}));
    else if (isAwaited() && m_mode == SignInMode::login)
        m_banner->present(Banner::Kind::info, word(signInWords(), "keptNotice", {m_lastEmail.toStdString()}));
    else if (m_mode == SignInMode::registration)
        m_banner->present(Banner::Kind::info, word(signInWords(), "reviewNotice"));
    else
        m_banner->present(Banner::Kind::info, {});
}

void SignInView::fitPanel()
{
    if (!m_panel)
        return;
    const int formWidth = panelWidth - m_aside->width() - aroundPanel;
    const int wanted = m_page->layout()->heightForWidth(formWidth) + aroundPanel;
    const int room = std::max(panelHeight, height() - stripHeight - leastMargin);
    // A bar that has come once makes the page narrower, and thereby higher: it would stay for ever.
    m_scroll->setVerticalScrollBarPolicy(wanted > room ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
    m_panel->setFixedHeight(std::clamp(wanted, panelHeight, room));
}

/// Where the progress is said while nothing else can be done; afterwards where it was.
void SignInView::placeFocus(QWidget* lost)
{
    if (m_wait == SignInWait::answer) {
        m_focusBefore = lost;
        m_progress->setFocus();
    } else if (m_focusBefore && m_focusBefore->isEnabled()) {
        m_focusBefore->setFocus();
    } else {
        way().form().focusStart();
    }
}

void SignInView::retranslate()
{
    nameComboBox(*m_language, word(signInWords(), "language"));
    m_language->setCurrentIndex(m_language->findData(qString(InterfaceLanguage::tag())));
    m_title->setText(word(signInWords(), signInModeRow(m_mode).title));
    presentBanner();
    present();
}

void SignInView::setTabOrders()
{
    QList<QWidget*> stops{m_language};
    stops += m_aside->modeButtons();
    for (const auto* each : m_ways)
        stops += each->tabStops();
    stops += m_progress;
    stops += m_progress->stopButton();
    stops += m_address->tabStops();
    stops += &m_aside->demonstration();
    for (qsizetype index = 1; index < stops.size(); ++index)
        setTabOrder(stops[index - 1], stops[index]);
}
