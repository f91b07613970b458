#include "LedgerCore/Client/Operations/TemplateOperations.h"

#include <utility>

#include "LedgerCore/Client/Operations/OperationRunner.h"

TemplateOperations::Templates TemplateOperations::loadTemplatesQuietly()
{
    return m_runner.askQuietly<EntryTemplateList>({.path = "v1/templates"});
}

TemplateOperations::Templates TemplateOperations::createTemplate(TemplateCreate created, bool publishError)
{
    return m_runner.ask<EntryTemplateList>({.method = "POST", .path = "v1/templates", .body = Json::encode(created)},
                                           OperationRunner::publishing(publishError));
}

TemplateOperations::Templates TemplateOperations::updateTemplate(std::string id, TemplateUpdate update,
                                                                 bool publishError)
{
    return m_runner.ask<EntryTemplateList>(
        {.method = "PATCH", .path = "v1/templates/" + id, .body = Json::encode(update)},
        OperationRunner::publishing(publishError));
}

TemplateOperations::Templates TemplateOperations::removeTemplate(std::string id, bool publishError)
{
    return m_runner.ask<EntryTemplateList>({.method = "POST", .path = "v1/templates/" + id + "/remove"},
                                           OperationRunner::publishing(publishError));
}

TemplateOperations::Templates TemplateOperations::setTemplateDay(std::string id, TemplateDay day, bool publishError)
{
    return m_runner.ask<EntryTemplateList>(
        {.method = "POST", .path = "v1/templates/" + id + "/days", .body = Json::encode(day)},
        OperationRunner::publishing(publishError));
}
