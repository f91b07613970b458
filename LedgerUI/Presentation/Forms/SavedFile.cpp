#include "LedgerUI/Presentation/Forms/SavedFile.h"

#include <limits>
#include <memory>
#include <utility>

#include "LedgerCore/Client/Http/APIClient.h"

namespace {

constexpr auto onWorker = std::numeric_limits<std::size_t>::max();

}

QCoro::Task<std::optional<SavingProblem>> SavedFile::write(std::filesystem::path path,
                                                           std::function<std::string()> content)
{
    const auto problem = std::make_shared<std::optional<SavingProblem>>();
    auto writing = runForSize(onWorker, [problem, path = std::move(path), content = std::move(content)] {
        *problem = FileSaving::write(path, content());
    });
    co_await writing;
    co_return *problem;
}
