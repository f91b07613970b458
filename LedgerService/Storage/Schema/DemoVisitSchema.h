#pragma once

namespace LedgerService {

class Connection;

/// Lets there be several demonstration companies of one language: the shared one, and those of visitors, which know
/// when their visitor came.
namespace DemoVisitSchema {

void apply(Connection& connection);

}

}
