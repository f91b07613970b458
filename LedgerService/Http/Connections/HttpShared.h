#pragma once

#include "LedgerService/Http/Connections/ByteBudget.h"
#include "LedgerService/Http/Connections/ClientAddress.h"
#include "LedgerService/Http/Connections/ConnectionTable.h"
#include "LedgerService/Http/Connections/TlsCertificate.h"
#include "LedgerService/Http/Dispatch/Answering.h"
#include "LedgerService/Http/HttpLimits.h"
#include "LedgerService/Http/RouteTable.h"

namespace LedgerService {

/// What all connections of a server share. Only the network thread changes it.
struct HttpShared {
    const Dispatcher& dispatcher;
    const RouteTable& routes;
    const HttpLimits& limits;
    const TrustedProxies& proxies;
    const Answering& answering;
    WorkLane& readers;
    ConnectionTable& connections;
    const TlsCertificate* certificate; // null: connections are plain
    ByteBudget bodies;
    ByteBudget replies;
    bool stopping = false;
};

}
