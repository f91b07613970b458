#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include <QCoro/QCoroTask>

#include "LedgerCore/Client/Files/FileSaving.h"

/// Files that a person saves from a screen.
namespace SavedFile {

/// Makes a file's content and writes it, both on a worker.
QCoro::Task<std::optional<SavingProblem>> write(std::filesystem::path path, std::function<std::string()> content);

}
