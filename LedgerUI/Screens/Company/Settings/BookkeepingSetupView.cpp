#include "LedgerUI/Screens/Company/Settings/BookkeepingSetupView.h"

#include <utility>

#include <QCheckBox>
#include <QCoro/QCoroTask>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Access/OpeningBalancePolicy.h"
#include "LedgerUI/Components/Buttons/PrimaryButton.h"
#include "LedgerUI/Components/Fields/FieldError.h"
#include "LedgerUI/Components/Fields/FormField.h"
#include "LedgerUI/Components/Period/DayEdit.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Text/Values/DayText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int dialogWidth = 600;
constexpr int dayWidth = 220;

}

BookkeepingSetupView::BookkeepingSetupView(LedgerStore& store, QWidget* parent)
    : CommandForm{store, parent}, m_submission{SetupForm::fresh(*snapshot(), store.today())},
      m_initial{m_submission.form()}
{
    setObjectName(QStringLiteral("bookkeepingSetup"));
    confirmButton().setObjectName(QStringLiteral("setupConfirm"));
    cancelButton().setObjectName(QStringLiteral("setupCancel"));
    buildBody();
    bind();
    present();
}

void BookkeepingSetupView::buildBody()
{
    auto* body = new QWidget(bodyPlace());
    m_modeHead = new TextLabel(TypeStep::small, Token::text2, body);
    m_withOpenings = new QRadioButton(body);
    m_withOpenings->setObjectName(QStringLiteral("setupWithOpenings"));
    m_fromZero = new QRadioButton(body);
    m_fromZero->setObjectName(QStringLiteral("setupFromZero"));
    m_day = new DayEdit;
    m_day->setFixedWidth(dayWidth);
    m_day->line().setObjectName(QStringLiteral("setupDay"));
    m_dayField = new FormField(m_day, body);
    m_earliest = new TextLabel(TypeStep::small, Token::text2, body);
    m_earliest->setWordWrap(true);
    m_agreed = new QCheckBox(body);
    m_agreed->setObjectName(QStringLiteral("setupAgreed"));
    m_error = new FieldError(m_agreed, body);
    m_reload = new QPushButton(&banner());
    m_reload->setObjectName(QStringLiteral("setupReload"));
    m_reload->setAutoDefault(false);
    banner().addAction(m_reload);
    auto* rows = new QVBoxLayout(body);
    rows->setContentsMargins(Space::dialogMargin, 0, Space::dialogMargin, Space::dialogMargin);
    rows->setSpacing(Space::step2);
    rows->addWidget(m_modeHead);
    rows->addWidget(m_withOpenings);
    rows->addWidget(m_fromZero);
    rows->addSpacing(Space::step2);
    rows->addWidget(m_dayField);
    rows->addWidget(m_earliest);
    rows->addSpacing(Space::step2);
    rows->addWidget(m_agreed);
    rows->addWidget(m_error);
    rows->addStretch(1);
    setBody(body, dialogWidth);
}

void BookkeepingSetupView::edit(auto change)
{
    auto form = m_submission.form();
    change(form);
    m_submission.edit(std::move(form));
    present();
}

void BookkeepingSetupView::bind()
{
    connect(m_withOpenings, &QRadioButton::clicked, this,
            [this] { edit([](SetupForm& form) { form.mode = InitializationMode::openingBalances; }); });
    connect(m_fromZero, &QRadioButton::clicked, this,
            [this] { edit([](SetupForm& form) { form.mode = InitializationMode::fromZero; }); });
    connect(m_day, &DayEdit::dayChanged, this, [this](const std::string& day) {
        // Another day is to be confirmed anew.
        edit([&](SetupForm& form) {
            form.isAgreed = form.isAgreed && form.day == day;
            form.day = day;
        });
    });
    connect(m_agreed, &QCheckBox::clicked, this,
            [this](bool isAgreed) { edit([&](SetupForm& form) { form.isAgreed = isAgreed; }); });
    connect(m_reload, &QPushButton::clicked, this,
            [this] { QCoro::connect(this->store().refresh(true), this, [](const Result<void>&) {}); });
    connect(this, &FormDialog::confirmed, this, &BookkeepingSetupView::confirm);
}

void BookkeepingSetupView::adoptSnapshot()
{
    takeSnapshot();
    present();
}

/// What keeps the start from being confirmed whatever is chosen, such as a colleague who was quicker.
QString BookkeepingSetupView::whyNot() const
{
    if (!m_submission.isEditing())
        return {};
    const auto today = store().today();
    const auto command = FinancialSettingsRules::initialize(*snapshot(), today, today, m_submission.form().mode, {});
    using enum FinancialSettingsRules::Refusal;
    if (command || (command.error() != noAuthority && command.error() != alreadyInitialized))
        return {};
    return FinancialSettingsText::refusal(command.error(), locale());
}

