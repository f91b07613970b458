#include <QCoreApplication>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

#include "LedgerUI/Components/Chart/ChartView.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Theme/TypeScale.h"
#include "LedgerUI/testing/ScreenDriver.h"

namespace {

ChartColors colors()
{
    return {.income = ThemeColor{0xff00aa00, 0xff00ff00}, .expense = ThemeColor{0xffaa0000, 0xffff0000}};
}

ChartData threeMonths()
{
    return {.currency = "USD",
            .places = {{QStringLiteral("Jan"), QStringLiteral("January 2026")},
                       {QStringLiteral("Feb"), QStringLiteral("February 2026")},
                       {QStringLiteral("Mar"), QStringLiteral("March 2026")}},
            .series = {{QStringLiteral("Income"), ChartMark::bar, ChartRole::income, {100'00, 200'00, 300'00}},
                       {QStringLiteral("Expense"), ChartMark::bar, ChartRole::expense, {-300'00, 0, -50'00}}},
            .chosen = 2};
}

int countOf(const QImage& image, QRgb color)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            count += image.pixel(x, y) == color ? 1 : 0;
    return count;
}

QImage painted(const ChartColors& look)
{
    QImage image{480, 220, QImage::Format_RGB32};
    image.fill(Qt::gray);
    QPainter painter{&image};
    const auto font = TypeScale::font(TypeStep::micro);
    ChartPainter::paint(painter, ChartPainter::layout(threeMonths(), image.rect(), font, "en-US"), look, font);
    return image;
}

}

TEST(ChartPainter, PaintsBarsInProportionInTheColoursOfTheScheme)
{
    const auto light = painted(colors());
    // 600 in and 350 out, both bars of one width: their areas have the ratio of the sums.
    EXPECT_NEAR(countOf(light, 0xff00aa00) / 600.0, countOf(light, 0xffaa0000) / 350.0, 0.5);
    EXPECT_GT(countOf(light, 0xff00aa00), 600);
    auto dark = colors();
    dark.scheme = ColorScheme::dark;
    EXPECT_GT(countOf(painted(dark), 0xff00ff00), 600);
    EXPECT_EQ(countOf(painted(dark), 0xff00aa00), 0);
}

TEST(ChartView, IsWalkedByKeysAndReadAloud)
{
    InterfaceLanguage::change("en-US");
    ChartView view;
    view.resize(view.sizeHint());
    view.present(threeMonths(), colors());
    view.show();
    view.activateWindow();
    view.setFocus();
    settle();
    EXPECT_EQ(view.accessibleDescription().toStdString(),
              "March 2026: Income USD 300.00, Expense USD −50.00"); // the chosen month, on entering
    const QSignalSpy chosen{&view, &ChartView::slotChosen};
    QTest::keyClick(&view, Qt::Key_Left);
    EXPECT_EQ(view.accessibleDescription().toStdString(), "February 2026: Income USD 200.00, Expense USD 0.00");
    QTest::keyClick(&view, Qt::Key_Home);
    QTest::keyClick(&view, Qt::Key_Left); // no further
    EXPECT_EQ(view.accessibleDescription().toStdString(), "January 2026: Income USD 100.00, Expense USD −300.00");
    EXPECT_EQ(chosen.count(), 0);
    QTest::keyClick(&view, Qt::Key_Return);
    ASSERT_EQ(chosen.count(), 1);
    EXPECT_EQ(chosen.at(0).at(0).value<std::size_t>(), 0U);

    auto other = threeMonths();
    other.currency = "EUR";
    other.places[0].name = QStringLiteral("April 2026");
    view.present(other, colors());
    EXPECT_EQ(view.accessibleDescription().toStdString(), "April 2026: Income EUR 100.00, Expense EUR −300.00");

    auto shorter = threeMonths();
    shorter.places.resize(1);
    for (auto& series : shorter.series)
        series.values.resize(1);
    shorter.chosen.reset();
    QTest::keyClick(&view, Qt::Key_End);
    view.present(shorter, colors()); // the month where the keys were is gone
    EXPECT_EQ(view.accessibleDescription().toStdString(), "January 2026: Income USD 100.00, Expense USD −300.00");
    QTest::keyClick(&view, Qt::Key_Right);
    QTest::keyClick(&view, Qt::Key_Return);
    EXPECT_EQ(chosen.back().at(0).value<std::size_t>(), 0U);
    view.present({.currency = "USD", .places = {}, .series = {}, .chosen = {}}, colors());
    EXPECT_EQ(view.accessibleDescription().toStdString(), "");
    QTest::keyClick(&view, Qt::Key_Return);
    EXPECT_EQ(chosen.count(), 2);
}

/// Above the chart stands what is pointed at, in the same words as where the keys are, and nothing of it once the
/// pointer has left.
TEST(ChartView, TellsTheMonthThatIsPointedAt)
{
    InterfaceLanguage::change("en-US");
    ChartView view;
    auto data = threeMonths();
    data.chosen.reset();
    view.resize(view.sizeHint());
    view.present(data, colors());
    view.show();
    settle();
    view.clearFocus(); // with it, the last month is told
    const auto legend = [&view] { return view.grab({0, 0, view.width(), 24}).toImage(); };
    const auto point = [&view](int x) {
        const QPointF place{static_cast<qreal>(x), view.height() / 2.0};
        QMouseEvent moved{QEvent::MouseMove, place, view.mapToGlobal(place), Qt::NoButton, Qt::NoButton, {}};
        QCoreApplication::sendEvent(&view, &moved);
    };
    ASSERT_TRUE(view.hasMouseTracking()) << "a pointer without a pressed button is told of";
    const auto idle = legend();
    point(view.width() - 10);
    const auto march = legend();
    EXPECT_NE(march, idle);
    point(5); // on the labels of the axis
    EXPECT_EQ(legend(), idle);
    point(view.width() / 2);
    const auto february = legend();
    EXPECT_NE(february, march);
    QEvent left{QEvent::Leave};
    QCoreApplication::sendEvent(&view, &left);
    EXPECT_EQ(legend(), idle);
    view.setFocus();
    QTest::keyClick(&view, Qt::Key_End);
    EXPECT_EQ(legend(), march);
    QTest::keyClick(&view, Qt::Key_Left);
    EXPECT_EQ(legend(), february);
    point(view.width() - 10);
    ASSERT_EQ(legend(), march);
    QTest::keyClick(&view, Qt::Key_Home); // while the pointer rests
    QTest::keyClick(&view, Qt::Key_Right);
    EXPECT_EQ(legend(), february);
}

/// The last digit of the last figure is in sight, where the month and the figures take more than one line.
TEST(ChartView, ShowsEveryFigureWhereItIsNarrow)
{
    InterfaceLanguage::change("id-ID");
    ChartView view;
    view.resize(240, 220);
    view.show();
    const auto shown = [&view](std::int64_t last) {
        auto data = threeMonths();
        data.series[1].values[2] = last;
        view.present(data, colors());
        view.setFocus();
        QTest::keyClick(&view, Qt::Key_End);
        return view.grab().toImage();
    };
    settle();
    EXPECT_NE(shown(-999'999'991'11), shown(-999'999'991'18));
    InterfaceLanguage::change("en-US");
}

TEST(ChartView, TakesAClickOnAMonthOnly)
{
    ChartView view;
    view.resize(view.sizeHint());
    view.present(threeMonths(), colors());
    view.show();
    settle();
    const QSignalSpy chosen{&view, &ChartView::slotChosen};
    QTest::mouseClick(&view, Qt::LeftButton, {}, {view.width() - 10, view.height() / 2});
    ASSERT_EQ(chosen.count(), 1);
    EXPECT_EQ(chosen.at(0).at(0).value<std::size_t>(), 2U);
    QTest::mouseClick(&view, Qt::LeftButton, {}, {5, view.height() / 2}); // on the labels of the axis
    EXPECT_EQ(chosen.count(), 1);
}
