#include "LedgerUI/Presentation/Workspace/CompanyDirectory.h"

#include <algorithm>

#include "LedgerCore/Domain/Records/Company.h"
#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerCore/Domain/Text/Naming.h"
#include "LedgerUI/Presentation/Text/CopiedText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

CompanyDirectory CompanyDirectory::of(const LedgerSnapshot& snapshot, const std::optional<CompanyChoices>& choices,
                                      const PendingCompanyRegistration* pending, std::string_view locale)
{
    CompanyDirectory directory;
    const auto& open = snapshot.company;
    for (const auto& each : choices ? choices->companies : std::vector<CompanyChoice>{})
        directory.rows.push_back({.id = each.id, .name = qString(each.name), .isOpen = each.id == open.id});
    if (std::ranges::none_of(directory.rows, &Row::isOpen))
        directory.rows.insert(directory.rows.begin(), {.id = open.id, .name = qString(open.name), .isOpen = true});
    const auto isListed = [&](const PendingCompanyRegistration& application) {
        return std::ranges::find(directory.rows, application.applicationID, &Row::id) != directory.rows.end();
    };
    if (pending && pending->status != ApprovalStatus::approved && !isListed(*pending))
        directory.pending = wordIn(locale, companyAccessWords(), "awaitsReview", {pending->companyName});
    return directory;
}

std::string CompanyAccess::codeIn(const QString& typed)
{
    return CopiedText::code(typed).toStdString();
}

QString CompanyAccess::codeProblem(const Failure& failure, std::string_view locale)
{
    const auto* error = std::get_if<APIError>(&failure);
    if (error && error->code == ServiceCode::emailExists)
        return wordIn(locale, companyAccessWords(), "alreadyMember");
    if (error && error->code == ServiceCode::invalidInvitation)
        return qString(error->friendlyMessage(locale));
    return {};
}

QString CompanyAccess::nameProblem(const QString& typed, std::string_view locale)
{
    if (typed.trimmed().isEmpty())
        return wordIn(locale, companyAccessWords(), "nameRequired");
    return Naming::isName(typed.toStdString()) ? QString{} : wordIn(locale, companyAccessWords(), "nameMisfit");
}
