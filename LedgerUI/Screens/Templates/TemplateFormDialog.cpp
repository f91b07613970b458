#include "LedgerUI/Screens/Templates/TemplateFormDialog.h"

#include <utility>

#include <QCheckBox>
#include <QComboBox>
#include <QCoro/QCoroTask>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/EntryTemplates.h"
#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Entries/EntryLimits.h"
#include "LedgerCore/Domain/Templates/RecurrenceDays.h"
#include "LedgerCore/Domain/Text/Naming.h"
#include "LedgerUI/Components/Buttons/ComboBoxLists.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Fields/AmountEdit.h"
#include "LedgerUI/Components/Fields/FormField.h"
#include "LedgerUI/Components/Fields/LimitedEdit.h"
#include "LedgerUI/Components/Period/DayEdit.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Entry/EntryFormState.h"
#include "LedgerUI/Presentation/Entry/EntryLabels.h"
#include "LedgerUI/Presentation/Templates/TemplateDrafts.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Entry/TransactionForm.h"
#include "LedgerUI/Screens/Templates/TemplateEntryFields.h"
#include "LedgerUI/Theme/Space.h"

namespace {

using Field = TemplateForm::Field;

constexpr int dialogWidth = 520;
constexpr int everyWidth = 64;
constexpr std::size_t everyLength = 3;

}

TemplateFormDialog::TemplateFormDialog(LedgerStore& store, TemplateForm form, QWidget* parent)
    : CommandForm{store, parent}, m_submission{form}, m_initial{std::move(form)}, m_key{store.newIdentifier()}
{
    setObjectName(QStringLiteral("templateForm"));
    confirmButton().setObjectName(QStringLiteral("templateSave"));
    cancelButton().setObjectName(QStringLiteral("templateCancel"));
    buildBody();
    bind();
    present();
}

void TemplateFormDialog::openOn(LedgerStore& store, const TemplateEntry& entry, const std::string& entryDay,
                                QWidget* parent)
{
    const auto snapshot = store.snapshot();
    if (!snapshot)
        return;
    const auto& locale = InterfaceLanguage::tag();
    auto form = TemplateForm::fresh(entry, TemplateDrafts::suggestedName(entry, *snapshot, locale), entryDay, locale);
    (new TemplateFormDialog(store, std::move(form), parent))->open();
}

void TemplateFormDialog::offerIn(TransactionForm& form, LedgerStore& store)
{
    if (!store.templates().areOffered())
        return;
    form.offerTemplate();
    // Where somebody else has recorded the same meanwhile, it is proposed no more.
    connect(&form, &QDialog::finished, &store.templates(), &EntryTemplates::reload);
    connect(&form, &TransactionForm::templateWanted, &form, [&form, &store](const TransactionDraft& draft) {
        if (const auto entry = TemplateDrafts::entryOf(draft, InterfaceLanguage::tag()))
            openOn(store, *entry, draft.date.empty() ? store.today() : draft.date, &form);
    });
}

void TemplateFormDialog::buildBody()
{
    auto* body = new QWidget(bodyPlace());
    m_entry = new TemplateEntryFields(body);
    m_name = new LimitedEdit(Naming::maximumName);
    m_name->setObjectName(QStringLiteral("templateName"));
    m_nameField = new FormField(m_name, body);
    m_amount = new AmountEdit;
    m_amount->setObjectName(QStringLiteral("templateAmount"));
    m_amountField = new FormField(m_amount, body);
    m_note = new LimitedEdit(EntryLimits::noteLength);
    m_note->setObjectName(QStringLiteral("templateNote"));
    m_noteField = new FormField(m_note, body);
    auto* rhythm = buildRhythm(body);
    m_shared = new QCheckBox(body);
    m_shared->setObjectName(QStringLiteral("templateShared"));
    m_fields.add(Field::name, m_nameField->error());
    m_fields.add(Field::account, m_entry->account().error());
    m_fields.add(Field::target, m_entry->target().error());
    m_fields.add(Field::category, m_entry->category().error());
    m_fields.add(Field::amount, m_amountField->error());
    m_fields.add(Field::note, m_noteField->error());
    m_fields.add(Field::every, m_everyField->error());
    m_fields.add(Field::firstDay, m_firstField->error(), [this] { return &m_first->line(); });
    m_fields.add(Field::lastDay, m_lastField->error(), [this] { return &m_last->line(); });
    auto* rows = new QVBoxLayout(body);
    rows->setContentsMargins(Space::dialogMargin, 0, Space::dialogMargin, Space::dialogMargin);
    rows->setSpacing(Space::fieldToField);
    for (auto* each : {static_cast<QWidget*>(m_nameField), static_cast<QWidget*>(m_entry),
                       static_cast<QWidget*>(m_amountField), static_cast<QWidget*>(m_noteField)})
        rows->addWidget(each);
    rows->addLayout(rhythm);
    auto* days = new QHBoxLayout;
    days->setSpacing(Space::step3);
    days->addWidget(m_firstField, 1, Qt::AlignTop);
    days->addWidget(m_lastField, 1, Qt::AlignTop);
    rows->addLayout(days);
    rows->addWidget(m_shared);
    rows->addStretch(1);
    setBody(body, dialogWidth);
}

