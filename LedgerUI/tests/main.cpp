#include <QApplication>
#include <gtest/gtest.h>

#include "LedgerUI/Theme/Theme.h"

int main(int argc, char** argv)
{
    // Times of day are written in the machine's zone: seven hours east of Greenwich, wherever the tests run.
    qputenv("TZ", "WIB-7");
    // Windows stay off the desktop, and need none, unless somebody asks to see them.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    const QApplication application{argc, argv};
    Theme::current().install(ColorScheme::light);
    return RUN_ALL_TESTS();
}