/// What is wrong with the day, once it was tried to send.
QString BookkeepingSetupView::dayMessage() const
{
    const auto& form = m_submission.form();
    if (!form.isChecked)
        return {};
    if (form.day.empty()) { // no day, or none that is on offer
        const auto latest = FinancialSettingsText::startBounds(*snapshot(), store().today()).latest;
        return wordIn(locale(), bookkeepingWords(), "dayWrong", {DayText::shortDate(latest, locale()).toStdString()});
    }
    const auto command = FinancialSettingsRules::initialize(*snapshot(), latestDay(), form.day, form.mode, {});
    return command ? QString{} : FinancialSettingsText::refusal(command.error(), locale());
}

std::string BookkeepingSetupView::latestDay() const
{
    return DayTyping::bounds(*snapshot(), store().today()).latest;
}

void BookkeepingSetupView::present()
{
    const auto& words = bookkeepingWords();
    const auto& form = m_submission.form();
    setWindowTitle(wordIn(locale(), words, "setupTitle"));
    m_modeHead->setText(wordIn(locale(), words, "mode"));
    m_withOpenings->setText(wordIn(locale(), words, "mode.openingBalances"));
    m_withOpenings->setChecked(form.mode == InitializationMode::openingBalances);
    m_fromZero->setText(wordIn(locale(), words, "mode.fromZero"));
    m_fromZero->setChecked(form.mode == InitializationMode::fromZero);
    m_dayField->setLabel(wordIn(locale(), words, "start"));
    m_day->setNames(wordIn(locale(), words, "start"), wordIn(locale(), words, "calendar"));
    const auto earliest = OpeningBalancePolicy::earliestVisibleTransactionDay(*snapshot());
    const auto bounds = FinancialSettingsText::startBounds(*snapshot(), store().today());
    m_day->present(form.day, bounds);
    m_dayField->error().present(dayMessage());
    m_earliest->setText(
        earliest ? wordIn(locale(), words, "earliest", {DayText::shortDate(*earliest, locale()).toStdString()})
                 : wordIn(locale(), words, "noneEarlier"));
    m_agreed->setText(wordIn(locale(), words, "agreed"));
    m_agreed->setChecked(form.isAgreed);
    m_error->present(form.isChecked && !form.isAgreed ? wordIn(locale(), words, "agreedMissing") : QString{});
    m_reload->setText(wordIn(locale(), words, "reload"));
    const auto& refusal = m_submission.refusal();
    m_reload->setVisible(refusal && FinancialSettingsText::isConflict(*refusal));
    presentStanding({.stage = m_submission.stage(),
                     .refusal = refusal,
                     .note = refusal ? Note{} : Note{Banner::Kind::info, wordIn(locale(), words, "setupOnce")},
                     .confirm = wordIn(locale(), words, "confirmAndLock"),
                     .hasChanges = form.mode != m_initial.mode || form.day != m_initial.day || form.isAgreed,
                     .whyNot = whyNot()});
}

void BookkeepingSetupView::confirm()
{
    if (const auto* command = commandToSend(m_submission, [this] { return checked(); }))
        send(*command);
}

std::optional<FinancialSettingsCommand> BookkeepingSetupView::checked()
{
    auto form = m_submission.form();
    form.isChecked = true;
    m_submission.edit(form);
    present();
    auto command =
        FinancialSettingsRules::initialize(*snapshot(), latestDay(), form.day, form.mode, store().newIdentifier());
    if (command && form.isAgreed)
        return *std::move(command);
    (command ? static_cast<QWidget&>(*m_agreed) : m_day->line()).setFocus(Qt::OtherFocusReason);
    return {};
}

void BookkeepingSetupView::send(const FinancialSettingsCommand& command)
{
    present();
    QCoro::connect(store().submitFinancialSettings(command, false), this,
                   [this](const Result<void>& reply) { finish(reply); });
}

void BookkeepingSetupView::finish(const Result<void>& reply)
{
    if (!m_submission.isSaving())
        return;
    if (reply) {
        m_submission.succeed();
        Q_EMIT initialized();
        leave();
        return;
    }
    m_submission.fail(reply.error());
    presentAnew();
}

QWidget& BookkeepingSetupView::firstField() const
{
    if (!m_submission.isEditing())
        return confirmButton();
    return m_withOpenings->isChecked() ? *m_withOpenings : *m_fromZero;
}