QHBoxLayout* TemplateFormDialog::buildRhythm(QWidget* body)
{
    m_unit = new QComboBox;
    m_unit->setObjectName(QStringLiteral("templateUnit"));
    dressComboBox(*m_unit);
    m_unitField = new FormField(m_unit, body);
    m_every = new LimitedEdit(everyLength);
    m_every->setObjectName(QStringLiteral("templateEvery"));
    m_every->setMinimumWidth(everyWidth);
    m_everyField = new FormField(m_every, body);
    m_first = new DayEdit;
    m_first->line().setObjectName(QStringLiteral("templateFirstDay"));
    m_firstField = new FormField(m_first, body);
    m_last = new DayEdit;
    m_last->line().setObjectName(QStringLiteral("templateLastDay"));
    m_lastField = new FormField(m_last, body);
    auto* row = new QHBoxLayout;
    row->setSpacing(Space::step3);
    row->addWidget(m_unitField, 1, Qt::AlignTop);
    row->addWidget(m_everyField, 1, Qt::AlignTop);
    return row;
}

void TemplateFormDialog::edit(auto change)
{
    auto form = m_submission.form();
    change(form);
    m_submission.edit(std::move(form));
    present();
}

void TemplateFormDialog::bind()
{
    const auto connectText = [this](QLineEdit* line, std::string TemplateForm::* field) {
        connect(line, &QLineEdit::textEdited, this, [this, field](const QString& text) {
            edit([&](TemplateForm& form) { form.*field = text.toStdString(); });
        });
    };
    connectText(m_name, &TemplateForm::name);
    connectText(m_every, &TemplateForm::every);
    bindAmount();
    bindEntry();
    connect(m_note, &QLineEdit::textEdited, this,
            [this](const QString& text) { edit([&](TemplateForm& form) { form.entry.note = text.toStdString(); }); });
    connect(m_unit, &QComboBox::activated, this, [this](int at) {
        edit([&](TemplateForm& form) { form = form.withUnit(m_unit->itemData(at).toString().toStdString()); });
    });
    connect(m_first, &DayEdit::dayChanged, this,
            [this](const std::string& day) { edit([&](TemplateForm& form) { form.firstDay = day; }); });
    connect(m_last, &DayEdit::dayChanged, this,
            [this](const std::string& day) { edit([&](TemplateForm& form) { form.lastDay = day; }); });
    connect(m_shared, &QCheckBox::toggled, this,
            [this](bool isOn) { edit([&](TemplateForm& form) { form.shared = isOn; }); });
    connect(this, &FormDialog::confirmed, this, &TemplateFormDialog::submit);
}

void TemplateFormDialog::bindAmount()
{
    connect(m_amount, &AmountEdit::amountEdited, this, [this](const QString& text) {
        m_isAmountLeft = false;
        m_refused.reset();
        edit([&](TemplateForm& form) { form.amount = text.toStdString(); });
    });
    connect(m_amount, &AmountEdit::left, this, [this] {
        m_isAmountLeft = true;
        m_refused.reset();
        present();
    });
    connect(m_amount, &AmountEdit::pasteRefused, this, [this](PasteRefusal refusal) {
        m_refused = refusal;
        present();
    });
}

void TemplateFormDialog::bindEntry()
{
    connect(m_entry, &TemplateEntryFields::accountChosen, this, [this](const std::string& id) {
        edit([&](TemplateForm& form) { form = form.withAccount(id, *snapshot()); });
    });
    connect(m_entry, &TemplateEntryFields::targetChosen, this,
            [this](const std::string& id) { edit([&](TemplateForm& form) { form = form.withTarget(id); }); });
    connect(m_entry, &TemplateEntryFields::categoryChosen, this,
            [this](const std::string& id) { edit([&](TemplateForm& form) { form = form.withCategory(id); }); });
}

std::map<Field, QString> TemplateFormDialog::messages() const
{
    auto all = m_submission.form().messages(locale());
    if (!m_isChecked)
        std::erase_if(all, [this](const auto& each) { return each.first != Field::amount || !m_isAmountLeft; });
    if (m_refused)
        all.insert_or_assign(Field::amount, EntryLabels::refusedPaste(*m_refused, locale()));
    return all;
}

