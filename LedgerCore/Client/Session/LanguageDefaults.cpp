#include "LedgerCore/Client/Session/LanguageDefaults.h"

#include <memory>
#include <utility>

#include <QLocale>
#include <QSettings>

#include "LedgerCore/Domain/Text/AppLanguage.h"

namespace {

std::unique_ptr<QSettings> settings(const std::filesystem::path& file)
{
    const auto name = QStringLiteral("Tallyfold");
    if (file.empty())
        return std::make_unique<QSettings>(QSettings::IniFormat, QSettings::UserScope, name, name);
    return std::make_unique<QSettings>(QString::fromStdString(file.string()), QSettings::IniFormat);
}

QString key()
{
    return QString::fromUtf8(AppLanguage::preferenceKey.data(), AppLanguage::preferenceKey.size());
}

}

UserDefaults::UserDefaults(std::filesystem::path file) : m_file(std::move(file)) {}

std::optional<std::string> UserDefaults::chosenLanguage() const
{
    const auto value = settings(m_file)->value(key());
    if (!value.isValid())
        return std::nullopt;
    return value.toString().toStdString();
}

bool UserDefaults::setChosenLanguage(std::optional<std::string> tag)
{
    const auto kept = settings(m_file);
    if (tag)
        kept->setValue(key(), QString::fromStdString(*tag));
    else
        kept->remove(key());
    kept->sync();
    return kept->status() == QSettings::NoError;
}

std::vector<std::string> UserDefaults::systemLanguages() const
{
    std::vector<std::string> languages;
    for (const auto& each : QLocale::system().uiLanguages())
        languages.push_back(each.toStdString());
    return languages;
}

LanguageMemory::LanguageMemory(std::optional<std::string> chosen, std::vector<std::string> system)
    : m_chosen(std::move(chosen)), m_system(std::move(system))
{
}
