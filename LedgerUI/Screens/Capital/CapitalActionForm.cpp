#include "LedgerUI/Screens/Capital/CapitalActionForm.h"

#include "LedgerUI/Presentation/Capital/CapitalActions.h"
#include "LedgerUI/Screens/Records/RecordActionFormSending.h"
#include "LedgerUI/Screens/Records/RecordActionFormShowing.h"

template class RecordActionForm<CapitalSection>;

CapitalForm CapitalSection::reloaded(Form form, const LedgerSnapshot& snapshot, std::string_view today,
                                     std::string_view locale)
{
    return initialize(std::move(form), snapshot, today, locale, PreserveDraft::yes);
}

QString CapitalSection::whyNot(const Form& form, const LedgerSnapshot& snapshot, std::string_view locale)
{
    return CapitalActions::whyNot(form.route.action, snapshot, locale);
}

bool CapitalSection::hasTable(const Route& route)
{
    return route.action == CapitalAction::setBaseline || route.action == CapitalAction::setOwnership;
}

bool CapitalSection::takesReceipts(const Route& route)
{
    return route.action == CapitalAction::contribute;
}
