#include "LedgerUI/Screens/Capital/CapitalActionForm.h"

#include "LedgerCore/Domain/Records/ServiceCode.h"
#include "LedgerUI/Presentation/Capital/CapitalActions.h"

namespace {

constexpr int plainWidth = 600;
constexpr int tableWidth = 640;

}

CapitalForm CapitalSection::opened(const Route& route, const LedgerSnapshot& snapshot, const std::string& today,
                                   std::string_view locale)
{
    return CapitalForms::opened(route, snapshot, today, locale);
}

CapitalForm CapitalSection::reloaded(Form form, const LedgerSnapshot& snapshot, const std::string& today,
                                     std::string_view locale)
{
    return CapitalForms::initialize(std::move(form), snapshot, today, locale, CapitalForms::PreserveDraft::yes);
}

CapitalForm CapitalSection::edited(Form form, const RecordEdit& edit, const LedgerSnapshot& snapshot,
                                   std::string_view locale)
{
    return CapitalForms::edited(std::move(form), edit, snapshot, locale);
}

CapitalForm CapitalSection::rewritten(Form form, std::string_view fromLocale, std::string_view toLocale)
{
    return CapitalForms::rewritten(std::move(form), fromLocale, toLocale);
}

bool CapitalSection::isCurrent(const Form& form, const LedgerSnapshot& snapshot)
{
    return CapitalForms::isCurrent(form, snapshot);
}

std::expected<CapitalCommand, std::vector<CapitalProblem>>
CapitalSection::command(const Form& form, const LedgerSnapshot& snapshot, CommandIssue issue, std::string_view locale)
{
    return CapitalForms::command(form, snapshot, std::move(issue), locale);
}

RecordFormContent CapitalSection::content(const CapitalSubmission& submission, const Form& initial,
                                          const LedgerSnapshot& snapshot, const std::string& today,
                                          std::string_view locale)
{
    return CapitalForms::content(submission, initial, snapshot, today, locale);
}

QString CapitalSection::whyNot(const Form& form, const LedgerSnapshot& snapshot, std::string_view locale)
{
    return CapitalActions::whyNot(form.route.action, snapshot, locale);
}

bool CapitalSection::isConflict(const Failure& failure)
{
    const auto* error = std::get_if<APIError>(&failure);
    return error &&
           (error->code == ServiceCode::capitalRevisionConflict || error->code == ServiceCode::capitalBaselineConflict);
}

int CapitalSection::width(const Route& route)
{
    const bool hasTable = route.action == CapitalAction::setBaseline || route.action == CapitalAction::setOwnership;
    return hasTable ? tableWidth : plainWidth;
}
