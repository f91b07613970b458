#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// Where the chosen interface language is kept, and what the system prefers while none is chosen.
class LanguageDefaults {
public:
    virtual ~LanguageDefaults() = default;

    /// The kept tag as it stands, which may be none of ours.
    [[nodiscard]] virtual std::optional<std::string> chosenLanguage() const = 0;
    /// Keeps the tag, or forgets it without one, and says whether that worked.
    [[nodiscard]] virtual bool setChosenLanguage(std::optional<std::string> tag) = 0;
    /// The languages of the user's system, most wanted first.
    [[nodiscard]] virtual std::vector<std::string> systemLanguages() const = 0;
};

/// The user's settings file.
class UserDefaults final : public LanguageDefaults {
public:
    /// Without a path, the file is the application's own in the user's configuration folder.
    explicit UserDefaults(std::filesystem::path file = {});

    [[nodiscard]] std::optional<std::string> chosenLanguage() const override;
    [[nodiscard]] bool setChosenLanguage(std::optional<std::string> tag) override;
    [[nodiscard]] std::vector<std::string> systemLanguages() const override;

private:
    std::filesystem::path m_file;
};

/// Keeps the choice until the process ends.
class LanguageMemory final : public LanguageDefaults {
public:
    explicit LanguageMemory(std::optional<std::string> chosen = {}, std::vector<std::string> system = {"en-US"});

    [[nodiscard]] std::optional<std::string> chosenLanguage() const override { return m_chosen; }
    [[nodiscard]] bool setChosenLanguage(std::optional<std::string> tag) override
    {
        m_chosen = std::move(tag);
        return true;
    }
    [[nodiscard]] std::vector<std::string> systemLanguages() const override { return m_system; }

private:
    std::optional<std::string> m_chosen;
    std::vector<std::string> m_system;
};
