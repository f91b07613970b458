#include <array>

#include <QFile>
#include <QString>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerUI/Theme/Theme.h"
#include "LedgerUI/Theme/TypeScale.h"

namespace {

struct NamedStep {
    const char* name;
    TypeStep step;
};

constexpr std::array steps = std::to_array<NamedStep>({
    {"display", TypeStep::display},
    {"figure", TypeStep::figure},
    {"title", TypeStep::title},
    {"section", TypeStep::section},
    {"body", TypeStep::body},
    {"small", TypeStep::small},
    {"micro", TypeStep::micro},
});

// What stands for "@name" in a scheme; "@size-small" is a type step, "@img" the folder of tinted images.
QString valueOf(QStringView name, ColorScheme scheme)
{
    if (name == QStringLiteral("img"))
        return scheme == ColorScheme::dark ? QStringLiteral(":/tinted/dark") : QStringLiteral(":/tinted/light");
    for (const auto& each : steps) {
        if (name == QStringLiteral("size-") + QString::fromLatin1(each.name))
            return QString::number(TypeScale::points(each.step)) + QStringLiteral("pt");
    }
    for (const auto& each : tokenColors()) {
        if (name == QString::fromLatin1(each.name.data(), static_cast<qsizetype>(each.name.size())))
            return QColor::fromRgb(tokenColor(each.token, scheme)).name(QColor::HexRgb);
    }
    return {};
}

bool belongsToName(QChar character)
{
    return character.isLetterOrNumber() || character == QLatin1Char('-');
}

}

QString Theme::styleSheet(ColorScheme scheme)
{
    QFile file{QStringLiteral(":/tallyfold/theme.qss")};
    const bool isOpen = file.open(QIODevice::ReadOnly);
    require(isOpen, "the style sheet is compiled in");
    const auto source = QString::fromUtf8(file.readAll());
    QString sheet;
    sheet.reserve(source.size());
    for (qsizetype at = 0; at < source.size();) {
        if (source[at] != QLatin1Char('@')) {
            sheet += source[at++];
            continue;
        }
        auto end = ++at;
        while (end < source.size() && belongsToName(source[end]))
            ++end;
        const auto value = valueOf(QStringView{source}.sliced(at, end - at), scheme);
        require(!value.isEmpty(), "every name of the style sheet is known");
        sheet += value;
        at = end;
    }
    return sheet;
}
