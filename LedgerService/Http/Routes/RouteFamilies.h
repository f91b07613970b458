#pragma once

#include <span>

#include "LedgerService/Http/Route.h"

namespace LedgerService {

/// Each family is defined in the source file of its name.
namespace RouteFamilies {

std::span<const Route> accounts();
std::span<const Route> attachments();
std::span<const Route> audit();
std::span<const Route> categories();
std::span<const Route> drafts();
std::span<const Route> financialSettings();
std::span<const Route> health();
std::span<const Route> session();
std::span<const Route> registration();
std::span<const Route> access();
std::span<const Route> snapshot();
std::span<const Route> templates();
std::span<const Route> transactions();
std::span<const Route> invitations();
std::span<const Route> members();
std::span<const Route> company();
std::span<const Route> capital();
std::span<const Route> dividends();

}

}
