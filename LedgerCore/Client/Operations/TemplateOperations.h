#pragma once

#include <string>

#include <QCoro/QCoroTask>

#include "LedgerCore/Client/Errors/Failure.h"
#include "LedgerCore/Domain/Records/EntryTemplate.h"

class OperationRunner;

/// What the store can have done to the templates of entries that the service keeps. Each gives the templates as they
/// stand then. Only for services that offer them.
class TemplateOperations {
public:
    using Templates = QCoro::Task<Result<EntryTemplateList>>;

    /// Asks without `isBusy` or a message, except that of a session that ended. `Cancelled` while an operation runs,
    /// and when one begins meanwhile.
    Templates loadTemplatesQuietly();
    Templates createTemplate(TemplateCreate created, bool publishError);
    Templates updateTemplate(std::string id, TemplateUpdate update, bool publishError);
    Templates removeTemplate(std::string id, bool publishError);
    /// Skips a due day, or has it proposed again.
    Templates setTemplateDay(std::string id, TemplateDay day, bool publishError);

protected:
    explicit TemplateOperations(OperationRunner& runner) : m_runner{runner} {}
    ~TemplateOperations() = default;

private:
    OperationRunner& m_runner;
};
