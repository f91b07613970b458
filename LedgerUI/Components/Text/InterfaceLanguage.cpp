#include "LedgerUI/Components/Text/InterfaceLanguage.h"

#include <array>
#include <utility>

#include <QCoreApplication>
#include <QEvent>

#include "LedgerCore/Domain/Text/AppLanguage.h"
#include "LedgerCore/Domain/Text/WordTable.h"

namespace {

std::string& tagInForce()
{
    static std::string tag{AppLanguage::supportedLocales.front()};
    return tag;
}

constexpr std::array<std::pair<std::string_view, std::string_view>, 4> nativeNames{{
    {"zh-CN", "简体中文"},
    {"en-US", "English"},
    {"id-ID", "Bahasa Indonesia"},
    {"vi-VN", "Tiếng Việt"},
}};

}

const std::string& InterfaceLanguage::tag()
{
    return tagInForce();
}

void InterfaceLanguage::change(std::string tag)
{
    if (tag == tagInForce())
        return;
    tagInForce() = std::move(tag);
    if (auto* application = QCoreApplication::instance())
        QCoreApplication::postEvent(application, new QEvent(QEvent::LanguageChange));
}

QString InterfaceLanguage::nativeName(std::string_view tag)
{
    const auto resolved = AppLanguage::locale(tag);
    for (const auto& [locale, name] : nativeNames) {
        if (locale == resolved)
            return qString(name);
    }
    return qString(tag);
}

QString word(const WordTable& table, std::string_view key)
{
    return qString(table.text(key, InterfaceLanguage::tag()));
}

QString word(const WordTable& table, std::string_view key, std::initializer_list<std::string_view> arguments)
{
    return qString(table.filled(key, InterfaceLanguage::tag(), arguments));
}
