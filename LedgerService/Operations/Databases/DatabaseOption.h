#pragma once

#include <cstdint>
#include <string>

namespace CLI {
class App;
}

namespace LedgerService {

/// How commands are told which database they work on.
namespace DatabaseOption {

/// What a command can work on.
enum class Takes : std::uint8_t { anyDatabase, onlyFile };

/// Declares --database, which is needed. One that a command cannot take is refused before anything is done.
void addTo(CLI::App& command, std::string& name, Takes takes);

/// Declares --files, for what no database keeps.
void addFiles(CLI::App& command, std::string& files);

}

}
