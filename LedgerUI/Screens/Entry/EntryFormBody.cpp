#include "LedgerUI/Screens/Entry/EntryFormBody.h"

#include <type_traits>

#include <QPushButton>
#include <QVBoxLayout>

#include "LedgerCore/Domain/Entries/EntryLimits.h"
#include "LedgerCore/Domain/Entries/EntryWords.h"
#include "LedgerCore/Domain/Records/LedgerTransaction.h"
#include "LedgerUI/Components/Buttons/SegmentedControl.h"
#include "LedgerUI/Components/Fields/AccountPicker.h"
#include "LedgerUI/Components/Fields/AmountEdit.h"
#include "LedgerUI/Components/Fields/CurrencyPicker.h"
#include "LedgerUI/Components/Fields/FieldError.h"
#include "LedgerUI/Components/Fields/FormField.h"
#include "LedgerUI/Components/Fields/LimitedEdit.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Entry/EntryEdits.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Entry/CategoryField.h"
#include "LedgerUI/Screens/Entry/EntryAmountField.h"
#include "LedgerUI/Screens/Entry/EntryEffectPane.h"
#include "LedgerUI/Screens/Entry/OriginalField.h"
#include "LedgerUI/Theme/Space.h"

EntryFormBody::EntryFormBody(QWidget* parent) : QWidget{parent}
{
    buildFields();
    mapFields();
    buildLayout();
    bind();
}

/// Made in the order in which Tab visits them.
void EntryFormBody::buildFields()
{
    m_kinds = new SegmentedControl(this);
    m_kinds->setObjectName(QStringLiteral("entryKinds"));
    m_kindHint = new TextLabel(TypeStep::small, Token::text2, this);
    m_kindHint->setObjectName(QStringLiteral("entryKindHint"));
    m_kindHint->setWordWrap(true);
    m_direction = new TextLabel(TypeStep::small, Token::text2, this);
    m_direction->setWordWrap(true);
    m_helpButton = new QPushButton(this);
    m_helpButton->setObjectName(QStringLiteral("entryHelp"));
    m_helpButton->setProperty("kind", QStringLiteral("link"));
    m_helpButton->setCheckable(true);
    m_help = new TextLabel(TypeStep::small, Token::text2, this);
    m_help->setObjectName(QStringLiteral("entryHelpText"));
    m_help->setWordWrap(true);
    m_account = new AccountPicker;
    m_account->setObjectName(QStringLiteral("entryAccount"));
    m_accountField = new FormField(m_account, this);
    m_sent = new EntryAmountField(QStringLiteral("entry"), this);
    m_destination = new AccountPicker;
    m_destination->setObjectName(QStringLiteral("entryDestination"));
    m_destinationField = new FormField(m_destination, this);
    m_received = new EntryAmountField(QStringLiteral("entryTarget"), this);
    m_effects = new EntryEffectPane(this);
    m_category = new CategoryField(this);
    m_original = new OriginalField(this);
    m_note = new LimitedEdit(EntryLimits::noteLength);
    m_note->setObjectName(QStringLiteral("entryNote"));
    m_noteField = new FormField(m_note, this);
}

void EntryFormBody::mapFields()
{
    m_fields.add(EntryField::account, m_accountField->error());
    m_fields.add(EntryField::destination, m_destinationField->error());
    m_fields.add(EntryField::amount, m_sent->error());
    m_fields.add(EntryField::targetAmount, m_received->error());
    m_fields.add(EntryField::category, m_category->error(), [this] { return m_category->focusTarget(); });
    m_fields.add(EntryField::original, m_original->error());
    m_fields.add(EntryField::note, m_noteField->error());
}

void EntryFormBody::buildLayout()
{
    m_layout = new QVBoxLayout(this);
    m_layout->setContentsMargins(Space::dialogMargin, 0, Space::dialogMargin, Space::dialogMargin);
    m_layout->setSpacing(Space::fieldToField);
    for (auto* each :
         std::initializer_list<QWidget*>{m_kinds, m_kindHint, m_direction, m_accountField, m_sent, m_destinationField,
                                         m_received, m_effects, m_category, m_original, m_noteField})
        m_layout->addWidget(each);
    auto* help = new QVBoxLayout;
    help->setSpacing(Space::step1);
    help->addWidget(m_helpButton, 0, Qt::AlignLeft);
    help->addWidget(m_help);
    m_layout->insertLayout(m_layout->indexOf(m_accountField), help);
    m_layout->addStretch(1);
}

