#include <QAction>
#include <QComboBox>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QListView>
#include <QPainter>
#include <QPushButton>
#include <QScrollArea>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>
#include <gtest/gtest.h>

#include "LedgerUI/Components/Buttons/SegmentedControl.h"
#include "LedgerUI/Components/Fields/AccountPicker.h"
#include "LedgerUI/Components/Fields/FieldError.h"
#include "LedgerUI/Components/Page/Action.h"
#include "LedgerUI/Components/Page/PageHeader.h"
#include "LedgerUI/Components/Table/CellPainter.h"
#include "LedgerUI/Components/Table/PlainTable.h"
#include "LedgerUI/Components/Text/ElidedLabel.h"
#include "LedgerUI/Components/Text/GlyphLabel.h"
#include "LedgerUI/testing/LabelAudit.h"
#include "LedgerUI/testing/ScreenDriver.h"

namespace {

class Segments : public testing::Test {
protected:
    Segments()
    {
        for (const auto& [id, text] : {std::pair{7, "Expense"}, std::pair{8, "Income"}, std::pair{9, "Transfer"}})
            control.addSegment(id, QString::fromLatin1(text));
        control.choose(7);
        control.resize(control.sizeHint());
        control.show();
        control.activateWindow();
        QObject::connect(&control, &SegmentedControl::chosenByUser, &control,
                         [this](int id) { announced.push_back(id); });
    }

    QToolButton* segment(int id) { return control.findChild<QToolButton*>(QStringLiteral("segment%1").arg(id)); }

    SegmentedControl control;
    std::vector<int> announced;
};

}

TEST_F(Segments, MoveByArrowsPastThoseThatAreOff)
{
    control.setSegmentEnabled(8, false, QStringLiteral("No income account"));
    segment(7)->setFocus();
    QTest::keyClick(segment(7), Qt::Key_Right);
    EXPECT_EQ(control.chosen(), 9);
    QTest::keyClick(segment(9), Qt::Key_Right);
    EXPECT_EQ(announced, std::vector{9});
    EXPECT_EQ(segment(8)->toolTip(), QStringLiteral("No income account"));
}

TEST_F(Segments, AnnounceOnlyWhatAPersonChooses)
{
    control.choose(8);
    EXPECT_TRUE(announced.empty());
    QTest::mouseClick(segment(9), Qt::LeftButton);
    EXPECT_EQ(announced, std::vector{9});
}

TEST_F(Segments, BecomeAComboWithTheSameChoiceWhereTheyDoNotFit)
{
    control.choose(8);
    control.resize(control.sizeHint().width() - 1, control.height());
    auto* combo = control.findChild<QComboBox*>();
    EXPECT_TRUE(combo->isVisible());
    EXPECT_FALSE(segment(8)->isVisible());
    EXPECT_EQ(combo->currentText(), QStringLiteral("Income"));
    Q_EMIT combo->activated(2);
    EXPECT_EQ(control.chosen(), 9);
    EXPECT_EQ(announced, std::vector{9});
}

TEST(AccountPicker, FindsAnAccountAsItIsTypedWithoutDiacritics)
{
    AccountPicker picker;
    picker.present(
        {{.id = "bank", .name = QStringLiteral("Ngân hàng Sài Gòn"), .balances = {}, .group = {}, .glyph = {}},
         {.id = "cash", .name = QStringLiteral("Tiền mặt"), .balances = {}, .group = {}, .glyph = {}},
         {.id = "safe", .name = QStringLiteral("Két sắt Sài Gòn"), .balances = {}, .group = {}, .glyph = {}}},
        {}, {});
    std::string chosen;
    QObject::connect(&picker, &AccountPicker::accountChosen, &picker, [&](const std::string& id) { chosen = id; });
    picker.show();
    picker.setFocus();
    QTest::keyClicks(&picker, QStringLiteral("mat"));
    EXPECT_EQ(chosen, "cash") << "a word in the middle, typed without its marks";

    picker.showPopup();
    auto* list = qobject_cast<QListView*>(picker.view());
    ASSERT_NE(list, nullptr);
    const auto inSight = [&] {
        std::string rows;
        for (int row = 0; row < picker.count(); ++row)
            rows += list->isRowHidden(row) ? "" : picker.itemData(row).toString().toStdString() + " ";
        return rows;
    };
    QTest::keyClicks(list, QStringLiteral("sat x")); // the last letter would leave nothing
    EXPECT_EQ(inSight(), "safe ");
    QTest::keyClick(list, Qt::Key_Backspace);
    QTest::keyClick(list, Qt::Key_Backspace);
    QTest::keyClick(list, Qt::Key_Backspace);
    EXPECT_EQ(inSight(), "bank safe ") << "\"sa\" is in both";
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(chosen, "safe");
    EXPECT_FALSE(list->isVisible());
    EXPECT_EQ(inSight(), "bank cash safe ") << "the next time it begins anew";
}

TEST(FieldError, TakesTheRoomOfItsMessageEachTime)
{
    QWidget root;
    auto* layout = new QVBoxLayout(&root);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* error = new FieldError(nullptr, &root);
    layout->addWidget(error);
    layout->addStretch(1);
    root.resize(200, 300);
    root.show();
    const auto settledHeight = [&](const char* message) {
        error->present(QString::fromUtf8(message));
        settle();
        return error->height();
    };
    const int oneLine = settledHeight("Too short.");
    const auto* glyph = error->findChild<GlyphLabel*>();
    const int top = glyph->y();
    EXPECT_GT(settledHeight("The amount has more decimals than this currency has. Leave some of them out."), oneLine);
    EXPECT_EQ(glyph->y(), top);
    EXPECT_EQ(settledHeight("Too short."), oneLine);
    EXPECT_EQ(glyph->y(), top);
}

