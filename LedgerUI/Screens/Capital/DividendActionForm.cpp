#include "LedgerUI/Screens/Capital/DividendActionForm.h"

#include "LedgerCore/Domain/Records/ServiceCode.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Capital/CapitalActions.h"
#include "LedgerUI/Presentation/Capital/CapitalFormWords.h"

namespace {

constexpr int plainWidth = 600;
constexpr int tableWidth = 640;

}

DividendForm DividendSection::opened(const Route& route, const LedgerSnapshot& snapshot, const std::string& /*today*/,
                                     std::string_view locale)
{
    return DividendForms::opened(route, snapshot, locale);
}

DividendForm DividendSection::reloaded(Form form, const LedgerSnapshot& snapshot, const std::string& /*today*/,
                                       std::string_view locale)
{
    return DividendForms::reloadLatest(std::move(form), snapshot, locale);
}

DividendForm DividendSection::edited(Form form, const RecordEdit& edit, const LedgerSnapshot& snapshot,
                                     std::string_view locale)
{
    return DividendForms::edited(std::move(form), edit, snapshot, locale);
}

DividendForm DividendSection::rewritten(Form form, std::string_view fromLocale, std::string_view toLocale)
{
    return DividendForms::rewritten(std::move(form), fromLocale, toLocale);
}

bool DividendSection::isCurrent(const Form& form, const LedgerSnapshot& snapshot)
{
    return DividendForms::isCurrent(form, snapshot);
}

std::expected<DividendCommand, std::vector<DividendProblem>>
DividendSection::command(const Form& form, const LedgerSnapshot& snapshot, CommandIssue issue, std::string_view locale)
{
    return DividendForms::command(form, snapshot, std::move(issue), locale);
}

RecordFormContent DividendSection::content(const DividendSubmission& submission, const Form& initial,
                                           const LedgerSnapshot& snapshot, const std::string& today,
                                           std::string_view locale)
{
    return DividendForms::content(submission, initial, snapshot, today, locale);
}

QString DividendSection::whyNot(const Form& form, const LedgerSnapshot& snapshot, std::string_view locale)
{
    return DividendActions::whyNot(form.route.action, snapshot, locale);
}

bool DividendSection::isConflict(const Failure& failure)
{
    const auto* error = std::get_if<APIError>(&failure);
    return error && error->code == ServiceCode::dividendRevisionConflict;
}

int DividendSection::width(const Route& route)
{
    return route.action == DividendAction::allocate ? tableWidth : plainWidth;
}

DividendActionForm::DividendActionForm(LedgerStore& store, const DividendRoute& route, QWidget* parent)
    : RecordActionForm{store, route, parent}
{
    if (route.action != DividendAction::allocate)
        return;
    const auto add = [this](const char* name) {
        auto* button = new QPushButton;
        button->setObjectName(QString::fromLatin1(name));
        button->setProperty("kind", QStringLiteral("flat"));
        button->setAutoDefault(false);
        body().addTableAction(button);
        return button;
    };
    m_useDefaults = add("useDefaultRatios");
    m_fill = add("fillFromOwnership");
    connect(m_useDefaults, &QPushButton::clicked, this,
            [this] { adoptForm(DividendForms::withDefaultRatios(form(), *snapshot(), locale())); });
    connect(m_fill, &QPushButton::clicked, this, &DividendActionForm::fillFromOwnership);
    present();
}

void DividendActionForm::present()
{
    RecordActionForm::present();
    if (!m_fill)
        return;
    m_useDefaults->setText(word(capitalFormWords(), "useDefaults"));
    m_fill->setText(word(capitalFormWords(), "title.dividend.fillFromOwnership"));
    const auto whyNot =
        DividendActions::whyNot(DividendAction::fillFromOwnership, {}, *snapshot(), store().today(), locale());
    m_fill->setEnabled(whyNot.isEmpty());
    m_fill->setToolTip(whyNot);
}

/// A change of its own: it alters the default rule, whose ratios then stand in this form.
void DividendActionForm::fillFromOwnership()
{
    auto* form = new DividendActionForm(store(), {.action = std::string{DividendAction::fillFromOwnership}}, this);
    form->whenDone([this] {
        takeSnapshot();
        adoptForm(DividendForms::withDefaultRatios(this->form(), *snapshot(), locale()));
    });
    form->open();
}
