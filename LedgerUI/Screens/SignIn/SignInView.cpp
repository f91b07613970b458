#include "LedgerUI/Screens/SignIn/SignInView.h"

#include <QComboBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QScrollArea>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "LedgerCore/Client/LedgerStore.h"
#include "LedgerCore/Domain/Text/AppLanguage.h"
#include "LedgerUI/Components/Buttons/ComboBoxLists.h"
#include "LedgerUI/Components/Page/BusyBar.h"
#include "LedgerUI/Components/Text/GlyphLabel.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/SignIn/SignInWords.h"
#include "LedgerUI/Screens/SignIn/AddressFold.h"
#include "LedgerUI/Screens/SignIn/LoginForm.h"
#include "LedgerUI/Screens/SignIn/SignInAside.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int stripHeight = 48;
constexpr int languageWidth = 180;
constexpr int panelWidth = 820;
constexpr int panelHeight = 472;
constexpr int formPadding = 32;

}

SignInView::SignInView(LedgerStore& store, std::string defaultAddress, QWidget* parent)
    : QWidget{parent}, m_store{store}
{
    setObjectName(QStringLiteral("signInView"));
    auto* ground = new QFrame(this);
    ground->setObjectName(QStringLiteral("signInGround"));
    auto* column = new QVBoxLayout(ground);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(buildStrip());
    column->addStretch(1);
    column->addWidget(buildPanel(std::move(defaultAddress)), 0, Qt::AlignHCenter);
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
    present();
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

QWidget* SignInView::buildPanel(std::string defaultAddress)
{
    m_aside = new SignInAside(m_store, this);
    m_login = new LoginForm(m_store, this);
    m_address = new AddressFold(m_store, std::move(defaultAddress), this);
    m_forms = new QStackedWidget(this);
    m_forms->addWidget(m_login);

    auto* page = new QWidget(this);
    auto* form = new QVBoxLayout(page);
    form->setContentsMargins(formPadding, formPadding - Space::step1, formPadding, Space::step6);
    form->setSpacing(Space::step4);
    form->addWidget(m_forms);
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
    connect(&m_store, &LedgerStore::isBusyChanged, this, &SignInView::present);
}

void SignInView::present()
{
    const bool isBusy = m_store.isBusy();
    m_login->setBusy(isBusy);
    m_aside->setBusy(isBusy);
    m_address->setEnabled(!isBusy);
    m_busy->setBusy(isBusy);
}

void SignInView::retranslate()
{
    nameComboBox(*m_language, word(signInWords(), "language"));
    m_language->setCurrentIndex(m_language->findData(qString(InterfaceLanguage::tag())));
}

void SignInView::setTabOrders()
{
    QList<QWidget*> stops{m_language};
    stops += m_aside->modeButtons();
    stops += m_login->tabStops();
    stops += m_address->tabStops();
    stops += m_aside->demonstrationButton();
    for (qsizetype index = 1; index < stops.size(); ++index)
        setTabOrder(stops[index - 1], stops[index]);
}