void TemplateFormDialog::present()
{
    const auto& form = m_submission.form();
    const auto text = [this](std::string_view key) { return wordIn(locale(), templateWords(), key); };
    const auto show = [](QLineEdit& line, const std::string& value) {
        if (line.text().toStdString() != value)
            line.setText(qString(value));
    };
    setWindowTitle(text(form.id.empty() ? "form.new" : "form.change"));
    m_entry->present(form.entry, *snapshot(), locale());
    m_nameField->setLabel(text("form.name"));
    m_amountField->setLabel(wordIn(locale(), templateWords(), "form.amount", {form.entry.currency}));
    m_noteField->setLabel(text("form.note"));
    show(*m_name, form.name);
    m_amount->setCurrency(form.entry.currency);
    if (m_amount->text().toStdString() != form.amount)
        m_amount->setAmount(qString(form.amount));
    show(*m_note, form.entry.note);
    show(*m_every, form.every);
    presentRhythm();
    m_shared->setText(text("form.shared"));
    m_shared->setChecked(form.shared);
    m_fields.present(messages());
    presentStanding({.stage = m_submission.stage(),
                     .refusal = m_submission.refusal(),
                     .confirm = text("form.save"),
                     .hasChanges = form != m_initial});
}

void TemplateFormDialog::presentRhythm()
{
    const auto& form = m_submission.form();
    const auto text = [this](std::string_view key) { return wordIn(locale(), templateWords(), key); };
    m_unitField->setLabel(text("form.repeats"));
    m_everyField->setLabel(text("form.every"));
    m_firstField->setLabel(text("form.first"));
    m_lastField->setLabel(text("form.last"));
    nameComboBox(*m_unit, text("form.repeats"));
    m_unit->clear();
    m_unit->addItem(text("unit.never"), QString{});
    for (const auto unit : RecurrenceUnit::all)
        m_unit->addItem(text(std::string{"unit."} + std::string{unit}), qString(unit));
    m_unit->setCurrentIndex(m_unit->findData(qString(form.unit)));
    m_first->setNames(text("form.first"), text("form.calendar"));
    m_last->setNames(text("form.last"), text("form.calendar"));
    const auto bounds = DayBounds::ofCalendar(store().today());
    m_first->present(form.firstDay, bounds);
    m_last->present(form.lastDay, bounds);
    for (auto* each : {m_everyField, m_firstField, m_lastField})
        each->setVisible(!form.unit.empty());
}

void TemplateFormDialog::adoptSnapshot()
{
    if (m_submission.isSaving())
        return;
    takeSnapshot();
    present();
}

void TemplateFormDialog::adoptLanguage(const std::string& before)
{
    auto form = m_submission.form();
    form.amount = EntryForm::rewritten(form.amount, before, locale());
    m_submission.adopt(std::move(form));
    present();
}

QWidget& TemplateFormDialog::firstField() const
{
    return m_submission.isEditing() ? static_cast<QWidget&>(*m_name) : confirmButton();
}

void TemplateFormDialog::submit()
{
    if (const auto* command = commandToSend(m_submission, [this] { return checked(); }))
        send(*command);
}

std::optional<TemplateCommand> TemplateFormDialog::checked()
{
    m_amount->settle();
    m_isChecked = true;
    m_refused.reset();
    const auto& form = m_submission.form();
    if (auto* wrong = m_fields.firstOf(form.messages(locale()))) {
        present();
        wrong->setFocus(Qt::OtherFocusReason);
        return {};
    }
    TemplateCommand command{.id = form.id, .body = form.creation(m_key, locale())};
    if (!form.id.empty())
        command.body = form.update(locale());
    return command;
}

void TemplateFormDialog::send(const TemplateCommand& command)
{
    present();
    const auto done = [this](const Result<EntryTemplateList>& reply) { finish(reply); };
    if (const auto* created = std::get_if<TemplateCreate>(&command.body))
        QCoro::connect(store().createTemplate(*created, false), this, done);
    else
        QCoro::connect(store().updateTemplate(command.id, std::get<TemplateUpdate>(command.body), false), this, done);
}

void TemplateFormDialog::finish(const Result<EntryTemplateList>& reply)
{
    if (!m_submission.isSaving())
        return;
    if (reply) {
        m_submission.succeed();
        store().templates().adopt(*reply);
        Q_EMIT saved();
        leave();
        return;
    }
    m_submission.fail(reply.error());
    store().templates().reload();
    presentAnew();
}
