#include "LedgerCore/Client/Receipts/AttachmentFilename.h"

#include <algorithm>
#include <array>
#include <utility>

#include <QString>
#include <QStringList>

#include "LedgerCore/Domain/Text/AppLanguage.h"
#include "LedgerCore/Domain/Text/WordTable.h"

namespace {

struct Ending {
    std::string_view mime;
    std::array<std::string_view, 2> accepted; // the first is given to names that have neither
};

constexpr std::array<Ending, 5> endings{{{"application/pdf", {"pdf", "pdf"}},
                                         {"image/jpeg", {"jpg", "jpeg"}},
                                         {"image/png", {"png", "png"}},
                                         {"image/heic", {"heic", "heif"}},
                                         {"image/heif", {"heif", "heic"}}}};

bool isUnwanted(QChar character)
{
    constexpr std::array refused{u'/', u'\\', u':', u'*',      u'?',      u'"',
                                 u'<', u'>',  u'|', u'\u2028', u'\u2029', u'\ufffd'};
    const auto category = character.category();
    return category == QChar::Other_Control || category == QChar::Other_Format ||
           category == QChar::Other_NotAssigned || category == QChar::Other_PrivateUse ||
           std::ranges::find(refused, character.unicode()) != refused.end();
}

/// Names of devices on some systems, whatever their ending.
bool isDevice(const QString& stem)
{
    static const QStringList devices{QStringLiteral("con"), QStringLiteral("prn"), QStringLiteral("aux"),
                                     QStringLiteral("nul")};
    const auto lower = stem.section(QLatin1Char{'.'}, 0, 0).toLower();
    const bool isPort = lower.size() == 4 && lower.back().isDigit() &&
                        (lower.startsWith(QStringLiteral("com")) || lower.startsWith(QStringLiteral("lpt")));
    return devices.contains(lower) || isPort;
}

/// Without blanks and dots around it: leading dots hide a file, trailing ones are dropped by some systems.
QString stripped(const QString& text)
{
    const auto isEdge = [](QChar each) { return each.isSpace() || each == QLatin1Char{'.'}; };
    const auto first = std::ranges::find_if_not(text, isEdge);
    const auto last = std::find_if_not(text.rbegin(), text.rend(), isEdge).base();
    return first < last ? text.mid(first - text.begin(), last - first) : QString{};
}

/// At most `room` bytes of UTF-8, cut between characters as people see them: no half of a pair, no lost accent.
QString cut(QString text, qsizetype room)
{
    while (text.toUtf8().size() > room) {
        const bool isPair = text.size() > 1 && text.back().isLowSurrogate();
        text.chop(isPair ? 2 : 1);
    }
    return text;
}

}

std::string AttachmentFilename::safe(std::string_view name, std::string_view mime, std::string_view locale)
{
    const auto found = std::ranges::find(endings, mime, &Ending::mime);
    const auto accepted = found == endings.end() ? std::array<std::string_view, 2>{} : found->accepted;
    // Composed, so that an accent is no character of its own.
    auto text = QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()))
                    .normalized(QString::NormalizationForm_C)
                    .replace(QLatin1Char{'\\'}, QLatin1Char{'/'})
                    .section(QLatin1Char{'/'}, -1);
    text.removeIf([](QChar each) { return isUnwanted(each); });
    text = stripped(text.simplified());
    const auto dot = text.lastIndexOf(QLatin1Char{'.'});
    const auto ending = dot > 0 ? text.mid(dot + 1).toLower().toStdString() : std::string{};
    const bool fits = !ending.empty() && std::ranges::find(accepted, ending) != accepted.end();
    const bool isKnown = std::ranges::any_of(
        endings, [&](const Ending& each) { return std::ranges::find(each.accepted, ending) != each.accepted.end(); });
    const auto kept = QString::fromStdString(fits ? ending : std::string{accepted.front()});
    auto stem = stripped(fits || isKnown ? text.left(dot) : text); // "scan.v2" is no ending, "photo.heic" was one
    if (stem.isEmpty())
        stem = QString::fromStdString(std::string{words().text("receipt", AppLanguage::locale(locale))});
    if (isDevice(stem))
        stem.prepend(QLatin1Char{'_'});
    const auto suffix = kept.isEmpty() ? QString{} : QLatin1Char{'.'} + kept;
    stem = stripped(cut(stem, static_cast<qsizetype>(maximumBytes) - suffix.toUtf8().size()));
    return (stem + suffix).toStdString();
}

const WordTable& AttachmentFilename::words()
{
    static const WordTable table{{"receipt", "票据", "Bukti", "Chứng từ", "Receipt"}};
    return table;
}
