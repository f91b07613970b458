#include "LedgerUI/Screens/SignIn/AddressFold.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Components/Fields/FieldError.h"
#include "LedgerUI/Components/Fields/FormField.h"
#include "LedgerUI/Components/Page/Line.h"
#include "LedgerUI/Components/Text/ElidedLabel.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"

AddressFold::AddressFold(LedgerStore& store, std::string defaultAddress, QWidget* parent)
    : QWidget{parent}, m_store{store}, m_defaultAddress{std::move(defaultAddress)}
{
    buildLayout();
    connect(m_toggle, &QToolButton::toggled, this, &AddressFold::setOpen);
    connect(m_address, &QLineEdit::editingFinished, this, &AddressFold::commit);
    connect(m_address, &QLineEdit::textEdited, this, [this] { m_field->error().present({}); });
    connect(m_address, &QLineEdit::returnPressed, this, &AddressFold::submitted);
    connect(m_restore, &QPushButton::clicked, this, [this] {
        m_field->error().present({});
        m_store.setServerURL(m_defaultAddress);
    });
    connect(&m_store, &LedgerStore::endpointChanged, this, &AddressFold::present);
    retranslate();
    present();
    setOpen(false);
}

void AddressFold::complain(const QString& message)
{
    m_toggle->setChecked(true);
    m_field->error().present(message);
    m_address->setFocus();
}

void AddressFold::commit()
{
    const auto typed = m_address->text().trimmed().toStdString();
    m_store.setServerURL(typed.empty() ? m_defaultAddress : typed);
    present();
}

QList<QWidget*> AddressFold::tabStops() const
{
    return {m_toggle, m_address, m_restore};
}

void AddressFold::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QWidget::changeEvent(event);
}

void AddressFold::buildLayout()
{
    m_toggle = new QToolButton(this);
    m_toggle->setObjectName(QStringLiteral("addressFold"));
    m_toggle->setProperty("kind", QStringLiteral("fold"));
    m_toggle->setCheckable(true);
    m_toggle->setFocusPolicy(Qt::StrongFocus);
    m_toggle->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_toggle->setIconSize({Space::icon + Space::step1, Space::chevron});
    m_current = new ElidedLabel(TypeStep::small, Token::text3, Qt::ElideMiddle, this);

    m_address = new QLineEdit(this);
    m_address->setObjectName(QStringLiteral("serviceAddress"));
    m_address->setInputMethodHints(Qt::ImhUrlCharactersOnly | Qt::ImhNoAutoUppercase);
    m_field = new FormField(m_address, this);
    m_restore = new QPushButton(this);
    m_restore->setObjectName(QStringLiteral("defaultAddress"));
    m_restore->setProperty("kind", QStringLiteral("link"));
    m_restore->setAutoDefault(false);
    m_details = new QWidget(this);
    auto* details = new QVBoxLayout(m_details);
    details->setContentsMargins(0, Space::step2, 0, 0);
    details->setSpacing(Space::step2);
    details->addWidget(m_field);
    details->addWidget(m_restore, 0, Qt::AlignLeft);

    auto* head = new QHBoxLayout;
    head->setSpacing(Space::step2);
    head->addWidget(m_toggle);
    head->addWidget(m_current, 1);
    head->addStretch(0);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(new Line(Qt::Horizontal, this));
    layout->addSpacing(Space::step3);
    layout->addLayout(head);
    layout->addWidget(m_details);
}

void AddressFold::setOpen(bool isOpen)
{
    m_toggle->setIcon(Icon::of(isOpen ? QStringLiteral("chevron-down") : QStringLiteral("chevron-right")));
    m_details->setVisible(isOpen);
    m_current->setVisible(!isOpen);
}

void AddressFold::retranslate()
{
    m_toggle->setText(word(signInWords(), "address"));
    m_toggle->setAccessibleName(m_toggle->text());
    m_field->setLabel(word(signInWords(), "addressLabel"));
    m_restore->setText(word(signInWords(), "addressDefault"));
}

void AddressFold::present()
{
    const auto address = qString(m_store.serverURL());
    m_current->setText(address);
    m_toggle->setAccessibleDescription(address);
    if (m_address->text() != address)
        m_address->setText(address);
    m_restore->setEnabled(m_store.serverURL() != m_defaultAddress);
}