template <class Field, class... Values>
void EntryFormBody::connectEdit(const Field& field, void (Field::*signal)(Values...), auto change)
{
    connect(&field, signal, this, [this, change](Values... values) {
        Q_EMIT edited([&](const EntryEditing& now, const LedgerSnapshot& snapshot) {
            if constexpr (std::is_invocable_v<decltype(change), EntryEditing, Values..., const LedgerSnapshot&>)
                return change(now, values..., snapshot);
            else
                return change(now, values...);
        });
    });
}

void EntryFormBody::bind()
{
    using namespace EntryEdits;
    const auto typed = [](auto change) {
        return [change](const EntryEditing& now, const QString& text) { return change(now, text.toStdString()); };
    };
    connectEdit(*m_kinds, &SegmentedControl::chosenByUser,
                [this](const EntryEditing& now, int at, const LedgerSnapshot& snapshot) {
                    return withKind(now, m_kindRows[static_cast<std::size_t>(at)].kind, snapshot);
                });
    connectEdit(*m_account, &AccountPicker::accountChosen, &withAccount);
    connectEdit(*m_destination, &AccountPicker::accountChosen, &withDestination);
    connectEdit(m_sent->currency(), &CurrencyPicker::currencyChosen, &withCurrency);
    connectEdit(m_sent->amount(), &AmountEdit::amountEdited, typed(&withAmount));
    bindAmount(*m_sent, EntryField::amount);
    connectEdit(m_received->currency(), &CurrencyPicker::currencyChosen, &withTargetCurrency);
    connectEdit(m_received->amount(), &AmountEdit::amountEdited, typed(&withTargetAmount));
    bindAmount(*m_received, EntryField::targetAmount);
    connectEdit(*m_category, &CategoryField::categoryChosen, &withCategory);
    connectEdit(*m_original, &OriginalField::originalChosen, &withOriginal);
    connectEdit(*m_original, &OriginalField::referenceEdited, typed(&withReference));
    connectEdit<QLineEdit>(*m_note, &QLineEdit::textEdited, typed(&withNote));
    connect(m_category, &CategoryField::pinWanted, this, &EntryFormBody::categoryPinWanted);
    connect(m_category, &CategoryField::editWanted, this, &EntryFormBody::categoryEditWanted);
    connect(m_category, &CategoryField::creationWanted, this, &EntryFormBody::categoryCreationWanted);
    connect(m_category, &CategoryField::finished, this, [this] { m_note->setFocus(Qt::OtherFocusReason); });
    connect(m_helpButton, &QPushButton::toggled, m_help, &QWidget::setVisible);
}

void EntryFormBody::bindAmount(EntryAmountField& field, EntryField name)
{
    connectEdit(field.amount(), &AmountEdit::left, [name](const EntryEditing& now) {
        return EntryEdits::leftAmount(now, name, InterfaceLanguage::tag());
    });
    connectEdit(field.amount(), &AmountEdit::pasteRefused, [name](const EntryEditing& now, PasteRefusal refusal) {
        return EntryEdits::refusedPaste(now, name, refusal);
    });
}

void EntryFormBody::offer(const SnapshotPointer& snapshot, const TransactionDraft& draft)
{
    if (draft.hasCategory())
        m_category->offer(snapshot, draft.kind);
    if (draft.kind == EntryKind::refund)
        m_original->offer(EntryForm::refundableRows(*snapshot, draft.currency, InterfaceLanguage::tag()));
}

