#include "LedgerUI/Theme/Theme.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <ostream>

#include <QApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QImage>
#include <QPalette>
#include <QPushButton>
#include <QRegularExpression>
#include <gtest/gtest.h>

#include "LedgerCore/Domain/Settings/TransactionColorOptions.h"
#include "LedgerCore/Domain/testing/SnapshotBuilder.h"
#include "LedgerUI/Components/Text/EntryKindColor.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/SignIn/SignInMode.h"
#include "LedgerUI/Theme/Icon.h"

namespace {

double linear(int channel)
{
    const double share = channel / 255.0;
    return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}

double luminance(QRgb color)
{
    return 0.2126 * linear(qRed(color)) + 0.7152 * linear(qGreen(color)) + 0.0722 * linear(qBlue(color));
}

/// WCAG 2 contrast of two colours, 1 to 21.
double contrast(QRgb one, QRgb other)
{
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

std::string nameOf(Token token)
{
    return std::string{tokenColors()[static_cast<std::size_t>(token)].name};
}

// Everything that text and glyphs stand on: panes, rows, totals and a selected row.
constexpr std::array grounds{Token::window, Token::surface, Token::surfaceAlt, Token::accentSoft};
constexpr double readableText = 4.5;
constexpr double visibleShape = 3.0;

const auto square = QStringLiteral("\u25a0"); // a text with pixels of nothing but its ink

/// Whether a pixel of the widget has just one of these colours.
bool shows(QWidget& widget, std::initializer_list<Token> inks)
{
    widget.resize(widget.sizeHint());
    const auto picture = widget.grab().toImage();
    for (int at = 0; at < picture.width() * picture.height(); ++at) {
        const auto pixel = picture.pixelColor(at % picture.width(), at / picture.width());
        if (std::ranges::any_of(inks, [&](Token ink) { return pixel == Theme::current().color(ink); }))
            return true;
    }
    return false;
}

struct ContrastCase {
    std::string name;
    std::vector<Token> inks;
    std::vector<Token> papers;
    double least;
};

void PrintTo(const ContrastCase& each, std::ostream* out)
{
    *out << each.name;
}

class ThemeContrast : public testing::TestWithParam<ContrastCase> {};

}

TEST_P(ThemeContrast, IsEnoughInBothSchemes)
{
    const auto& [name, inks, papers, least] = GetParam();
    for (const auto scheme : {ColorScheme::light, ColorScheme::dark}) {
        for (const auto ink : inks) {
            for (const auto paper : papers) {
                EXPECT_GE(contrast(tokenColor(ink, scheme), tokenColor(paper, scheme)), least)
                    << nameOf(ink) << " on " << nameOf(paper) << (scheme == ColorScheme::dark ? ", dark" : ", light");
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Colours, ThemeContrast,
    testing::Values(
        ContrastCase{"Text",
                     {Token::text, Token::text2, Token::accent, Token::danger, Token::warn, Token::ok},
                     {grounds.begin(), grounds.end()},
                     readableText},
        ContrastCase{"QuietText", {Token::text3}, {Token::surface, Token::surfaceAlt, Token::field}, readableText},
        ContrastCase{"BannerText",
                     {Token::text},
                     {Token::dangerSoft, Token::warnSoft, Token::okSoft, Token::infoSoft},
                     readableText},
        ContrastCase{
            "PrimaryButton", {Token::onAccent}, {Token::accent, Token::accentHover, Token::accentPress}, readableText},
        ContrastCase{
            "Frames", {Token::control}, {Token::window, Token::surface, Token::surfaceAlt, Token::field}, visibleShape},
        ContrastCase{"Focus", {Token::focus}, {grounds.begin(), grounds.end()}, visibleShape},
        ContrastCase{"ChartSeries",
                     {Token::chart1, Token::chart2, Token::chart3, Token::chart4, Token::chart5, Token::chart6,
                      Token::chartOther},
                     {Token::surface},
                     visibleShape}),
    [](const auto& each) { return std::string{each.param.name}; });

TEST(Theme, LetsEveryColourOfAKindBeReadOnEveryGround)
{
    for (const auto& option : TransactionColorOptions::all()) {
        const auto books = snapshot().colors({{"income", std::string{option.id}}}).build();
        const auto ink = entryKindColor("income", books);
        for (const auto scheme : {ColorScheme::light, ColorScheme::dark}) {
            for (const auto ground : grounds)
                EXPECT_GE(contrast(ink.in(scheme), tokenColor(ground, scheme)), readableText)
                    << option.id << " on " << nameOf(ground) << (scheme == ColorScheme::dark ? ", dark" : ", light");
        }
    }
}

TEST(Theme, FillsEveryNameOfTheStyleSheetAndFindsItsImages)
{
    for (const auto scheme : {ColorScheme::light, ColorScheme::dark}) {
        const auto sheet = Theme::styleSheet(scheme);
        EXPECT_FALSE(sheet.contains(QLatin1Char('@')));
        auto images = QRegularExpression{QStringLiteral("url\\(([^)]*)\\)")}.globalMatch(sheet);
        ASSERT_TRUE(images.hasNext());
        while (images.hasNext()) {
            const auto path = images.next().captured(1);
            EXPECT_TRUE(QFile::exists(path)) << path.toStdString();
        }
    }
    EXPECT_TRUE(Theme::styleSheet(ColorScheme::dark).contains(QStringLiteral("#1f2226")));
}

TEST(Theme, TintsTheImagesOfEachSchemeInItsOwnColour)
{
    for (const auto& [folder, scheme] :
         {std::pair{"light", ColorScheme::light}, std::pair{"dark", ColorScheme::dark}}) {
        QFile file{QStringLiteral(":/tinted/%1/chevron-down.svg").arg(QString::fromLatin1(folder))};
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << folder;
        const auto color = QColor::fromRgb(tokenColor(Token::text2, scheme)).name(QColor::HexRgb);
        EXPECT_TRUE(QString::fromUtf8(file.readAll()).contains(color, Qt::CaseInsensitive)) << folder;
    }
}

TEST(Theme, GivesIconsMadeEarlierTheColoursOfTheNewScheme)
{
    const auto icon = Icon::of(QStringLiteral("square-fill"), Token::ok);
    const auto centre = [&](QIcon::Mode mode) { return icon.pixmap(QSize{16, 16}, mode).toImage().pixel(8, 8); };
    Theme::current().install(ColorScheme::light);
    EXPECT_EQ(centre(QIcon::Normal), 0xff0b7461U);
    Theme::current().install(ColorScheme::dark);
    EXPECT_EQ(centre(QIcon::Normal), 0xff58c3acU);
    EXPECT_EQ(centre(QIcon::Disabled), 0xff62666dU);
    Theme::current().install(ColorScheme::light);
}

TEST(Theme, DressesNoButtonThatIsOffAsIfItCouldBePressed)
{
    for (const auto* kind : {"", "primary", "flat", "ghost", "danger", "link", "chip"}) {
        QPushButton button{square};
        button.setProperty("kind", QString::fromLatin1(kind));
        EXPECT_TRUE(shows(button, {Token::text, Token::text2, Token::accent, Token::danger})) << kind;
        button.setEnabled(false);
        EXPECT_FALSE(shows(button, {Token::text, Token::text2, Token::accent, Token::danger})) << kind;
        EXPECT_TRUE(shows(button, {Token::disabled})) << kind;
    }
}

TEST(Theme, LeavesTheTextsOfALockedFormReadable)
{
    for (const auto& [tone, shown] : {std::pair{Token::text, Token::text2}, std::pair{Token::text2, Token::text2},
                                      std::pair{Token::danger, Token::danger}}) {
        TextLabel label{TypeStep::body, tone};
        label.setText(square);
        EXPECT_TRUE(shows(label, {tone})) << nameOf(tone);
        label.setEnabled(false);
        EXPECT_TRUE(shows(label, {shown})) << nameOf(tone);
        EXPECT_FALSE(shows(label, {Token::disabled})) << nameOf(tone);
    }
}

TEST(Theme, AnnouncesAChangeWhenTheApplicationIsDressedAnew)
{
    int changes = 0;
    const auto counting = QObject::connect(&Theme::current(), &Theme::changed, [&changes] { ++changes; });
    Theme::current().install(ColorScheme::dark);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(QApplication::palette().color(QPalette::Window), QColor(0x1f, 0x22, 0x26));
    EXPECT_EQ(QApplication::palette().color(QPalette::PlaceholderText), QColor(0xa3, 0xa1, 0x9b));
    Theme::current().install(ColorScheme::light);
    QObject::disconnect(counting);
}

TEST(Icons, ExistByEveryNameThatIsAskedFor)
{
    for (const auto& mode : signInModes)
        EXPECT_TRUE(Icon::exists(qString(mode.glyph))) << mode.glyph;
    EXPECT_FALSE(Icon::exists(QStringLiteral("no-such-glyph")));
    static const QRegularExpression asked{QString::fromLatin1(
        R"re((?:setGlyph\(|\.glyph = |Icon::of\(|IconButton\()\s*QStringLiteral\("([a-z0-9-]+)"\))re")};
    QDirIterator sources{
        QStringLiteral(TALLYFOLD_UI_SOURCES), {QStringLiteral("*.cpp")}, QDir::Files, QDirIterator::Subdirectories};
    int names = 0;
    while (sources.hasNext()) {
        QFile source{sources.next()};
        ASSERT_TRUE(source.open(QIODevice::ReadOnly));
        const auto text = QString::fromUtf8(source.readAll());
        for (auto each = asked.globalMatch(text); each.hasNext(); ++names) {
            const auto name = each.next().captured(1);
            EXPECT_TRUE(Icon::exists(name)) << name.toStdString() << " in " << source.fileName().toStdString();
        }
    }
    EXPECT_GT(names, 50) << "the calls are no longer recognised";
}
