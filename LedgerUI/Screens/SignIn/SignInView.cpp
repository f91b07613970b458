#include "LedgerUI/Screens/SignIn/SignInView.h"

#include <QComboBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QScrollArea>
#include <QShortcut>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Text/AppLanguage.h"
#include "LedgerUI/Components/Buttons/ComboBoxLists.h"
#include "LedgerUI/Components/Page/BusyBar.h"
#include "LedgerUI/Components/Text/GlyphLabel.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/SignIn/SignInWords.h"
#include "LedgerUI/Presentation/Text/KeyBindings.h"
#include "LedgerUI/Screens/SignIn/AddressFold.h"
#include "LedgerUI/Screens/SignIn/LoginForm.h"
#include "LedgerUI/Screens/SignIn/SignInAside.h"
#include "LedgerUI/Screens/SignIn/SignInProgress.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int stripHeight = 48;
constexpr int languageWidth = 180;
constexpr int panelWidth = 820;
constexpr int panelHeight = 472;
constexpr int formPadding = 32;

}

SignInView::SignInView(LedgerStore& store, const SignInStart& start, QWidget* parent)
    : QWidget{parent}, m_store{store}, m_wait{store.isBusy() ? start.wait : SignInWait::nothing}
{
    setObjectName(QStringLiteral("signInView"));
    auto* ground = new QFrame(this);
    ground->setObjectName(QStringLiteral("signInGround"));
    auto* column = new QVBoxLayout(ground);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(buildStrip());
    column->addStretch(1);
    column->addWidget(buildPanel(start), 0, Qt::AlignHCenter);
    column->addStretch(1);
    column->addSpacing(stripHeight);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(ground);
    m_busy = new BusyBar(this);
    m_busy->overlay(this, stripHeight);
    bind();
    setTabOrders();
    retranslate();
}

void SignInView::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QWidget::changeEvent(event);
}

void SignInView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    m_login->focusStart();
}

QWidget* SignInView::buildStrip()
{
    m_language = new QComboBox(this);
    m_language->setObjectName(QStringLiteral("languageChoice"));
    m_language->setFixedWidth(languageWidth);
    dressComboBox(*m_language);
    for (const auto tag : AppLanguage::supportedLocales)
        m_language->addItem(InterfaceLanguage::nativeName(tag), qString(tag));
    auto* strip = new QWidget(this);
    strip->setFixedHeight(stripHeight);
    auto* layout = new QHBoxLayout(strip);
    layout->setContentsMargins(Space::pageMargin, 0, Space::pageMargin, 0);
    layout->setSpacing(Space::step2);
    layout->addStretch(1);
    layout->addWidget(new GlyphLabel(QStringLiteral("translate"), Token::text2, Space::icon, strip));
    layout->addWidget(m_language);
    return strip;
}

QWidget* SignInView::buildPanel(const SignInStart& start)
{
    m_aside = new SignInAside(m_store, this);
    m_login = new LoginForm(m_store, this);
    m_address = new AddressFold(m_store, start.defaultAddress, this);
    m_forms = new QStackedWidget(this);
    m_forms->addWidget(m_login);
    m_login->setEmail(qString(start.email));
    m_progress = new SignInProgress(this);

    auto* page = new QWidget(this);
    auto* form = new QVBoxLayout(page);
    form->setContentsMargins(formPadding, formPadding - Space::step1, formPadding, Space::step6);
    form->setSpacing(Space::step4);
    form->addWidget(m_forms);
    form->addWidget(m_progress);
    form->addStretch(1);
    form->addWidget(m_address);
    auto* scroll = new QScrollArea(this);
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setWidget(page);
    // The panel's round corners show through.
    scroll->viewport()->setAutoFillBackground(false);
    page->setAutoFillBackground(false);

    auto* panel = new QFrame(this);
    panel->setObjectName(QStringLiteral("signInPanel"));
    panel->setFixedSize(panelWidth, panelHeight);
    auto* layout = new QHBoxLayout(panel);
    layout->setContentsMargins(1, 1, 1, 1);
    layout->setSpacing(0);
    layout->addWidget(m_aside);
    layout->addWidget(scroll, 1);
    return panel;
}

void SignInView::bind()
{
    connect(m_language, &QComboBox::activated, this,
            [this](int index) { m_store.setAppLanguage(m_language->itemData(index).toString().toStdString()); });
    connect(m_aside, &SignInAside::modeChosen, m_forms, &QStackedWidget::setCurrentIndex);
    connect(m_aside, &SignInAside::submitting, m_address, &AddressFold::commit);
    connect(m_aside, &SignInAside::addressRefused, m_address, &AddressFold::complain);
    connect(m_login, &LoginForm::submitting, m_address, &AddressFold::commit);
    connect(m_login, &LoginForm::addressRefused, m_address, &AddressFold::complain);
    connect(m_address, &AddressFold::submitted, m_login, &LoginForm::submit);
    // In this order: the address is handed over before the screen says where it connects to.
    connect(m_aside, &SignInAside::submitting, this, &SignInView::expectAnswer);
    connect(m_login, &LoginForm::submitting, this, &SignInView::expectAnswer);
    connect(m_progress, &SignInProgress::stopped, &m_store, &LedgerStore::cancel);
    for (const auto& keys : KeyBindings::keys(Command::leave))
        connect(new QShortcut(keys, this), &QShortcut::activated, &m_store, &LedgerStore::cancel);
    connect(&m_store, &LedgerStore::isBusyChanged, this, &SignInView::followStore);
}

void SignInView::expectAnswer()
{
    if (!m_store.isBusy())
        m_wait = SignInWait::answer;
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
    m_login->present(state);
    m_aside->present(state);
    m_address->setEnabled(state.maySubmit);
    m_busy->setBusy(m_wait != SignInWait::nothing);
    // What is locked or taken away hands the focus to whatever comes next in the order of Tab.
    const bool isLost = !focus || (isAncestorOf(focus) && !(focus->isEnabled() && focus->isVisibleTo(this)));
    if (isLost && isVisible())
        placeFocus(focus);
}

/// On Stop while nothing else can be done; afterwards where it was.
void SignInView::placeFocus(QWidget* lost)
{
    if (m_wait == SignInWait::answer) {
        m_focusBefore = lost;
        m_progress->stopButton()->setFocus();
    } else if (m_focusBefore && m_focusBefore->isEnabled()) {
        m_focusBefore->setFocus();
    } else {
        m_login->focusStart();
    }
}

void SignInView::retranslate()
{
    nameComboBox(*m_language, word(signInWords(), "language"));
    m_language->setCurrentIndex(m_language->findData(qString(InterfaceLanguage::tag())));
    present();
}

void SignInView::setTabOrders()
{
    QList<QWidget*> stops{m_language};
    stops += m_aside->modeButtons();
    stops += m_login->tabStops();
    stops += m_progress->stopButton();
    stops += m_address->tabStops();
    stops += m_aside->demonstrationButton();
    for (qsizetype index = 1; index < stops.size(); ++index)
        setTabOrder(stops[index - 1], stops[index]);
}
