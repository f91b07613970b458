#include "LedgerCore/Client/Store/StoreProperties.h"

#include <QThread>

#include "LedgerCore/Domain/Contract.h"

StoreProperties::StoreProperties(std::optional<std::string> preferredAppLocale, QObject* parent)
    : QObject(parent), m_preferredAppLocale(std::move(preferredAppLocale))
{
}

StoreProperties::~StoreProperties() = default;

std::shared_ptr<const PendingCompanyRegistration> StoreProperties::pendingCompanyRegistration() const
{
    return m_pendingCompanyRegistration;
}

void StoreProperties::requireMainThread() const
{
    require(QThread::currentThread() == thread(), "the store is used on its own thread only");
}
