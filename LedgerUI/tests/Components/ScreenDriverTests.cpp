#include "LedgerUI/testing/ScreenDriver.h"

#include <QDialog>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollArea>
#include <QTableWidget>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace {

/// A window with a field, a button far below the visible part, and hands on it that soon give up.
struct Desk {
    Desk()
    {
        auto* body = new QWidget;
        auto* rows = new QVBoxLayout(body);
        field = new QLineEdit(body);
        field->setObjectName(QStringLiteral("field"));
        button = new QPushButton(QStringLiteral("Save"), body);
        button->setObjectName(QStringLiteral("save"));
        button->setAccessibleName(QStringLiteral("Save the entry"));
        rows->addWidget(field);
        rows->addSpacing(1000);
        rows->addWidget(button);
        auto* scroll = new QScrollArea(&window);
        scroll->setWidgetResizable(true);
        scroll->setWidget(body);
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(scroll);
        window.resize(300, 200);
        window.show();
        window.activateWindow();
        QObject::connect(button, &QPushButton::clicked, &window, [this] { ++presses; });
    }

    QWidget window;
    QLineEdit* field = nullptr;
    QPushButton* button = nullptr;
    int presses = 0;
    ScreenDriver screen{std::chrono::milliseconds{30}};
};

}

TEST(ScreenDriver, PressesWhatAPersonCouldAndNothingElse)
{
    Desk desk;
    desk.screen.press("save");
    desk.screen.press("Save the entry");
    EXPECT_EQ(desk.presses, 2);
    EXPECT_THROW(desk.screen.press("cancel"), ScreenFailure);

    desk.button->setEnabled(false);
    EXPECT_THROW(desk.screen.press("save"), ScreenFailure);
    desk.button->setEnabled(true);
    QWidget cover{&desk.window};
    cover.resize(desk.window.size());
    cover.show();
    EXPECT_FALSE(desk.screen.offers("save"));
    EXPECT_THROW(desk.screen.press("save"), ScreenFailure);
    cover.hide();

    QDialog modal{&desk.window};
    modal.setModal(true);
    modal.show();
    EXPECT_THROW(desk.screen.press("save"), ScreenFailure);
    EXPECT_EQ(desk.presses, 2);
}

TEST(ScreenDriver, TypesAndReads)
{
    Desk desk;
    desk.screen.fill("field", "first");
    desk.screen.fill("field", "Rp 1.250.000 ₫");
    EXPECT_EQ(desk.screen.read("field"), "Rp 1.250.000 ₫");
    EXPECT_EQ(desk.screen.focus(), "field");
    desk.screen.keys("Tab Space");
    EXPECT_EQ(desk.presses, 1);
    desk.screen.keys("Shift+Tab Home Shift+End Del");
    EXPECT_EQ(desk.screen.read("field"), "");
    EXPECT_THROW(desk.screen.keys("Ctrl+Nothing"), ScreenFailure);
    EXPECT_TRUE(desk.screen.says("Save"));
    desk.button->hide();
    EXPECT_FALSE(desk.screen.says("Save"));
    EXPECT_THROW(desk.screen.waitForText("Save"), ScreenFailure);
}

TEST(ScreenDriver, ReadsRowsAndChoosesInThemAndInMenus)
{
    Desk desk;
    QTableWidget table{2, 2, &desk.window};
    table.setObjectName(QStringLiteral("table"));
    for (const auto& [row, column, text] :
         {std::tuple{0, 0, "20 Nov"}, {0, 1, "Rent"}, {1, 0, "21 Nov"}, {1, 1, "Tea"}})
        table.setItem(row, column, new QTableWidgetItem(QString::fromLatin1(text)));
    table.resize(desk.window.size());
    table.show();
    EXPECT_EQ(desk.screen.read("table"), "20 Nov | Rent\n21 Nov | Tea");
    desk.screen.pressRow("table", "Tea");
    EXPECT_EQ(table.currentRow(), 1);
    EXPECT_THROW(desk.screen.pressRow("table", "Coffee"), ScreenFailure);
    table.hide();

    QMenu menu;
    auto* below = menu.addMenu(QStringLiteral("Languages"));
    int chosen = 0;
    QObject::connect(below->addAction(QStringLiteral("Tiếng Việt")), &QAction::triggered, below, [&] { ++chosen; });
    desk.button->setMenu(&menu);
    desk.screen.choose("save", "Tiếng Việt");
    EXPECT_EQ(chosen, 1);
    EXPECT_THROW(desk.screen.choose("save", "English"), ScreenFailure);
}
