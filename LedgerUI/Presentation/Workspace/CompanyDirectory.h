#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <QString>

#include "LedgerCore/Client/Errors/Failure.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerCore/Domain/Records/Requests/AccessRecords.h"

/// The companies of the signed-in person, as the menu of the company button lists them.
struct CompanyDirectory {
    struct Row {
        std::string id;
        QString name;
        bool isOpen = false;

        bool operator==(const Row&) const = default;
    };
    std::vector<Row> rows;
    QString pending; // of an application that awaits review; empty without one

    /// `choices` are not known before the service has answered: then the open company stands alone. An application that
    /// has become one of the companies awaits nothing any more.
    static CompanyDirectory of(const LedgerSnapshot& snapshot, const std::optional<CompanyChoices>& choices,
                               const PendingCompanyRegistration* pending, std::string_view locale);
};

namespace CompanyAccess {

/// A code of an invitation as it is sent: without blanks and what copying brings along.
std::string codeIn(const QString& typed);
/// What the form for joining says about a refusal at its field; empty for what belongs into its banner.
QString codeProblem(const Failure& failure, std::string_view locale);
/// What keeps a company from bearing this name; empty when it may.
QString nameProblem(const QString& typed, std::string_view locale);

}
