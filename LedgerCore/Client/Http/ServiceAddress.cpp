#include "LedgerCore/Client/Http/ServiceAddress.h"

#include "LedgerCore/Client/Http/APIClient.h"

std::string ServiceAddress::choose(std::string_view configured)
{
    return APIClient::validatedURL(configured).value_or(std::string{fallback});
}

std::string ServiceAddress::atStart()
{
    return choose(TALLYFOLD_SERVICE_URL);
}