void EntryFormBody::present(const EntryFormContent& content, const std::optional<std::string>& originalID)
{
    m_fields.present(content.messages);
    presentKinds(content);
    orderAmount(content.showsDestination && !content.showsReceivedAmount);
    m_direction->setText(content.direction);
    m_direction->setVisible(!content.direction.isEmpty());
    presentHelp(content);
    m_accountField->setLabel(content.sent.accountLabel);
    m_account->present(content.sent.accounts, content.sent.accountID, content.sent.accountPrompt);
    m_destinationField->setVisible(content.showsDestination);
    m_destinationField->setLabel(content.received.accountLabel);
    m_destination->present(content.received.accounts, content.received.accountID, content.received.accountPrompt);
    m_sent->present(content.sent,
                    content.effects.empty() ? EntryAmountField::Balance::shown : EntryAmountField::Balance::hidden);
    m_received->setVisible(content.showsReceivedAmount);
    m_received->present(content.received, EntryAmountField::Balance::shown);
    m_effects->present(content);
    m_category->setVisible(content.showsCategory);
    m_category->present(content.categoryID, content.categoryPath, m_category->error().message());
    m_original->setVisible(content.showsOriginal);
    m_original->present(originalID, content.reference);
    m_noteField->setLabel(word(EntryWords::words(), "optionalNote"));
    if (m_note->text() != content.note)
        m_note->setText(content.note);
}

void EntryFormBody::presentKinds(const EntryFormContent& content)
{
    m_kinds->setVisible(!content.kinds.empty());
    m_kindHint->setText(content.kindHint);
    m_kindHint->setVisible(!content.kindHint.isEmpty());
    m_kinds->setName(word(entryFormWords(), "kinds"));
    if (content.kinds != m_kindRows && !content.kinds.empty()) {
        const bool isFirst = m_kindRows.size() != content.kinds.size();
        m_kindRows = content.kinds;
        for (int at = 0; at < static_cast<int>(m_kindRows.size()); ++at) {
            const auto& row = m_kindRows[static_cast<std::size_t>(at)];
            if (isFirst)
                m_kinds->addSegment(at, row.text, row.glyph);
            m_kinds->setSegmentText(at, row.text);
            m_kinds->setSegmentEnabled(at, row.isAvailable, row.isAvailable ? QString{} : content.kindHint);
        }
    }
    for (int at = 0; at < static_cast<int>(m_kindRows.size()); ++at) {
        if (m_kindRows[static_cast<std::size_t>(at)].kind == content.kind)
            m_kinds->choose(at);
    }
}

void EntryFormBody::settleAmounts()
{
    m_sent->amount().settle();
    m_received->amount().settle();
}

void EntryFormBody::presentHelp(const EntryFormContent& content)
{
    const bool hasHelp = !content.help.isEmpty();
    m_helpButton->setText(content.helpTitle);
    m_helpButton->setVisible(hasHelp);
    m_help->setText(content.help);
    m_help->setVisible(hasHelp && m_helpButton->isChecked());
}

/// A transfer names both accounts before its one amount; an exchange has an amount with each account.
void EntryFormBody::orderAmount(bool isBelowDestination)
{
    if (isBelowDestination == m_isAmountBelowDestination)
        return;
    m_isAmountBelowDestination = isBelowDestination;
    m_layout->removeWidget(m_sent);
    m_layout->insertWidget(m_layout->indexOf(m_destinationField) + (isBelowDestination ? 1 : 0), m_sent);
    const auto first =
        isBelowDestination
            ? std::initializer_list<QWidget*>{m_account,         m_destination,   &m_sent->currency(),
                                              &m_sent->amount(), &m_sent->look(), &m_received->currency()}
            : std::initializer_list<QWidget*>{m_account,       &m_sent->currency(), &m_sent->amount(),
                                              &m_sent->look(), m_destination,       &m_received->currency()};
    for (const auto* at = first.begin(); at + 1 != first.end(); ++at)
        setTabOrder(*at, *(at + 1));
}

QWidget* EntryFormBody::firstWrong() const
{
    if (auto* wrong = m_fields.firstWrong())
        return wrong;
    if (!m_original->isHidden() && !m_original->reference().isWithinLimit())
        return &m_original->reference();
    return m_note->isWithinLimit() ? nullptr : m_note;
}
