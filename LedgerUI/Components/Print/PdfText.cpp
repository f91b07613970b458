#include "LedgerUI/Components/Print/PdfText.h"

#include <array>
#include <charconv>
#include <map>
#include <memory>
#include <optional>
#include <regex>
#include <set>
#include <utility>
#include <vector>

#include <QRawFont>
#include <fmt/format.h>

namespace {

constexpr std::string_view mapMark = "/ToUnicode ";
constexpr std::size_t offsetLine = 20;        // bytes of a line in the table of offsets
constexpr std::size_t charactersAtOnce = 100; // in one block of a map

std::optional<std::size_t> numberAt(std::string_view text, std::size_t at)
{
    std::size_t value = 0;
    const auto* first = text.data() + at;
    const auto read = std::from_chars(first, text.data() + text.size(), value);
    return read.ec == std::errc{} ? std::optional{value} : std::nullopt;
}

/// Which font shows a code point, and by which glyph.
class Glyphs {
public:
    explicit Glyphs(const QStringList& families)
    {
        for (const auto& family : families) {
            for (const bool isBold : {false, true})
                m_fonts.push_back(QRawFont::fromFont(printFont({family}, {.size = 100, .isBold = isBold})));
        }
    }

    /// The glyphs of a code point, one for each font; 0 where a font has none.
    [[nodiscard]] std::vector<quint32> of(char16_t unit) const
    {
        std::vector<quint32> glyphs;
        for (const auto& font : m_fonts) {
            const auto found = font.glyphIndexesForString(QString{QChar{unit}});
            glyphs.push_back(found.isEmpty() ? 0 : found.front());
        }
        return glyphs;
    }

private:
    std::vector<QRawFont> m_fonts;
};

/// Glyph and code point, as the lines of a map name them.
using Names = std::map<unsigned, char16_t>;

unsigned hex(const std::string& digits)
{
    return static_cast<unsigned>(std::stoul(digits, nullptr, 16));
}

Names namesOf(const std::string& map)
{
    static const std::regex line{R"(<([0-9A-Fa-f]{4})> <([0-9A-Fa-f]{4})> (?:<([0-9A-Fa-f]{4})>|\[([^\]]*)\]))"};
    static const std::regex code{R"(<([0-9A-Fa-f]{4})>)"};
    Names names;
    for (std::sregex_iterator each{map.begin(), map.end(), line}, end; each != end; ++each) {
        const auto& found = *each;
        auto glyph = hex(found[1]);
        if (found[3].matched) {
            for (auto unit = hex(found[3]); glyph <= hex(found[2]); ++glyph, ++unit)
                names[glyph] = static_cast<char16_t>(unit);
            continue;
        }
        const auto list = found[4].str();
        for (std::sregex_iterator one{list.begin(), list.end(), code}; one != end; ++one, ++glyph)
            names[glyph] = static_cast<char16_t>(hex((*one)[1]));
    }
    return names;
}

std::string mapOf(const Names& names)
{
    std::string text = "/CIDInit /ProcSet findresource begin\n12 dict begin\nbegincmap\n"
                       "/CIDSystemInfo << /Registry (Adobe) /Ordering (UCS) /Supplement 0 >> def\n"
                       "/CMapName /Adobe-Identity-UCS def\n/CMapType 2 def\n"
                       "1 begincodespacerange\n<0000> <FFFF>\nendcodespacerange\n";
    std::size_t left = names.size();
    std::size_t inBlock = 0;
    for (const auto& [glyph, unit] : names) {
        if (inBlock == 0)
            text += fmt::format("{} beginbfchar\n", std::min(left, charactersAtOnce));
        text += fmt::format("<{:04X}> <{:04X}>\n", glyph, static_cast<unsigned>(unit));
        --left;
        inBlock = (inBlock + 1) % charactersAtOnce;
        if (inBlock == 0 || left == 0)
            text += "endbfchar\n";
    }
    return text + "endcmap\nCMapName currentdict /CMap defineresource pop\nend\nend\n";
}

/// The parts of a document that an update refers to.
struct Frame {
    std::size_t offsets = 0; // where its table of offsets begins
    std::size_t lines = 0;   // where the first line of that table stands
    std::string trailer;     // its entries, without those that an update gives anew
};

std::optional<Frame> frameOf(const std::string& pdf)
{
    static const std::regex kept{R"(/(?:Info|Root) \d+ 0 R|/Size \d+)"};
    const auto start = pdf.rfind("startxref\n");
    const auto trailer = pdf.rfind("trailer\n");
    if (start == std::string::npos || trailer == std::string::npos || trailer > start)
        return std::nullopt;
    const auto offsets = numberAt(pdf, start + std::string_view{"startxref\n"}.size());
    if (!offsets || pdf.compare(*offsets, 7, "xref\n0 ") != 0)
        return std::nullopt;
    Frame frame{.offsets = *offsets, .lines = pdf.find('\n', *offsets + 7) + 1, .trailer = {}};
    const auto said = pdf.substr(trailer, start - trailer);
    for (std::sregex_iterator each{said.begin(), said.end(), kept}, end; each != end; ++each)
        frame.trailer += each->str() + "\n";
    return frame;
}

std::set<std::size_t> mapsOf(const std::string& pdf)
{
    std::set<std::size_t> objects;
    for (auto at = pdf.find(mapMark); at != std::string::npos; at = pdf.find(mapMark, at + 1)) {
        if (const auto object = numberAt(pdf, at + mapMark.size()))
            objects.insert(*object);
    }
    return objects;
}

/// The stream of an object as it stands, unpacked.
std::string streamOf(const std::string& pdf, std::size_t object, const Frame& frame)
{
    std::size_t at = 0;
    std::string_view line{pdf};
    line = line.substr(frame.lines + object * offsetLine, 10);
    std::from_chars(line.data(), line.data() + line.size(), at);
    const auto begin = pdf.find("stream\n", at);
    const auto end = pdf.find("endstream", at);
    return begin < end && end != std::string::npos ? pdf.substr(begin, end - begin) : std::string{};
}

}

