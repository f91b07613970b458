#pragma once

#include <functional>
#include <string>

namespace LedgerService {

class Connection;

/// Makes a database with the company of `SampleBooks` that nothing serves yet; `beside` adds what else is to be there.
void makeSampleDatabase(const std::string& name, const std::function<void(Connection&)>& beside = [](auto&) {});

}
