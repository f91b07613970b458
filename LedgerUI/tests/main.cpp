#include <QApplication>
#include <gtest/gtest.h>

#include "LedgerUI/Theme/Theme.h"

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    const QApplication application{argc, argv};
    Theme::current().install(ColorScheme::light);
    return RUN_ALL_TESTS();
}