PdfText::Reading PdfText::readingOf(const PrintedPages& pages)
{
    const auto glyphs = std::make_shared<Glyphs>(pages.families);
    std::set<char16_t> held;
    for (const auto& page : pages.pages) {
        for (const auto& text : page.texts) {
            for (const auto unit : text.text)
                held.insert(unit.unicode());
        }
    }
    std::map<std::pair<std::size_t, quint32>, char16_t> shown; // by font and glyph
    for (const auto unit : held) {
        const auto own = glyphs->of(unit);
        for (std::size_t font = 0; font < own.size(); ++font)
            shown.emplace(std::pair{font, own[font]}, unit);
    }
    return [glyphs, held, shown](char16_t written) {
        if (held.contains(written))
            return written;
        const auto own = glyphs->of(written);
        for (std::size_t font = 0; font < own.size(); ++font) {
            const auto alike = shown.find({font, own[font]});
            if (own[font] != 0 && alike != shown.end())
                return alike->second;
        }
        return written;
    };
}

std::string PdfText::corrected(std::string pdf, const Reading& reading)
{
    const auto frame = frameOf(pdf);
    if (!frame)
        return pdf;
    std::string table = "xref\n";
    std::string update;
    for (const auto object : mapsOf(pdf)) {
        auto names = namesOf(streamOf(pdf, object, *frame));
        if (names.empty())
            continue;
        for (auto& [glyph, unit] : names)
            unit = reading(unit);
        const auto map = mapOf(names);
        table += fmt::format("{} 1\n{:010} 00000 n \n", object, pdf.size() + update.size());
        update += fmt::format("{} 0 obj\n<< /Length {} >>\nstream\n{}\nendstream\nendobj\n", object, map.size(), map);
    }
    if (update.empty())
        return pdf;
    const auto place = pdf.size() + update.size();
    return pdf + update + table +
           fmt::format("trailer\n<<\n{}/Prev {}\n>>\nstartxref\n{}\n%%EOF\n", frame->trailer, frame->offsets, place);
}
