#include "LedgerService/Mail/SpoolFolder.h"

#include <algorithm>
#include <fstream>
#include <vector>

#include <fmt/core.h>
#include <unistd.h>

namespace LedgerService {

namespace {

constexpr std::size_t mostFiles = 1000;

}

std::optional<std::string> SpoolFolder::whyNotReady()
{
    std::error_code failure;
    if (std::filesystem::create_directories(m_folder, failure))
        std::filesystem::permissions(m_folder, std::filesystem::perms::owner_all, failure);
    if (access(m_folder.c_str(), W_OK | X_OK) != 0)
        return fmt::format("mail cannot be put into {}", m_folder.string());
    return std::nullopt;
}

MailTransport::Delivery SpoolFolder::deliver(const std::string&, const std::string& message, const std::string& name)
{
    const auto part = m_folder / (name + ".part");
    std::ofstream file{part, std::ios::binary};
    file << message;
    file.close();
    std::error_code failure;
    if (file)
        std::filesystem::rename(part, m_folder / (name + ".eml"), failure);
    if (!file || failure) {
        std::filesystem::remove(part, failure);
        return Delivery::failed;
    }
    removeOldest();
    return Delivery::delivered;
}

/// Names begin with the time.
void SpoolFolder::removeOldest()
{
    std::vector<std::filesystem::path> files;
    std::error_code failure;
    for (const auto& each : std::filesystem::directory_iterator{m_folder, failure}) {
        if (each.path().extension() == ".eml")
            files.push_back(each.path());
    }
    if (files.size() <= mostFiles)
        return;
    const auto end = files.begin() + static_cast<std::ptrdiff_t>(files.size() - mostFiles);
    std::ranges::nth_element(files, end);
    for (auto each = files.begin(); each != end; ++each)
        std::filesystem::remove(*each, failure);
}

}
