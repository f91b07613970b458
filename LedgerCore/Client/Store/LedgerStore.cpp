#include "LedgerCore/Client/Store/LedgerStore.h"

#include <utility>

#include "LedgerCore/Client/Errors/FailureMessages.h"
#include "LedgerCore/Client/Receipts/AttachmentCache.h"
#include "LedgerCore/Client/Session/Clock.h"
#include "LedgerCore/Client/Session/IdentifierSource.h"
#include "LedgerCore/Client/Session/LanguageDefaults.h"
#include "LedgerCore/Client/Store/EntryDrafts.h"
#include "LedgerCore/Client/Store/EntryTemplates.h"
#include "LedgerCore/Domain/Records/Requests/AccessRecords.h"
#include "LedgerCore/Domain/Text/AppLanguage.h"

namespace {

std::optional<std::string> supported(std::optional<std::string> code)
{
    return code && AppLanguage::isSupported(*code) ? std::move(code) : std::nullopt;
}

}

LedgerStore::LedgerStore(std::string baseURL, Environment environment, QObject* parent)
    : StoreProperties(supported(environment.languageDefaults.chosenLanguage()), parent), SignedInRights(m_snapshot),
      AccessOperations(static_cast<SessionRunner&>(*this)), AccountOperations(static_cast<OperationRunner&>(*this)),
      BookCommandOperations(static_cast<OperationRunner&>(*this)),
      CategoryOperations(static_cast<OperationRunner&>(*this)), DraftOperations(static_cast<OperationRunner&>(*this)),
      ExportOperations(static_cast<OperationRunner&>(*this)), MemberOperations(static_cast<OperationRunner&>(*this)),
      TemplateOperations(static_cast<OperationRunner&>(*this)), m_environment(environment),
      m_connection(std::move(baseURL), environment.limits)
{
}

LedgerStore::~LedgerStore()
{
    blockSignals(true);
    m_connection.abort();
}

EntryTemplates& LedgerStore::templates()
{
    if (!m_templates)
        m_templates = std::make_unique<EntryTemplates>(*this);
    return *m_templates;
}

EntryDrafts& LedgerStore::drafts()
{
    if (!m_drafts)
        m_drafts = std::make_unique<EntryDrafts>(*this);
    return *m_drafts;
}

std::string LedgerStore::locale() const
{
    if (m_preferredAppLocale)
        return *m_preferredAppLocale;
    return std::string{AppLanguage::resolve(m_environment.languageDefaults.systemLanguages())};
}

std::string LedgerStore::today() const
{
    return m_environment.clock.today();
}

std::string LedgerStore::newIdentifier()
{
    return m_environment.identifiers.next();
}

void LedgerStore::setAppLanguage(std::optional<std::string> code)
{
    if (code && !AppLanguage::isSupported(*code))
        return;
    const bool isKept = m_environment.languageDefaults.setChosenLanguage(code);
    assign(m_preferredAppLocale, std::move(code), &LedgerStore::preferredAppLocaleChanged);
    if (!isKept)
        assign(m_errorMessage, std::optional{std::string{storeMessages().text("languageNotKept", locale())}},
               &LedgerStore::errorMessageChanged);
}

void LedgerStore::setServerURL(std::string address)
{
    if (m_snapshot || m_isBusy)
        return;
    assign(m_pendingCompanyRegistration, {}, &LedgerStore::pendingCompanyRegistrationChanged);
    if (address == m_connection.address())
        return m_connection.setToken({});
    m_connection.setAddress(std::move(address));
    Q_EMIT endpointChanged();
}

void LedgerStore::dismissMessages()
{
    assign(m_errorMessage, {}, &LedgerStore::errorMessageChanged);
    assign(m_noticeMessage, {}, &LedgerStore::noticeMessageChanged);
}

void LedgerStore::cancel()
{
    m_connection.abort(Errand::person);
    m_opening.giveUp();
}

std::string LedgerStore::friendly(const Failure& failure, std::optional<std::string> locale) const
{
    const auto language = std::move(locale).value_or(this->locale());
    if (const auto* error = std::get_if<APIError>(&failure))
        return std::string{error->friendlyMessage(language)};
    if (const auto* error = std::get_if<MoneyError>(&failure))
        return std::string{friendlyMessage(*error, language)};
    return std::string{clientError(ClientCode::unknown).friendlyMessage(language)};
}

void LedgerStore::publish(const Failure& failure, const std::string& meaning)
{
    if (std::holds_alternative<Cancelled>(failure))
        return;
    auto text = friendly(failure);
    if (!meaning.empty())
        text += '\n' + meaning;
    assign(m_errorMessage, std::optional{std::move(text)}, &LedgerStore::errorMessageChanged);
}