TEST(LabelAudit, FindsWhatIsCutAndOnlyThat)
{
    QWidget root;
    auto* whole = new QLabel(QStringLiteral("Whole"), &root);
    whole->resize(whole->sizeHint());
    auto* cut = new QLabel(QStringLiteral("Cut at the end"), &root);
    cut->setObjectName(QStringLiteral("cutLabel"));
    cut->resize(cut->sizeHint() - QSize{4, 0});
    auto* elided = new ElidedLabel(TypeStep::body, Token::text, Qt::ElideRight, &root);
    elided->setText(QStringLiteral("A person's own words"));
    elided->resize(20, 18);
    auto* button = new QPushButton(QStringLiteral("Too long for it"), &root);
    button->setObjectName(QStringLiteral("cutButton"));
    button->resize(30, 30);
    for (const auto policy : {Qt::ScrollBarAsNeeded, Qt::ScrollBarAlwaysOff}) {
        auto* place = new QScrollArea(&root);
        place->setObjectName(QStringLiteral("narrowPlace"));
        place->setHorizontalScrollBarPolicy(policy);
        place->resize(100, 60);
        auto* wide = new QWidget;
        wide->resize(200, 20);
        place->setWidget(wide);
    }
    root.show();

    const auto cuts = auditLabels(root);
    ASSERT_EQ(cuts.size(), 3U);
    EXPECT_TRUE(cuts[0].starts_with("cutLabel: Cut at the end")) << cuts[0];
    EXPECT_TRUE(cuts[1].starts_with("cutButton: Too long for it")) << cuts[1];
    EXPECT_TRUE(cuts[2].starts_with("narrowPlace: contents (needs 200")) << cuts[2];
}

/// No figure reaches below the line that it stands on.
TEST(CellPainter, SetsEveryFigureOnTheSameLine)
{
    const auto lineOf = [](const QString& figure) {
        QImage picture{160, 30, QImage::Format_RGB32};
        picture.fill(Qt::white);
        QPainter painter{&picture};
        Cell cell;
        cell.amounts.push_back({.code = {}, .figure = {.text = figure}});
        CellPainter{painter}.paint(cell, picture.rect());
        int last = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x)
                last = picture.pixel(x, y) == qRgb(255, 255, 255) ? last : y;
        }
        return last;
    };
    const int line = lineOf(QStringLiteral("21.000"));
    EXPECT_GT(line, 15);
    EXPECT_EQ(lineOf(QStringLiteral("+21.000")), line);
    EXPECT_EQ(lineOf(QStringLiteral("\u221221.000")), line);
    EXPECT_EQ(lineOf(QStringLiteral("64.5\u00a0%")), line);
}

TEST(PlainTable, CutsTheLongestWordsRatherThanLoseAColumn)
{
    PlainTable table{0};
    table.resize(600, 200);
    table.show();
    table.present(
        {{.head = QStringLiteral("Name")},
         {.head = QStringLiteral("Entry")},
         {.head = QStringLiteral("Amount"), .align = PlainColumn::Align::right},
         {.head = QStringLiteral("Repeats")}},
        {{.id = "1",
          .cells = {{.text = QStringLiteral("Office rent")},
                    {.text = QStringLiteral("Expense · Guangzhou supplier account · Goods › Purchases · Rent")},
                    {.text = QStringLiteral("IDR 834,820,968.45")},
                    {.text = QStringLiteral("Every month")}}}});
    settle();
    const auto& heads = *table.horizontalHeader();
    EXPECT_EQ(heads.length(), table.viewport()->width());
    EXPECT_EQ(heads.sectionViewportPosition(3) + heads.sectionSize(3), table.viewport()->width());
    EXPECT_GE(heads.sectionSize(2), table.fontMetrics().horizontalAdvance(QStringLiteral("IDR 834,820,968.45")));
}

TEST(ActionSet, TellsWhatFollowsItOfNothingButChanges)
{
    QWidget page;
    ActionSet actions{&page};
    const auto present = [&](const Token ink) {
        actions.present({{.id = QStringLiteral("print"),
                          .text = QStringLiteral("Print"),
                          .glyph = QStringLiteral("printer"),
                          .ink = ink}});
    };
    present(Token::text2);
    int changes = 0;
    QObject::connect(actions[QStringLiteral("print")], &QAction::changed, &page, [&changes] { ++changes; });
    present(Token::text2);
    EXPECT_EQ(changes, 0);
    present(Token::accent);
    EXPECT_EQ(changes, 1) << "its icon has another colour";
}

TEST(PageHeader, FoldsItsActionsToGlyphsWhereTheirTextsHaveNoRoom)
{
    QWidget window;
    auto* header = new PageHeader(&window);
    auto* rows = new QVBoxLayout(&window);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->addWidget(header);
    ActionSet actions{&window};
    const auto present = [&](const char* text) {
        actions.present(
            {{.id = QStringLiteral("print"), .text = QString::fromLatin1(text), .glyph = QStringLiteral("printer")}});
    };
    present("Print");
    header->addSecondary(actions[QStringLiteral("print")]);
    const auto* button = header->findChild<QToolButton*>(QStringLiteral("printButton"));
    const auto isFolded = [&] { return button->toolButtonStyle() == Qt::ToolButtonIconOnly; };
    constexpr int wide = 1200;
    window.resize(wide, 100);
    window.show();
    EXPECT_FALSE(isFolded());
    present(std::string(400, 'm').c_str());
    EXPECT_TRUE(isFolded());
    window.hide();
    present("Print");
    window.show();
    EXPECT_FALSE(isFolded());
    window.resize(wide / 2, 100);
    settle();
    EXPECT_TRUE(isFolded());
}
